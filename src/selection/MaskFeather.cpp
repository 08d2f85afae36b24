#include "selection/MaskFeather.h"

#include "base/ParallelRows.h"
#include "selection/FeatherKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrune {

namespace {

constexpr double c_fLimit = 0.00392156862745098; ///< 1 / 255, the curve's value at the radius
constexpr int c_nColumns = 32;                   ///< columns that are turned into lines together
constexpr int c_nGrain = 32;
constexpr float c_fExact = 16777216; ///< whole numbers below are exact in a float

/// Of a line: what one thread needs beside its two buffers.
struct LineWork {
    std::vector<LineChange> changes;
};

FeatherLine LineOf(const FeatherCurve& curve, FeatherTaps taps)
{
    const int nMargin = FeatherLine::c_nBlock;
    FeatherLine line{curve.nHalf, static_cast<float>(curve.nTotal), {}};
    line.beyond.assign(2 * (curve.nHalf + static_cast<std::size_t>(nMargin)) + 1, 0);
    // An output at distance q after a change sees it with all offsets from -q on.
    int nSum = 0;
    for (int q = -curve.nHalf; q <= curve.nHalf + nMargin; q++) {
        if (q <= curve.nHalf && !(q == -curve.nHalf && taps == FeatherTaps::WithoutLast))
            nSum += curve.weights[curve.nHalf - q];
        line.beyond[q + curve.nHalf + nMargin] = static_cast<float>(nSum);
    }
    return line;
}

/// The places where a byte differs from the one before.
void FindChanges(const std::uint8_t* p, int nLength, std::vector<LineChange>& changes)
{
    changes.clear();
    int i = 1;
    const auto Look = [&](int nEnd) {
        for (; i < nEnd; i++)
            if (p[i] != p[i - 1])
                changes.push_back({i, static_cast<float>(p[i] - p[i - 1])});
    };
    while (i + 8 <= nLength) {
        std::uint64_t nHere, nBefore;
        std::memcpy(&nHere, p + i, 8);
        std::memcpy(&nBefore, p + i - 1, 8);
        if (nHere == nBefore)
            i += 8;
        else
            Look(i + 8);
    }
    Look(nLength);
}

void FeatherOneLine(const FeatherLine& line, const FeatherKernels& kernels, const std::uint8_t* pIn, std::uint8_t* pOut, int nLength,
                    LineWork& work)
{
    FindChanges(pIn, nLength, work.changes);
    const LineChange* pFirst = work.changes.data();
    const LineChange* const pEnd = pFirst + work.changes.size();
    const LineChange* pLast = pFirst;
    for (int x = 0; x < nLength; x += FeatherLine::c_nBlock) {
        const int nCount = std::min(FeatherLine::c_nBlock, nLength - x);
        // A change before the window is in all of an output, one behind it in none.
        while (pFirst < pEnd && pFirst->nAt <= x - line.nHalf)
            pFirst++;
        pLast = std::max(pLast, pFirst);
        while (pLast < pEnd && pLast->nAt <= x + nCount - 1 + line.nHalf)
            pLast++;
        const int nStart = pFirst == work.changes.data() ? pIn[0] : pIn[pFirst[-1].nAt];
        if (pFirst == pLast)
            std::memset(pOut + x, nStart, nCount);
        else
            kernels.block(line, nStart, pFirst, static_cast<int>(pLast - pFirst), x, pOut + x, nCount);
    }
}

/// Copies columns of a plane into lines, or lines back into columns.
void TurnColumns(const FeatherKernels& kernels, const MaskPlane& plane, int x0, int nColumns, std::uint8_t* pLines, bool bBack)
{
    const std::ptrdiff_t nLine = plane.nHeight, nRow = plane.nWidth;
    for (int x = 0; x < nColumns; x += 16)
        for (int y = 0; y < plane.nHeight; y += 16) {
            std::uint8_t* pPlane = plane.Row(y) + x0 + x;
            std::uint8_t* pLine = pLines + x * nLine + y;
            const int nWide = std::min(16, nColumns - x), nHigh = std::min(16, plane.nHeight - y);
            if (nWide == 16 && nHigh == 16) {
                if (bBack)
                    kernels.turn16(pLine, nLine, pPlane, nRow);
                else
                    kernels.turn16(pPlane, nRow, pLine, nLine);
                continue;
            }
            for (int j = 0; j < nHigh; j++)
                for (int i = 0; i < nWide; i++) {
                    std::uint8_t& nPlane = pPlane[j * nRow + i];
                    std::uint8_t& nInLine = pLine[i * nLine + j];
                    if (bBack)
                        nPlane = nInLine;
                    else
                        nInLine = nPlane;
                }
        }
}

} // namespace

FeatherCurve::FeatherCurve(double fRadius, FeatherTaps taps)
{
    const double fSigma = std::sqrt(-(fRadius * fRadius) / (2 * std::log(c_fLimit)));
    const double v = 2 * fSigma * fSigma;
    int nLength = static_cast<int>(2 * std::ceil(std::sqrt(-v * std::log(c_fLimit))));
    if (nLength % 2 == 0)
        nLength++;
    nHalf = nLength / 2;
    weights.resize(nLength);
    weights[nHalf] = 255;
    for (int i = 1; i <= nHalf; i++)
        weights[nHalf - i] = weights[nHalf + i] = static_cast<int>(std::exp(-static_cast<double>(i) * i / v) * 255);
    for (const int n : weights)
        nTotal += n;
    if (taps == FeatherTaps::WithoutLast)
        nTotal -= weights.back();
}

void FeatherMask(const MaskPlane& mask, double fRadius, FeatherTaps taps)
{
    if (!(fRadius > 0))
        return;
    const FeatherCurve curve(fRadius, taps);
    const FeatherLine line = LineOf(curve, taps);
    if (line.fTotal * 255 >= c_fExact)
        return PlainFeatherMask(mask, fRadius, taps);
    const FeatherKernels kernels = BestFeatherKernels();
    const std::size_t nLine = mask.nHeight;
    ParallelRows((mask.nWidth + c_nColumns - 1) / c_nColumns, 1, [&](int n0, int n1) {
        LineWork work;
        std::vector<std::uint8_t> in(nLine * c_nColumns), out(nLine * c_nColumns);
        for (int n = n0; n < n1; n++) {
            const int x0 = n * c_nColumns, nColumns = std::min(c_nColumns, mask.nWidth - x0);
            TurnColumns(kernels, mask, x0, nColumns, in.data(), false);
            for (int x = 0; x < nColumns; x++)
                FeatherOneLine(line, kernels, in.data() + x * nLine, out.data() + x * nLine, mask.nHeight, work);
            TurnColumns(kernels, mask, x0, nColumns, out.data(), true);
        }
    });
    ParallelRows(mask.nHeight, c_nGrain, [&](int y0, int y1) {
        LineWork work;
        std::vector<std::uint8_t> in(mask.nWidth);
        for (int y = y0; y < y1; y++) {
            std::memcpy(in.data(), mask.Row(y), mask.nWidth);
            FeatherOneLine(line, kernels, in.data(), mask.Row(y), mask.nWidth, work);
        }
    });
}

} // namespace kestrune
