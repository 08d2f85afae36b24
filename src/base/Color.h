#pragma once

#include <cstdint>

namespace kestrune {

/// A colour with red in the low byte, then green, then blue; the top byte is 0.
using COLORREF = std::uint32_t;

constexpr COLORREF Rgb(int red, int green, int blue)
{
    return static_cast<COLORREF>((red & 255) | (green & 255) << 8 | (blue & 255) << 16);
}
constexpr std::uint8_t RedOf(COLORREF cr) { return static_cast<std::uint8_t>(cr); }
constexpr std::uint8_t GreenOf(COLORREF cr) { return static_cast<std::uint8_t>(cr >> 8); }
constexpr std::uint8_t BlueOf(COLORREF cr) { return static_cast<std::uint8_t>(cr >> 16); }

/// One palette entry, in the byte order that palette files and bitmap headers use.
struct RGBQUAD {
    std::uint8_t rgbBlue = 0;
    std::uint8_t rgbGreen = 0;
    std::uint8_t rgbRed = 0;
    std::uint8_t rgbReserved = 0;
    bool operator==(const RGBQUAD&) const = default;
};

} // namespace kestrune
