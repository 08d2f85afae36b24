#pragma once

#include "base/Geometry.h"
#include "selection/MaskPlane.h"

namespace kestrune {

// Shapes are drawn into a plane of zeros; what of them lies outside is left out.

/// 255 in the rectangle, right and bottom exclusive.
void DrawRectangle(const MaskPlane& plane, const CRect& rc);

/// The ellipse that fills the rectangle, with soft edges one pixel wide: a pixel's coverage follows from the distance of its middle to
/// the ellipse, measured along the line to the centre. Only the left edge of each row is computed: the right one is its mirror, between them
/// all is covered. A rectangle without width or height draws nothing.
void DrawEllipse(const MaskPlane& plane, const CRect& rc);
/// The coverage of one pixel of that ellipse, 0..255; the pixel lies in the rectangle's rows.
std::uint8_t EllipseCoverage(const CRect& rc, int x, int y);

} // namespace kestrune
