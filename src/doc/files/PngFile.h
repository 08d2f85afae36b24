#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// PNG: palette and grey files keep their depth (2 bits come as 4), 16 bits come as 8, transparency is laid over white.
/// Of an animation the first picture. The EXIF orientation is applied.
int ReadPng(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// PNG of a bitmap of any depth with its resolution, each row filtered by the least sum of differences. Lossless, so the quality
/// factor only chooses how hard to pack: 2 (the best) hardest, above 128 fastest.
int WritePng(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
