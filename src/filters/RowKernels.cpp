// Plain loops: the compiler makes vectors of them for each kind of processor.
#include "filters/RowKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/RowKernels.cpp"
#include "hwy/foreach_target.h" // must come before highway.h
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using std::int32_t;
using std::size_t;
using std::uint16_t;
using std::uint8_t;

struct MaxOp {
    template <class V>
    HWY_INLINE V operator()(V a, V b) const { return hn::Max(a, b); }
    static uint8_t Byte(uint8_t a, uint8_t b) { return a > b ? a : b; }
};
struct MinOp {
    template <class V>
    HWY_INLINE V operator()(V a, V b) const { return hn::Min(a, b); }
    static uint8_t Byte(uint8_t a, uint8_t b) { return a < b ? a : b; }
};

template <class Op>
void ExtremeOfRows(const uint8_t* const* ppRows, int nRows, uint8_t* pOut, size_t nBytes)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    size_t i = 0;
    for (; i + nLanes <= nBytes; i += nLanes) {
        auto v = hn::LoadU(d, ppRows[0] + i);
        for (int k = 1; k < nRows; ++k)
            v = Op()(v, hn::LoadU(d, ppRows[k] + i));
        hn::StoreU(v, d, pOut + i);
    }
    for (; i < nBytes; ++i) {
        uint8_t n = ppRows[0][i];
        for (int k = 1; k < nRows; ++k)
            n = Op::Byte(n, ppRows[k][i]);
        pOut[i] = n;
    }
}

void Max(const uint8_t* const* ppRows, int nRows, uint8_t* pOut, size_t nBytes)
{
    ExtremeOfRows<MaxOp>(ppRows, nRows, pOut, nBytes);
}
void Min(const uint8_t* const* ppRows, int nRows, uint8_t* pOut, size_t nBytes)
{
    ExtremeOfRows<MinOp>(ppRows, nRows, pOut, nBytes);
}

void Box(const uint8_t* const* ppRows, uint16_t* HWY_RESTRICT pSum, uint8_t* HWY_RESTRICT pOut, size_t nBytes)
{
    const uint8_t* const a = ppRows[0];
    const uint8_t* const b = ppRows[1];
    const uint8_t* const c = ppRows[2];
    uint16_t* const pInner = pSum + 3;
    for (size_t i = 0; i < nBytes; ++i)
        pInner[i] = static_cast<uint16_t>(a[i] + b[i] + c[i]);
    for (size_t i = 0; i < 3; ++i) {
        pSum[i] = pInner[i];
        pInner[nBytes + i] = pInner[nBytes - 3 + i];
    }
    // 7282 / 65536 is a ninth with an error that no sum of nine bytes lets show.
    for (size_t i = 0; i < nBytes; ++i) {
        const uint16_t nSum = static_cast<uint16_t>(pSum[i] + pSum[i + 3] + pSum[i + 6]);
        pOut[i] = static_cast<uint8_t>(static_cast<uint16_t>((nSum * 7282u) >> 16));
    }
}

void Weights(const uint8_t* HWY_RESTRICT pRow, int nDivisor, int32_t* HWY_RESTRICT pPositive,
             int32_t* HWY_RESTRICT pNegative, size_t nBytes)
{
    // Products are whole and below 2^18: the quotient's distance to the next whole number, 1 / divisor, is over its rounding.
    const float f = static_cast<float>(nDivisor);
    for (size_t i = 0; i < nBytes; ++i) {
        const int32_t n = pRow[i];
        const int32_t nPositive = static_cast<int32_t>(static_cast<float>(n * 800) / f);
        pPositive[i] = nPositive;
        pNegative[i] = (nPositive + 4 - n * 8) >> 3;
    }
}

void Sharpen(const int32_t* const* ppNegative, const int32_t* HWY_RESTRICT pPositive, int32_t* HWY_RESTRICT pSum,
             uint8_t* HWY_RESTRICT pOut, size_t nBytes)
{
    const int32_t* HWY_RESTRICT a = ppNegative[0];
    const int32_t* HWY_RESTRICT b = ppNegative[1];
    const int32_t* HWY_RESTRICT c = ppNegative[2];
    for (size_t i = 0; i < nBytes; ++i)
        pSum[i] = a[i] + b[i] + c[i];
    for (size_t i = 3; i + 3 < nBytes; ++i) {
        const int32_t nEight = pSum[i - 3] + pSum[i] + pSum[i + 3] - b[i];
        const int32_t v = (pPositive[i] - nEight + 4) >> 3;
        pOut[i] = static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v);
    }
}

void Add(uint16_t* HWY_RESTRICT pSum, const uint8_t* HWY_RESTRICT pRow, size_t nBytes)
{
    for (size_t i = 0; i < nBytes; ++i)
        pSum[i] = static_cast<uint16_t>(pSum[i] + pRow[i]);
}

void Divide(const uint16_t* HWY_RESTRICT pSum, int nDivisor, uint8_t* HWY_RESTRICT pOut, size_t nBytes)
{
    // A quotient is at least 1/257 below the next whole number, far more than the rounding.
    const float f = static_cast<float>(nDivisor);
    for (size_t i = 0; i < nBytes; ++i)
        pOut[i] = static_cast<uint8_t>(static_cast<int32_t>(static_cast<float>(static_cast<int32_t>(pSum[i])) / f));
}

void ToFloats(const uint8_t* HWY_RESTRICT pIn, float* HWY_RESTRICT pOut, size_t nBytes)
{
    for (size_t i = 0; i < nBytes; ++i)
        pOut[i] = static_cast<float>(static_cast<int32_t>(pIn[i]));
}

void Weighted(float* HWY_RESTRICT pSum, const float* HWY_RESTRICT pRow, float fWeight, size_t nBytes)
{
    for (size_t i = 0; i < nBytes; ++i)
        pSum[i] += fWeight * pRow[i];
}

void Scale(const float* HWY_RESTRICT pSum, int nScale, int nOffset, uint8_t* HWY_RESTRICT pOut, size_t nBytes)
{
    // Sums are below 6.4 million: the quotient's distance to the next whole number, 1 / scale, is over its rounding.
    const float f = static_cast<float>(nScale);
    for (size_t i = 0; i < nBytes; ++i) {
        const int32_t v = static_cast<int32_t>(pSum[i] / f) + nOffset;
        pOut[i] = static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v);
    }
}

void Unsharp(const uint8_t* HWY_RESTRICT pSource, uint8_t* HWY_RESTRICT pBlurred, int nFactor, int nThreshold, size_t nBytes)
{
    using std::int16_t;
    const int16_t f = static_cast<int16_t>(nFactor);
    const int16_t t = static_cast<int16_t>(nThreshold);
    for (size_t i = 0; i < nBytes; ++i) {
        const int16_t o = pSource[i];
        const int16_t d = static_cast<int16_t>(o - pBlurred[i]);
        const int16_t nTwice = static_cast<int16_t>(d < 0 ? -2 * d : 2 * d);
        const int16_t nAdd = static_cast<int16_t>(nTwice >= t ? d * f : 0);
        const int16_t v = static_cast<int16_t>(o + nAdd);
        pBlurred[i] = static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v);
    }
}

void Range(const uint8_t* pRow, size_t nBytes, uint8_t& nMin, uint8_t& nMax)
{
    uint8_t nLow = nMin;
    uint8_t nHigh = nMax;
    for (size_t i = 0; i < nBytes; ++i) {
        nLow = pRow[i] < nLow ? pRow[i] : nLow;
        nHigh = pRow[i] > nHigh ? pRow[i] : nHigh;
    }
    nMin = nLow;
    nMax = nHigh;
}

struct GreyOp {
    template <class V>
    HWY_INLINE V operator()(V a, V b, V c) const
    {
        const V high = hn::Max(hn::Max(a, b), c), low = hn::Min(hn::Min(a, b), c);
        return hn::Add(hn::And(high, low), hn::ShiftRight<1>(hn::Xor(high, low)));
    }
    static uint8_t Byte(const uint8_t* p)
    {
        return static_cast<uint8_t>((std::max(std::max(p[0], p[1]), p[2]) + std::min(std::min(p[0], p[1]), p[2])) / 2);
    }
};
struct BrightestOp {
    template <class V>
    HWY_INLINE V operator()(V a, V b, V c) const { return hn::Max(hn::Max(a, b), c); }
    static uint8_t Byte(const uint8_t* p) { return std::max(std::max(p[0], p[1]), p[2]); }
};

constexpr size_t c_nTable = 256;

#if HWY_TARGET != HWY_SCALAR
/// A table of 256 bytes as sixteen of 16, each of which a vector looks up at once; the upper half of a byte tells which counts.
template <class D, class V>
HWY_INLINE V LookUpVector(D d, const uint8_t* HWY_RESTRICT pTable, V v)
{
    constexpr size_t c_nPart = 16;
    const V low = hn::And(v, hn::Set(d, 15)), high = hn::ShiftRight<4>(v);
    V result = hn::TableLookupBytes(hn::LoadDup128(d, pTable), low);
    for (size_t k = 1; k < c_nTable / c_nPart; ++k)
        result = hn::IfThenElse(hn::Eq(high, hn::Set(d, static_cast<uint8_t>(k))),
                                hn::TableLookupBytes(hn::LoadDup128(d, pTable + k * c_nPart), low), result);
    return result;
}
#endif

void LookUp(const uint8_t* HWY_RESTRICT pTable, const uint8_t* HWY_RESTRICT pIn, uint8_t* HWY_RESTRICT pOut, size_t nBytes)
{
    size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<uint8_t> d;
    for (; i + hn::Lanes(d) <= nBytes; i += hn::Lanes(d))
        hn::StoreU(LookUpVector(d, pTable, hn::LoadU(d, pIn + i)), d, pOut + i);
#endif
    for (; i < nBytes; ++i)
        pOut[i] = pTable[pIn[i]];
}

void LookUpEach(const uint8_t* HWY_RESTRICT pTables, const uint8_t* HWY_RESTRICT pIn, uint8_t* HWY_RESTRICT pOut, size_t nPixels)
{
    size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<uint8_t> d;
    for (; i + hn::Lanes(d) <= nPixels; i += hn::Lanes(d)) {
        auto a = hn::Zero(d), b = a, c = a;
        hn::LoadInterleaved3(d, pIn + 3 * i, a, b, c);
        hn::StoreInterleaved3(LookUpVector(d, pTables, a), LookUpVector(d, pTables + c_nTable, b),
                              LookUpVector(d, pTables + 2 * c_nTable, c), d, pOut + 3 * i);
    }
#endif
    for (; i < nPixels; ++i)
        for (size_t k = 0; k < 3; ++k)
            pOut[3 * i + k] = pTables[k * c_nTable + pIn[3 * i + k]];
}

/// One byte of each pixel's three.
template <class Op>
void JoinChannels(const uint8_t* pRow, uint8_t* pOut, size_t nPixels)
{
    size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<uint8_t, 32> d;
    for (; i + hn::Lanes(d) <= nPixels; i += hn::Lanes(d)) {
        auto a = hn::Zero(d), b = a, c = a;
        hn::LoadInterleaved3(d, pRow + 3 * i, a, b, c);
        hn::StoreU(Op()(a, b, c), d, pOut + i);
    }
#endif
    for (; i < nPixels; ++i)
        pOut[i] = Op::Byte(pRow + 3 * i);
}
void Grey(const uint8_t* pRow, uint8_t* pOut, size_t nPixels) { JoinChannels<GreyOp>(pRow, pOut, nPixels); }
void Brightest(const uint8_t* pRow, uint8_t* pOut, size_t nPixels) { JoinChannels<BrightestOp>(pRow, pOut, nPixels); }

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(Max);
HWY_EXPORT(Min);
HWY_EXPORT(Box);
HWY_EXPORT(Sharpen);
HWY_EXPORT(Add);
HWY_EXPORT(Divide);
HWY_EXPORT(ToFloats);
HWY_EXPORT(Weighted);
HWY_EXPORT(Scale);
HWY_EXPORT(Unsharp);
HWY_EXPORT(Range);
HWY_EXPORT(Weights);
HWY_EXPORT(Grey);
HWY_EXPORT(Brightest);
HWY_EXPORT(LookUp);
HWY_EXPORT(LookUpEach);

void SharpenWeights(const std::uint8_t* pRow, int nDivisor, std::int32_t* pPositive, std::int32_t* pNegative,
                    std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Weights)(pRow, nDivisor, pPositive, pNegative, nBytes);
}
void GreyRow(const std::uint8_t* pRow, std::uint8_t* pGrey, std::size_t nPixels)
{
    HWY_DYNAMIC_DISPATCH(Grey)(pRow, pGrey, nPixels);
}
void LookUpBytes(const std::uint8_t* pTable, const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(LookUp)(pTable, pIn, pOut, nBytes);
}
void LookUpChannels(const std::uint8_t* pTables, const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    HWY_DYNAMIC_DISPATCH(LookUpEach)(pTables, pIn, pOut, nPixels);
}
void BrightestRow(const std::uint8_t* pRow, std::uint8_t* pBrightest, std::size_t nPixels)
{
    HWY_DYNAMIC_DISPATCH(Brightest)(pRow, pBrightest, nPixels);
}

void MaxOfRows(const std::uint8_t* const* ppRows, int nRows, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Max)(ppRows, nRows, pOut, nBytes);
}
void MinOfRows(const std::uint8_t* const* ppRows, int nRows, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Min)(ppRows, nRows, pOut, nBytes);
}
void BoxRow(const std::uint8_t* const* ppRows, std::uint16_t* pSum, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Box)(ppRows, pSum, pOut, nBytes);
}
void SharpenRow(const std::int32_t* const* ppNegative, const std::int32_t* pPositive, std::int32_t* pSum,
                std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Sharpen)(ppNegative, pPositive, pSum, pOut, nBytes);
}
void AddBytes(std::uint16_t* pSum, const std::uint8_t* pRow, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Add)(pSum, pRow, nBytes);
}
void DivideSums(const std::uint16_t* pSum, int nDivisor, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Divide)(pSum, nDivisor, pOut, nBytes);
}
void BytesToFloats(const std::uint8_t* pIn, float* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(ToFloats)(pIn, pOut, nBytes);
}
void AddWeighted(float* pSum, const float* pRow, float fWeight, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Weighted)(pSum, pRow, fWeight, nBytes);
}
void ScaleSums(const float* pSum, int nScale, int nOffset, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Scale)(pSum, nScale, nOffset, pOut, nBytes);
}
void UnsharpRow(const std::uint8_t* pSource, std::uint8_t* pBlurred, int nFactor, int nThreshold, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Unsharp)(pSource, pBlurred, nFactor, nThreshold, nBytes);
}
void RangeOfRow(const std::uint8_t* pRow, std::size_t nBytes, std::uint8_t& nMin, std::uint8_t& nMax)
{
    HWY_DYNAMIC_DISPATCH(Range)(pRow, nBytes, nMin, nMax);
}

} // namespace kestrune
#endif
