#pragma once

#include "doc/Bitmap.h"

#include <vector>

namespace kestrune {

/// What each pixel of a resampled axis takes from the old axis: `nTaps` old pixels from `first` on, with weights that add up
/// to 1. All take the same number, some with a weight of 0 at the ends, so that the loops over the taps never vary. Made
/// once for an axis and used for every row or column.
struct AxisWeights {
    int nTaps = 0;
    std::vector<int> first;   ///< by new pixel; first + nTaps never passes the end
    std::vector<float> value; ///< nTaps for each new pixel

    const float* Of(int i) const { return value.data() + static_cast<std::size_t>(i) * nTaps; }
};

/// The weights of SIZE_BILINEAR (triangle), SIZE_BICUBIC (Catmull-Rom) or SIZE_AREA (the share of each old pixel that the
/// new one covers). When the axis shrinks, triangle and cubic are stretched by the same factor, so that every old pixel
/// counts. At the edges the taps outside are left out and the rest scaled up.
AxisWeights MakeAxisWeights(int nOld, int nNew, int nFlags);

/// The old pixel under the middle of new pixel `i`.
constexpr int NearestSource(int i, int nOld, int nNew)
{
    return static_cast<int>((2 * static_cast<std::int64_t>(i) + 1) * nOld / (2 * static_cast<std::int64_t>(nNew)));
}

/// Fills `target` (its rows and row bytes are the new size) from a source of any depth with the nearest pixel.
void ResampleNearest(const LBitmapBase& source, CBandStore& target);

enum class KernelForm { Vector, Plain };

/// Fills `target` from a 24-bit source in two passes: a new row is first mixed from old rows, at the old width, then across.
/// Mixing down first makes the pass across, which vectors serve less well, run over the new rows only.
/// Both forms do the same single-precision operations in the same order and give the same bytes.
void ResampleSmooth(const LBitmapBase& source, CBandStore& target, int nFlags, KernelForm form = KernelForm::Vector);

} // namespace kestrune
