#pragma once

#include "selection/MaskPlane.h"

namespace kestrune {

void FillMask(const MaskPlane& mask, std::uint8_t nValue);
/// Each byte becomes 255 minus itself.
void InvertMask(const MaskPlane& mask);

/// Combines a shape of the same size into the mask, byte by byte: new and add are min(255, mask + shape) (who makes a new selection
/// clears the mask first), subtract is mask - shape but not below 0, intersect is the smaller one. Any other number says so and
/// changes nothing.
void CombineMask(const MaskPlane& mask, const std::uint8_t* pShape, SelectMode mode);

/// What reads of a plane that was written column by column (index x * height + y) when it is read row by row (y * width + x).
/// `pOut` has the size of the plane.
void ColumnsReadAsRows(const MaskPlane& plane, std::uint8_t* pOut);

} // namespace kestrune
