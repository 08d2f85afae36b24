#pragma once

#include <cstdint>

namespace kestrune {

/// One row of a float over the picture beneath it: 24-bit pixels, the float's mask.
struct FloatRow {
    const std::uint8_t* pBase;
    const std::uint8_t* pFloat;
    const std::uint8_t* pMask;
    std::uint8_t* pOut; ///< may be the base's own row
    int nCount;
};
/// How the float covers: mask times opacity (0..255), hardened in a picture of few colours.
struct FloatCover {
    int nOpacity;
    bool bHard;
};

/// Moves each pixel of the base toward the float's by the float mask times the opacity.
void BlendFloatRow(const FloatRow& row, const FloatCover& cover);
/// The same bytes, pixel by pixel as it is defined.
void BlendFloatRowPlain(const FloatRow& row, const FloatCover& cover);

} // namespace kestrune
