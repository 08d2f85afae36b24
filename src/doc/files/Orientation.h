#pragma once

#include "doc/Bitmap.h"

#include <cstdint>
#include <span>

namespace kestrune {

/// Turns the picture upright. `nOrientation` is that of EXIF and TIFF, 1 to 8: where the stored first row and column
/// stand in the upright picture. 1 and anything else leave it as it is; 5 to 8 swap the sides and the two resolutions.
void ApplyOrientation(LBitmapBase& bitmap, int nOrientation);

/// What a camera's EXIF block says about showing the picture.
struct ExifInfo {
    int nOrientation = 1;
    int nXResolution = 0; ///< dots per inch, 0 when not said
    int nYResolution = 0;
};

/// Reads the block from its byte-order mark on ("II*\0" or "MM\0*"), or from the "Exif\0\0" before it.
/// Only the first directory is read; whatever lies outside the block is not said.
ExifInfo ReadExif(std::span<const std::uint8_t> block);

} // namespace kestrune
