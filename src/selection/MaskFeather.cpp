#include "selection/MaskFeather.h"

#include "base/ParallelRows.h"
#include "selection/FeatherKernels.h"

#include <tbb/enumerable_thread_specific.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace kestrune {

namespace {

constexpr double c_fLimit = 0.00392156862745098; ///< 1 / 255, the curve's value at the radius
constexpr int c_nColumns = 32;                   ///< columns that are turned into lines together
constexpr int c_nGrain = 32;
constexpr int c_nMany = 24;                      ///< changes from which on it pays to sum every other output only
constexpr float c_fSure = 64;                    ///< and the doubt left about the others, as a part of the curve's total
constexpr float c_fRounding = 1e-4f;             ///< of a level: more than floats lose in a mean of up to 255
constexpr float c_fExact = 16777216; ///< whole numbers below are exact in a float

/// What a thread needs beside the mask, made once: pieces are small, and memory that is given back and taken again costs more than they do.
struct LineWork {
    explicit LineWork(const MaskPlane& mask)
        : in(static_cast<std::size_t>(std::max(mask.nWidth, mask.nHeight)) * c_nColumns)
        , out(in.size())
        , changes(new LineChange[std::max(mask.nWidth, mask.nHeight)]) // not cleared
    {
    }
    std::vector<std::uint8_t> in, out; ///< columns as lines
    std::unique_ptr<LineChange[]> changes;
};

FeatherLine LineOf(const FeatherCurve& curve, FeatherTaps taps)
{
    const int nHalf = curve.nHalf, nFirst = -nHalf - 2 * FeatherLine::c_nBlock;
    const int nLength = 2 * (nHalf + 2 * FeatherLine::c_nBlock + FeatherLine::c_nGaps);
    FeatherLine line{nHalf, static_cast<float>(curve.nTotal), 0, nLength, {}, {}};
    const auto Weight = [&](int i) {
        return i < -nHalf || i > nHalf || (i == nHalf && taps == FeatherTaps::WithoutLast) ? 0 : curve.weights[i + nHalf];
    };
    // An output at distance q after a change sees it with all offsets from -q on.
    int nSum = 0;
    for (int q = nFirst; q < nFirst + nLength; q++) {
        nSum += Weight(-q);
        line.beyond.push_back(static_cast<float>(nSum));
        line.fSteepest = std::max(line.fSteepest, static_cast<float>(std::abs(Weight(-q) - Weight(1 - q))));
    }
    for (int nGap = 1; nGap <= FeatherLine::c_nGaps; nGap++)
        for (int i = 0; i < nLength; i++)
            line.beyond.push_back(line.beyond[i] + (i < nGap ? 0 : line.beyond[i - nGap]));
    for (std::size_t i = 0; i < line.beyond.size(); i++)
        line.aHalves[i & 1].push_back(line.beyond[i]);
    return line;
}

void FeatherOneLine(const FeatherLine& line, const FeatherKernels& kernels, const std::uint8_t* pIn, std::uint8_t* pOut, int nLength,
                    LineChange* pChanges)
{
    const LineChange* pFirst = pChanges;
    const LineChange* const pEnd = pFirst + kernels.findChanges(line, pIn, nLength, pChanges);
    const auto EndFor = [&](const LineChange* p, int nLast) { // one past the changes that reach that output
        while (p < pEnd && p->nAt <= nLast + line.nHalf)
            p++;
        return p;
    };
    const LineChange* pLast = pFirst;
    for (int x = 0, nCount = 0; x < nLength; x += nCount) {
        nCount = std::min(FeatherLine::c_nBlock, nLength - x);
        // A change before the window is in all of an output, one behind it in none.
        while (pFirst < pEnd && pFirst->nLast <= x - line.nHalf)
            pFirst++;
        pLast = EndFor(std::max(pLast, pFirst), x + nCount - 1);
        const int nStart = pFirst == pChanges ? pIn[0] : static_cast<int>(pFirst[-1].fLevel);
        const auto WindowTo = [&](const LineChange* p) { return FeatherWindow{nStart, pFirst, static_cast<int>(p - pFirst)}; };
        if (pFirst == pLast) {
            std::memset(pOut + x, nStart, nCount);
            continue;
        }
        if (pLast - pFirst >= c_nMany && nLength - x >= FeatherLine::c_nSampled) {
            const FeatherWindow wide = WindowTo(EndFor(pLast, x + FeatherLine::c_nSampled - 1));
            // Between two outputs: half of what the sums' steps can differ by, and more than the reckoning of their mean loses.
            const float fOff = wide.Way() * line.fSteepest / 2 + line.fTotal * c_fRounding;
            if (fOff * c_fSure < line.fTotal) {
                kernels.sampled(line, wide, x, fOff, pOut + x);
                nCount = FeatherLine::c_nSampled;
                continue;
            }
        }
        kernels.block(line, WindowTo(pLast), x, pOut + x, nCount);
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
    tbb::enumerable_thread_specific<LineWork> works([&] { return LineWork(mask); });
    ParallelRows((mask.nWidth + c_nColumns - 1) / c_nColumns, 1, [&](int n0, int n1) {
        LineWork& work = works.local();
        for (int n = n0; n < n1; n++) {
            const int x0 = n * c_nColumns, nColumns = std::min(c_nColumns, mask.nWidth - x0);
            TurnColumns(kernels, mask, x0, nColumns, work.in.data(), false);
            for (int x = 0; x < nColumns; x++)
                FeatherOneLine(line, kernels, work.in.data() + x * nLine, work.out.data() + x * nLine, mask.nHeight, work.changes.get());
            TurnColumns(kernels, mask, x0, nColumns, work.out.data(), true);
        }
    });
    ParallelRows(mask.nHeight, c_nGrain, [&](int y0, int y1) {
        LineWork& work = works.local();
        for (int y = y0; y < y1; y++) {
            std::memcpy(work.in.data(), mask.Row(y), mask.nWidth);
            FeatherOneLine(line, kernels, work.in.data(), mask.Row(y), mask.nWidth, work.changes.get());
        }
    });
}

} // namespace kestrune
