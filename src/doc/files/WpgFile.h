#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads the first raster picture of a WPG file of version 1, at 1, 2 (as 4), 4 or 8 bits with its palette and
/// resolution. IMG_ERROR_BITS for what is not handled here: version 2 and drawings without a raster.
int ReadWpg(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// Writes a WPG file of version 1 with one raster picture of 8 bits; the colours are reduced by error diffusion to the
/// palette that fits the picture.
int WriteWpg(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
