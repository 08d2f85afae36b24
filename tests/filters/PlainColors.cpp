#include "PlainFilters.h"

#include "base/Color.h"
#include "base/ColorConvert.h"
#include "filters/Curves.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrune::plain {

namespace {

struct Bytes {
    int b, g, r;
    int Max() const { return std::max({b, g, r}); }
    int Min() const { return std::min({b, g, r}); }
};

template <typename Pixel>
Picture EachPixel(const PlainRun& run, const Pixel& pixel)
{
    Picture out = run.in;
    for (int y = 0; y < out.h; ++y)
        for (int x = 0; x < out.w; ++x) {
            const Bytes v = pixel(Bytes{out.At(x, y, 0), out.At(x, y, 1), out.At(x, y, 2)});
            out.At(x, y, 0) = static_cast<std::uint8_t>(v.b);
            out.At(x, y, 1) = static_cast<std::uint8_t>(v.g);
            out.At(x, y, 2) = static_cast<std::uint8_t>(v.r);
        }
    return out;
}

template <typename Byte>
Picture EachByte(const PlainRun& run, const Byte& byte)
{
    return EachPixel(run, [&](Bytes v) { return Bytes{byte(v.b), byte(v.g), byte(v.r)}; });
}

int Clamp(int n) { return std::clamp(n, 0, 255); }

double ToneF(int i) { return 1.075 - 1.0 / (i / 16.0 + 1.0); }
double ToneG(int i) { return (1.0 - ((i - 127.0) / 127.0) * ((i - 127.0) / 127.0)) * 0.667; }
double ToneA(int i) { return ToneF(255 - i); }
double ToneB(int i) { return ToneF(i); }

Picture Invert(const PlainRun& run)
{
    return EachByte(run, [](int i) { return static_cast<int>((1 - i / 255.0) * 255.0); });
}
Picture Desaturate(const PlainRun& run)
{
    return EachPixel(run, [](Bytes v) {
        const int g = (v.Max() + v.Min()) / 2;
        return Bytes{g, g, g};
    });
}
Picture Threshold(const PlainRun& run)
{
    return EachPixel(run, [&](Bytes v) { return v.Max() < run.values.an[0] ? Bytes{0, 0, 0} : Bytes{255, 255, 255}; });
}
Picture Posterize(const PlainRun& run)
{
    const int L = std::max(run.values.an[0], 2);
    return EachByte(run, [=](int i) { return static_cast<int>(std::floor((i / 255.0) * (L - 1.0) + 0.5) / (L - 1.0) * 255.0); });
}
Picture Gamma(const PlainRun& run)
{
    return EachByte(run, [&](int i) { return static_cast<int>(std::pow(i / 255.0, run.values.an[0] / 100.0) * 255.0); });
}
Picture Brightness(const PlainRun& run)
{
    const int b = run.values.an[0] + 100, c = run.values.an[1] + 100;
    return EachByte(run, [=](int v) { return Clamp((((v * b) / 100 - 128) * c) / 100 + 128); });
}
Picture Solarize(const PlainRun& run)
{
    const int t = run.values.an[0] * 255 / 100;
    return EachByte(run, [=](int v) { return v > t ? 255 - v : v; });
}
Picture Colourize(const PlainRun& run)
{
    const COLORREF cr = run.values.crReference;
    const auto mix = [](int v, int p, int c) { return static_cast<int>((v * (100 - p) + c * p) / 100.0); };
    return EachPixel(run, [&](Bytes v) {
        return Bytes{mix(v.b, run.values.an[2], BlueOf(cr)), mix(v.g, run.values.an[1], GreenOf(cr)),
                     mix(v.r, run.values.an[0], RedOf(cr))};
    });
}
Picture OldPhoto(const PlainRun& run)
{
    const double a = run.values.an[0];
    const auto shift = [](int i, double d) { return Clamp(i + static_cast<int>(d * (d < 1 ? ToneA(i) : ToneG(i)))); };
    return EachPixel(run, [&](Bytes v) {
        const int t = Clamp((((((v.Max() + v.Min()) / 2) * 90) / 100 - 128) * 70) / 100 + 128);
        return Bytes{shift(t, -a), t, shift(t, a)};
    });
}

Picture Normalize(const PlainRun& run)
{
    const auto [pMin, pMax] = std::ranges::minmax_element(run.in.bytes);
    const int nMin = *pMin, nMax = *pMax;
    return EachByte(run, [=](int v) { return nMin == nMax ? v : (v - nMin) * 255 / (nMax - nMin); });
}

Picture Equalize(const PlainRun& run)
{
    std::array<std::array<int, 400>, 4> h{};
    EachPixel(run, [&](Bytes v) {
        ++h[0][v.Max()];
        ++h[1][v.b];
        ++h[2][v.g];
        ++h[3][v.r];
        return v;
    });
    double fSum = 0;
    for (int i = 0; i < 256; ++i)
        fSum += h[0][i];
    const double mean = fSum / 256.0;
    std::array<std::array<int, 256>, 4> table{};
    for (int c = 1; c < 4; ++c) {
        int P[257];
        P[0] = 0;
        P[256] = 256;
        int k = 0, s = h[c][0] + h[c][1];
        for (int j = 1; j <= 255; ++j) {
            const double d = j * mean;
            while (s <= d) {
                k += 1;
                s += h[c][k + 1];
            }
            const int t = s - h[c][k];
            P[j] = s - d <= t / 2.0 ? k + 1 : k;
        }
        for (int i = 0; i < 256; ++i) {
            const int u = static_cast<int>(i / 255.0 * 255.0 + 0.5);
            int j = 0;
            while (P[j + 1] <= u)
                ++j;
            table[c][i] = static_cast<int>(j / 255.0 * 255.0);
        }
    }
    return EachPixel(run, [&](Bytes v) { return Bytes{table[1][v.b], table[2][v.g], table[3][v.r]}; });
}

Picture HueSaturation(const PlainRun& run)
{
    const auto& a = std::get<HueSaturationValues>(run.values.extra);
    return EachPixel(run, [&](Bytes v) {
        HlsBytes hls = RgbToHls({v.r, v.g, v.b});
        const int s = hls.h < 43 ? 0 : hls.h < 85 ? 1 : hls.h < 128 ? 2 : hls.h < 171 ? 3 : hls.h < 213 ? 4 : 5;
        const int oh = static_cast<int>((a.adHue[0] + a.adHue[s + 1]) * 255.0 / 360.0);
        const int ol = std::clamp(static_cast<int>((a.adLightness[0] + a.adLightness[s + 1]) * 127.0 / 100.0), -255, 255);
        const int os = std::clamp(static_cast<int>((a.adSaturation[0] + a.adSaturation[s + 1]) * 255.0 / 100.0), -255, 255);
        hls.h = hls.h + oh < 0 ? hls.h + oh + 255 : hls.h + oh >= 256 ? hls.h + oh - 255 : hls.h + oh;
        hls.l = ol >= 0 ? (hls.l + ((255 - hls.l) * ol) / 255) & 255 : ((hls.l * (ol + 255)) / 255) & 255;
        hls.s = Clamp(hls.s * (os + 255) / 255);
        const RgbBytes rgb = HlsToRgb(hls.h, hls.l, hls.s);
        return Bytes{rgb.b, rgb.g, rgb.r};
    });
}

Picture ColorBalance(const PlainRun& run)
{
    const auto& a = std::get<ColorBalanceValues>(run.values.extra);
    const auto shift = [&](int v, int c) {
        const int S = a.anDelta[0][c], M = a.anDelta[1][c], H = a.anDelta[2][c];
        v = Clamp(v + static_cast<int>(S * (S < 1 ? ToneA(v) : ToneG(v))));
        v = Clamp(v + static_cast<int>(M * ToneG(v)));
        return Clamp(v + static_cast<int>(H * (H < 1 ? ToneG(v) : ToneB(v))));
    };
    return EachPixel(run, [&](Bytes v) {
        Bytes out{shift(v.b, 2), shift(v.g, 1), shift(v.r, 0)};
        if (a.bLuminosity) {
            const HlsBytes hls = RgbToHls({out.r, out.g, out.b});
            const RgbBytes rgb = HlsToRgb(hls.h, static_cast<int>((v.Max() + v.Min()) / 2.0), hls.s);
            out = {rgb.b, rgb.g, rgb.r};
        }
        return out;
    });
}

double LevelAt(const LevelsChannel& c, double x)
{
    double v = 255 * x;
    v = c.fWhite != c.fBlack ? (v - c.fBlack) / (c.fWhite - c.fBlack) : v - c.fBlack;
    if (c.fGamma != 0)
        v = v >= 0 ? std::pow(v, 1 / c.fGamma) : -std::pow(-v, 1 / c.fGamma);
    v = c.fOutWhite >= c.fOutBlack ? (c.fOutWhite - c.fOutBlack) * v + c.fOutBlack
                                   : c.fOutBlack - (c.fOutBlack - c.fOutWhite) * v;
    return v / 255;
}

Picture Levels(const PlainRun& run)
{
    const auto& a = std::get<LevelsValues>(run.values.extra);
    const auto byte = [&](int i, int t) {
        const double f = LevelAt(a.channels[0], LevelAt(a.channels[t + 1], i / 255.0)) * 255;
        return f >= 255 ? 255 : f < 0 ? 0 : static_cast<int>(f);
    };
    return EachPixel(run, [&](Bytes v) { return Bytes{byte(v.b, 0), byte(v.g, 1), byte(v.r, 2)}; });
}

Picture Curves(const PlainRun& run)
{
    const auto& a = std::get<CurvesValues>(run.values.extra);
    const auto at = [&](int c, double x) {
        const auto& curve = a.curve[c];
        if (x < 0)
            return curve[0] / 255.0;
        if (x >= 1)
            return curve[255] / 255.0;
        const double u = x * 255;
        const int i = static_cast<int>(std::floor(u));
        const double f = u - i;
        return ((1.0 - f) * curve[i] + f * curve[i + 1]) / 255;
    };
    const auto byte = [&](int i, int c) { return static_cast<int>(at(0, at(c + 1, i / 255.0)) * 255); };
    return EachPixel(run, [&](Bytes v) { return Bytes{byte(v.b, 2), byte(v.g, 1), byte(v.r, 0)}; });
}

Picture ColourCount(const PlainRun& run) { return run.in; }

} // namespace

PlainFilter FindPlainFilter(int nCommand)
{
    static constexpr struct {
        int nCommand;
        PlainFilter filter;
    } c_aFilters[] = {
        {30002, PlainBlur},   {30003, PlainGaussian}, {30001, PlainMotionBlur}, {30039, PlainSharpen}, {30040, PlainUnsharp},
        {30037, PlainMedian}, {30043, PlainMaximum},  {30044, PlainMinimum},    {30045, PlainMatrix},  {30019, Invert},
        {30029, Desaturate},  {30021, Threshold},     {30020, Posterize},       {30034, Gamma},        {30027, Brightness},
        {30047, Solarize},    {30104, Normalize},     {30018, Equalize},        {30028, HueSaturation}, {30025, Levels},
        {30026, Curves},      {30035, ColorBalance},  {30004, OldPhoto},        {30030, Colourize},    {30031, ColourCount},
    };
    for (const auto& f : c_aFilters)
        if (f.nCommand == nCommand)
            return f.filter;
    return nullptr;
}

} // namespace kestrune::plain
