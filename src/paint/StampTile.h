#pragma once

#include "base/Geometry.h"
#include "paint/DabKernels.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrune {

/// The dab in progress: its rectangle in image pixels after clipping, and what is to be laid there. Colours are in the
/// picture's order, blue, green, red, 3 bytes a pixel; alpha stands apart, because most dabs are opaque and most of one colour.
struct StampTile {
    int nWidth = 0;
    int nHeight = 0;
    int x = 0;
    int y = 0;

    std::uint8_t aColor[c_nColorPixels * 3] = {}; ///< the colour of all pixels while `aInk` is empty, over and over
    std::vector<const std::uint8_t*> aInk;    ///< for each row its colours; they may lie in the canvas itself
    const std::uint8_t* pAlpha = nullptr;     ///< nWidth x nHeight bytes; null: 255 everywhere

    CRect Rect() const { return {x, y, x + nWidth, y + nHeight}; }
};

} // namespace kestrune
