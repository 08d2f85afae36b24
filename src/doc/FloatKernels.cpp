#include "doc/FloatKernels.h"

#include "base/Arith.h"
#include "doc/ColorState.h"

#include <array>
#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "doc/FloatKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

#ifndef KESTRUNE_PLAIN_FLOAT_ROW // the file is read many times over
#define KESTRUNE_PLAIN_FLOAT_ROW
namespace kestrune {

void BlendFloatRowPlain(const FloatRow& row, const FloatCover& cover)
{
    for (int x = 0; x < row.nCount; x++) {
        const int nScaled = Mul255(row.pMask[x], cover.nOpacity);
        const int nAlpha = cover.bHard ? HardenAlpha(nScaled) : nScaled;
        for (int c = 0; c < 3; c++)
            row.pOut[x * 3 + c] = Lerp255(row.pBase[x * 3 + c], row.pFloat[x * 3 + c], nAlpha);
    }
}

} // namespace kestrune
#endif

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

void Blend(const FloatRow& row, const FloatCover& cover) { BlendFloatRowPlain(row, cover); }

#else

using D8 = hn::CappedTag<std::uint8_t, 32>;
using D16 = hn::Repartition<std::uint16_t, D8>;
using V8 = hn::Vec<D8>;
using V16 = hn::Vec<D16>;

constexpr int c_nBytes = static_cast<int>(hn::MaxLanes(D8())); ///< of a vector, and pixels of a block of three vectors
/// Where the 16 mask bytes begin from which each of a block's three vectors takes its own.
constexpr int c_aMaskFrom[3] = {0, c_nBytes == 32 ? 10 : 0, c_nBytes == 32 ? 16 : 0};

/// For each byte of a block which of those mask bytes belongs to it.
constexpr std::array<std::array<std::uint8_t, 32>, 3> MakeSpread()
{
    std::array<std::array<std::uint8_t, 32>, 3> table{};
    for (int j = 0; j < 3; j++)
        for (int b = 0; b < c_nBytes; b++)
            table[j][b] = static_cast<std::uint8_t>((j * c_nBytes + b) / 3 - c_aMaskFrom[j]);
    return table;
}
alignas(32) constexpr auto c_aSpread = MakeSpread();

HWY_INLINE V16 Even(V8 v) { return hn::And(hn::BitCast(D16(), v), hn::Set(D16(), 255)); }
HWY_INLINE V16 Odd(V8 v) { return hn::ShiftRight<8>(hn::BitCast(D16(), v)); }
HWY_INLINE V8 Join(V16 even, V16 odd) { return hn::BitCast(D8(), hn::Or(even, hn::ShiftLeft<8>(odd))); }
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
/// Without a sign: the shifts of the signed form round a fall by 127 where they round a rise by 128.
HWY_INLINE V8 LerpV(V8 base, V8 over, V8 alpha)
{
    const D8 d;
    const V8 rise = hn::SaturatedSub(over, base), fall = hn::SaturatedSub(base, over);
    const V8 way = hn::Or(rise, fall);
    const V8 bias = hn::Add(hn::Set(d, 127), hn::And(hn::VecFromMask(d, hn::Eq(fall, hn::Zero(d))), hn::Set(d, 1)));
    const V8 step = Join(Round255(hn::Mul(Even(way), Even(alpha)), Even(bias)), Round255(hn::Mul(Odd(way), Odd(alpha)), Odd(bias)));
    return hn::IfThenElse(hn::Eq(fall, hn::Zero(d)), hn::Add(base, step), hn::Sub(base, step));
}

void Blend(const FloatRow& row, const FloatCover& cover)
{
    const D8 d;
    const V8 opacity = hn::Set(d, static_cast<std::uint8_t>(cover.nOpacity));
    int x = 0;
    for (; x + c_nBytes <= row.nCount; x += c_nBytes) {
        V8 aOut[3];
        for (int j = 0; j < 3; j++) {
            const std::ptrdiff_t i = static_cast<std::ptrdiff_t>(x) * 3 + j * c_nBytes;
            const V8 mask = hn::TableLookupBytes(hn::LoadDup128(d, row.pMask + x + c_aMaskFrom[j]), hn::Load(d, c_aSpread[j].data()));
            V8 alpha = Mul255V(mask, opacity);
            if (cover.bHard)
                alpha = hn::VecFromMask(d, hn::Eq(hn::Max(alpha, hn::Set(d, 128)), alpha));
            aOut[j] = LerpV(hn::LoadU(d, row.pBase + i), hn::LoadU(d, row.pFloat + i), alpha);
        }
        for (int j = 0; j < 3; j++)
            hn::StoreU(aOut[j], d, row.pOut + static_cast<std::ptrdiff_t>(x) * 3 + j * c_nBytes);
    }
    const std::ptrdiff_t i = static_cast<std::ptrdiff_t>(x) * 3;
    BlendFloatRowPlain({row.pBase + i, row.pFloat + i, row.pMask + x, row.pOut + i, row.nCount - x}, cover);
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(Blend);

void BlendFloatRow(const FloatRow& row, const FloatCover& cover)
{
    HWY_DYNAMIC_DISPATCH(Blend)(row, cover);
}

} // namespace kestrune
#endif
