// The vector forms of the dab kernels: compiled once for each kind of processor, the best chosen at run time. Pixels are
// worked on as they lie, 3 bytes each: 64 (or 32, or 16) pixels fill three vectors, and their alphas, which fill one, are spread over
// the three. A row's rest is done by a last step that overlaps the one before, with the alphas of what is already done at 0.
#include "paint/DabKernels.h"

#include <algorithm>
#include <cstdlib>
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
void Convolve(const ConvolveRows& rows, uint8_t* pOut, int nCenter, size_t nBytes) { PlainConvolveRow(rows, pOut, nCenter, nBytes); }

#else

// Steps of three sizes: the widest the processor has, half of that, and the least.
using DFull = hn::CappedTag<uint8_t, 64>;
using DHalf = hn::CappedTag<uint8_t, HWY_MIN(HWY_MAX_BYTES, 32)>;
using DSmall = hn::FixedTag<uint8_t, 16>;

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

/// The same as the low bytes: (t x 257) >> 16 is that very number, and one instruction.
template <class V>
HWY_INLINE V RoundLow(V product, V bias)
{
    return hn::MulHigh(hn::Add(product, bias), hn::Set(hn::DFromV<V>(), 257));
}

/// The low bytes of the even words and the high bytes of the odd ones.
template <class D, class V16>
HWY_INLINE hn::Vec<D> Join(D d, V16 even, V16 odd)
{
    return hn::OddEven(hn::BitCast(d, odd), hn::BitCast(d, even));
}

template <class D, class V16>
HWY_INLINE hn::Vec<D> JoinHigh(D d, V16 even, V16 odd)
{
    return Join(d, hn::ShiftRight<8>(even), odd);
}

template <class D, class V>
HWY_INLINE V Mul255V(D d, V a, V b)
{
    const auto bias = hn::Set(Words<D>(), 128);
    return Join(d, RoundLow(hn::Mul(Even(d, a), Even(d, b)), bias), RoundHigh(hn::Mul(Odd(d, a), Odd(d, b)), bias));
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
    const V step = Join(d, RoundLow(hn::Mul(Even(d, size), Even(d, a)), Even(d, bias)),
                        RoundHigh(hn::Mul(Odd(d, size), Odd(d, a)), Odd(d, bias)));
    return hn::IfThenElse(isDown, hn::Sub(c, step), hn::Add(c, step));
}

// Which alpha belongs to each byte of 48.
alignas(16) constexpr uint8_t c_aSpread[48] = {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6, 7, 7, 7,
                                               8, 8, 8, 9, 9, 9, 10, 10, 10, 11, 11, 11, 12, 12, 12, 13, 13, 13, 14, 14, 14, 15, 15, 15};

/// Spreads a vector of alphas over the three vectors of pixels they belong to: each block of 16 bytes takes the block of alphas
/// that holds its own, and then orders bytes within the block.
template <class D>
struct Spread {
    using DLong = hn::Repartition<std::uint64_t, D>;
    static constexpr size_t c_nBlocks = hn::MaxLanes(D()) / 16;
    hn::Vec<D> aOrder[3];
    decltype(hn::SetTableIndices(DLong(), static_cast<const std::uint64_t*>(nullptr))) aBlocks[3];

    struct Tables {
        alignas(64) uint8_t aOrder[3 * c_nBlocks * 16];
        alignas(64) std::uint64_t aFrom[3 * c_nBlocks * 2];
        constexpr Tables()
            : aOrder()
            , aFrom()
        {
            for (size_t i = 0; i < sizeof aOrder; i++)
                aOrder[i] = c_aSpread[i % 48];
            for (size_t i = 0; i < 3 * c_nBlocks; i++) { // three blocks of pixels share a block of alphas
                aFrom[i * 2] = i / 3 * 2;
                aFrom[i * 2 + 1] = i / 3 * 2 + 1;
            }
        }
    };

    HWY_INLINE explicit Spread(D d)
    {
        static constexpr Tables s_tables;
        for (size_t k = 0; k < 3; k++) {
            aOrder[k] = hn::Load(d, s_tables.aOrder + k * c_nBlocks * 16);
            aBlocks[k] = hn::SetTableIndices(DLong(), s_tables.aFrom + k * c_nBlocks * 2);
        }
    }
    template <size_t k>
    HWY_INLINE hn::Vec<D> Get(D d, hn::Vec<D> a) const
    {
        if constexpr (c_nBlocks > 1)
            a = hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(DLong(), a), aBlocks[k]));
        return hn::TableLookupBytes(a, aOrder[k]);
    }
};

/// 0 for the first bytes, 255 for the last `nKeep` of them.
template <class D>
HWY_INLINE hn::Vec<D> KeepLast(D d, size_t nKeep)
{
    struct Keep {
        uint8_t aBytes[2 * hn::MaxLanes(D())];
        constexpr Keep()
            : aBytes()
        {
            for (size_t i = sizeof aBytes / 2; i < sizeof aBytes; i++)
                aBytes[i] = 255;
        }
    };
    static constexpr Keep s_keep;
    return hn::LoadU(d, s_keep.aBytes + nKeep);
}

/// Where a row of a dab stands in memory.
struct RowPlace {
    const uint8_t* pCanvas;
    uint8_t* pOut;
    uint8_t* pCoverage;
    const uint8_t* pMask;
    const uint8_t* pInk; ///< colours of the row, or of any row where it is one colour

    template <class Kind>
    HWY_INLINE RowPlace At(size_t x) const
    {
        return {pCanvas + x * 3, pOut + x * 3, Kind::c_bStacked ? nullptr : pCoverage + x, pMask + x, Kind::c_bInk ? pInk + x * 3 : pInk};
    }
};

template <bool bInk, bool bStacked>
struct DabKind {
    static constexpr bool c_bInk = bInk, c_bStacked = bStacked;
};

/// One step: as many pixels as a vector has bytes.
template <class Kind, class D>
struct Step {
    using V = hn::Vec<D>;
    Spread<D> spread;
    V aColor[3];
    V opacity, dabAlpha;
    bool bOpacity, bDabAlpha;

    HWY_INLINE Step(D d, const DabRun& run)
        : spread(d)
        , opacity(hn::Set(d, static_cast<uint8_t>(run.nOpacity)))
        , dabAlpha(hn::Set(d, static_cast<uint8_t>(run.nDabAlpha)))
        , bOpacity(run.nOpacity != 255)
        , bDabAlpha(run.nDabAlpha != 255)
    {
        for (size_t k = 0; k < 3; k++)
            aColor[k] = Kind::c_bInk ? hn::Zero(d) : hn::LoadU(d, run.pColor + k * hn::MaxLanes(d));
    }

    template <size_t k>
    HWY_INLINE void Mix(D d, const RowPlace& at, V a) const
    {
        constexpr size_t i = k * hn::MaxLanes(D());
        const V s = Kind::c_bInk ? hn::LoadU(d, at.pInk + i) : aColor[k];
        const V v = LerpV(d, hn::LoadU(d, at.pCanvas + i), s, spread.template Get<k>(d, a));
        hn::StoreU(v, d, at.pOut + i);
        if constexpr (Kind::c_bStacked)
            hn::StoreU(v, d, const_cast<uint8_t*>(at.pCanvas) + i);
    }

    /// True when all its pixels were covered in full already, so that no dab changes them any more.
    HWY_INLINE bool Run(D d, const RowPlace& at, V m) const
    {
        if constexpr (!Kind::c_bStacked) {
            const V before = hn::LoadU(d, at.pCoverage);
            if (hn::AllTrue(d, hn::Eq(before, hn::Set(d, 255))))
                return true;
            if (bDabAlpha)
                m = Mul255V(d, m, dabAlpha);
            const V after = hn::Add(before, Mul255V(d, hn::Not(before), m));
            if (hn::AllTrue(d, hn::Eq(before, after)))
                return false; // then the picture holds the result already
            hn::StoreU(after, d, at.pCoverage);
            m = bOpacity ? Mul255V(d, after, opacity) : after;
        }
        Mix<0>(d, at, m);
        Mix<1>(d, at, m);
        Mix<2>(d, at, m);
        return false;
    }

    HWY_INLINE bool Run(D d, const RowPlace& at) const { return Run(d, at, hn::LoadU(d, at.pMask)); }

    /// The last step of a row goes back over pixels that are done.
    HWY_INLINE void RunLast(D d, const RowPlace& row, size_t nCount, size_t nRest) const
    {
        const RowPlace at = row.template At<Kind>(nCount - hn::MaxLanes(d));
        Run(d, at, hn::And(hn::LoadU(d, at.pMask), KeepLast(d, nRest)));
    }
};

/// Fewer pixels than the smallest step takes: through buffers.
template <class Kind>
HWY_NOINLINE void ShortRow(const Step<Kind, DSmall>& step, const RowPlace& at, size_t nCount)
{
    const DSmall d;
    HWY_ALIGN uint8_t aCanvas[48] = {}, aOut[48], aInk[48] = {}, aCoverage[16] = {}, aMask[16] = {};
    std::memcpy(aCanvas, at.pCanvas, nCount * 3);
    std::memcpy(aOut, at.pOut, nCount * 3);
    std::memcpy(aMask, at.pMask, nCount);
    if constexpr (!Kind::c_bStacked)
        std::memcpy(aCoverage, at.pCoverage, nCount);
    if constexpr (Kind::c_bInk)
        std::memcpy(aInk, at.pInk, nCount * 3);
    step.Run(d, {aCanvas, aOut, aCoverage, aMask, aInk});
    std::memcpy(at.pOut, aOut, nCount * 3);
    if constexpr (Kind::c_bStacked)
        std::memcpy(const_cast<uint8_t*>(at.pCanvas), aCanvas, nCount * 3);
    else
        std::memcpy(at.pCoverage, aCoverage, nCount);
}

/// All steps of a dab.
template <class Kind>
struct Rows {
    const DFull dFull{};
    const DHalf dHalf{};
    const DSmall dSmall{};
    static constexpr size_t c_nFull = hn::MaxLanes(DFull()), c_nHalf = hn::MaxLanes(DHalf());
    const DabRun& run;
    const Step<Kind, DFull> full;
    const Step<Kind, DHalf> half;
    const Step<Kind, DSmall> small;

    HWY_INLINE explicit Rows(const DabRun& dab)
        : run(dab)
        , full(dFull, dab)
        , half(dHalf, dab)
        , small(dSmall, dab)
    {
    }

    /// One part of a row. `covered` takes in what is found to be covered in full, as far as it hangs together.
    HWY_INLINE void Part(int y, int x0, int x1, DabSpan& covered) const
    {
        const RowPlace row{run.pCanvas + y * run.nStride + x0 * 3, run.pOut + y * run.nStride + x0 * 3,
                           Kind::c_bStacked ? nullptr : run.pCoverage + y * run.nCoverageStride + x0,
                           run.pMask + y * run.nMaskStride + x0, Kind::c_bInk ? run.ppInk[y] + x0 * 3 : nullptr};
        const size_t nCount = static_cast<size_t>(x1 - x0);
        size_t i = 0;
        for (; i + c_nFull <= nCount; i += c_nFull)
            if (full.Run(dFull, row.template At<Kind>(i)))
                covered.Join(x0 + static_cast<int>(i), x0 + static_cast<int>(i + c_nFull));
        if (i + c_nHalf <= nCount) {
            if (half.Run(dHalf, row.template At<Kind>(i)))
                covered.Join(x0 + static_cast<int>(i), x0 + static_cast<int>(i + c_nHalf));
            i += c_nHalf;
        }
        if (i == nCount)
            return;
        if (nCount >= c_nHalf)
            half.RunLast(dHalf, row, nCount, nCount - i);
        else if (nCount == 16)
            small.Run(dSmall, row);
        else if (nCount > 16)
            small.Run(dSmall, row), small.RunLast(dSmall, row, nCount, nCount - 16);
        else
            ShortRow<Kind>(small, row, nCount);
    }

    /// The parts of a row before and behind what is covered in full already, in whole steps: what they reach into that does no
    /// harm.
    HWY_INLINE void Open(int y, int x0, int x1) const
    {
        DabSpan covered{run.pFull[y].x0 - run.nFullOrigin, run.pFull[y].x1 - run.nFullOrigin};
        if (covered.x0 >= x1 || covered.x1 <= x0) {
            Part(y, x0, x1, covered);
        } else {
            const int nHalf = static_cast<int>(c_nHalf);
            const auto whole = [&](int n) { return (std::max(n, 0) + nHalf - 1) & -nHalf; };
            const int nLeft = x0 + whole(covered.x0 - x0), nRight = x1 - whole(x1 - covered.x1);
            if (nLeft >= nRight) {
                Part(y, x0, x1, covered);
            } else {
                if (nLeft > x0)
                    Part(y, x0, nLeft, covered);
                if (nRight < x1)
                    Part(y, nRight, x1, covered);
            }
        }
        run.pFull[y] = {covered.x0 + run.nFullOrigin, covered.x1 + run.nFullOrigin};
    }
};

/// Rows lie far apart in memory, in pages of their own, where a processor foresees nothing: it is told of the next ones. Of the
/// picture's own, which are written and never read, only where they are short: measured, that speeds small dabs and slows large ones.
template <class Kind>
HWY_INLINE void Foresee(const DabRun& run, int y)
{
    int x0 = run.pSpans[y].x0, x1 = run.pSpans[y].x1;
    if (!Kind::c_bStacked && run.pFull) {
        const int nFirst = run.pFull[y].x0 - run.nFullOrigin, nLast = run.pFull[y].x1 - run.nFullOrigin;
        if (nFirst <= x0)
            x0 = std::max(x0, nLast);
        else if (nLast >= x1)
            x1 = std::min(x1, nFirst);
    }
    constexpr int c_nLine = 64;
    const bool bShort = x1 - x0 <= static_cast<int>(hn::MaxLanes(DFull()));
    for (int i = x0 * 3; i < x1 * 3; i += c_nLine) {
        __builtin_prefetch(run.pCanvas + y * run.nStride + i);
        if (bShort)
            __builtin_prefetch(run.pOut + y * run.nStride + i, 1);
    }
    for (int i = x0; i < x1; i += c_nLine) {
        if constexpr (!Kind::c_bStacked)
            __builtin_prefetch(run.pCoverage + y * run.nCoverageStride + i, 1);
        __builtin_prefetch(run.pMask + y * run.nMaskStride + i);
    }
}

template <class Kind>
void RunRows(const DabRun& run)
{
    constexpr int c_nAhead = 4;
    for (int y = 0; y < std::min(c_nAhead, run.nRows); y++)
        Foresee<Kind>(run, y);
    const Rows<Kind> rows(run);
    DabSpan none;
    for (int y = 0; y < run.nRows; y++) {
        if (y + c_nAhead < run.nRows)
            Foresee<Kind>(run, y + c_nAhead);
        const int x0 = run.pSpans[y].x0, x1 = run.pSpans[y].x1;
        if (x0 >= x1)
            continue;
        if (!Kind::c_bStacked && run.pFull)
            rows.Open(y, x0, x1);
        else
            rows.Part(y, x0, x1, none);
    }
}

void Capped(const DabRun& run)
{
    if (run.ppInk)
        RunRows<DabKind<true, false>>(run);
    else
        RunRows<DabKind<false, false>>(run);
}

void Stacked(const DabRun& run)
{
    if (run.ppInk)
        RunRows<DabKind<true, true>>(run);
    else
        RunRows<DabKind<false, true>>(run);
}

void Lerp(const uint8_t* pCanvas, const uint8_t* pInk, const uint8_t* pAlpha, uint8_t* pOut, size_t nCount)
{
    const DFull d;
    const Spread<DFull> spread(d);
    constexpr size_t n = hn::MaxLanes(d);
    const auto mix = [&](size_t i, hn::Vec<DFull> a) HWY_ATTR {
        hn::StoreU(LerpV(d, hn::LoadU(d, pCanvas + i), hn::LoadU(d, pInk + i), a), d, pOut + i);
    };
    size_t i = 0;
    for (; i + n <= nCount; i += n) {
        const auto a = hn::LoadU(d, pAlpha + i);
        mix(i * 3, spread.template Get<0>(d, a));
        mix(i * 3 + n, spread.template Get<1>(d, a));
        mix(i * 3 + 2 * n, spread.template Get<2>(d, a));
    }
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
    const DFull d;
    const Words<DFull> d16;
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

using DInt = hn::CappedTag<std::int32_t, 16>;
using VInt = hn::Vec<DInt>;

/// |dividend| / divisor, both whole. The quotient in single precision is at most one off, which the rest tells.
HWY_INLINE VInt Quotient(VInt dividend, VInt divisor, hn::Vec<hn::Rebind<float, DInt>> reciprocal)
{
    const DInt d;
    const hn::Rebind<float, DInt> df;
    const VInt size = hn::Abs(dividend);
    VInt q = hn::ConvertTo(d, hn::Mul(hn::ConvertTo(df, size), reciprocal));
    const VInt rest = hn::Sub(size, hn::Mul(q, divisor));
    q = hn::Add(q, hn::VecFromMask(d, hn::Lt(rest, hn::Zero(d)))); // a mask is -1
    return hn::Sub(q, hn::VecFromMask(d, hn::Not(hn::Lt(rest, divisor))));
}

void Convolve(const ConvolveRows& rows, uint8_t* pOut, int nCenter, size_t nBytes)
{
    const DInt d;
    const hn::Rebind<uint8_t, DInt> d8;
    const hn::Rebind<std::uint16_t, DInt> d16;
    const int nDivisor = std::abs(nCenter + 8 * c_nConvolveUnit);
    constexpr int c_nLeastDivisor = 4096; // from there on quotients are small enough for single precision
    if (nDivisor < c_nLeastDivisor)
        return PlainConvolveRow(rows, pOut, nCenter, nBytes);
    const auto divisor = hn::Set(d, nDivisor);
    const auto reciprocal = hn::Set(hn::Rebind<float, DInt>(), 1.0f / static_cast<float>(nDivisor));
    const auto center = hn::Set(d, nCenter), unit = hn::Set(d, c_nConvolveUnit);
    size_t i = 0;
    for (; i + hn::MaxLanes(d) <= nBytes; i += hn::MaxLanes(d)) {
        const auto at = [&](const uint8_t* p) HWY_ATTR { return hn::PromoteTo(d16, hn::LoadU(d8, p + i)); };
        const auto column = [&](int dx) HWY_ATTR { return hn::Add(at(rows.pAbove + dx), at(rows.pBelow + dx)); };
        const auto ring = hn::Add(hn::Add(column(-3), column(3)), hn::Add(column(0), hn::Add(at(rows.pRow - 3), at(rows.pRow + 3))));
        const VInt byte = hn::PromoteTo(d, hn::LoadU(d8, rows.pRow + i));
        const VInt sum = hn::Add(hn::Mul(byte, center), hn::Mul(hn::PromoteTo(d, ring), unit));
        hn::StoreU(hn::DemoteTo(d8, Quotient(sum, divisor, reciprocal)), d8, pOut + i); // saturates at 255
    }
    PlainConvolveRow({rows.pAbove + i, rows.pRow + i, rows.pBelow + i}, pOut + i, nCenter, nBytes - i);
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
HWY_EXPORT(Convolve);

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
    HWY_DYNAMIC_DISPATCH(Convolve)(rows, pOut, nCenter, nBytes);
}

} // namespace kestrune
#endif
