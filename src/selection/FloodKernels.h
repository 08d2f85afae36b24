#pragma once

#include <array>
#include <cstdint>

namespace kestrune {

/// What a pixel's largest difference from the seed says: up to `nFull` all, from `nNone` on nothing, between them the table.
struct FloodTest {
    std::uint8_t aSeed[3];
    std::array<std::uint8_t, 256> alpha;
    int nFull;
    int nNone; ///< up to 256
};

/// The alphas of `nCount` pixels of three bytes each.
using FloodRow = void (*)(const FloodTest& test, const std::uint8_t* pPixels, int nCount, std::uint8_t* pAlpha);
FloodRow BestFloodRow();

} // namespace kestrune
