#pragma once

#include "base/Geometry.h"
#include "selection/MaskPlane.h"

namespace kestrune {

/// The smallest rectangle that holds every byte that is not 0; an empty one when there is none. Each row is read from both ends
/// inwards, eight bytes at a time, so that a row costs no more than what is empty in it.
CRect ScanMaskBounds(const MaskPlane& mask);

} // namespace kestrune
