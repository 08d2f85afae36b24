#include "resources/PickerConvert.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

COLORREF PickerHsvToColor(float fHue, float fSaturation, float fValue)
{
    const float s = fSaturation / 100;
    const float v = fValue / 100;
    const int nLevel = static_cast<int>(v * 255);
    if (s == 0)
        return Rgb(nLevel, nLevel, nLevel);
    const float h = (fHue == 360 ? 0 : fHue) / 60;
    const int i = static_cast<int>(h);
    const float f = h - static_cast<float>(i);
    const int p = static_cast<int>((1 - s) * v * 255);
    const int q = static_cast<int>((1 - s * f) * v * 255);
    const int t = static_cast<int>((1 - s * (1 - f)) * v * 255);
    switch (i) {
    case 0:
        return Rgb(nLevel, t, p);
    case 1:
        return Rgb(q, nLevel, p);
    case 2:
        return Rgb(p, nLevel, t);
    case 3:
        return Rgb(p, q, nLevel);
    case 4:
        return Rgb(t, p, nLevel);
    default:
        return Rgb(nLevel, p, q);
    }
}

PickerHsv ColorToPickerHsv(COLORREF cr)
{
    const int r = RedOf(cr), g = GreenOf(cr), b = BlueOf(cr);
    const int nMax = std::max({r, g, b});
    const int nDelta = nMax - std::min({r, g, b});
    PickerHsv hsv;
    hsv.nValue = static_cast<int>(std::lround(nMax * 100 / 255.0));
    if (nDelta == 0)
        return hsv;
    hsv.nSaturation = static_cast<int>(std::lround(nDelta * 100.0 / nMax));
    const double d = nDelta;
    double fHue = r == nMax ? (g - b) / d : g == nMax ? (b - r) / d + 2 : (r - g) / d + 4;
    if (fHue < 0)
        fHue += 6;
    hsv.nHue = static_cast<int>(std::lround(fHue * 60));
    return hsv;
}

} // namespace kestrune
