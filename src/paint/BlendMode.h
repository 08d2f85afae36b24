#pragma once

#include <array>
#include <string_view>

namespace kestrune {

/// How a block of source pixels is combined with the picture. The numbers are stored in settings and files.
enum BlendMode {
    BLEND_NORMAL = 0,
    BLEND_DISSOLVE = 1,
    BLEND_BEHIND = 2, ///< behaves exactly as Normal, on purpose: pictures have no alpha to paint behind
    BLEND_MULTIPLY = 3,
    BLEND_DIVIDE = 4,
    BLEND_SCREEN = 5,
    BLEND_OVERLAY = 6,
    BLEND_DIFFERENCE = 7,
    BLEND_ADDITION = 8,
    BLEND_SUBTRACT = 9,
    BLEND_DARKEN = 10,
    BLEND_LIGHTEN = 11,
    BLEND_HUE = 12,
    BLEND_SATURATION = 13,
    BLEND_COLOR = 14,
    BLEND_VALUE = 15,
    BLEND_COUNT = 16
};

/// The names of every mode list, in the order of the numbers.
inline constexpr std::array<std::string_view, BLEND_COUNT> c_aBlendNames
    = {"Normal",   "Dissolve", "Behind", "Multiply", "Divide", "Screen",     "Overlay", "Difference",
       "Addition", "Subtract", "Darken", "Lighten",  "Hue",    "Saturation", "Color",   "Value"};

} // namespace kestrune
