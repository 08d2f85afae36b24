#pragma once

#include "base/Geometry.h"
#include "doc/Bitmap.h"

namespace kestrune {

/// Where the old picture stands on a new canvas: row by row, 0 upper left, 4 the middle, 8 lower right.
inline constexpr int c_nCanvasAnchors = 9;
inline constexpr int c_nAnchorMiddle = 4;

/// The place of the old picture's upper left corner on the new canvas; negative where the canvas is the smaller one. In the middle
/// of an odd difference the extra pixel, whether added or cut off, is at the right or below.
constexpr CPoint CanvasOffset(CSize old, CSize canvas, int nAnchor)
{
    const auto Along = [](int nOld, int nNew, int nThird) { return nThird == 0 ? 0 : nThird == 1 ? (nNew - nOld) / 2 : nNew - nOld; };
    return {Along(old.cx, canvas.cx, nAnchor % 3), Along(old.cy, canvas.cy, nAnchor / 3)};
}

/// A 24-bit bitmap on a canvas of another size, the rest filled with a colour. Keeps resolution and file name. Throws std::bad_alloc.
LBitmapBase OnCanvas(const LBitmapBase& source, CSize canvas, int nAnchor, COLORREF crRest);

} // namespace kestrune
