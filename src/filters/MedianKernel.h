#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrune {

/// Rows that the median reads have their bytes turned by this, so that signed comparisons order them, and this much room
/// behind their end.
inline constexpr std::uint8_t c_nMedianFlip = 0x80;
inline constexpr std::size_t c_nMedianRoom = 128;

/// The middle (index n x n / 2 of the sorted ones) of the bytes of a window, for windows of whole rows and columns:
/// `ppRows` are `nRows` flipped rows, the window's columns stand 3 bytes apart from i on, and out[i] (not flipped) is the
/// result, for i below `nBytes`. `pOut` has `c_nMedianRoom` bytes of room as well.
void MedianRow(const std::uint8_t* const* ppRows, int nRows, int nColumns, std::uint8_t* pOut, std::size_t nBytes);

} // namespace kestrune
