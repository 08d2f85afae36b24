#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads BMP files and DIB files, with a file header or without one: 1 to 32 bits, run-length codings, bit fields,
/// headers of both systems, rows in either order. Palette and resolution survive; alpha, which counts only where the
/// header names its mask, is shown over white.
int ReadBmp(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// Writes a BMP file of 24 bits with its resolution.
int WriteBmp(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
