#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// JPEG: grey files come as 8 bits with the grey ramp, all others as 24; CMYK goes through the embedded profile.
/// The EXIF orientation is applied. A file that ends before its last row is damaged; small damage within is logged and shown.
int ReadJpeg(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// Baseline JPEG of a 24-bit bitmap with its resolution. `nQuality` is a quality factor (`QualityOfFactor`); from 90
/// percent on colour is kept at full resolution, below at half.
int WriteJpeg(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
