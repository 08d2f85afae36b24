#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads the flat picture of a PSD or PSB file: bitmap, grey, duotone (as grey), indexed, RGB, CMYK (through its
/// embedded profile where there is one), multichannel (as inks) and L*a*b*; 1, 8 and 16 bits a channel; plain and
/// run-length coded planes. Transparency is shown over white. IMG_ERROR_BITS for 32-bit channels and compressed planes,
/// and for files saved without a flat picture.
int ReadPsd(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

} // namespace kestrune
