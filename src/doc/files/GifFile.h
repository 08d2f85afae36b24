#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads the first picture of a GIF file on its logical screen, at the depth of its palette (1, 4 or 8 bits).
/// Transparent pixels and the part of the screen that the picture leaves free are white.
int ReadGif(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

} // namespace kestrune
