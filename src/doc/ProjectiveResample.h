#pragma once

#include "base/Geometry.h"
#include "base/Matrix3.h"
#include "doc/Bitmap.h"

#include <cstdint>

namespace kestrune {

/// A 24-bit bitmap with a mask that serves as its alpha: a byte a pixel, row behind row.
struct MaskedSource {
    const LBitmapBase& bitmap;
    const std::uint8_t* pMask;
};
/// The same to write to: a bitmap of the wanted size whose bands are its own, and as many mask bytes as it has pixels.
struct MaskedTarget {
    LBitmapBase& bitmap;
    std::uint8_t* pMask;
};

/// Where a block of that size comes to lie: the bounding box of its four corners under `m`, each side truncated (a side that misses
/// a whole number by a rounding error is on it). Empty when it has no pixel, or a corner is not finite or further out than a
/// picture can be.
CRect ProjectedRect(const Matrix3& m, int nWidth, int nHeight);

/// Resamples a block through a projective map. `inverse` maps a pixel of the output (its upper left corner is the output's origin) to
/// the place in the source that it shows. Catmull-Rom splines, across and then down, over colour times alpha, so that no colour of
/// unselected pixels bleeds in. Pixels out of the source's reach get colour 0 and mask 0.
/// Throws std::bad_alloc.
void ResampleProjective(const MaskedSource& source, const Matrix3& inverse, const MaskedTarget& out);

/// The same bytes, pixel by pixel as it is defined: what the tests hold the fast form against.
void ResampleProjectivePlain(const MaskedSource& source, const Matrix3& inverse, const MaskedTarget& out);

} // namespace kestrune
