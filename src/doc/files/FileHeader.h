#pragma once

#include "doc/files/ImageFile.h"

namespace kestrune {

/// What a file says of itself, as the user knows it: the decoders of rare formats expand palettes, number colours anew
/// by what occurs, or drop the resolution.
struct FileHeader {
    int nBits = 0; ///< 1, 4, 8 or 24; 0 when the header does not tell
    std::vector<RGBQUAD> palette; ///< all 2^nBits entries at up to 8 bits
    int nXDpi = 0; ///< 0 when the file does not say
    int nYDpi = 0;
};

/// Reads the header of PCX, DCX, TGA, SGI, PICT and PNTG files. False for other formats and for a header that is
/// damaged.
bool ReadFileHeader(ImageFormat format, std::span<const std::uint8_t> file, FileHeader& header);

/// Brings a decoded picture back to the file's own depth and palette, where every one of its colours stands in that
/// palette; otherwise its pixels stay. The resolution of the file counts where the decoder gave none.
void MatchFileHeader(const FileHeader& header, LBitmapBase& bitmap);

} // namespace kestrune
