#pragma once

#include "resources/BrushEntry.h"

namespace kestrune {

/// What a round or elliptical brush is made from.
struct BrushShape {
    double dRadius = 0.1; ///< pixels, 0.1..100
    int nHardness = 20;   ///< percent, 0..100
    int nAngle = 0;       ///< degrees, 0..180
    int nRoundness = 1;   ///< 1 a circle .. 20 a thin ellipse
};

/// Makes the mask: a table of the falloff over the distance from the centre, five steps a pixel, each the sum of five samples,
/// is laid over the ellipse. Numbers outside their ranges are limited to them. Spacing 20, second value 100.
BrushEntry GenerateBrush(const BrushShape& shape);

} // namespace kestrune
