#pragma once

#include "selection/MaskPlane.h"

namespace kestrune {

/// How far the disc of a radius reaches up and down from its column `i` (-nRadius..nRadius).
int DiscReach(int nRadius, int i);
/// The soft disc of a border: 255 at its middle, 0 from its edge on; `dx`, `dy` from the middle, radii above 0.
std::uint8_t SoftDisc(int dx, int dy, int nRadiusX, int nRadiusY);

/// Each pixel becomes the largest of those within the disc around it; outside the plane is 0. A radius below 1 changes nothing.
///
/// For a row the maxima of columns of growing height are made from each other, and each output pixel looks up one of them for each
/// column of the disc: about four steps of a vector for each unit of the radius.
void GrowMask(const MaskPlane& mask, int nRadius);
/// The outermost rows and columns become 0, then each pixel the smallest of those within the disc; outside the plane does not
/// count. A radius below 1 changes nothing.
void ShrinkMask(const MaskPlane& mask, int nRadius);

/// The ring along the inner edge of what is selected (at least 128): each pixel gets the largest byte of the soft discs that stand on
/// the edge's pixels; radii 1 and 1 give the edge's pixels themselves, a radius of 0 clears the mask. Radii up to 254.
/// A pixel is on the edge when one of its neighbours inside the plane is not selected.
void BorderMask(const MaskPlane& mask, int nRadiusX, int nRadiusY);

// The same, pixel by pixel as the words say: what the forms above are held against.
void PlainGrowMask(const MaskPlane& mask, int nRadius);
void PlainShrinkMask(const MaskPlane& mask, int nRadius);
void PlainBorderMask(const MaskPlane& mask, int nRadiusX, int nRadiusY);

} // namespace kestrune
