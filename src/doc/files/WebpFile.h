#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// WebP: 24 bits, transparency over white, of an animation the first picture, the EXIF orientation applied.
int ReadWebP(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// Lossy WebP of a 24-bit bitmap of at most 16383 pixels a side. `nQuality` is a quality factor; 2, the best, is lossless.
int WriteWebP(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
