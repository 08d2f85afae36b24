#pragma once

#include "resources/BrushEntry.h"
#include "resources/PaintSources.h"
#include "resources/ResponseCurve.h"

#include <cstdint>
#include <vector>

namespace kestrune {

/// The widest soft edge, in pixels.
inline constexpr int c_nMaxSoftEdge = 10;

/// The mask that paints: the entry's mask in a plane with room for the soft edge and one row and column more, blurred by that
/// radius (0: not at all), each byte passed through the response table. Axes and spacing are the entry's own.
ActiveBrush PrepareBrush(const BrushEntry& entry, int nSoftEdge, const ResponseTable& response);

/// A mask before the response: what the dialog of the curve shows under its hands.
struct SoftMask {
    std::vector<std::uint8_t> aBytes;
    int nWidth = 0;
    int nHeight = 0;
};
SoftMask SoftenBrush(const BrushEntry& entry, int nSoftEdge);

/// A mask made small enough for a square of that side by taking every S-th byte: side x side bytes of grey, black paint on
/// white, the mask in the middle. A mask that fits is not enlarged.
std::vector<std::uint8_t> SampleBrush(const std::vector<std::uint8_t>& mask, int nWidth, int nHeight, int nSide);

} // namespace kestrune
