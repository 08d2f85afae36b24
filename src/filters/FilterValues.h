#pragma once

#include "base/Color.h"

#include <array>
#include <cstdint>
#include <variant>

// What the dialogs hand to the operations. The common dialogs fill whole numbers; those with a graph or with ranges of
// their own have a structure.

namespace kestrune {

/// Hue (-180..180), lightness and saturation (-100..100) of seven ranges: 0 all, 1 red, 2 yellow, 3 green, 4 cyan,
/// 5 blue, 6 magenta.
struct HueSaturationValues {
    std::array<double, 7> adHue{};
    std::array<double, 7> adLightness{};
    std::array<double, 7> adSaturation{};
};

/// One channel of Levels. Black and white of the input and of the output 0..255, gamma 0.1..10.
struct LevelsChannel {
    double fBlack = 0;
    double fGamma = 1.0;
    double fWhite = 255;
    double fOutBlack = 0;
    double fOutWhite = 255;
};
/// Channels 0 all, 1 "red", 2 "green", 3 "blue". Channel 1 works on the blue bytes and channel 3 on the red ones.
struct LevelsValues {
    std::array<LevelsChannel, 4> channels;
};

/// A control point of a curve; -1 in x marks a free slot.
struct CurvePoint {
    std::int32_t x = -1;
    std::int32_t y = -1;
};
inline constexpr int c_nCurvePoints = 17;
/// Channels 0 all, 1 red, 2 green, 3 blue: the points, and the curve that goes through them.
struct CurvesValues {
    using Points = std::array<CurvePoint, c_nCurvePoints>;
    std::array<Points, 4> points;
    std::array<std::array<std::int32_t, 256>, 4> curve;
};

/// Deltas -100..100 by range (0 shadows, 1 midtones, 2 highlights) and channel (red, green, blue).
struct ColorBalanceValues {
    std::array<std::array<int, 3>, 3> anDelta{};
    bool bLuminosity = false; ///< the lightness of each pixel stays
};

/// A kernel of 5 x 5, row after row; it opens as the identity.
struct MatrixValues {
    std::array<std::int32_t, 25> anMatrix{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    int nScale = 1;
    int nOffset = 0;
};

inline constexpr int c_nMaxFilterParams = 6;

/// The values of one run.
struct FilterValues {
    /// The parameters of the filter's row, in its order and units (a real number in its smallest decimal).
    std::array<int, c_nMaxFilterParams> an{};
    COLORREF crReference = 0; ///< Colourize
    std::variant<std::monostate, HueSaturationValues, LevelsValues, CurvesValues, ColorBalanceValues, MatrixValues> extra;
};

} // namespace kestrune
