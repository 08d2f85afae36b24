#pragma once

#include "filters/FilterValues.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrune {

/// What Hue/Saturation makes of each component, by sextant of the hue (0 to 5) and byte: entry sextant x 256 + byte.
struct HueTables {
    using Sextants = std::array<std::int32_t, 6 * 256>;
    Sextants hue, lightness, saturation;
};
HueTables MakeHueTables(const HueSaturationValues& values);

/// One row of pixels through the tables, in hue, lightness, saturation.
void HueRow(const HueTables& tables, const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels);
/// Gives the pixels of `pOut` the lightness of those of `pIn`.
void KeepLightnessRow(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels);

} // namespace kestrune
