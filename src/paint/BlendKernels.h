#pragma once

#include <cstddef>
#include <cstdint>

// Row kernels behind Blend.h. Each has a plain form, which says what the result is, and a vector form chosen for the
// processor at run time, which gives the same bytes.

namespace kestrune {

/// One row of `nCount` pixels. Dissolve has its own form because it draws numbers.
using BlendRowFn = void (*)(const std::uint8_t* pCanvas, const std::uint8_t* pSource, std::uint8_t* pDestination,
                            std::size_t nCount);

/// The plain form for 4 or 3 bytes a pixel; null for Dissolve and for a mode over 15.
BlendRowFn PlainBlendRow(int nMode, int nPixelSize);
/// The vector form, 4 bytes a pixel, any mode but Dissolve.
void VectorBlendRow(int nMode, const std::uint8_t* pCanvas, const std::uint8_t* pSource, std::uint8_t* pDestination,
                    std::size_t nCount);

/// One row of Dissolve: draws a number a pixel from `nState` (the generator of base/Random.h), which moves on.
void PlainDissolveRow(std::uint32_t& nState, const std::uint8_t* pSource, std::uint8_t* pDestination,
                      std::size_t nCount, int nPixelSize);
void VectorDissolveRow(std::uint32_t& nState, const std::uint8_t* pSource, std::uint8_t* pDestination,
                       std::size_t nCount);

/// How a run of pixels is mixed: opacity, hardening, and one texture byte a pixel (or null).
struct MixRun {
    int nOpacity;
    bool bHardAlpha;
    const std::uint8_t* pTexture;
};
void PlainMixRun(const std::uint8_t* pCanvas, const std::uint8_t* pBlock, std::uint8_t* pOut, std::size_t nCount,
                 const MixRun& run);
void VectorMixRun(const std::uint8_t* pCanvas, const std::uint8_t* pBlock, std::uint8_t* pOut, std::size_t nCount,
                  const MixRun& run);

void PlainMultiplyAlphaRow(std::uint8_t* pBlock, const std::uint8_t* pMask, int nOpacity, std::size_t nCount,
                           int nPixelSize);
void VectorMultiplyAlphaRow(std::uint8_t* pBlock, const std::uint8_t* pMask, int nOpacity, std::size_t nCount);

void PlainAccumulateRow(std::uint8_t* pCoverage, const std::uint8_t* pDab, std::size_t nCount);
void VectorAccumulateRow(std::uint8_t* pCoverage, const std::uint8_t* pDab, std::size_t nCount);

} // namespace kestrune
