#include "doc/files/PackBits.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr std::size_t c_nGreatestRun = 128;

/// Length of the run of equal bytes at `i`, at most the greatest.
std::size_t RunAt(std::span<const std::uint8_t> row, std::size_t i)
{
    const std::size_t nEnd = std::min(row.size(), i + c_nGreatestRun);
    std::size_t n = i + 1;
    while (n < nEnd && row[n] == row[i])
        n++;
    return n - i;
}

} // namespace

bool UnpackBits(std::span<const std::uint8_t> coded, std::span<std::uint8_t> out)
{
    std::size_t iIn = 0, iOut = 0;
    while (iOut < out.size() && iIn < coded.size()) {
        const int nCode = static_cast<std::int8_t>(coded[iIn++]);
        if (nCode >= 0) {
            const std::size_t nCount = static_cast<std::size_t>(nCode) + 1;
            if (coded.size() - iIn < nCount)
                return false;
            const std::size_t nFit = std::min(nCount, out.size() - iOut);
            std::memcpy(&out[iOut], &coded[iIn], nFit);
            iIn += nCount;
            iOut += nFit;
        } else if (nCode != -128) { // which means nothing
            if (iIn >= coded.size())
                return false;
            const std::size_t nFit = std::min(static_cast<std::size_t>(1 - nCode), out.size() - iOut);
            std::memset(&out[iOut], coded[iIn++], nFit);
            iOut += nFit;
        }
    }
    return iOut == out.size();
}

void AppendPackBits(std::span<const std::uint8_t> row, std::vector<std::uint8_t>& out)
{
    std::size_t i = 0;
    while (i < row.size()) {
        const std::size_t nRun = RunAt(row, i);
        if (nRun >= 3 || i + nRun == row.size()) {
            if (nRun == 1)
                out.push_back(0);
            else
                out.push_back(static_cast<std::uint8_t>(257 - nRun));
            out.push_back(row[i]);
            i += nRun;
            continue;
        }
        std::size_t iEnd = i;
        while (iEnd < row.size() && iEnd - i < c_nGreatestRun
               && (iEnd + 2 >= row.size() || row[iEnd] != row[iEnd + 1] || row[iEnd] != row[iEnd + 2]))
            iEnd++;
        out.push_back(static_cast<std::uint8_t>(iEnd - i - 1));
        out.insert(out.end(), row.begin() + static_cast<std::ptrdiff_t>(i),
                   row.begin() + static_cast<std::ptrdiff_t>(iEnd));
        i = iEnd;
    }
}

} // namespace kestrune
