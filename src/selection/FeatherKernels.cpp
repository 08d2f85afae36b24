// The vector form of the feather's inner loop: this file is compiled once for each kind of processor, the best is chosen at run time.
#include "selection/FeatherKernels.h"

#include <bit>
#include <cstdlib>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "selection/FeatherKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using DF = hn::CappedTag<float, 16>;
using DI = hn::RebindToSigned<DF>;
constexpr int c_nLanes = static_cast<int>(hn::MaxLanes(DF()));
constexpr int c_nWide = 64; ///< half the curve's width from which on it pays to look for changes that count as one
constexpr int c_nVectors = FeatherLine::c_nBlock / c_nLanes / 4 ? 4 : 1; ///< held in registers at a time

/// Truncated quotients. The product with the reciprocal is off by one at most; the rest tells, exactly.
HWY_INLINE hn::Vec<DI> Divide(hn::Vec<DF> sum, float fTotal)
{
    const DF d;
    const DI di;
    const auto total = hn::Set(d, fTotal);
    const auto quotient = hn::Trunc(hn::Mul(sum, hn::Set(d, 1.0f / fTotal)));
    const auto rest = hn::Sub(sum, hn::Mul(quotient, total));
    const auto one = hn::Set(di, 1);
    auto n = hn::ConvertTo(di, quotient);
    n = hn::Sub(n, hn::IfThenElseZero(hn::RebindMask(di, hn::Lt(rest, hn::Zero(d))), one));
    return hn::Add(n, hn::IfThenElseZero(hn::RebindMask(di, hn::Ge(rest, total)), one));
}

void Block(const FeatherLine& line, const FeatherWindow& window, int nFirst, std::uint8_t* pOut, int nCount)
{
    const LineChange* const pChanges = window.pChanges;
    const int nChanges = window.nChanges;
    const DF d;
    const DI di;
    constexpr int c_nStep = c_nVectors * c_nLanes;
    alignas(64) std::int32_t aOut[FeatherLine::c_nBlock];
    for (int x = 0; x < nCount; x += c_nStep) {
        const auto start = hn::Set(d, static_cast<float>(window.nStart) * line.fTotal);
        auto a = start, b = start, c = start, e = start;
        for (int i = 0; i < nChanges; i++) {
            const float* p = line.At(line.PlaceOf(nFirst + x) + pChanges[i].nPlace);
            const auto by = hn::Set(d, pChanges[i].fBy);
            // All numbers are whole and small enough: fused or not, the sum is the same.
            a = hn::MulAdd(by, hn::LoadU(d, p), a);
            if (c_nVectors == 4) {
                b = hn::MulAdd(by, hn::LoadU(d, p + c_nLanes), b);
                c = hn::MulAdd(by, hn::LoadU(d, p + 2 * c_nLanes), c);
                e = hn::MulAdd(by, hn::LoadU(d, p + 3 * c_nLanes), e);
            }
        }
        hn::StoreU(Divide(a, line.fTotal), di, aOut + x);
        if (c_nVectors == 4) {
            hn::StoreU(Divide(b, line.fTotal), di, aOut + x + c_nLanes);
            hn::StoreU(Divide(c, line.fTotal), di, aOut + x + 2 * c_nLanes);
            hn::StoreU(Divide(e, line.fTotal), di, aOut + x + 3 * c_nLanes);
        }
    }
    for (int x = 0; x < nCount; x++)
        pOut[x] = static_cast<std::uint8_t>(aOut[x]);
}

/// One output. Four sums, that need not wait for each other.
std::uint8_t Exact(const FeatherLine& line, const FeatherWindow& window, int nAt)
{
    const float* const pWeights = line.At(line.PlaceOf(nAt));
    const auto Term = [&](int i) { return static_cast<double>(window.pChanges[i].fBy * pWeights[window.pChanges[i].nPlace]); };
    double a = window.nStart * static_cast<double>(line.fTotal), b = 0, c = 0, e = 0; // a part of the changes may go further than all
    int i = 0;
    for (; i + 4 <= window.nChanges; i += 4) {
        a += Term(i);
        b += Term(i + 1);
        c += Term(i + 2);
        e += Term(i + 3);
    }
    for (; i < window.nChanges; i++)
        a += Term(i);
    return static_cast<std::uint8_t>(static_cast<int>(a + b + c + e) / static_cast<int>(line.fTotal));
}

/// The sums of every other output from `nFirst` on, `FeatherLine::c_nBlock` of them.
void SumEveryOther(const FeatherLine& line, const FeatherWindow& window, int nFirst, float* pSums)
{
    const DF d;
    const auto start = hn::Set(d, static_cast<float>(window.nStart) * line.fTotal);
    const int nPlace = line.PlaceOf(nFirst);
    for (int k = 0; k < FeatherLine::c_nBlock; k += c_nVectors * c_nLanes) {
        auto a = start, b = start, c = start, e = start;
        for (int i = 0; i < window.nChanges; i++) {
            const float* p = line.EveryOtherAt(nPlace + window.pChanges[i].nPlace) + k;
            const auto by = hn::Set(d, window.pChanges[i].fBy);
            a = hn::MulAdd(by, hn::LoadU(d, p), a);
            if (c_nVectors == 4) {
                b = hn::MulAdd(by, hn::LoadU(d, p + c_nLanes), b);
                c = hn::MulAdd(by, hn::LoadU(d, p + 2 * c_nLanes), c);
                e = hn::MulAdd(by, hn::LoadU(d, p + 3 * c_nLanes), e);
            }
        }
        hn::StoreU(a, d, pSums + k);
        if (c_nVectors == 4) {
            hn::StoreU(b, d, pSums + k + c_nLanes);
            hn::StoreU(c, d, pSums + k + 2 * c_nLanes);
            hn::StoreU(e, d, pSums + k + 3 * c_nLanes);
        }
    }
}

void Sampled(const FeatherLine& line, const FeatherWindow& window, int nFirst, float fOff, std::uint8_t* pOut)
{
    const DF d;
    const DI di;
    constexpr int c_nSamples = FeatherLine::c_nBlock;
    const bool bOneWay = window.IsOneWay();
    alignas(64) float aSums[c_nSamples + c_nLanes];
    SumEveryOther(line, window, nFirst, aSums);
    hn::StoreU(hn::Zero(d), d, aSums + c_nSamples); // read beside the last one, for nothing
    alignas(64) std::int32_t aExact[c_nSamples + c_nLanes] = {};
    for (int k = 0; k < c_nSamples; k += c_nLanes)
        hn::Store(Divide(hn::Load(d, aSums + k), line.fTotal), di, aExact + k);
    alignas(64) std::uint16_t aPairs[c_nSamples]; // in each a summed output and the one behind it
    const float fPart = 1.0f / line.fTotal;
    const auto half = hn::Set(d, 0.5f * fPart), off = hn::Set(d, fOff * fPart);
    std::uint64_t nDoubts = 0;
    for (int k = 0; k < c_nSamples; k += c_nLanes) {
        const auto mean = hn::Mul(hn::Add(hn::Load(d, aSums + k), hn::LoadU(d, aSums + k + 1)), half); // as a level, with its fraction
        const auto here = hn::Load(di, aExact + k), next = hn::LoadU(di, aExact + k + 1);
        auto low = hn::ConvertTo(di, hn::Max(hn::Sub(mean, off), hn::Zero(d)));
        auto high = hn::ConvertTo(di, hn::Add(mean, off));
        if (bOneWay) {
            low = hn::Max(low, hn::Min(here, next));
            high = hn::Min(high, hn::Max(here, next));
        }
        const hn::Rebind<std::uint16_t, DI> d16;
        hn::Store(hn::DemoteTo(d16, hn::Add(here, hn::ShiftLeft<8>(low))), d16, aPairs + k);
        std::uint8_t aBits[8] = {};
        hn::StoreMaskBits(di, hn::Ne(low, high), aBits);
        std::uint64_t nBits;
        std::memcpy(&nBits, aBits, sizeof nBits);
        nDoubts |= nBits << k;
    }
    std::uint8_t aOut[2 * c_nSamples];
    std::memcpy(aOut, aPairs, sizeof aOut);
    for (nDoubts &= ~std::uint64_t{0} >> 1; nDoubts; nDoubts &= nDoubts - 1) { // the last one's neighbour is the next block's
        const int k = std::countr_zero(nDoubts);
        aOut[2 * k + 1] = Exact(line, window, nFirst + 2 * k + 1);
    }
    std::memcpy(pOut, aOut, FeatherLine::c_nSampled);
}

static_assert(std::endian::native == std::endian::little && FeatherLine::c_nBlock == 64);

/// Eight to sixty-four bytes at a time are compared with those before them.
int FindChanges(const FeatherLine& line, const std::uint8_t* p, int nLength, LineChange* pChanges)
{
    LineChange* pOut = pChanges;
    float fSoFar = 0;
    int nWaitsAt = -1 - FeatherLine::c_nGaps, nWaitsBy = 0; // the last change, while no second one has joined it
    const int nGaps = line.nHalf >= c_nWide ? FeatherLine::c_nGaps : 0;
    const auto Put = [&](int i) {
        const int nBy = p[i] - p[i - 1];
        const auto fBy = static_cast<float>(nBy), fLevel = static_cast<float>(p[i]);
        fSoFar += std::abs(fBy);
        if (nBy == nWaitsBy && i - nWaitsAt <= nGaps) {
            pOut[-1] = {nWaitsAt, i, (i - nWaitsAt) * line.nLength - nWaitsAt, fBy, fLevel, fSoFar};
            nWaitsBy = 0;
        } else {
            *pOut++ = {i, i, -i, fBy, fLevel, fSoFar};
            nWaitsAt = i;
            nWaitsBy = nBy;
        }
    };
    int i = 1;
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<std::uint8_t, 64> d8;
    const int nLanes = static_cast<int>(hn::Lanes(d8));
    for (; i + nLanes <= nLength; i += nLanes) {
        std::uint8_t aBits[8] = {};
        hn::StoreMaskBits(d8, hn::Ne(hn::LoadU(d8, p + i), hn::LoadU(d8, p + i - 1)), aBits);
        std::uint64_t nBits;
        std::memcpy(&nBits, aBits, sizeof nBits);
        for (; nBits; nBits &= nBits - 1)
            Put(i + std::countr_zero(nBits));
    }
#endif
    for (; i < nLength; i++)
        if (p[i] != p[i - 1])
            Put(i);
    return static_cast<int>(pOut - pChanges);
}

#if HWY_TARGET == HWY_SCALAR

void Turn16(const std::uint8_t* pIn, std::ptrdiff_t nInStride, std::uint8_t* pOut, std::ptrdiff_t nOutStride)
{
    for (int y = 0; y < 16; y++)
        for (int x = 0; x < 16; x++)
            pOut[x * nOutStride + y] = pIn[y * nInStride + x];
}

#else

void Turn16(const std::uint8_t* pIn, std::ptrdiff_t nInStride, std::uint8_t* pOut, std::ptrdiff_t nOutStride)
{
    const hn::FixedTag<std::uint8_t, 16> d;
    // Four times each row is woven with the one eight further down: bit by bit the row's number becomes the column's.
    hn::Vec<decltype(d)> rows[16], next[16];
    for (int i = 0; i < 16; i++)
        rows[i] = hn::LoadU(d, pIn + i * nInStride);
    for (int nRound = 0; nRound < 4; nRound++) {
        for (int i = 0; i < 8; i++) {
            next[2 * i] = hn::InterleaveLower(d, rows[i], rows[i + 8]);
            next[2 * i + 1] = hn::InterleaveUpper(d, rows[i], rows[i + 8]);
        }
        for (int i = 0; i < 16; i++)
            rows[i] = next[i];
    }
    for (int i = 0; i < 16; i++)
        hn::StoreU(rows[i], d, pOut + i * nOutStride);
}

#endif

FeatherKernels Kernels()
{
    return {FindChanges, Block, Sampled, Turn16};
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

namespace {
HWY_EXPORT(Kernels);
}

FeatherKernels BestFeatherKernels()
{
    return HWY_DYNAMIC_DISPATCH(Kernels)();
}

} // namespace kestrune
#endif
