// The vector forms of the dab kernels: compiled once for each kind of processor, the best chosen at run time. Pixels are
// worked on as they lie, 3 bytes each: 32 (or 16) pixels fill three vectors, and their alphas, which fill one, are spread over
// the three. A row's rest is done by a last step that overlaps the one before, with the alphas of what is already done at 0.
#include "paint/DabKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "paint/DabVector.cpp"
#include "hwy/foreach_target.h" // must come before highway.h
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using std::size_t;
using std::uint8_t;

#if HWY_TARGET == HWY_SCALAR // a processor without vectors of 16 bytes: the plain forms serve

void Capped(const DabRun& run) { PlainCappedDab(run); }
void Stacked(const DabRun& run) { PlainStackedDab(run); }
void Lerp(const uint8_t* pCanvas, const uint8_t* pInk, const uint8_t* pAlpha, uint8_t* pOut, size_t nCount)
{
    PlainLerpRow(pCanvas, pInk, pAlpha, pOut, nCount);
}
void Smear(const uint8_t* pCanvas, uint8_t* pSmear, int p, size_t nBytes) { PlainSmearRow(pCanvas, pSmear, p, nBytes); }

#else

using DSmall = hn::FixedTag<uint8_t, 16>;
using DWide = hn::CappedTag<uint8_t, 32>;

template <class D>
using Words = hn::Repartition<std::uint16_t, D>;

// Bytes are widened to their even and their odd ones, which needs no shuffle.
template <class D, class V>
HWY_INLINE hn::Vec<Words<D>> Even(D, V v)
{
    const Words<D> d16;
    return hn::And(hn::BitCast(d16, v), hn::Set(d16, 255));
}
template <class D, class V>
HWY_INLINE hn::Vec<Words<D>> Odd(D, V v)
{
    return hn::ShiftRight<8>(hn::BitCast(Words<D>(), v));
}

/// t = product + bias; ((t >> 8) + t) >> 8, as the high bytes of the words.
template <class V>
HWY_INLINE V RoundHigh(V product, V bias)
{
    const V t = hn::Add(product, bias);
    return hn::Add(hn::ShiftRight<8>(t), t);
}

template <class D, class V16>
HWY_INLINE hn::Vec<D> JoinHigh(D d, V16 even, V16 odd)
{
    const Words<D> d16;
    return hn::BitCast(d, hn::Or(hn::ShiftRight<8>(even), hn::And(odd, hn::Set(d16, 0xFF00))));
}

template <class D, class V>
HWY_INLINE V Mul255V(D d, V a, V b)
{
    const auto bias = hn::Set(Words<D>(), 128);
    return JoinHigh(d, RoundHigh(hn::Mul(Even(d, a), Even(d, b)), bias), RoundHigh(hn::Mul(Odd(d, a), Odd(d, b)), bias));
}

/// c + (s - c) x a with the sign taken out, so that 16 bits suffice. Going down, the plain form's arithmetic shift rounds the
/// half the other way: a bias of 127 instead of 128 says the same.
template <class D, class V>
HWY_INLINE V LerpV(D d, V c, V s, V a)
{
    const V down = hn::SaturatedSub(c, s);
    const V size = hn::Or(down, hn::SaturatedSub(s, c));
    const auto isDown = hn::Ne(down, hn::Zero(d));
    const V bias = hn::IfThenElse(isDown, hn::Set(d, 127), hn::Set(d, 128));
    const V step = JoinHigh(d, RoundHigh(hn::Mul(Even(d, size), Even(d, a)), Even(d, bias)),
                            RoundHigh(hn::Mul(Odd(d, size), Odd(d, a)), Odd(d, bias)));
    return hn::IfThenElse(isDown, hn::Sub(c, step), hn::Add(c, step));
}

// Which alpha belongs to each byte of 48.
alignas(16) constexpr uint8_t c_aSpread[48] = {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6, 7, 7, 7,
                                               8, 8, 8, 9, 9, 9, 10, 10, 10, 11, 11, 11, 12, 12, 12, 13, 13, 13, 14, 14, 14, 15, 15, 15};

/// The alphas of the pixels that lie in the k-th of the three vectors.
template <int k, class V>
HWY_INLINE V Spread(DSmall d, V a)
{
    return hn::TableLookupBytes(a, hn::Load(d, c_aSpread + k * 16));
}
#if HWY_MAX_BYTES >= 32
template <int k, class V>
HWY_INLINE V Spread(DWide d, V a)
{
    const DSmall d16;
    const auto low = hn::Load(d16, c_aSpread + (k * 2) % 3 * 16);
    const auto high = hn::Load(d16, c_aSpread + (k * 2 + 1) % 3 * 16);
    const V from = k == 0 ? hn::ConcatLowerLower(d, a, a) : k == 2 ? hn::ConcatUpperUpper(d, a, a) : a;
    return hn::TableLookupBytes(from, hn::Combine(d, high, low));
}
#endif

/// One color as three vectors of packed pixels.
struct Pattern {
    HWY_ALIGN uint8_t aBytes[96];
    explicit Pattern(const uint8_t* pBgr)
    {
        for (int i = 0; i < 96; i++)
            aBytes[i] = pBgr[i % 3];
    }
};

/// 0 for the first bytes, 255 for the last `nKeep` of them.
template <class D>
HWY_INLINE hn::Vec<D> KeepLast(D d, size_t nKeep)
{
    alignas(32) static constexpr uint8_t s_aKeep[64] = {
        0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
        0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
        255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    return hn::LoadU(d, s_aKeep + 32 - hn::MaxLanes(d) + nKeep);
}

/// The three vectors of pixels of one step. `bBoth`: the canvas takes the result too.
template <bool bInk, bool bBoth, class D, class V>
HWY_INLINE void LerpStep(D d, const uint8_t* pCanvas, uint8_t* pOut, const uint8_t* pInk, V a)
{
    const auto one = [&](size_t k, V alpha) HWY_ATTR {
        const size_t i = k * hn::MaxLanes(d);
        const V s = bInk ? hn::LoadU(d, pInk + i) : hn::Load(d, pInk + i);
        const V v = LerpV(d, hn::LoadU(d, pCanvas + i), s, alpha);
        hn::StoreU(v, d, pOut + i);
        if constexpr (bBoth)
            hn::StoreU(v, d, const_cast<uint8_t*>(pCanvas) + i);
    };
    const V a0 = Spread<0>(d, a), a1 = Spread<1>(d, a), a2 = Spread<2>(d, a);
    one(0, a0);
    one(1, a1);
    one(2, a2);
}

/// Where a row of a dab stands in memory.
struct RowPlace {
    const uint8_t* pCanvas;
    uint8_t* pOut;
    uint8_t* pCoverage;
    const uint8_t* pMask;
    const uint8_t* pInk; ///< colours of the row, or the pattern

    template <bool bInk>
    HWY_INLINE RowPlace At(size_t x) const
    {
        return {pCanvas + x * 3, pOut + x * 3, pCoverage ? pCoverage + x : nullptr, pMask + x, bInk ? pInk + x * 3 : pInk};
    }
};

template <bool bInk>
struct CappedStep {
    static constexpr bool c_bInk = bInk, c_bCanvas = false, c_bCoverage = true;
    int nOpacity, nDabAlpha;

    template <class D>
    HWY_INLINE void operator()(D d, const RowPlace& at, hn::Vec<D> keep) const
    {
        auto m = hn::And(hn::LoadU(d, at.pMask), keep);
        if (nDabAlpha != 255)
            m = Mul255V(d, m, hn::Set(d, static_cast<uint8_t>(nDabAlpha)));
        auto c = hn::LoadU(d, at.pCoverage);
        c = hn::Add(c, Mul255V(d, hn::Not(c), m));
        hn::StoreU(c, d, at.pCoverage);
        if (nOpacity != 255)
            c = Mul255V(d, c, hn::Set(d, static_cast<uint8_t>(nOpacity)));
        LerpStep<bInk, false>(d, at.pCanvas, at.pOut, at.pInk, c);
    }
};

template <bool bInk>
struct StackedStep {
    static constexpr bool c_bInk = bInk, c_bCanvas = true, c_bCoverage = false;

    template <class D>
    HWY_INLINE void operator()(D d, const RowPlace& at, hn::Vec<D> keep) const
    {
        LerpStep<bInk, true>(d, at.pCanvas, at.pOut, at.pInk, hn::And(hn::LoadU(d, at.pMask), keep));
    }
};

/// Fewer pixels than a step takes: through buffers.
template <class Step>
HWY_INLINE void ShortRow(const Step& step, const RowPlace& at, size_t nCount)
{
    const DSmall d;
    HWY_ALIGN uint8_t aCanvas[48] = {}, aOut[48], aInk[48] = {}, aCoverage[16] = {}, aMask[16] = {};
    std::memcpy(aCanvas, at.pCanvas, nCount * 3);
    std::memcpy(aMask, at.pMask, nCount);
    if constexpr (Step::c_bCoverage)
        std::memcpy(aCoverage, at.pCoverage, nCount);
    if constexpr (Step::c_bInk)
        std::memcpy(aInk, at.pInk, nCount * 3);
    step(d, {aCanvas, aOut, aCoverage, aMask, Step::c_bInk ? aInk : at.pInk}, hn::Set(d, 255));
    std::memcpy(at.pOut, aOut, nCount * 3);
    if constexpr (Step::c_bCanvas)
        std::memcpy(const_cast<uint8_t*>(at.pCanvas), aCanvas, nCount * 3);
    if constexpr (Step::c_bCoverage)
        std::memcpy(at.pCoverage, aCoverage, nCount);
}

template <class Step, class D>
HWY_INLINE void LongRow(D d, const Step& step, const RowPlace& row, size_t nCount)
{
    const size_t n = hn::MaxLanes(d);
    const auto all = hn::Set(d, 255);
    size_t i = 0;
    for (; i + n <= nCount; i += n)
        step(d, row.template At<Step::c_bInk>(i), all);
    if (i < nCount)
        step(d, row.template At<Step::c_bInk>(nCount - n), KeepLast(d, nCount - i));
}

template <class Step>
void RunRows(const DabRun& run, const Step& step)
{
    const Pattern pattern(run.bgr);
    for (int y = 0; y < run.nRows; y++) {
        const int x0 = run.pSpans[y * 2], x1 = run.pSpans[y * 2 + 1];
        if (x0 >= x1)
            continue;
        uint8_t* pCoverage = Step::c_bCoverage ? run.pCoverage + y * run.nCoverageStride + x0 : nullptr;
        const RowPlace row{run.pCanvas + y * run.nStride + x0 * 3, run.pOut + y * run.nStride + x0 * 3, pCoverage,
                           run.pMask + y * run.nMaskStride + x0, Step::c_bInk ? run.ppInk[y] + x0 * 3 : pattern.aBytes};
        const size_t nCount = static_cast<size_t>(x1 - x0);
        if (nCount >= hn::MaxLanes(DWide()))
            LongRow(DWide(), step, row, nCount);
        else if (nCount >= 16)
            LongRow(DSmall(), step, row, nCount);
        else
            ShortRow(step, row, nCount);
    }
}

void Capped(const DabRun& run)
{
    if (run.ppInk)
        RunRows(run, CappedStep<true>{run.nOpacity, run.nDabAlpha});
    else
        RunRows(run, CappedStep<false>{run.nOpacity, run.nDabAlpha});
}

void Stacked(const DabRun& run)
{
    if (run.ppInk)
        RunRows(run, StackedStep<true>{});
    else
        RunRows(run, StackedStep<false>{});
}

void Lerp(const uint8_t* pCanvas, const uint8_t* pInk, const uint8_t* pAlpha, uint8_t* pOut, size_t nCount)
{
    const DWide d;
    size_t i = 0;
    for (; i + hn::MaxLanes(d) <= nCount; i += hn::MaxLanes(d))
        LerpStep<true, false>(d, pCanvas + i * 3, pOut + i * 3, pInk + i * 3, hn::LoadU(d, pAlpha + i));
    PlainLerpRow(pCanvas + i * 3, pInk + i * 3, pAlpha + i, pOut + i * 3, nCount - i);
}

/// t / 255 truncated is (t + 1 + (t >> 8)) >> 8 for every product of two bytes; t + 1 + (t >> 8) still fits 16 bits.
template <class V>
HWY_INLINE V Quotient255High(V t)
{
    return hn::Add(hn::Add(t, hn::ShiftRight<8>(t)), hn::Set(hn::DFromV<V>(), 1));
}

void Smear(const uint8_t* pCanvas, uint8_t* pSmear, int p, size_t nBytes)
{
    const DWide d;
    const Words<DWide> d16;
    const auto vp = hn::Set(d16, static_cast<std::uint16_t>(p)), vq = hn::Set(d16, static_cast<std::uint16_t>(255 - p));
    size_t i = 0;
    for (; i + hn::MaxLanes(d) <= nBytes; i += hn::MaxLanes(d)) {
        const auto c = hn::LoadU(d, pCanvas + i), s = hn::LoadU(d, pSmear + i);
        const auto even = hn::Add(hn::Mul(Even(d, c), vq), hn::Mul(Even(d, s), vp));
        const auto odd = hn::Add(hn::Mul(Odd(d, c), vq), hn::Mul(Odd(d, s), vp));
        hn::StoreU(JoinHigh(d, Quotient255High(even), Quotient255High(odd)), d, pSmear + i);
    }
    PlainSmearRow(pCanvas + i, pSmear + i, p, nBytes - i);
}

#endif // HWY_SCALAR

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(Capped);
HWY_EXPORT(Stacked);
HWY_EXPORT(Lerp);
HWY_EXPORT(Smear);

void CappedDab(const DabRun& run)
{
    HWY_DYNAMIC_DISPATCH(Capped)(run);
}

void StackedDab(const DabRun& run)
{
    HWY_DYNAMIC_DISPATCH(Stacked)(run);
}

void LerpRow(const std::uint8_t* pCanvas, const std::uint8_t* pInk, const std::uint8_t* pAlpha, std::uint8_t* pOut,
             std::size_t nCount)
{
    HWY_DYNAMIC_DISPATCH(Lerp)(pCanvas, pInk, pAlpha, pOut, nCount);
}

void SmearRow(const std::uint8_t* pCanvas, std::uint8_t* pSmear, int p, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Smear)(pCanvas, pSmear, p, nBytes);
}

void ConvolveRow(const ConvolveRows& rows, std::uint8_t* pOut, int nCenter, std::size_t nBytes)
{
    PlainConvolveRow(rows, pOut, nCenter, nBytes);
}

} // namespace kestrune
#endif
