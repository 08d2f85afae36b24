#include "paint/DabKernels.h"

#include "base/Arith.h"

#include <algorithm>
#include <cstdlib>

namespace kestrune {

namespace {

using std::uint8_t;

const uint8_t* InkAt(const DabRun& run, int nRow, int x)
{
    return run.ppInk ? run.ppInk[nRow] + x * 3 : run.pColor;
}

} // namespace

void PlainCappedDab(const DabRun& run)
{
    for (int y = 0; y < run.nRows; y++) {
        const uint8_t* pCanvas = run.pCanvas + y * run.nStride;
        uint8_t* pOut = run.pOut + y * run.nStride;
        uint8_t* pCoverage = run.pCoverage + y * run.nCoverageStride;
        const uint8_t* pMask = run.pMask + y * run.nMaskStride;
        for (int x = run.pSpans[y].x0; x < run.pSpans[y].x1; x++) {
            const int m = run.nDabAlpha == 255 ? pMask[x] : Mul255(pMask[x], run.nDabAlpha);
            pCoverage[x] = static_cast<uint8_t>(pCoverage[x] + Mul255(255 - pCoverage[x], m));
            const int a = Mul255(pCoverage[x], run.nOpacity);
            const uint8_t* pInk = InkAt(run, y, x);
            for (int k = 0; k < 3; k++)
                pOut[x * 3 + k] = Lerp255(pCanvas[x * 3 + k], pInk[k], a);
        }
    }
}

void PlainStackedDab(const DabRun& run)
{
    for (int y = 0; y < run.nRows; y++) {
        uint8_t* pCanvas = const_cast<uint8_t*>(run.pCanvas) + y * run.nStride;
        uint8_t* pOut = run.pOut + y * run.nStride;
        const uint8_t* pAlpha = run.pMask + y * run.nMaskStride;
        for (int x = run.pSpans[y].x0; x < run.pSpans[y].x1; x++) {
            const uint8_t* pInk = InkAt(run, y, x);
            for (int k = 0; k < 3; k++)
                pOut[x * 3 + k] = pCanvas[x * 3 + k] = Lerp255(pCanvas[x * 3 + k], pInk[k], pAlpha[x]);
        }
    }
}

void PlainLerpRow(const uint8_t* pCanvas, const uint8_t* pInk, const uint8_t* pAlpha, uint8_t* pOut, std::size_t nCount)
{
    for (std::size_t i = 0; i < nCount; i++)
        for (std::size_t k = i * 3; k < i * 3 + 3; k++)
            pOut[k] = Lerp255(pCanvas[k], pInk[k], pAlpha[i]);
}

void PlainSmearRow(const uint8_t* pCanvas, uint8_t* pSmear, int p, std::size_t nBytes)
{
    for (std::size_t i = 0; i < nBytes; i++)
        pSmear[i] = static_cast<uint8_t>((pCanvas[i] * (255 - p) + pSmear[i] * p) / 255);
}

void PlainConvolveRow(const ConvolveRows& rows, uint8_t* pOut, int nCenter, std::size_t nBytes)
{
    const int nSum = nCenter + 8 * c_nConvolveUnit;
    const int nDivisor = nSum ? nSum : 1;
    for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(nBytes); i++) {
        int nRing = rows.pRow[i - 3] + rows.pRow[i + 3];
        for (std::ptrdiff_t k = i - 3; k <= i + 3; k += 3)
            nRing += rows.pAbove[k] + rows.pBelow[k];
        pOut[i] = static_cast<uint8_t>(std::min(std::abs((nCenter * rows.pRow[i] + c_nConvolveUnit * nRing) / nDivisor), 255));
    }
}

} // namespace kestrune
