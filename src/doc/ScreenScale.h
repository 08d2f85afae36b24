#pragma once

#include "base/Geometry.h"
#include "doc/Bitmap.h"

#include <cstddef>
#include <cstdint>

namespace kestrune {

enum class ScreenForm { Vector, Plain };

/// Draws a part of a 24-bit bitmap, scaled by `fZoom`, into rows of 32-bit pixels 0xffRRGGBB.
///
/// `rcDest` is the part wanted, in pixels of the scaled picture, whose upper left corner is (0, 0) and whose size is
/// trunc(width x zoom) x trunc(height x zoom). `pOut` is the pixel of the rectangle's corner, `nStrideBytes` the way from a
/// row to the next. What of the rectangle lies outside the scaled picture is left as it is.
///
/// At zoom 1 pixels are copied; above, picture pixel trunc(dest / zoom) shows as a hard block; below, a pixel is the mean of
/// the area it covers, in weights of 1/256 along each axis. A pixel depends on its own position alone, so that
/// rectangles drawn one by one fit without a seam. Both forms give the same pixels. Another depth draws nothing.
void ScaleToScreen(const LBitmapBase& bitmap, double fZoom, CRect rcDest, std::uint32_t* pOut, std::ptrdiff_t nStrideBytes,
                   ScreenForm form = ScreenForm::Vector);

} // namespace kestrune
