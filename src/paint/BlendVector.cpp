// The vector forms of the row kernels: this file is compiled once for each kind of processor, and the best is chosen at
// run time. Vectors of 16 or 32 bytes: with 32 the loops go about as fast as memory, wider ones would gain nothing. The
// colour modes are bound by their divisions and use all lanes there are.
#include "paint/BlendKernels.h"

#include "paint/BlendMode.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "paint/BlendVector.cpp"
#include "hwy/foreach_target.h" // must come before highway.h
#include "hwy/highway.h"
#include "paint/HlsVector-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using std::size_t;
using std::uint32_t;
using std::uint8_t;

#if HWY_TARGET == HWY_SCALAR // a processor without vectors of 16 bytes: the plain forms serve

void BlendRow(int nMode, const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, size_t nCount)
{
    PlainBlendRow(nMode, 4)(pCanvas, pSource, pDestination, nCount);
}
void DissolveRow(uint32_t& nState, const uint8_t* pSource, uint8_t* pDestination, size_t nCount)
{
    PlainDissolveRow(nState, pSource, pDestination, nCount, 4);
}
void MixRow(const uint8_t* pCanvas, const uint8_t* pBlock, uint8_t* pOut, size_t nCount, const MixRun& run)
{
    PlainMixRun(pCanvas, pBlock, pOut, nCount, run);
}
void MultiplyAlpha(uint8_t* pBlock, const uint8_t* pMask, int nOpacity, size_t nCount)
{
    PlainMultiplyAlphaRow(pBlock, pMask, nOpacity, nCount, 4);
}
void Accumulate(uint8_t* pCoverage, const uint8_t* pDab, size_t nCount) { PlainAccumulateRow(pCoverage, pDab, nCount); }

#else

using D8 = hn::CappedTag<uint8_t, 32>;
using V8 = hn::Vec<D8>;
using D16 = hn::Repartition<std::uint16_t, D8>;
using V16 = hn::Vec<D16>;
using D32 = hn::Repartition<uint32_t, D8>;
using V32 = hn::Vec<D32>;

constexpr size_t c_nPixels = hn::MaxLanes(D32()); ///< 4 or 8 of 4 bytes
/// The last 16 bytes of canvas that are read hold 12 of use, so that two pixels more must lie ahead.
constexpr size_t c_nAhead = c_nPixels + 2;

// Bytes are widened to their even and their odd ones, which needs no shuffle and fits every width.
HWY_INLINE V16 Even(V8 v) { return hn::And(hn::BitCast(D16(), v), hn::Set(D16(), 255)); }
HWY_INLINE V16 Odd(V8 v) { return hn::ShiftRight<8>(hn::BitCast(D16(), v)); }
HWY_INLINE V8 Join(V16 even, V16 odd) { return hn::BitCast(D8(), hn::Or(even, hn::ShiftLeft<8>(odd))); }

/// t = product + bias, then ((t >> 8) + t) >> 8; the product of two bytes.
HWY_INLINE V16 Round255(V16 product, V16 bias)
{
    const V16 t = hn::Add(product, bias);
    return hn::ShiftRight<8>(hn::Add(hn::ShiftRight<8>(t), t));
}
HWY_INLINE V8 Mul255V(V8 a, V8 b)
{
    const V16 bias = hn::Set(D16(), 128);
    return Join(Round255(hn::Mul(Even(a), Even(b)), bias), Round255(hn::Mul(Odd(a), Odd(b)), bias));
}

alignas(16) constexpr uint8_t c_aExpand[16] = {0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9, 10, 11, 11};
alignas(16) constexpr uint8_t c_aPack[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15, 15, 15, 15};
alignas(16) constexpr uint8_t c_aAlpha[16] = {3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15};

/// Reorders the bytes within each 16.
HWY_INLINE V8 Shuffle(V8 v, const uint8_t* pOrder) { return hn::TableLookupBytes(v, hn::LoadDup128(D8(), pOrder)); }

/// Canvas pixels spread to 4 bytes each; the fourth holds anything.
HWY_INLINE V8 LoadCanvas(const uint8_t* p)
{
#if HWY_MAX_BYTES >= 32
    const hn::Half<D8> half;
    return Shuffle(hn::Combine(D8(), hn::LoadU(half, p + 12), hn::LoadU(half, p)), c_aExpand);
#else
    return Shuffle(hn::LoadU(D8(), p), c_aExpand);
#endif
}

/// The reverse. Writes exactly the pixels' bytes: a wider store would make the next load wait for it.
HWY_INLINE void StoreCanvas(V8 v, uint8_t* p)
{
    const V8 packed = Shuffle(v, c_aPack);
#if HWY_MAX_BYTES >= 32
    const hn::Half<D8> d;
    const hn::Half<decltype(d)> dh;
    const hn::FixedTag<uint8_t, 16> d16;
    const auto low = hn::LowerHalf(d, packed);
    const auto high = hn::UpperHalf(d, packed);
    const auto first = hn::And(low, hn::Not(hn::ShiftLeftBytes<12>(d16, hn::Set(d16, 255))));
    hn::StoreU(hn::Or(first, hn::ShiftLeftBytes<12>(d16, high)), d, p);
    hn::StoreU(hn::LowerHalf(dh, hn::ShiftRightBytes<4>(d16, high)), dh, p + 16);
#else
    const hn::Half<D8> dh;
    hn::StoreU(hn::LowerHalf(dh, packed), dh, p);
    const uint32_t nLast = hn::ExtractLane(hn::BitCast(D32(), packed), 2);
    std::memcpy(p + 8, &nLast, 4);
#endif
}

// The channel modes, on all bytes of a vector; what they make of the alpha byte is thrown away.

struct MultiplyOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return Mul255V(c, s); }
};
struct ScreenOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return hn::Not(Mul255V(hn::Not(c), hn::Not(s))); }
};
struct OverlayOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return Join(Half(Even(c), Even(s)), Half(Odd(c), Odd(s))); }
    static HWY_INLINE V16 Half(V16 c, V16 s)
    {
        // 2 s (255 - c) + 128 needs 17 bits; everything is even there, so half of it is shifted by one less.
        const V16 t = hn::Add(hn::Mul(s, hn::Sub(hn::Set(D16(), 255), c)), hn::Set(D16(), 64));
        const V16 inner = hn::ShiftRight<7>(hn::Add(t, hn::ShiftRight<8>(t)));
        return Round255(hn::Mul(c, hn::Add(c, inner)), hn::Set(D16(), 128));
    }
};
struct DifferenceOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return hn::Or(hn::SaturatedSub(c, s), hn::SaturatedSub(s, c)); }
};
struct AdditionOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return hn::SaturatedAdd(c, s); }
};
struct SubtractOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return hn::SaturatedSub(c, s); }
};
struct DarkenOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return hn::Min(c, s); }
};
struct LightenOp {
    HWY_INLINE V8 operator()(V8 c, V8 s) const { return hn::Max(c, s); }
};
struct DivideOp {
    // In single precision: a quotient under 256 is at least 1/256 away from the next whole number, far more than the
    // rounding.
    HWY_INLINE V8 operator()(V8 c, V8 s) const
    {
        const V32 cs = hn::BitCast(D32(), c), ss = hn::BitCast(D32(), s);
        const V32 red = Quotient(cs, ss);
        const V32 green = Quotient(hn::ShiftRight<8>(cs), hn::ShiftRight<8>(ss));
        const V32 blue = Quotient(hn::ShiftRight<16>(cs), hn::ShiftRight<16>(ss));
        return hn::BitCast(D8(), hn::Or(red, hn::Or(hn::ShiftLeft<8>(green), hn::ShiftLeft<16>(blue))));
    }
    static HWY_INLINE V32 Quotient(V32 c, V32 s)
    {
        const hn::RebindToSigned<D32> di;
        const hn::RebindToFloat<D32> df;
        const V32 byte = hn::Set(D32(), 255);
        const auto dividend = hn::ConvertTo(df, hn::BitCast(di, hn::ShiftLeft<8>(hn::And(c, byte))));
        const auto divisor = hn::ConvertTo(df, hn::BitCast(di, hn::Add(hn::And(s, byte), hn::Set(D32(), 1))));
        const auto quotient = hn::Min(hn::Div(dividend, divisor), hn::Set(df, 255.0f));
        return hn::BitCast(D32(), hn::ConvertTo(di, quotient));
    }
};

template <class Op>
size_t ChannelRow(const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, size_t nCount)
{
    const D8 d;
    const auto alpha = hn::BitCast(d, hn::Set(D32(), 0xFF000000u));
    size_t i = 0;
    for (; i + c_nAhead <= nCount; i += c_nPixels) {
        const V8 c = LoadCanvas(pCanvas + i * 3);
        const V8 s = hn::LoadU(d, pSource + i * 4);
        hn::StoreU(hn::Or(hn::And(s, alpha), hn::AndNot(alpha, Op()(c, s))), d, pDestination + i * 4);
    }
    return i;
}

// The colour modes, on 16 pixels at a time: as many doubles as the processor takes.

HWY_INLINE Rgb LoadRgb(const uint32_t* p)
{
    const VI v = hn::BitCast(DI(), hn::LoadU(hn::RebindToUnsigned<DI>(), p));
    const VI byte = Int(255);
    return {hn::And(v, byte), hn::And(hn::ShiftRight<8>(v), byte), hn::And(hn::ShiftRight<16>(v), byte)};
}

HWY_INLINE VI HsvSaturationOf(VI max, VI min)
{
    const VI part = hn::Mul(hn::Sub(max, min), Int(255));
    return ToInt(hn::Div(ToReal(part), ToReal(hn::Max(max, Int(1)))));
}

HWY_INLINE Rgb FromHsv(VI h, VI s, VI v)
{
    const VF one = Real(1), full = Real(255);
    const VF hh = hn::Div(ToReal(hn::Mul(h, Int(6))), full);
    const VF ss = hn::Div(ToReal(s), full);
    const VF vv = hn::Div(ToReal(v), full);
    const VI i = ToInt(hh);
    const VF f = hn::Sub(hh, ToReal(i));
    const VI p = ToInt(hn::Mul(hn::Mul(hn::Sub(one, ss), vv), full));
    const VI q = ToInt(hn::Mul(hn::Mul(hn::Sub(one, hn::Mul(ss, f)), vv), full));
    const VI t = ToInt(hn::Mul(hn::Mul(hn::Sub(one, hn::Mul(hn::Sub(one, f), ss)), vv), full));
    const VI w = ToInt(hn::Mul(vv, full));
    const auto is0 = hn::Eq(i, Int(0)), is1 = hn::Eq(i, Int(1)), is2 = hn::Eq(i, Int(2)), is3 = hn::Eq(i, Int(3)),
               is4 = hn::Eq(i, Int(4)), isGrey = hn::Eq(s, Int(0));
    const VI r = hn::IfThenElse(is1, q, hn::IfThenElse(hn::Or(is2, is3), p, hn::IfThenElse(is4, t, w)));
    const VI g = hn::IfThenElse(is0, t, hn::IfThenElse(hn::Or(is1, is2), w, hn::IfThenElse(is3, q, p)));
    const VI b = hn::IfThenElse(hn::Or(is0, is1), p, hn::IfThenElse(is2, t, hn::IfThenElse(hn::Or(is3, is4), w, q)));
    return {hn::IfThenElse(isGrey, v, r), hn::IfThenElse(isGrey, v, g), hn::IfThenElse(isGrey, v, b)};
}

struct HueOp {
    HWY_INLINE Rgb operator()(const Rgb& c, const Rgb& s) const
    {
        return FromHsv(HueOf(s, s.Max(), s.Min()), HsvSaturationOf(c.Max(), c.Min()), c.Max());
    }
};
struct SaturationOp {
    HWY_INLINE Rgb operator()(const Rgb& c, const Rgb& s) const
    {
        return FromHsv(HueOf(c, c.Max(), c.Min()), HsvSaturationOf(s.Max(), s.Min()), c.Max());
    }
};
struct ValueOp {
    HWY_INLINE Rgb operator()(const Rgb& c, const Rgb& s) const
    {
        return FromHsv(HueOf(c, c.Max(), c.Min()), HsvSaturationOf(c.Max(), c.Min()), s.Max());
    }
};

struct ColorOp {
    HWY_INLINE Rgb operator()(const Rgb& c, const Rgb& s) const
    {
        const VI max = s.Max(), min = s.Min();
        return FromHls(HueOf(s, max, min), LightnessOf(c.Max(), c.Min()), HlsSaturationOf(max, min));
    }
};

/// 16 pixels; 52 bytes of canvas may be read.
template <class Op>
HWY_INLINE void ColorChunk(const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination)
{
    HWY_ALIGN uint32_t aCanvas[16];
    HWY_ALIGN uint32_t aSource[16];
    for (size_t k = 0; k < 16; k += c_nPixels)
        hn::Store(hn::BitCast(D32(), LoadCanvas(pCanvas + k * 3)), D32(), aCanvas + k);
    std::memcpy(aSource, pSource, sizeof aSource);
    const DI d;
    const hn::RebindToUnsigned<DI> du;
    for (size_t k = 0; k < 16; k += hn::Lanes(d)) {
        const Rgb out = Op()(LoadRgb(aCanvas + k), LoadRgb(aSource + k));
        const VI rgb = hn::Or(out.r, hn::Or(hn::ShiftLeft<8>(out.g), hn::ShiftLeft<16>(out.b)));
        const auto alpha = hn::And(hn::LoadU(du, aSource + k), hn::Set(du, 0xFF000000u));
        hn::StoreU(hn::Or(hn::BitCast(du, rgb), alpha), du, aSource + k);
    }
    std::memcpy(pDestination, aSource, sizeof aSource);
}

template <class Op>
void ColorRow(const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, size_t nCount)
{
    size_t i = 0;
    for (; i + 18 <= nCount; i += 16)
        ColorChunk<Op>(pCanvas + i * 3, pSource + i * 4, pDestination + i * 4);
    while (i < nCount) { // the rest through buffers with room to read and write
        const size_t n = std::min<size_t>(nCount - i, 16);
        uint8_t aCanvas[64] = {}, aSource[64] = {}, aOut[64];
        std::memcpy(aCanvas, pCanvas + i * 3, n * 3);
        std::memcpy(aSource, pSource + i * 4, n * 4);
        ColorChunk<Op>(aCanvas, aSource, aOut);
        std::memcpy(pDestination + i * 4, aOut, n * 4);
        i += n;
    }
}

void BlendRow(int nMode, const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, size_t nCount)
{
    size_t i = 0;
    if (nCount == 0)
        return;
    switch (nMode) {
    case BLEND_NORMAL:
    case BLEND_BEHIND:
        std::memcpy(pDestination, pSource, nCount * 4);
        return;
    case BLEND_MULTIPLY:
        i = ChannelRow<MultiplyOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_DIVIDE:
        i = ChannelRow<DivideOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_SCREEN:
        i = ChannelRow<ScreenOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_OVERLAY:
        i = ChannelRow<OverlayOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_DIFFERENCE:
        i = ChannelRow<DifferenceOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_ADDITION:
        i = ChannelRow<AdditionOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_SUBTRACT:
        i = ChannelRow<SubtractOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_DARKEN:
        i = ChannelRow<DarkenOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_LIGHTEN:
        i = ChannelRow<LightenOp>(pCanvas, pSource, pDestination, nCount);
        break;
    case BLEND_HUE:
        return ColorRow<HueOp>(pCanvas, pSource, pDestination, nCount);
    case BLEND_SATURATION:
        return ColorRow<SaturationOp>(pCanvas, pSource, pDestination, nCount);
    case BLEND_COLOR:
        return ColorRow<ColorOp>(pCanvas, pSource, pDestination, nCount);
    case BLEND_VALUE:
        return ColorRow<ValueOp>(pCanvas, pSource, pDestination, nCount);
    default:
        return;
    }
    PlainBlendRow(nMode, 4)(pCanvas + i * 3, pSource + i * 4, pDestination + i * 4, nCount - i);
}

void DissolveRow(uint32_t& nState, const uint8_t* pSource, uint8_t* pDestination, size_t nCount)
{
    // Lane k holds the state after k + 1 draws. A whole vector of draws is one step too: state x a^n + c (a^(n-1) + ...
    // + 1).
    constexpr uint32_t a = 214013u, c = 2531011u;
    const D32 d;
    const hn::RebindToSigned<D32> di;
    HWY_ALIGN uint32_t aState[c_nPixels];
    uint32_t n = nState, nMul = 1, nAdd = 0;
    for (uint32_t& lane : aState) {
        lane = n = n * a + c;
        nMul *= a;
        nAdd = nAdd * a + c;
    }
    V32 state = hn::Load(d, aState);
    const V32 jumpMul = hn::Set(d, nMul), jumpAdd = hn::Set(d, nAdd);
    const V32 byte = hn::Set(d, 255), color = hn::Set(d, 0x00FFFFFFu);
    size_t i = 0;
    for (; i + c_nPixels <= nCount; i += c_nPixels) {
        const V32 s = hn::BitCast(d, hn::LoadU(D8(), pSource + i * 4));
        const auto drawn = hn::BitCast(di, hn::And(hn::ShiftRight<16>(state), byte));
        const auto alpha = hn::BitCast(di, hn::ShiftRight<24>(s));
        const V32 hidden = hn::BitCast(d, hn::VecFromMask(di, hn::Gt(drawn, alpha)));
        const V32 out = hn::AndNot(hn::AndNot(color, hidden), s);
        hn::StoreU(hn::BitCast(D8(), out), D8(), pDestination + i * 4);
        state = hn::Add(hn::Mul(state, jumpMul), jumpAdd);
        nState = nState * nMul + nAdd;
    }
    PlainDissolveRow(nState, pSource + i * 4, pDestination + i * 4, nCount - i, 4);
}

/// d + (s - d) x a with the sign taken out, so that 16 bits suffice. Going down, the plain form's arithmetic shift
/// rounds the half the other way: a bias of 127 instead of 128 says the same.
HWY_INLINE V8 LerpV(V8 c, V8 s, V8 a)
{
    const D8 d;
    const V8 down = hn::SaturatedSub(c, s);
    const V8 size = hn::Or(down, hn::SaturatedSub(s, c));
    const V8 isDown = hn::VecFromMask(d, hn::Ne(down, hn::Zero(d)));
    const V8 bias = hn::Add(hn::Set(d, 128), isDown); // isDown is -1
    const V8 step
        = Join(Round255(hn::Mul(Even(size), Even(a)), Even(bias)), Round255(hn::Mul(Odd(size), Odd(a)), Odd(bias)));
    return hn::IfThenElse(hn::Ne(down, hn::Zero(d)), hn::Sub(c, step), hn::Add(c, step));
}

/// One byte for each pixel.
HWY_INLINE V32 LoadBytes(const uint8_t* p) { return hn::PromoteTo(D32(), hn::LoadU(hn::Rebind<uint8_t, D32>(), p)); }

template <bool bHard, bool bTexture>
size_t MixLoop(const uint8_t* pCanvas, const uint8_t* pBlock, uint8_t* pOut, size_t nCount, const MixRun& run)
{
    const D8 d;
    const V8 opacity = hn::Set(d, static_cast<uint8_t>(run.nOpacity));
    const V8 half = hn::Set(d, 127);
    size_t i = 0;
    for (; i + c_nAhead <= nCount; i += c_nPixels) {
        const V8 c = LoadCanvas(pCanvas + i * 3);
        const V8 s = hn::LoadU(d, pBlock + i * 4);
        V8 a = Mul255V(Shuffle(s, c_aAlpha), opacity);
        if constexpr (bHard)
            a = hn::VecFromMask(d, hn::Ne(hn::SaturatedSub(a, half), hn::Zero(d)));
        if constexpr (bTexture)
            a = Mul255V(a, hn::BitCast(d, hn::Mul(LoadBytes(run.pTexture + i), hn::Set(D32(), 0x01010101u))));
        StoreCanvas(LerpV(c, s, a), pOut + i * 3);
    }
    return i;
}

void MixRow(const uint8_t* pCanvas, const uint8_t* pBlock, uint8_t* pOut, size_t nCount, const MixRun& run)
{
    const auto loop = run.bHardAlpha ? (run.pTexture ? MixLoop<true, true> : MixLoop<true, false>)
                                     : (run.pTexture ? MixLoop<false, true> : MixLoop<false, false>);
    const size_t i = loop(pCanvas, pBlock, pOut, nCount, run);
    const MixRun rest{run.nOpacity, run.bHardAlpha, run.pTexture ? run.pTexture + i : nullptr};
    PlainMixRun(pCanvas + i * 3, pBlock + i * 4, pOut + i * 3, nCount - i, rest);
}

void MultiplyAlpha(uint8_t* pBlock, const uint8_t* pMask, int nOpacity, size_t nCount)
{
    const D32 d;
    const V32 color = hn::Set(d, 0x00FFFFFFu), opacity = hn::Set(d, static_cast<uint32_t>(nOpacity));
    size_t i = 0;
    for (; i + c_nPixels <= nCount; i += c_nPixels) {
        const V32 m = LoadBytes(pMask + i);
        const V32 s = hn::BitCast(d, hn::LoadU(D8(), pBlock + i * 4));
        const V32 product = hn::Mul(hn::ShiftRight<24>(s), m);
        V32 a;
        if (nOpacity == 255) {
            const V32 t = hn::Add(product, hn::Set(d, 128));
            a = hn::ShiftRight<8>(hn::Add(hn::ShiftRight<8>(t), t));
        } else {
            const V32 t = hn::Add(hn::Mul(product, opacity), hn::Set(d, 32603));
            a = hn::ShiftRight<16>(hn::Add(hn::ShiftRight<7>(t), t));
        }
        hn::StoreU(hn::BitCast(D8(), hn::Or(hn::And(s, color), hn::ShiftLeft<24>(a))), D8(), pBlock + i * 4);
    }
    PlainMultiplyAlphaRow(pBlock + i * 4, pMask + i, nOpacity, nCount - i, 4);
}

void Accumulate(uint8_t* pCoverage, const uint8_t* pDab, size_t nCount)
{
    const D8 d;
    size_t i = 0;
    for (; i + hn::MaxLanes(d) <= nCount; i += hn::MaxLanes(d)) {
        const V8 c = hn::LoadU(d, pCoverage + i);
        hn::StoreU(hn::Add(c, Mul255V(hn::Not(c), hn::LoadU(d, pDab + i))), d, pCoverage + i);
    }
    PlainAccumulateRow(pCoverage + i, pDab + i, nCount - i);
}

#endif // HWY_SCALAR

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(BlendRow);
HWY_EXPORT(DissolveRow);
HWY_EXPORT(MixRow);
HWY_EXPORT(MultiplyAlpha);
HWY_EXPORT(Accumulate);

void VectorBlendRow(int nMode, const std::uint8_t* pCanvas, const std::uint8_t* pSource, std::uint8_t* pDestination,
                    std::size_t nCount)
{
    HWY_DYNAMIC_DISPATCH(BlendRow)(nMode, pCanvas, pSource, pDestination, nCount);
}

void VectorDissolveRow(std::uint32_t& nState, const std::uint8_t* pSource, std::uint8_t* pDestination,
                       std::size_t nCount)
{
    HWY_DYNAMIC_DISPATCH(DissolveRow)(nState, pSource, pDestination, nCount);
}

void VectorMixRun(const std::uint8_t* pCanvas, const std::uint8_t* pBlock, std::uint8_t* pOut, std::size_t nCount,
                  const MixRun& run)
{
    HWY_DYNAMIC_DISPATCH(MixRow)(pCanvas, pBlock, pOut, nCount, run);
}

void VectorMultiplyAlphaRow(std::uint8_t* pBlock, const std::uint8_t* pMask, int nOpacity, std::size_t nCount)
{
    HWY_DYNAMIC_DISPATCH(MultiplyAlpha)(pBlock, pMask, nOpacity, nCount);
}

void VectorAccumulateRow(std::uint8_t* pCoverage, const std::uint8_t* pDab, std::size_t nCount)
{
    HWY_DYNAMIC_DISPATCH(Accumulate)(pCoverage, pDab, nCount);
}

} // namespace kestrune
#endif
