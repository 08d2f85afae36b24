#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads a saved clipboard (CLP): the device independent bitmap in it, else the device dependent one, whose colours
/// come from the palette saved beside it.
int ReadClp(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

} // namespace kestrune
