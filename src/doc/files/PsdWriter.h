#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Writes a flat PSD file: RGB of 8 bits a channel, run-length coded, with its resolution. A side over 30000 is more
/// than the format's counts hold; such a picture is written in the format's big variant (PSB), which readers tell by
/// its version.
int WritePsd(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
