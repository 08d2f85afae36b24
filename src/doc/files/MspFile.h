#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads the black and white pictures of early paint programs (MSP), version 1 (plain rows) and 2 (run-length coded
/// rows).
int ReadMsp(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

} // namespace kestrune
