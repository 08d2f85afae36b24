// The row kernel of the projective resampling. The four channels of a pixel are the lanes of its vectors: each goes through the very
// additions and products of the plain form, in doubles and in its order, so the bytes are the same at every vector width.
#include "doc/ProjectiveKernels.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "doc/ProjectiveKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR || !HWY_HAVE_FLOAT64

bool HasKernel() { return false; }
void Premultiply(const std::uint8_t*, const std::uint8_t*, std::uint16_t*, int) {}
void Project(const PremultipliedSource&, const ProjectiveRow&, const ProjectedRow&) {}

#else

using D = hn::CappedTag<double, 4>;
using DI = hn::Rebind<std::int32_t, D>;
using DW = hn::Rebind<std::uint16_t, D>;
using V = hn::Vec<D>;
using VI = hn::Vec<DI>;

constexpr int c_nLanes = static_cast<int>(hn::MaxLanes(D()));
constexpr int c_nParts = 4 / c_nLanes; ///< vectors that one pixel takes
constexpr int c_nRun = 128;            ///< pixels whose places are worked out together

bool HasKernel() { return true; }

void Premultiply(const std::uint8_t* HWY_RESTRICT pBgr, const std::uint8_t* HWY_RESTRICT pMask, std::uint16_t* HWY_RESTRICT pOut, int nCount)
{
    for (int x = 0; x < nCount; x++) {
        const unsigned a = pMask[x];
        for (int c = 0; c < 3; c++)
            pOut[x * 4 + c] = static_cast<std::uint16_t>(pBgr[x * 3 + c] * a);
        pOut[x * 4 + 3] = static_cast<std::uint16_t>(a);
    }
}

/// Where the pixels of a run lie in the source: the first tap's place and the fractions; a place below 0 is out of reach.
struct Places {
    alignas(64) std::int64_t aTap[c_nRun];
    alignas(64) double fu[c_nRun];
    alignas(64) double fv[c_nRun];
};

/// Whole numbers are summed before they become doubles: exact, whatever the order.
HWY_INLINE V CubicAcross(V t, VI p0, VI p1, VI p2, VI p3)
{
    const D d;
    const VI twice = hn::Add(p1, p1);
    const VI difference = hn::Sub(p1, p2);
    const VI c3 = hn::Add(hn::Add(hn::Add(difference, difference), difference), hn::Sub(p3, p0));
    const VI c2 = hn::Sub(hn::Add(hn::Sub(p0, twice), p2), c3);
    V r = hn::Add(hn::Mul(hn::PromoteTo(d, c3), t), hn::PromoteTo(d, c2));
    r = hn::Add(hn::Mul(r, t), hn::PromoteTo(d, hn::Sub(p2, p0)));
    r = hn::Add(hn::Mul(r, t), hn::PromoteTo(d, twice));
    return hn::Mul(r, hn::Set(d, 0.5));
}

HWY_INLINE V CubicDown(V t, const V (&p)[4])
{
    const D d;
    const auto times = [&](double f, V v) HWY_ATTR { return hn::Mul(hn::Set(d, f), v); };
    const V c3 = hn::Add(hn::Sub(hn::Sub(times(3, p[1]), p[0]), times(3, p[2])), p[3]);
    const V c2 = hn::Sub(hn::Add(hn::Sub(times(2, p[0]), times(5, p[1])), times(4, p[2])), p[3]);
    V r = hn::Add(hn::Mul(c3, t), c2);
    r = hn::Add(hn::Mul(r, t), hn::Sub(p[2], p[0]));
    r = hn::Add(hn::Mul(r, t), times(2, p[1]));
    return hn::Mul(r, hn::Set(d, 0.5));
}

HWY_INLINE VI Tap(const std::uint16_t* p)
{
    return hn::PromoteTo(DI(), hn::LoadU(DW(), p));
}

/// Both splines on one part of the channels; in the last lane of the last part stands alpha, whose rows are cut to whole numbers.
HWY_INLINE V Sample(const std::uint16_t* p, std::size_t nStride, V fu, V fv, hn::Mask<D> alphaLane)
{
    V rows[4];
    for (int r = 0; r < 4; r++, p += nStride) {
        const V across = CubicAcross(fu, Tap(p), Tap(p + 4), Tap(p + 8), Tap(p + 12));
        rows[r] = hn::IfThenElse(alphaLane, hn::Trunc(across), across);
    }
    return CubicDown(fv, rows);
}

void SamplePixel(const PremultipliedSource& source, const Places& places, int i, std::uint8_t* pBgr, std::uint8_t& nMask)
{
    const D d;
    const V fu = hn::Set(d, places.fu[i]), fv = hn::Set(d, places.fv[i]);
    const std::uint16_t* p = source.pPixels + places.aTap[i];
    alignas(32) double sums[4];
    for (int k = 0; k < c_nParts; k++) {
        const auto alphaLane = hn::Not(hn::FirstN(d, k == c_nParts - 1 ? c_nLanes - 1 : c_nLanes));
        hn::Store(Sample(p + k * c_nLanes, source.nStride, fu, fv, alphaLane), d, sums + k * c_nLanes);
    }
    const double a = sums[3];
    if (a <= 0)
        return;
    nMask = static_cast<std::uint8_t>(a >= 255 ? 255 : static_cast<int>(a + 0.5));
    const V over = hn::Set(d, 1 / a), half = hn::Set(d, 0.5);
    alignas(16) std::int32_t bytes[4];
    for (int k = 0; k < c_nParts; k++) {
        // Clamped before it is cut: below 0 all the same, above it cutting is the floor.
        const V v = hn::Add(hn::Mul(hn::Load(d, sums + k * c_nLanes), over), half);
        const V clamped = hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, 255.0));
        hn::Store(hn::DemoteTo(DI(), clamped), DI(), bytes + k * c_nLanes);
    }
    for (int c = 0; c < 3; c++)
        pBgr[c] = static_cast<std::uint8_t>(bytes[c]);
}

/// The places of the next `n` pixels; `at` goes on behind them. The sums run one after the other, as they do in the plain form.
void Locate(const PremultipliedSource& source, double (&at)[3], const double (&step)[3], int n, Places& places)
{
    alignas(64) double X[c_nRun], Y[c_nRun], W[c_nRun];
    for (int i = 0; i < n; i++) {
        X[i] = at[0];
        Y[i] = at[1];
        W[i] = at[2];
        for (int k = 0; k < 3; k++)
            at[k] += step[k];
    }
    const double fRight = source.nWidth, fBottom = source.nHeight;
    const std::int64_t nStride = static_cast<std::int64_t>(source.nStride);
    for (int i = 0; i < n; i++) {
        // A division by 1 changes nothing, so that it needs no branch; by 0 it gives what is out of every reach.
        const double u = X[i] / W[i], v = Y[i] / W[i];
        const double iu = std::floor(u), iv = std::floor(v);
        const bool bInReach = (iu >= -2) & (iu <= fRight) & (iv >= -2) & (iv <= fBottom);
        places.fu[i] = u - iu;
        places.fv[i] = v - iv;
        const double x = bInReach ? iu + (c_nProjectivePad - 1) : 0, y = bInReach ? iv + (c_nProjectivePad - 1) : 0;
        places.aTap[i] = bInReach ? static_cast<std::int32_t>(y) * nStride + static_cast<std::int32_t>(x) * 4 : -1;
    }
}

void Project(const PremultipliedSource& source, const ProjectiveRow& row, const ProjectedRow& out)
{
    Places places;
    double at[3] = {row.start[0], row.start[1], row.start[2]};
    for (int x = 0; x < out.nCount; x += c_nRun) {
        const int n = std::min(c_nRun, out.nCount - x);
        std::fill_n(out.pBgr + static_cast<std::size_t>(x) * 3, n * 3, std::uint8_t{0});
        std::fill_n(out.pMask + x, n, std::uint8_t{0});
        Locate(source, at, row.step, n, places);
        for (int i = 0; i < n; i++)
            if (places.aTap[i] >= 0)
                SamplePixel(source, places, i, out.pBgr + static_cast<std::size_t>(x + i) * 3, out.pMask[x + i]);
    }
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(HasKernel);
HWY_EXPORT(Premultiply);
HWY_EXPORT(Project);

bool HasProjectiveKernel()
{
    return HWY_DYNAMIC_DISPATCH(HasKernel)();
}

void PremultiplyRow(const std::uint8_t* pBgr, const std::uint8_t* pMask, std::uint16_t* pOut, int nCount)
{
    HWY_DYNAMIC_DISPATCH(Premultiply)(pBgr, pMask, pOut, nCount);
}

void ProjectRow(const PremultipliedSource& source, const ProjectiveRow& row, const ProjectedRow& out)
{
    HWY_DYNAMIC_DISPATCH(Project)(source, row, out);
}

} // namespace kestrune
#endif
