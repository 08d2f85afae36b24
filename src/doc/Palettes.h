#pragma once

#include "base/Color.h"

#include <span>
#include <vector>

namespace kestrune {

/// An even grey ramp from black to white of 2..256 entries: entry i is i x 255 / (entries - 1).
std::vector<RGBQUAD> GreyRamp(int nColors);
/// The sixteen colours that every display of old could show: eight dark, eight light.
std::vector<RGBQUAD> SystemPalette();
/// 6 x 7 x 6 levels of red, green and blue, and four greys between them: 256 entries.
std::vector<RGBQUAD> CubePalette();
/// 6 x 6 x 6 levels in steps of 51: 216 entries.
std::vector<RGBQUAD> WebPalette();

/// True when the entries are an even grey ramp, from black to white or from white to black.
bool IsGreyRamp(std::span<const RGBQUAD> palette);

/// The brightness of a colour in whole numbers (77 R + 150 G + 29 B, rounded, over 256): a grey stays what it is.
constexpr int Luminance(int nRed, int nGreen, int nBlue)
{
    return (77 * nRed + 150 * nGreen + 29 * nBlue + 128) >> 8;
}

} // namespace kestrune
