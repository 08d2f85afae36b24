#include "resources/BrushBlur.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace kestrune {

namespace {

/// Blurs one line from `line` (a copy) to every `nStride`-th byte of `pOut`. `runs` holds for each position how many equal
/// bytes follow, itself included.
void BlurLine(const CBrushKernel& kernel, std::span<const std::uint8_t> line, std::span<int> runs, std::uint8_t* pOut, std::ptrdiff_t nStride)
{
    const int n = static_cast<int>(line.size()), nHalf = kernel.Half(), nDivisor = kernel.Divisor();
    const auto at = [&](int i) { return static_cast<std::size_t>(i); };
    for (int i = n - 1; i >= 0; i--)
        runs[at(i)] = i + 1 < n && line[at(i)] == line[at(i + 1)] ? runs[at(i + 1)] + 1 : 1;
    for (int p = 0; p < n; p++) {
        const int nStart = p < nHalf ? -p : -nHalf;
        const int nEnd = p + nHalf >= n ? n - p - 1 : nHalf;
        int nSum = nStart != -nHalf ? line[0] * kernel.Weight(-nHalf, nStart) : 0;
        for (int i = nStart; i < nEnd;) {
            const int nNext = std::min(i + runs[at(p + i)], nEnd);
            nSum += line[at(p + i)] * kernel.Weight(i, nNext);
            i = nNext;
        }
        if (nEnd != nHalf)
            nSum += line[at(n - 1)] * kernel.Weight(nEnd, nHalf);
        pOut[p * nStride] = static_cast<std::uint8_t>(nSum / nDivisor);
    }
}

} // namespace

CBrushKernel::CBrushKernel(int nRadius)
{
    const double dEdge = std::log(1.0 / 255.0); // the bell is down to one part in 255 at the radius
    const double dDeviation = std::sqrt(-(static_cast<double>(nRadius) * nRadius) / (2 * dEdge));
    const double D = 2 * dDeviation * dDeviation;
    int n = static_cast<int>(2 * std::ceil(std::sqrt(-dEdge * D)));
    n += n % 2 == 0;
    m_nHalf = n / 2;
    m_aSums.push_back(0);
    for (int i = -m_nHalf; i < m_nHalf; i++) {
        const int nWeight = i == 0 ? 255 : static_cast<int>(std::exp(-static_cast<double>(i) * i / D) * 255);
        m_aSums.push_back(m_aSums.back() + nWeight);
    }
}

void BlurBrush(std::vector<std::uint8_t>& plane, int nWidth, int nHeight, int nRadius)
{
    if (nRadius < 1 || nWidth < 1 || nHeight < 1)
        return;
    const CBrushKernel kernel(nRadius);
    std::vector<std::uint8_t> line;
    std::vector<int> runs(static_cast<std::size_t>(std::max(nWidth, nHeight)));
    line.resize(static_cast<std::size_t>(nHeight));
    for (int x = 0; x < nWidth; x++) {
        std::uint8_t* const pColumn = plane.data() + x;
        for (int y = 0; y < nHeight; y++)
            line[static_cast<std::size_t>(y)] = pColumn[static_cast<std::ptrdiff_t>(y) * nWidth];
        BlurLine(kernel, line, runs, pColumn, nWidth);
    }
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* const pRow = plane.data() + static_cast<std::ptrdiff_t>(y) * nWidth;
        line.assign(pRow, pRow + nWidth);
        BlurLine(kernel, line, runs, pRow, 1);
    }
}

} // namespace kestrune
