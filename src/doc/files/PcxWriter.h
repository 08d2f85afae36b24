#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Writes a PCX file: three planes of 8 bits, run-length coded, with the resolution. IMG_ERROR_BITS for a side over
/// what the format's 16-bit numbers hold.
int WritePcx(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
