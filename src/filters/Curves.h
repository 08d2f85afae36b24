#pragma once

#include "filters/FilterValues.h"

#include <array>
#include <cstdint>

namespace kestrune {

/// One table of 256 bytes for each byte of a pixel, in the order of the row: blue, green, red.
using ChannelTables = std::array<std::array<std::uint8_t, 256>, 3>;

/// The curves of the program: they survive from one opening of the dialog to the next. Straight lines at first.
CurvesValues& ProgramCurves();

/// Makes a channel the straight line: points (0, 0) and (255, 255) in the first and the last slot.
void ResetCurve(CurvesValues& values, int nChannel);
/// Takes nine points from each channel's curve into every second slot, as the dialog does when it opens.
void TakeCurvePoints(CurvesValues& values);
/// The slot of a point: 16 pixels each, x / 16 rounded.
int CurveSlot(int x);
/// Draws the channel's curve through its points: a Catmull-Rom spline in a thousand steps from point to point, flat outside
/// the first and the last one. Without a point nothing changes.
void RebuildCurve(CurvesValues& values, int nChannel);

/// What the curves do to each byte.
ChannelTables CurveTables(const CurvesValues& values);
/// What Levels does to each byte: its channels 1 to 3 stand in row order, so that "red" works on the blue bytes.
ChannelTables LevelsTables(const LevelsValues& values);

} // namespace kestrune
