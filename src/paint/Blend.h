#pragma once

#include "paint/BlendMode.h"

#include <cstddef>
#include <cstdint>

namespace kestrune {

// Arrays, all tightly packed, row after row from the top. Canvas: 3 bytes a pixel, red, green, blue, without alpha.
// Block (source and destination): 4 bytes a pixel, red, green, blue, alpha (or 3 where the pixel size says so), its top
// left corner at (x, y) of the canvas.

/// Colours a block: destination = mode(canvas, source), not yet mixed with the canvas. Looks at neither coverage nor
/// opacity; the source's alpha is copied, except by Dissolve. The block must lie inside the canvas; one that does not,
/// and a mode over 15, leave the destination as it was. Large blocks run on all cores.
void BlendBlock(int nMode, const std::uint8_t* pCanvas, const std::uint8_t* pSource, std::uint8_t* pDestination,
                int nCanvasWidth, int nCanvasHeight, int w, int h, int x, int y, int nPixelSize);

/// Colours one row of packed pixels in the picture's order, blue, green, red: out = mode(canvas, ink), any mode but Dissolve.
/// `pOut` may be neither of the others.
void BlendPackedRow(int nMode, const std::uint8_t* pCanvas, const std::uint8_t* pInk, std::uint8_t* pOut, std::size_t nCount);

/// What Dissolve does to the alphas of a block's row `nRow`, counted from the block's top. The generator is left as after the
/// row's draws.
void DissolveAlphaRow(int nRow, std::uint8_t* pAlpha, std::size_t nCount);

/// Bytes that are multiplied into the alpha, laid over the whole picture as tiles from its origin.
struct BlendTexture {
    const std::uint8_t* pBytes = nullptr; ///< nWidth x nHeight
    int nWidth = 0;
    int nHeight = 0;
};

/// How a coloured block goes into the picture.
struct MixSettings {
    int nOpacity = 255; ///< 0..255
    bool bHardAlpha = false; ///< harden the alpha at 128: pictures of few colours (`CPaintImage::IsHardAlpha`)
    const BlendTexture* pTexture = nullptr; ///< null without one
};

/// One row of a mix: where it stands in the picture, and how many pixels.
struct MixPlace {
    int x = 0;
    int y = 0;
    std::size_t nCount = 0;
};

/// out = canvas moved toward the block by alpha x opacity (hardened, then textured). `pOut` may be `pCanvas` itself.
/// All rows begin at the first pixel to mix; canvas and out have 3 bytes a pixel, the block 4.
void MixRow(const std::uint8_t* pCanvas, const std::uint8_t* pBlock, std::uint8_t* pOut, const MixPlace& place,
            const MixSettings& settings);

/// Multiplies a mask row and an opacity (0..255) into the alpha bytes of a block row of pixel size `nPixelSize`.
void MultiplyAlphaRow(std::uint8_t* pBlock, const std::uint8_t* pMask, int nOpacity, std::size_t nCount,
                      int nPixelSize = 4);

/// Grows a coverage row by a dab row: c += (255 - c) x m.
void AccumulateRow(std::uint8_t* pCoverage, const std::uint8_t* pDab, std::size_t nCount);

} // namespace kestrune
