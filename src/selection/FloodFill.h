#pragma once

#include "base/Geometry.h"
#include "selection/MaskPlane.h"

#include <functional>

namespace kestrune {

/// Where a fill looks: rows of pixels of three bytes each.
struct FloodSource {
    int nWidth;
    int nHeight;
    std::function<const std::uint8_t*(int y)> row;
};

struct FloodParams {
    CPoint pt;               ///< where it begins; outside nothing is filled
    std::uint8_t aSeed[3];   ///< the colour that is looked for, in the order of the source's bytes
    int nTolerance;          ///< 0..255; 0 counts as 1
    bool bAntiAlias;         ///< colours somewhat beyond the tolerance are partly in
};

/// How much a pixel belongs to the area, by the largest difference of its three channels to the seed's.
std::uint8_t WandAlpha(int nDifference, bool bAntiAlias, int nTolerance);

/// Fills what hangs together with the start, over sides and not corners, and writes how much each pixel belongs to it; a pixel that is
/// partly in passes the fill on. The mask must be zero, and is written to nowhere else. Returns the bounds of what was filled.
///
/// It goes from run to run as a recursion would (from the left end of a run, at each pixel first up, then down), but keeps what is still to
/// do on a stack of its own, and rows are looked at only when the fill comes near. Throws std::bad_alloc.
CRect FloodFill(const FloodSource& source, const FloodParams& params, const MaskPlane& mask);

} // namespace kestrune
