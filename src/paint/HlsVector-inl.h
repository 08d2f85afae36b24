// Hue, lightness and saturation of several pixels at once, in doubles and in exactly the order of base/ColorConvert.cpp.
// To be included by files that are compiled once for each kind of processor, after highway.h.
#if defined(KESTRUNE_PAINT_HLSVECTOR_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef KESTRUNE_PAINT_HLSVECTOR_INL_H
#undef KESTRUNE_PAINT_HLSVECTOR_INL_H
#else
#define KESTRUNE_PAINT_HLSVECTOR_INL_H
#endif

#include "hwy/highway.h"

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using DF = hn::CappedTag<double, 8>;
using DI = hn::Rebind<std::int32_t, DF>;
using VF = hn::Vec<DF>;
using VI = hn::Vec<DI>;

HWY_INLINE VI Int(int n) { return hn::Set(DI(), n); }
HWY_INLINE VF Real(double f) { return hn::Set(DF(), f); }
HWY_INLINE VF ToReal(VI v) { return hn::PromoteTo(DF(), v); }
HWY_INLINE VI ToInt(VF v) { return hn::DemoteTo(DI(), v); }

struct Rgb {
    VI r, g, b;
    HWY_INLINE VI Max() const { return hn::Max(hn::Max(r, g), b); }
    HWY_INLINE VI Min() const { return hn::Min(hn::Min(r, g), b); }
};

/// A grey has the difference 0, whose place 1 takes: the hue comes out 0 as it should.
HWY_INLINE VI HueOf(const Rgb& c, VI max, VI min)
{
    const auto isRed = hn::Eq(c.r, max);
    const auto isGreen = hn::Eq(c.g, max);
    const VI part
        = hn::IfThenElse(isRed, hn::Sub(c.g, c.b), hn::IfThenElse(isGreen, hn::Sub(c.b, c.r), hn::Sub(c.r, c.g)));
    const VI start = hn::IfThenElse(isRed, Int(0), hn::IfThenElse(isGreen, Int(2), Int(4)));
    const VF delta = ToReal(hn::Max(hn::Sub(max, min), Int(1)));
    VF h = hn::Mul(hn::Add(hn::Div(ToReal(part), delta), ToReal(start)), Real(42.5));
    const auto isBelow = hn::Lt(h, Real(0));
    const auto isAbove = hn::Gt(h, Real(255));
    h = hn::IfThenElse(isBelow, hn::Add(h, Real(255)), hn::IfThenElse(isAbove, hn::Sub(h, Real(255)), h));
    return ToInt(h);
}

HWY_INLINE VI LightnessOf(VI max, VI min) { return hn::ShiftRight<1>(hn::Add(max, min)); }

HWY_INLINE VI HlsSaturationOf(VI max, VI min)
{
    const VI sum = hn::Add(max, min);
    const VI divisor = hn::Max(hn::IfThenElse(hn::Lt(sum, Int(256)), sum, hn::Sub(Int(511), sum)), Int(1));
    return ToInt(hn::Div(ToReal(hn::Mul(hn::Sub(max, min), Int(255))), ToReal(divisor)));
}

HWY_INLINE VI ChannelOf(VF m1, VF m2, VF h)
{
    h = hn::IfThenElse(hn::Gt(h, Real(255)), hn::Sub(h, Real(255)),
                       hn::IfThenElse(hn::Lt(h, Real(0)), hn::Add(h, Real(255)), h));
    const VF rise = hn::Sub(m2, m1);
    // The two slopes share one division: only the factor differs.
    const auto isFirst = hn::Lt(h, Real(42.5));
    const VF factor = hn::IfThenElse(isFirst, h, hn::Sub(Real(170), h));
    const VF slope = hn::Add(m1, hn::Div(hn::Mul(rise, factor), Real(42.5)));
    VF x = hn::IfThenElse(hn::Lt(h, Real(170)), slope, m1);
    x = hn::IfThenElse(hn::And(hn::Not(isFirst), hn::Lt(h, Real(127.5))), m2, x);
    return ToInt(hn::Mul(x, Real(255)));
}

HWY_INLINE Rgb FromHls(VI h, VI l, VI s)
{
    const VF hue = ToReal(h), fs = ToReal(s), fl = ToReal(l);
    const VF dark = hn::Div(hn::Mul(hn::Add(Real(255), fs), fl), Real(65025));
    const VF bright = hn::Div(hn::Sub(hn::Add(fl, fs), hn::Div(hn::Mul(fl, fs), Real(255))), Real(255));
    const VF m2 = hn::IfThenElse(hn::Lt(fl, Real(128)), dark, bright);
    const VF m1 = hn::Sub(hn::Div(fl, Real(127.5)), m2);
    const auto isGrey = hn::Eq(s, Int(0));
    return {hn::IfThenElse(isGrey, l, ChannelOf(m1, m2, hn::Add(hue, Real(85)))),
            hn::IfThenElse(isGrey, l, ChannelOf(m1, m2, hue)),
            hn::IfThenElse(isGrey, l, ChannelOf(m1, m2, hn::Sub(hue, Real(85))))};
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();
#endif
