#pragma once

// Numbers of the texts of the filter dialogs in the string table. What belongs to one filter alone (title, labels of
// its parameters) stands in its row of the filter table.

namespace kestrune {

inline constexpr int IDS_PREVIEW_PANE = 60980;
inline constexpr int IDS_PREVIEW_PANE_TIP = 60981;
inline constexpr int IDS_PREVIEW_ZOOM_OUT = 60982;
inline constexpr int IDS_PREVIEW_ZOOM_ACTUAL = 60983;
inline constexpr int IDS_PREVIEW_ZOOM_IN = 60984;
inline constexpr int IDS_FILTER_DEFAULTS = 60985;
inline constexpr int IDS_FILTER_DEFAULTS_TIP = 60986;
inline constexpr int IDS_FILTER_VALUE_TIP = 60987; ///< %1 and %2: the limits
inline constexpr int IDS_FILTER_SLIDER = 60988; ///< %1: the label
// Colourize
inline constexpr int IDS_TINT_COLOR = 60990;
inline constexpr int IDS_TINT_COLOR_TIP = 60991;
// The user's own matrix
inline constexpr int IDS_MATRIX_SCALE = 60992;
inline constexpr int IDS_MATRIX_SCALE_TIP = 60993;
inline constexpr int IDS_MATRIX_OFFSET = 60994;
inline constexpr int IDS_MATRIX_OFFSET_TIP = 60995;
inline constexpr int IDS_MATRIX_CELL = 60996; ///< %1 and %2: row and column
inline constexpr int IDS_MATRIX_CELL_TIP = 60997;
// Hue and saturation; the names of the seven ranges follow each other
inline constexpr int IDS_HUE_RANGE = 61000;
inline constexpr int IDS_HUE_RANGE_TIP = 61001;
inline constexpr int IDS_HUE_HUE = 61002;
inline constexpr int IDS_HUE_SATURATION = 61003;
inline constexpr int IDS_HUE_LIGHTNESS = 61004;
inline constexpr int IDS_HUE_FIRST_RANGE = 61005;
// Colour balance; the names of the three ranges follow each other
inline constexpr int IDS_BALANCE_RED = 61012;
inline constexpr int IDS_BALANCE_GREEN = 61013;
inline constexpr int IDS_BALANCE_BLUE = 61014;
inline constexpr int IDS_BALANCE_FIRST_RANGE = 61015;
inline constexpr int IDS_BALANCE_RANGE_TIP = 61018;
inline constexpr int IDS_BALANCE_LUMINOSITY = 61019;
inline constexpr int IDS_BALANCE_LUMINOSITY_TIP = 61020;
// The channels of Levels and Curves; their names follow each other
inline constexpr int IDS_CHANNEL = 61022;
inline constexpr int IDS_CHANNEL_TIP = 61023;
inline constexpr int IDS_CHANNEL_FIRST = 61024;
// Levels
inline constexpr int IDS_LEVELS_INPUT = 61030;
inline constexpr int IDS_LEVELS_OUTPUT = 61031;
inline constexpr int IDS_LEVELS_BLACK_TIP = 61032;
inline constexpr int IDS_LEVELS_GAMMA_TIP = 61033;
inline constexpr int IDS_LEVELS_WHITE_TIP = 61034;
inline constexpr int IDS_LEVELS_OUT_BLACK_TIP = 61035;
inline constexpr int IDS_LEVELS_OUT_WHITE_TIP = 61036;
inline constexpr int IDS_LEVELS_HISTOGRAM = 61037;
inline constexpr int IDS_LEVELS_INPUT_SLIDER = 61038;
inline constexpr int IDS_LEVELS_OUTPUT_SLIDER = 61039;
// Curves
inline constexpr int IDS_CURVES_GRAPH = 61042;
inline constexpr int IDS_CURVES_GRAPH_TIP = 61043;
inline constexpr int IDS_CURVES_READOUT = 61044; ///< %1 in, %2 out
inline constexpr int IDS_CURVES_HINT = 61045;

} // namespace kestrune
