#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// TIFF: the first picture of the file. 1, 4 and 8-bit grey and palette pictures keep their depth (2 bits come as 4), other
/// grey ones come as 8 bits, the rest as 24: CMYK through its profile, transparency over white. The orientation is applied.
int ReadTiff(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// How the rows of a TIFF file are packed.
enum class TiffPacking { None, Lzw, Deflate };
/// TIFF of a bitmap of 24 bits, or of 8 with its palette, with its resolution.
int WriteTiffPacked(const LBitmapBase& bitmap, TiffPacking packing, std::vector<std::uint8_t>& out);
/// The save table's form: 24 bits, LZW. Lossless, so the quality factor says nothing.
int WriteTiff(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
