#pragma once

#include "base/Arith.h"
#include "doc/files/DecodedImage.h"

#include <array>

namespace kestrune {

/// What every reader asks before it allocates: IMG_SUCCESS, IMG_ERROR_FILE_READ for a side that is not positive, or
/// IMG_ERROR_MEMORY for a picture over the limits in force.
int CheckPictureSize(std::int64_t nWidth, std::int64_t nHeight);

/// Spreads packed pixels of 1, 2, 4 or 8 bits, the most significant bits first, to one byte a pixel.
void UnpackIndices(const std::uint8_t* pSource, int nWidth, int nBits, std::uint8_t* pOut);

/// The depth in which a palette of that many colours is kept: 1, 4 or 8.
int DepthForColors(int nColors);

/// A 1-bit picture whose palette is white and black gets the usual order, black and white, and its pixels follow:
/// it is the same picture, and only the usual order counts as an even grey ramp.
void NormalizeBilevel(LBitmapBase& bitmap);

/// A channel with its alpha shown over white.
constexpr std::uint8_t OverWhite(std::uint8_t channel, std::uint8_t alpha) { return Lerp255(255, channel, alpha); }

/// Rounded dots per inch of pixels per metre, and back; out of the range of a sane picture comes out 0.
int DpiOfPelsPerMeter(std::int64_t nPelsPerMeter);
int PelsPerMeterOfDpi(int nDpi);

/// Finds a palette index that shows white, for the transparent pixels of an indexed picture: an entry that is white,
/// else one that no pixel uses (it is made white). -1 when every entry of the depth is taken by another colour. `aUsed`
/// tells which indices pixels use; `palette` has all entries of the depth.
int WhiteIndex(std::span<RGBQUAD> palette, const std::array<bool, 256>& aUsed);

/// Makes white the pixels of a bitmap of at most 8 bits whose byte of `aTransparent` (one a pixel, row after row) is
/// not 0. The palette gives an entry for it, growing to the next depth if it must; the bitmap goes to 24 bits when all
/// 256 are taken.
void PaintTransparentWhite(LBitmapBase& bitmap, std::span<const std::uint8_t> aTransparent);

} // namespace kestrune
