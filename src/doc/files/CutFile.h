#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads a CUT picture: 8 bits, whose colours are not in the file. Without them it is shown in grey.
int ReadCut(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// The same with the colours of the palette file that lies beside it (its bytes; a file that is no palette gives grey).
int ReadCutWithPalette(std::span<const std::uint8_t> file, std::span<const std::uint8_t> paletteFile,
                       LBitmapBase& bitmap);

/// Writes a CUT picture of 8 bits in grey. The file has no room for colours: they would need a second file beside it,
/// which the user did not name and which is lost when the picture is copied or sent, and without it every program shows
/// the indices as grey levels. Grey is therefore the one form in which the file alone looks like the picture.
int WriteCut(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
