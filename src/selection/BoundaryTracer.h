#pragma once

#include "base/Geometry.h"
#include "selection/MaskPlane.h"

#include <vector>

namespace kestrune {

/// One piece of a mask's boundary, horizontal or vertical, in image coordinates (between pixels).
struct MaskSegment {
    int x1, y1, x2, y2;
    int open; ///< 1 when the selected side is below or right of it, 0 for the other side

    bool operator==(const MaskSegment&) const = default;
};

/// Traces the edge between the pixels of at least 128 and the others within a rectangle that lies inside the plane; what is
/// outside the rectangle to the left and right counts as unselected, what is outside the plane above and below as well.
///
/// It works by runs: each run of selected pixels is compared with the unselected runs of the row above and the row below, and each
/// piece that lies bare is a horizontal segment whose two ends open or close a vertical edge in their column. So the segments
/// come in the order of the rows, within a row run by run, upper edges before lower ones, a closed vertical before the horizontal that
/// closed it. Throws std::bad_alloc.
void TraceBoundary(const MaskPlane& mask, const CRect& rc, std::vector<MaskSegment>& segments);

} // namespace kestrune
