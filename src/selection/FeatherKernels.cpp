// The vector form of the feather's inner loop: this file is compiled once for each kind of processor, the best is chosen at run time.
#include "selection/FeatherKernels.h"

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

void Block(const FeatherLine& line, int nStart, const LineChange* pChanges, int nChanges, int nFirst, std::uint8_t* pOut, int nCount)
{
    const DF d;
    const DI di;
    constexpr int c_nStep = c_nVectors * c_nLanes;
    alignas(64) std::int32_t aOut[FeatherLine::c_nBlock];
    for (int x = 0; x < nCount; x += c_nStep) {
        const auto start = hn::Set(d, static_cast<float>(nStart) * line.fTotal);
        auto a = start, b = start, c = start, e = start;
        for (int i = 0; i < nChanges; i++) {
            const float* p = line.Beyond(nFirst + x - pChanges[i].nAt);
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
    return {Block, Turn16};
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
