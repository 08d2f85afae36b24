#include "paint/Blend.h"

#include "base/ParallelRows.h"
#include "base/Random.h"
#include "paint/BlendKernels.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kestrune {

namespace {

using std::size_t;
using std::uint8_t;

constexpr std::uint32_t c_nDissolveSeed = 314159265;
constexpr int c_nDissolveSeeds = 4096;
/// A row is not worth another thread below that many pixels.
constexpr int c_nPixelsPerPiece = 64 * 1024;

/// The seeds of Dissolve's rows: drawn, then shuffled, from one fixed seed, and therefore always the same.
struct DissolveSeeds {
    std::array<std::uint32_t, c_nDissolveSeeds> aSeeds;
    DissolveSeeds()
    {
        Srand(c_nDissolveSeed);
        for (std::uint32_t& nSeed : aSeeds)
            nSeed = static_cast<std::uint32_t>(Rand());
        for (int i = 0; i < c_nDissolveSeeds; i++) {
            const int j = i + Rand() % (c_nDissolveSeeds - i);
            std::swap(aSeeds[i], aSeeds[j]);
        }
    }
};

std::uint32_t DissolveSeed(int nRow)
{
    static const DissolveSeeds s_seeds;
    return s_seeds.aSeeds[nRow % c_nDissolveSeeds];
}

/// The noise is a fixed pattern from the block's corner: every row begins at a seed of its own. The generator is left
/// where drawing number after number would have left it.
void DissolveBlock(const uint8_t* pSource, uint8_t* pDestination, int w, int h, int nPixelSize)
{
    std::uint32_t nState = c_nDissolveSeed;
    const size_t nRow = static_cast<size_t>(w) * nPixelSize;
    for (int j = 0; j < h; j++, pSource += nRow, pDestination += nRow) {
        nState = DissolveSeed(j);
        if (nPixelSize == 4)
            VectorDissolveRow(nState, pSource, pDestination, w);
        else
            PlainDissolveRow(nState, pSource, pDestination, w, nPixelSize);
    }
    Srand(nState);
}

} // namespace

void BlendBlock(int nMode, const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, int nCanvasWidth,
                int nCanvasHeight, int w, int h, int x, int y, int nPixelSize)
{
    if (w <= 0 || h <= 0 || x < 0 || y < 0 || w > nCanvasWidth - x || h > nCanvasHeight - y)
        return;
    if (nMode == BLEND_DISSOLVE)
        return DissolveBlock(pSource, pDestination, w, h, nPixelSize);
    const BlendRowFn plain = PlainBlendRow(nMode, nPixelSize);
    if (!plain)
        return;
    ParallelRows(h, std::max(1, c_nPixelsPerPiece / w), [&](int j0, int j1) {
        for (int j = j0; j < j1; j++) {
            const uint8_t* pRow = pCanvas + (static_cast<size_t>(y + j) * nCanvasWidth + x) * 3;
            const size_t nBlock = static_cast<size_t>(j) * w * nPixelSize;
            if (nPixelSize == 4)
                VectorBlendRow(nMode, pRow, pSource + nBlock, pDestination + nBlock, w);
            else
                plain(pRow, pSource + nBlock, pDestination + nBlock, w);
        }
    });
}

void MixRow(const uint8_t* pCanvas, const uint8_t* pBlock, uint8_t* pOut, const MixPlace& place,
            const MixSettings& settings)
{
    const BlendTexture* pTexture = settings.pTexture;
    if (!pTexture || pTexture->nWidth <= 0 || pTexture->nHeight <= 0)
        return VectorMixRun(pCanvas, pBlock, pOut, place.nCount, {settings.nOpacity, settings.bHardAlpha, nullptr});
    // Cut where the tile begins anew.
    const uint8_t* pTile = pTexture->pBytes + static_cast<size_t>(place.y % pTexture->nHeight) * pTexture->nWidth;
    size_t nColumn = static_cast<size_t>(place.x % pTexture->nWidth);
    for (size_t i = 0; i < place.nCount;) {
        const size_t n = std::min(place.nCount - i, pTexture->nWidth - nColumn);
        VectorMixRun(pCanvas + i * 3, pBlock + i * 4, pOut + i * 3, n,
                     {settings.nOpacity, settings.bHardAlpha, pTile + nColumn});
        i += n;
        nColumn = 0;
    }
}

void BlendPackedRow(int nMode, const uint8_t* pCanvas, const uint8_t* pInk, uint8_t* pOut, size_t nCount)
{
    constexpr size_t c_nChunk = 256;
    uint8_t aCanvas[c_nChunk * 3], aInk[c_nChunk * 4], aOut[c_nChunk * 4];
    for (size_t n; nCount > 0; nCount -= n, pCanvas += n * 3, pInk += n * 3, pOut += n * 3) {
        n = std::min(nCount, c_nChunk);
        for (size_t i = 0; i < n; i++) {
            for (size_t k = 0; k < 3; k++) {
                aCanvas[i * 3 + k] = pCanvas[i * 3 + 2 - k];
                aInk[i * 4 + k] = pInk[i * 3 + 2 - k];
            }
            aInk[i * 4 + 3] = 255;
        }
        VectorBlendRow(nMode, aCanvas, aInk, aOut, n);
        for (size_t i = 0; i < n; i++)
            for (size_t k = 0; k < 3; k++)
                pOut[i * 3 + k] = aOut[i * 4 + 2 - k];
    }
}

void DissolveAlphaRow(int nRow, uint8_t* pAlpha, size_t nCount)
{
    std::uint32_t nState = DissolveSeed(nRow);
    for (size_t i = 0; i < nCount; i++) {
        nState = nState * 214013u + 2531011u;
        if ((nState >> 16 & 255) > pAlpha[i])
            pAlpha[i] = 0;
    }
    Srand(nState);
}

void MultiplyAlphaRow(uint8_t* pBlock, const uint8_t* pMask, int nOpacity, size_t nCount, int nPixelSize)
{
    if (nPixelSize == 4)
        VectorMultiplyAlphaRow(pBlock, pMask, nOpacity, nCount);
    else
        PlainMultiplyAlphaRow(pBlock, pMask, nOpacity, nCount, nPixelSize);
}

void AccumulateRow(uint8_t* pCoverage, const uint8_t* pDab, size_t nCount)
{
    VectorAccumulateRow(pCoverage, pDab, nCount);
}

} // namespace kestrune
