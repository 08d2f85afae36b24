#pragma once

#include "doc/files/DecodedImage.h"

#include <array>

namespace kestrune {

/// A device independent bitmap as it lies in a BMP file, an icon or the clipboard: its bytes from the info header on.
struct DibSource {
    std::span<const std::uint8_t> bytes;
    std::size_t nBitsOffset = 0; ///< where the pixels start, counted from the info header; 0: right behind the palette
    bool bIcon = false; ///< the height counts the colour rows and the mask rows below them
};

/// What the header of a DIB says, checked against the bytes.
struct DibInfo {
    int nWidth = 0;
    int nHeight = 0;
    bool bTopDown = false;
    int nFileBits = 0; ///< 1, 2, 4, 8, 16, 24 or 32
    int nBits = 0; ///< the depth that the picture gets: 1, 4, 8 or 24
    int nCompression = 0; ///< one of DibCompression
    std::array<std::uint32_t, 4> aMasks{}; ///< blue, green, red, alpha; 16 and 32 bits only
    std::vector<RGBQUAD> palette; ///< all 2^nBits entries; those that the file leaves out are black
    std::size_t nPixels = 0; ///< offset of the pixels from the info header
    std::size_t nStride = 0; ///< bytes a row when not run-length coded
    int nXDpi = 0;
    int nYDpi = 0;
};

enum DibCompression { DIB_RGB = 0, DIB_RLE8 = 1, DIB_RLE4 = 2, DIB_BITFIELDS = 3, DIB_RLE24 = 4 };

/// Reads and checks the header; no pixel is touched. IMG_SUCCESS or an error.
int ReadDibInfo(const DibSource& source, DibInfo& info);

/// Decodes the pixels that `info` describes. Alpha, where `aMasks[3]` names it and any pixel has some, is shown over
/// white.
int DecodeDibPixels(const DibSource& source, const DibInfo& info, LBitmapBase& bitmap);

/// Both in one.
int DecodeDib(const DibSource& source, LBitmapBase& bitmap);

/// True when the pixels have an alpha channel in which some pixel is not 0. Where all are 0 the channel was never
/// filled in, and the picture is opaque.
bool DibHasAlpha(const DibSource& source, const DibInfo& info);

} // namespace kestrune
