#pragma once

#include "doc/Bitmap.h"

namespace kestrune {

/// False when that many bytes of run-length coding cannot reasonably describe a picture of that size. A jump may leave
/// many pixels unset, so the bound is wide; it only keeps a file of some bytes from asking for a giant picture.
bool RleCouldHold(std::size_t nBytes, int nWidth, int nHeight);

/// Decodes the run-length coding of bitmap files with 4, 8 or 24 bits (`nBits`) into a bitmap of that depth. Pixels
/// that the coding jumps over are 0. False when the coding ends before the last row was reached and without its end
/// mark.
bool DecodeRle(std::span<const std::uint8_t> coded, int nBits, bool bTopDown, LBitmapBase& bitmap);

} // namespace kestrune
