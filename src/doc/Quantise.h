#pragma once

#include "doc/Bitmap.h"

#include <vector>

namespace kestrune {

/// The palette of at most `nColors` (2..256) that fits a 24-bit bitmap. With no more colours than that in the bitmap it holds
/// just those, dark to light. Otherwise the box of all colours is cut where the cut takes away most variance, until there
/// are enough boxes, and the entries are then moved to the middle of the colours nearest to them a few times.
/// The same bitmap always gives the same palette, whatever the number of cores.
std::vector<RGBQUAD> OptimisedPalette(const LBitmapBase& bitmap, int nColors);

} // namespace kestrune
