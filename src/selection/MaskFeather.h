#pragma once

#include "selection/MaskPlane.h"

#include <vector>

namespace kestrune {

/// Which taps of the bell curve a feather sums. The selection tools have always left out the last one, on the far right and below;
/// pictures made with them depend on it.
enum class FeatherTaps { All, WithoutLast };

/// The bell curve of a radius: whole numbers, 255 in the middle. `weights` has 2 * nHalf + 1 entries, for the offsets -nHalf..nHalf.
struct FeatherCurve {
    int nHalf = 0;
    std::vector<int> weights;
    int nTotal = 0; ///< of the taps that count

    FeatherCurve(double fRadius, FeatherTaps taps);
};

/// Blurs the mask along its columns, then along its rows, with the bell curve whose value at the radius is 1 / 255; beyond an edge its
/// last pixel goes on. Each sum is truncated when it is divided by the curve's total. A radius of 0 or less changes nothing.
///
/// A line is seen as a start value and its changes: a change adds itself times the part of the curve that lies beyond it. So a flat
/// stretch costs nothing, a soft edge a few terms, and only noise as much as a sum over the whole curve.
void FeatherMask(const MaskPlane& mask, double fRadius, FeatherTaps taps);

/// The same run by run with the curve's cumulative sums: what the form above is held against.
void PlainFeatherMask(const MaskPlane& mask, double fRadius, FeatherTaps taps);

} // namespace kestrune
