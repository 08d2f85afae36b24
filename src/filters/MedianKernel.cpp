// Windows of 3 x 3 and 5 x 5 go through networks of comparisons whose first step, the sorting of a column, neighbours
// share. For the others the result is found bit by bit: a bit is set while no more bytes than wanted are smaller.
#include "filters/MedianKernel.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/MedianKernel.cpp"
#include "hwy/foreach_target.h" // must come before highway.h
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using std::int8_t;
using std::size_t;
using std::uint8_t;

// At most 64 bytes, so that the room behind the rows always suffices.
using D = hn::CappedTag<int8_t, 64>;
using V = hn::Vec<D>;

HWY_INLINE V Load(const uint8_t* p) { return hn::LoadU(D(), reinterpret_cast<const int8_t*>(p)); }
HWY_INLINE void Store(V v, uint8_t* p) { hn::StoreU(v, D(), reinterpret_cast<int8_t*>(p)); }
/// Stores a result as it is meant.
HWY_INLINE void StoreOut(V v, uint8_t* p) { Store(hn::Xor(v, hn::Set(D(), static_cast<int8_t>(c_nMedianFlip))), p); }

/// Puts two in order.
HWY_INLINE void Order(V& a, V& b)
{
    const V low = hn::Min(a, b);
    b = hn::Max(a, b);
    a = low;
}
HWY_INLINE void Order3(V& a, V& b, V& c)
{
    Order(a, b);
    Order(b, c);
    Order(a, b);
}
HWY_INLINE void Order5(V& a, V& b, V& c, V& d, V& e)
{
    Order(a, b);
    Order(d, e);
    Order(c, e);
    Order(c, d);
    Order(a, d);
    Order(a, c);
    Order(b, e);
    Order(b, d);
    Order(b, c);
}

/// The sorted columns of the rows, one plane an order, for all bytes that windows from 0 to `nBytes` reach.
template <int N>
void SortColumns(const uint8_t* const* ppRows, uint8_t* pPlanes, size_t nStride, size_t nBytes)
{
    for (size_t i = 0; i < nBytes; i += hn::MaxLanes(D())) {
        V v0 = Load(ppRows[0] + i), v1 = Load(ppRows[1] + i), v2 = Load(ppRows[2] + i);
        if constexpr (N == 3)
            Order3(v0, v1, v2);
        else {
            V v3 = Load(ppRows[3] + i), v4 = Load(ppRows[4] + i);
            Order5(v0, v1, v2, v3, v4);
            Store(v3, pPlanes + 3 * nStride + i);
            Store(v4, pPlanes + 4 * nStride + i);
        }
        Store(v0, pPlanes + i);
        Store(v1, pPlanes + nStride + i);
        Store(v2, pPlanes + 2 * nStride + i);
    }
}

/// The middle of: the largest of the smallest, the middle of the middle ones, the smallest of the largest.
void Median3(const uint8_t* pPlanes, size_t nStride, uint8_t* pOut, size_t nBytes)
{
    const uint8_t *const p1 = pPlanes + nStride, *const p2 = pPlanes + 2 * nStride;
    for (size_t i = 0; i < nBytes; i += hn::MaxLanes(D())) {
        V low = hn::Max(hn::Max(Load(pPlanes + i), Load(pPlanes + i + 3)), Load(pPlanes + i + 6));
        V a = Load(p1 + i), b = Load(p1 + i + 3), c = Load(p1 + i + 6);
        Order(a, b);
        b = hn::Max(a, hn::Min(b, c));
        V high = hn::Min(hn::Min(Load(p2 + i), Load(p2 + i + 3)), Load(p2 + i + 6));
        Order(low, b);
        StoreOut(hn::Max(low, hn::Min(b, high)), pOut + i);
    }
}

/// One order of five neighbouring columns, sorted.
struct Sorted5 {
    V a, b, c, d, e;
    HWY_INLINE explicit Sorted5(const uint8_t* p)
        : a(Load(p))
        , b(Load(p + 3))
        , c(Load(p + 6))
        , d(Load(p + 9))
        , e(Load(p + 12))
    {
        Order5(a, b, c, d, e);
    }
};

/// With columns and then rows sorted, six of the 25 are below the middle for sure and six above it. What a network of the
/// other thirteen needs was searched for with the order among them in mind.
void Median5(const uint8_t* pPlanes, size_t nStride, uint8_t* pOut, size_t nBytes)
{
    for (size_t i = 0; i < nBytes; i += hn::MaxLanes(D())) {
        const Sorted5 r0(pPlanes + i), r1(pPlanes + nStride + i), r2(pPlanes + 2 * nStride + i),
            r3(pPlanes + 3 * nStride + i), r4(pPlanes + 4 * nStride + i);
        V w0 = r2.d, w1 = r4.b, w2 = r2.b, w3 = r0.e, w4 = r1.e, w5 = r4.a, w6 = r0.d, w7 = r1.d, w8 = r3.a, w9 = r2.c, w10 = r3.b, w11 = r3.c, w12 = r1.c;
        Order(w0, w8); Order(w1, w9); Order(w3, w11); Order(w4, w12);
        Order(w0, w4); Order(w1, w5); Order(w2, w6); Order(w3, w7);
        Order(w8, w12); Order(w4, w8); Order(w6, w10); Order(w7, w11);
        Order(w1, w3); Order(w4, w6); Order(w5, w7); Order(w8, w10);
        Order(w9, w11); Order(w3, w9); Order(w3, w5); Order(w6, w8);
        Order(w1, w8); Order(w3, w6); Order(w5, w8); Order(w5, w6);
        StoreOut(w6, pOut + i);
    }
}

/// Any window, at most 10 x 10. The result is the largest byte that no more than half of the window's are smaller than.
void MedianByBits(const uint8_t* const* ppRows, int nRows, int nColumns, uint8_t* pOut, size_t nBytes)
{
    const D d;
    const V wanted = hn::Set(d, static_cast<int8_t>(nRows * nColumns / 2));
    for (size_t i = 0; i < nBytes; i += hn::MaxLanes(d)) {
        V result = hn::Set(d, -128);
        for (int nBit = 128; nBit > 0; nBit >>= 1) {
            const V tried = hn::Xor(result, hn::Set(d, static_cast<int8_t>(nBit)));
            V smaller = hn::Zero(d);
            for (int r = 0; r < nRows; ++r) {
                const uint8_t* const pRow = ppRows[r] + i;
                for (int c = 0; c < nColumns; ++c)
                    smaller = hn::Sub(smaller, hn::VecFromMask(d, hn::Lt(Load(pRow + 3 * c), tried)));
            }
            result = hn::IfThenElse(hn::Gt(smaller, wanted), result, tried);
        }
        StoreOut(result, pOut + i);
    }
}

/// Sorted columns fit in the nearest cache for this many bytes of a row.
constexpr size_t c_nTile = 1024;

template <int N>
void MedianBySorting(const uint8_t* const* ppRows, uint8_t* pOut, size_t nBytes)
{
    constexpr size_t c_nStride = c_nTile + 3 * N + c_nMedianRoom;
    HWY_ALIGN uint8_t aPlanes[N * c_nStride];
    const uint8_t* apRows[N];
    for (size_t i = 0; i < nBytes; i += c_nTile) {
        const size_t n = std::min(c_nTile, nBytes - i);
        for (int r = 0; r < N; ++r)
            apRows[r] = ppRows[r] + i;
        SortColumns<N>(apRows, aPlanes, c_nStride, n + 3 * (N - 1));
        if constexpr (N == 3)
            Median3(aPlanes, c_nStride, pOut + i, n);
        else
            Median5(aPlanes, c_nStride, pOut + i, n);
    }
}

void Row(const uint8_t* const* ppRows, int nRows, int nColumns, uint8_t* pOut, size_t nBytes)
{
    if (nRows == 3 && nColumns == 3)
        MedianBySorting<3>(ppRows, pOut, nBytes);
    else if (nRows == 5 && nColumns == 5)
        MedianBySorting<5>(ppRows, pOut, nBytes);
    else
        MedianByBits(ppRows, nRows, nColumns, pOut, nBytes);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(Row);

void MedianRow(const std::uint8_t* const* ppRows, int nRows, int nColumns, std::uint8_t* pOut, std::size_t nBytes)
{
    HWY_DYNAMIC_DISPATCH(Row)(ppRows, nRows, nColumns, pOut, nBytes);
}

} // namespace kestrune
#endif
