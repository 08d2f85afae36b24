#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Writes a PICT file of version 2: direct pixels of 24 bits, packed by planes, with the resolution. The format's own limit on a
/// row makes wide pictures stand in strips beside each other. IMG_ERROR_BITS for a side over what its 16-bit numbers hold.
int WritePict(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
