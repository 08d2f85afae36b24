#include "doc/files/MspFile.h"

#include "doc/files/ByteReader.h"
#include "doc/files/PixelRows.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr std::uint8_t c_aVersion1[] = {'D', 'a', 'n', 'M'};
constexpr std::uint8_t c_aVersion2[] = {'L', 'i', 'n', 'S'};
constexpr std::size_t c_nHeader = 32;

/// A 0, a count and a value are a run; any other byte counts the bytes as they stand behind it. What a row leaves out
/// is white.
bool DecodeMspRow(std::span<const std::uint8_t> coded, std::span<std::uint8_t> row)
{
    std::fill(row.begin(), row.end(), 255);
    CByteReader in(coded);
    std::size_t n = 0;
    while (in.Remaining() > 0 && n < row.size()) {
        const unsigned nCount = in.U8();
        if (nCount == 0) {
            const std::size_t nRun = std::min<std::size_t>(in.U8(), row.size() - n);
            const std::uint8_t value = in.U8();
            if (!in.Ok())
                return false;
            std::fill_n(row.begin() + static_cast<std::ptrdiff_t>(n), nRun, value);
            n += nRun;
        } else {
            const auto bytes = in.Take(nCount);
            if (!in.Ok())
                return false;
            const std::size_t nCopy = std::min(bytes.size(), row.size() - n);
            std::copy_n(bytes.begin(), nCopy, row.begin() + static_cast<std::ptrdiff_t>(n));
            n += nCopy;
        }
    }
    return true;
}

} // namespace

int ReadMsp(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    CByteReader in(file);
    const bool bCoded = in.StartsWith(c_aVersion2);
    if (!bCoded && !in.StartsWith(c_aVersion1))
        return IMG_ERROR_FILE_FORMAT;
    in.Skip(4);
    const int nWidth = in.U16LE();
    const int nHeight = in.U16LE();
    in.Seek(c_nHeader);
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    if (const int nResult = CheckPictureSize(nWidth, nHeight); nResult != IMG_SUCCESS)
        return nResult;
    const std::size_t nRowBytes = (static_cast<std::size_t>(nWidth) + 7) / 8;
    const std::size_t nLeast = static_cast<std::size_t>(nHeight) * (bCoded ? 2 : nRowBytes);
    if (in.Remaining() < nLeast)
        return IMG_ERROR_FILE_READ;

    CByteReader lengths(in.Take(bCoded ? nLeast : 0)); // version 2 begins with the coded length of each row
    if (!bitmap.Create(nWidth, nHeight, 1))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(0, 0); // the header has aspect ratios only
    std::vector<std::uint8_t> aRow(nRowBytes);
    for (int y = 0; y < nHeight; y++) {
        const auto stored = in.Take(bCoded ? lengths.U16LE() : nRowBytes);
        if (!in.Ok())
            return IMG_ERROR_FILE_READ;
        if (!bCoded)
            std::copy(stored.begin(), stored.end(), aRow.begin());
        else if (!DecodeMspRow(stored, aRow))
            return IMG_ERROR_FILE_READ;
        UnpackIndices(aRow.data(), nWidth, 1, bitmap.WriteRow(y)); // a set bit is white, as in our ramp
    }
    return IMG_SUCCESS;
}

} // namespace kestrune
