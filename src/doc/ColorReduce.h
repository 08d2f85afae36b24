#pragma once

#include "doc/Bitmap.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kestrune {

/// The palette that `dwFlags` (`ColorResFlags`) chooses for a 24-bit bitmap at 1, 4 or 8 bits: at most 2^bits entries.
/// Without a palette flag 1 bit is black and white and the rest are fitted to the picture.
std::vector<RGBQUAD> ChoosePalette(const LBitmapBase& bitmap, int nBits, std::uint32_t dwFlags, std::span<const RGBQUAD> user);

/// Fills `target` (one byte a pixel, the size of the bitmap) with palette indices of a 24-bit bitmap, dithered as `dwFlags`
/// says; without a dither flag each pixel gets its nearest entry.
///
/// With a palette of greys alone the picture goes to its brightness first, so that colours of one brightness come out alike
/// and no colour error piles up that no entry could pay back.
void MapToPalette(const LBitmapBase& bitmap, std::span<const RGBQUAD> palette, std::uint32_t dwFlags, CBandStore& target);

} // namespace kestrune
