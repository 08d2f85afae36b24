// Pixels in hue, lightness, saturation, as many at a time as the processor has doubles.
#include "filters/HueKernel.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/HueKernel.cpp"
#include "hwy/foreach_target.h" // must come before highway.h
#include "hwy/highway.h"
#include "paint/HlsVector-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

using std::int32_t;
using std::size_t;
using std::uint8_t;

constexpr size_t c_nChunk = 16;

/// A chunk of pixels, channel by channel.
struct Chunk {
    HWY_ALIGN int32_t b[c_nChunk];
    HWY_ALIGN int32_t g[c_nChunk];
    HWY_ALIGN int32_t r[c_nChunk];

    HWY_INLINE void Read(const uint8_t* p, size_t n)
    {
        for (size_t i = 0; i < n; ++i) {
            b[i] = p[3 * i];
            g[i] = p[3 * i + 1];
            r[i] = p[3 * i + 2];
        }
        for (size_t i = n; i < c_nChunk; ++i)
            b[i] = g[i] = r[i] = 0;
    }
    HWY_INLINE void Write(uint8_t* p, size_t n) const
    {
        for (size_t i = 0; i < n; ++i) {
            p[3 * i] = static_cast<uint8_t>(b[i]);
            p[3 * i + 1] = static_cast<uint8_t>(g[i]);
            p[3 * i + 2] = static_cast<uint8_t>(r[i]);
        }
    }
    HWY_INLINE Rgb Get(size_t i) const { return {hn::Load(DI(), r + i), hn::Load(DI(), g + i), hn::Load(DI(), b + i)}; }
    HWY_INLINE void Put(size_t i, const Rgb& c)
    {
        hn::Store(c.r, DI(), r + i);
        hn::Store(c.g, DI(), g + i);
        hn::Store(c.b, DI(), b + i);
    }
};

HWY_INLINE VI OneWhere(hn::Mask<DI> mask) { return hn::IfThenElseZero(mask, Int(1)); }

HWY_INLINE VI SextantOf(VI h)
{
    VI s = Int(0);
    for (const int nLast : {42, 84, 127, 170, 212})
        s = hn::Add(s, OneWhere(hn::Gt(h, Int(nLast))));
    return s;
}

void Hue(const HueTables& tables, const uint8_t* pIn, uint8_t* pOut, size_t nPixels)
{
    const DI d;
    Chunk chunk;
    for (size_t i = 0; i < nPixels; i += c_nChunk) {
        const size_t n = std::min(c_nChunk, nPixels - i);
        chunk.Read(pIn + 3 * i, n);
        for (size_t k = 0; k < c_nChunk; k += hn::Lanes(d)) {
            const Rgb c = chunk.Get(k);
            const VI max = c.Max(), min = c.Min();
            const VI h = HueOf(c, max, min);
            const VI table = hn::ShiftLeft<8>(SextantOf(h));
            const VI hue = hn::GatherIndex(d, tables.hue.data(), hn::Add(table, h));
            const VI light = hn::GatherIndex(d, tables.lightness.data(), hn::Add(table, LightnessOf(max, min)));
            const VI sat = hn::GatherIndex(d, tables.saturation.data(), hn::Add(table, HlsSaturationOf(max, min)));
            chunk.Put(k, FromHls(hue, light, sat));
        }
        chunk.Write(pOut + 3 * i, n);
    }
}

void KeepLightness(const uint8_t* pIn, uint8_t* pOut, size_t nPixels)
{
    const DI d;
    Chunk light;
    Chunk chunk;
    for (size_t i = 0; i < nPixels; i += c_nChunk) {
        const size_t n = std::min(c_nChunk, nPixels - i);
        light.Read(pIn + 3 * i, n);
        chunk.Read(pOut + 3 * i, n);
        for (size_t k = 0; k < c_nChunk; k += hn::Lanes(d)) {
            const Rgb source = light.Get(k);
            const Rgb c = chunk.Get(k);
            const VI max = c.Max(), min = c.Min();
            chunk.Put(k, FromHls(HueOf(c, max, min), LightnessOf(source.Max(), source.Min()), HlsSaturationOf(max, min)));
        }
        chunk.Write(pOut + 3 * i, n);
    }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(Hue);
HWY_EXPORT(KeepLightness);

HueTables MakeHueTables(const HueSaturationValues& values)
{
    HueTables t;
    for (std::size_t s = 0; s < 6; ++s) {
        const int nHue = static_cast<int>((values.adHue[0] + values.adHue[s + 1]) * 255.0 / 360.0);
        const int nLight
            = std::clamp(static_cast<int>((values.adLightness[0] + values.adLightness[s + 1]) * 127.0 / 100.0), -255, 255);
        const int nSaturation
            = std::clamp(static_cast<int>((values.adSaturation[0] + values.adSaturation[s + 1]) * 255.0 / 100.0), -255, 255);
        for (int i = 0; i < 256; ++i) {
            const std::size_t at = s * 256 + static_cast<std::size_t>(i);
            const int h = i + nHue;
            t.hue[at] = h < 0 ? h + 255 : h >= 256 ? h - 255 : h;
            t.lightness[at] = (nLight >= 0 ? i + ((255 - i) * nLight) / 255 : (i * (nLight + 255)) / 255) & 255;
            t.saturation[at] = std::clamp((i * (nSaturation + 255)) / 255, 0, 255);
        }
    }
    return t;
}

void HueRow(const HueTables& tables, const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    HWY_DYNAMIC_DISPATCH(Hue)(tables, pIn, pOut, nPixels);
}
void KeepLightnessRow(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    HWY_DYNAMIC_DISPATCH(KeepLightness)(pIn, pOut, nPixels);
}

} // namespace kestrune
#endif
