#pragma once

#include <array>

namespace kestrune {

class LBitmapBase;

/// How many pixels have each value: 0 red, green and blue together, 1 red, 2 green, 3 blue. The dialogs with a graph
/// show them.
using ChannelHistograms = std::array<std::array<int, 256>, 4>;

/// Counts a 24-bit bitmap.
ChannelHistograms CountChannels(const LBitmapBase& bitmap);

} // namespace kestrune
