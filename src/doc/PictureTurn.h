#pragma once

#include "doc/Bitmap.h"

#include <cstdint>

namespace kestrune {

/// How a whole picture is turned.
enum class PictureTurn {
    Left,   ///< a quarter against the clock: the right column becomes the top row
    Right,  ///< a quarter with the clock: the left column becomes the top row, read from below
    Half,   ///< upside down and mirrored
    Mirror, ///< left and right change places
    Flip    ///< top and bottom change places
};

enum class TurnForm { Vector, Plain };

/// A turned copy of a bitmap of any depth; a quarter turn exchanges its sides and its resolutions. Works row by row: quarter turns in tiles
/// that stay in the cache, mirrored rows several pixels at a time. Both forms give the same bytes. Throws std::bad_alloc.
LBitmapBase TurnedBitmap(const LBitmapBase& source, PictureTurn turn, TurnForm form = TurnForm::Vector);

/// Mirrors or flips a plane of bytes (a mask) in place; the quarter turns change nothing.
void TurnPlane(std::uint8_t* pPlane, int nWidth, int nHeight, PictureTurn turn);

} // namespace kestrune
