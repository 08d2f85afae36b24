#pragma once

#include <cstdint>

namespace kestrune {

/// Rounded division of a product by 255: the rounding used wherever a byte is scaled by a byte.
/// The shifts are arithmetic, so a negative first factor is allowed.
constexpr int Mul255(int a, int b)
{
    const int t = a * b + 128;
    return ((t >> 8) + t) >> 8;
}

/// Moves `dst` toward `src` by `alpha` (0..255): dst + round((src - dst) * alpha / 255).
constexpr std::uint8_t Lerp255(int dst, int src, int alpha)
{
    return static_cast<std::uint8_t>(dst + Mul255(src - dst, alpha));
}

} // namespace kestrune
