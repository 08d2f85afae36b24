#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

enum PsdMode {
    PSD_BITMAP = 0,
    PSD_GREY = 1,
    PSD_INDEXED = 2,
    PSD_RGB = 3,
    PSD_CMYK = 4,
    PSD_MULTICHANNEL = 7,
    PSD_DUOTONE = 8,
    PSD_LAB = 9
};

/// What stands in a PSD file before its pixels.
struct PsdStructure {
    bool bBig = false; ///< PSB: the wider counts of giant pictures
    int nChannels = 0;
    int nWidth = 0;
    int nHeight = 0;
    int nDepth = 0; ///< bits a channel: 1, 8, 16 or 32
    int nMode = 0;
    std::vector<RGBQUAD> palette;
    int iTransparent = -1; ///< palette index that is transparent
    int nXDpi = 0;
    int nYDpi = 0;
    std::span<const std::uint8_t> iccProfile;
    bool bTransparency
        = false; ///< the channel behind the colours is the picture's transparency, not a stored selection
    std::size_t nPixels = 0; ///< offset of the pixel section

    /// Channels of the colour mode.
    int ColorChannels() const;
};

/// IMG_SUCCESS or an error. No pixel is touched; whether the file is long enough for them is not checked.
int ReadPsdStructure(std::span<const std::uint8_t> file, PsdStructure& psd);

} // namespace kestrune
