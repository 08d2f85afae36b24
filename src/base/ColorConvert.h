#pragma once

#include <cstdint>

namespace kestrune {

/// A colour in integers: red, green, blue 0..255.
struct RgbBytes {
    int r = 0, g = 0, b = 0;
    bool operator==(const RgbBytes&) const = default;
};
/// Hue, saturation, value, each 0..255; the circle has 255 steps, a sixth is 42.5.
struct HsvBytes {
    int h = 0, s = 0, v = 0;
    bool operator==(const HsvBytes&) const = default;
};
/// Hue, lightness, saturation, each 0..255, on the same circle.
struct HlsBytes {
    int h = 0, l = 0, s = 0;
    bool operator==(const HlsBytes&) const = default;
};

// The integer conversions of the blend modes and the filters. They compute in doubles in exactly this order and
// truncate: where a result is a whole number in exact arithmetic, a rounding below it shows, and that is part of the
// result.

HsvBytes RgbToHsv(RgbBytes rgb);
/// Grey of the value when the saturation is 0; a hue past the circle (255) yields `otherwise`.
RgbBytes HsvToRgb(HsvBytes hsv, RgbBytes otherwise = {});

/// The divisor of the light half is 511 less the sum, not 510: the saturation of light colours comes out a little low.
HlsBytes RgbToHls(RgbBytes rgb);
/// `l` and `s` may carry fractions.
RgbBytes HlsToRgb(int h, double l, double s);
/// One channel of `HlsToRgb`; `h` may lie one turn outside the circle.
int HueToChannel(double m1, double m2, double h);

/// Three components, each 0..1, hue too: for gradients and hue filters, never for the block modes.
struct ColorF {
    double a = 0, b = 0, c = 0; ///< red, green, blue; or hue, saturation, value; or hue, saturation, lightness
};

ColorF RgbToHsvF(ColorF rgb);
ColorF HsvToRgbF(ColorF hsv);
ColorF RgbToHslF(ColorF rgb);
ColorF HslToRgbF(ColorF hsl);

} // namespace kestrune
