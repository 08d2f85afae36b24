#include "base/ColorConvert.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr double c_fSixth = 42.5; // of the circle of 255 steps

double HueOf(RgbBytes c, int nMax, int nDelta)
{
    double h;
    if (c.r == nMax)
        h = (c.g - c.b) / static_cast<double>(nDelta);
    else if (c.g == nMax)
        h = (c.b - c.r) / static_cast<double>(nDelta) + 2;
    else
        h = (c.r - c.g) / static_cast<double>(nDelta) + 4;
    h *= c_fSixth;
    if (h < 0)
        h += 255;
    else if (h > 255)
        h -= 255;
    return h;
}

/// The hue as a fraction of the circle, 0 up to but not including 1.
double HueFraction(ColorF c, double fMax, double fDelta)
{
    double h;
    if (c.a == fMax)
        h = (c.b - c.c) / fDelta;
    else if (c.b == fMax)
        h = (c.c - c.a) / fDelta + 2;
    else
        h = (c.a - c.b) / fDelta + 4;
    h /= 6.0;
    if (h < 0)
        h += 1;
    if (h >= 1)
        h -= 1;
    return h;
}

double SixthToChannel(double m1, double m2, double h)
{
    if (h > 6)
        h -= 6;
    else if (h < 0)
        h += 6;
    if (h < 1)
        return m1 + (m2 - m1) * h;
    if (h < 3)
        return m2;
    if (h < 4)
        return m1 + (m2 - m1) * (4 - h);
    return m1;
}

} // namespace

HsvBytes RgbToHsv(RgbBytes c)
{
    const int nMax = std::max({c.r, c.g, c.b});
    const int nDelta = nMax - std::min({c.r, c.g, c.b});
    if (nDelta == 0)
        return {0, 0, nMax};
    const double s = nDelta * 255 / static_cast<double>(nMax);
    return {static_cast<int>(HueOf(c, nMax, nDelta)), static_cast<int>(s), nMax};
}

RgbBytes HsvToRgb(HsvBytes c, RgbBytes otherwise)
{
    if (c.s == 0)
        return {c.v, c.v, c.v};
    const double hh = c.h * 6 / 255.0;
    const double ss = c.s / 255.0;
    const double vv = c.v / 255.0;
    const int i = static_cast<int>(hh);
    const double f = hh - i;
    const int p = static_cast<int>((1 - ss) * vv * 255);
    const int q = static_cast<int>((1 - ss * f) * vv * 255);
    const int t = static_cast<int>((1 - (1 - f) * ss) * vv * 255);
    const int w = static_cast<int>(vv * 255);
    switch (i) {
    case 0:
        return {w, t, p};
    case 1:
        return {q, w, p};
    case 2:
        return {p, w, t};
    case 3:
        return {p, q, w};
    case 4:
        return {t, p, w};
    case 5:
        return {w, p, q};
    default:
        return otherwise;
    }
}

HlsBytes RgbToHls(RgbBytes c)
{
    const int nMax = std::max({c.r, c.g, c.b});
    const int nMin = std::min({c.r, c.g, c.b});
    const int nSum = nMax + nMin;
    const double l = nSum / 2.0;
    if (nMax == nMin)
        return {0, static_cast<int>(l), 0};
    const int nDelta = nMax - nMin;
    const double s = nDelta * 255 / static_cast<double>(l < 128 ? nSum : 511 - nSum);
    return {static_cast<int>(HueOf(c, nMax, nDelta)), static_cast<int>(l), static_cast<int>(s)};
}

int HueToChannel(double m1, double m2, double h)
{
    if (h > 255)
        h -= 255;
    else if (h < 0)
        h += 255;
    double x = m1;
    if (h < 42.5)
        x = m1 + (m2 - m1) * h / 42.5;
    else if (h < 127.5)
        x = m2;
    else if (h < 170)
        x = m1 + (m2 - m1) * (170 - h) / 42.5;
    return static_cast<int>(x * 255);
}

RgbBytes HlsToRgb(int h, double l, double s)
{
    if (s == 0) {
        const int nGrey = static_cast<int>(l);
        return {nGrey, nGrey, nGrey};
    }
    const double m2 = l < 128 ? (255 + s) * l / 65025 : (l + s - l * s / 255) / 255;
    const double m1 = l / 127.5 - m2;
    return {HueToChannel(m1, m2, h + 85), HueToChannel(m1, m2, h), HueToChannel(m1, m2, h - 85)};
}

ColorF RgbToHsvF(ColorF c)
{
    const double fMax = std::max({c.a, c.b, c.c});
    const double fDelta = fMax - std::min({c.a, c.b, c.c});
    const double s = fMax == 0 ? 0 : fDelta / fMax;
    return {s == 0 ? 0 : HueFraction(c, fMax, fDelta), s, fMax};
}

ColorF HsvToRgbF(ColorF c)
{
    const double s = c.b, v = c.c;
    if (s == 0)
        return {v, v, v};
    double h = c.a * 6.0;
    if (h == 6.0)
        h = 0;
    const int i = static_cast<int>(h);
    const double f = h - i;
    const double p = (1 - s) * v;
    const double q = (1 - s * f) * v;
    const double t = (1 - s * (1 - f)) * v;
    switch (i) {
    case 0:
        return {v, t, p};
    case 1:
        return {q, v, p};
    case 2:
        return {p, v, t};
    case 3:
        return {p, q, v};
    case 4:
        return {t, p, v};
    default:
        return {v, p, q};
    }
}

ColorF RgbToHslF(ColorF c)
{
    const double fMax = std::max({c.a, c.b, c.c});
    const double fMin = std::min({c.a, c.b, c.c});
    const double fSum = fMax + fMin;
    const double l = fSum / 2.0;
    if (fMax == fMin)
        return {0, 0, l};
    const double fDelta = fMax - fMin;
    return {HueFraction(c, fMax, fDelta), fDelta / (l < 0.5 ? fSum : 2 - fSum), l};
}

ColorF HslToRgbF(ColorF c)
{
    const double h = c.a * 6.0, s = c.b, l = c.c;
    if (s == 0)
        return {l, l, l};
    const double m2 = l < 0.5 ? (1 + s) * l : l + s - l * s;
    const double m1 = l * 2 - m2;
    return {SixthToChannel(m1, m2, h + 2), SixthToChannel(m1, m2, h), SixthToChannel(m1, m2, h - 2)};
}

} // namespace kestrune
