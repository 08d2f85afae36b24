// Two recursions over a line, one from each end, added. Lines lie side by side, so that the compiler makes vectors of the
// inner loops; within a lane every operation stands in its stated order.
#include "filters/GaussianKernel.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/GaussianKernel.cpp"
#include "hwy/foreach_target.h" // must come before highway.h
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

using std::size_t;
using std::uint8_t;
using Five = GaussianCoefficients::Five;

/// A step near a line's start: so far `nKnown` earlier steps exist, the edge stands for the others.
template <int W>
void EdgeStep(const Five& n, const Five& d, const Five& b, int nKnown, const double* const* ppSource, double* const* ppResult,
              const double* pEdge)
{
    double* const pOut = ppResult[0];
    for (int c = 0; c < W; ++c) {
        double v = 0.0;
        for (int k = 0; k <= nKnown; ++k)
            v += n[k] * ppSource[k][c] - d[k] * (k ? ppResult[k][c] : 0.0);
        for (int k = nKnown + 1; k < 5; ++k)
            v += (n[k] - b[k]) * pEdge[c];
        pOut[c] = v;
    }
}

/// Any other step. `d[0]` is 0 on both ways, `n[4]` on the way forward, `n[0]` on the way back: products with them add
/// nothing and are left out.
template <int W>
HWY_INLINE void ForwardStep(const Five& n, const Five& d, const double* const* ppSource, double* HWY_RESTRICT pOut,
                            const double* HWY_RESTRICT p1)
{
    const double n0 = n[0], n1 = n[1], n2 = n[2], n3 = n[3], d1 = d[1], d2 = d[2], d3 = d[3], d4 = d[4];
    const double *HWY_RESTRICT s0 = ppSource[0], *HWY_RESTRICT s1 = ppSource[1], *HWY_RESTRICT s2 = ppSource[2],
                              *HWY_RESTRICT s3 = ppSource[3];
    const double *HWY_RESTRICT p2 = p1 - W, *HWY_RESTRICT p3 = p1 - 2 * W, *HWY_RESTRICT p4 = p1 - 3 * W;
    for (int c = 0; c < W; ++c) {
        double v = n0 * s0[c];
        v += n1 * s1[c] - d1 * p1[c];
        v += n2 * s2[c] - d2 * p2[c];
        v += n3 * s3[c] - d3 * p3[c];
        pOut[c] = v - d4 * p4[c];
    }
}

template <int W>
HWY_INLINE void BackwardStep(const Five& n, const Five& d, const double* const* ppSource, double* const* ppResult)
{
    const double n1 = n[1], n2 = n[2], n3 = n[3], n4 = n[4], d1 = d[1], d2 = d[2], d3 = d[3], d4 = d[4];
    const double *HWY_RESTRICT s1 = ppSource[1], *HWY_RESTRICT s2 = ppSource[2], *HWY_RESTRICT s3 = ppSource[3],
                              *HWY_RESTRICT s4 = ppSource[4];
    const double *HWY_RESTRICT q1 = ppResult[1], *HWY_RESTRICT q2 = ppResult[2], *HWY_RESTRICT q3 = ppResult[3],
                              *HWY_RESTRICT q4 = ppResult[4];
    double* HWY_RESTRICT pOut = ppResult[0];
    for (int c = 0; c < W; ++c) {
        double v = n1 * s1[c] - d1 * q1[c];
        v += n2 * s2[c] - d2 * q2[c];
        v += n3 * s3[c] - d3 * q3[c];
        v += n4 * s4[c] - d4 * q4[c];
        pOut[c] = v;
    }
}

template <int W>
HWY_INLINE void Widen(const uint8_t* HWY_RESTRICT pIn, double* HWY_RESTRICT pOut)
{
    for (int c = 0; c < W; ++c)
        pOut[c] = pIn[c];
}

template <int W>
HWY_INLINE void StoreSums(const double* HWY_RESTRICT p, const double* HWY_RESTRICT q, uint8_t* HWY_RESTRICT pOut)
{
    for (int c = 0; c < W; ++c) {
        double v = p[c] + q[c];
        v = v >= 255.0 ? 255.0 : v;
        v = v >= 0.0 ? v : 0.0;
        pOut[c] = static_cast<uint8_t>(static_cast<int>(v));
    }
}

/// Moves the youngest of five to the back, so that its room takes the next step.
template <class P>
HWY_INLINE void Turn(P* pp)
{
    P const last = pp[4];
    for (int k = 4; k > 0; --k)
        pp[k] = pp[k - 1];
    pp[0] = last;
}

template <int W>
void Lines(const GaussianCoefficients& g, uint8_t* pLines, int nLength, double* pScratch)
{
    HWY_ALIGN double aSource[5][W];
    HWY_ALIGN double aResult[5][W];
    HWY_ALIGN double aEdge[W];
    double* apSource[5];
    double* apResult[5];
    for (int k = 0; k < 5; ++k) {
        apSource[k] = aSource[k];
        apResult[k] = aResult[k];
    }
    Widen<W>(pLines, aEdge);
    for (int i = 0; i < nLength; ++i) {
        Turn(apSource);
        Widen<W>(pLines + static_cast<size_t>(i) * W, apSource[0]);
        double* const pOut = pScratch + static_cast<size_t>(i) * W;
        if (i >= 4)
            ForwardStep<W>(g.np, g.dp, apSource, pOut, pOut - W);
        else {
            double* apOut[5] = {pOut, pOut - (i > 0 ? W : 0), pOut - (i > 1 ? 2 * W : 0), pOut - (i > 2 ? 3 * W : 0), pOut};
            EdgeStep<W>(g.np, g.dp, g.bdp, i, apSource, apOut, aEdge);
        }
    }
    Widen<W>(pLines + static_cast<size_t>(nLength - 1) * W, aEdge);
    for (int i = 0; i < nLength; ++i) {
        uint8_t* const pStep = pLines + static_cast<size_t>(nLength - 1 - i) * W;
        Turn(apSource);
        Turn(apResult);
        Widen<W>(pStep, apSource[0]);
        if (i >= 4)
            BackwardStep<W>(g.nm, g.dm, apSource, apResult);
        else
            EdgeStep<W>(g.nm, g.dm, g.bdm, i, apSource, apResult, aEdge);
        StoreSums<W>(pScratch + static_cast<size_t>(nLength - 1 - i) * W, apResult[0], pStep);
    }
}

void RowLines(const GaussianCoefficients& g, uint8_t* pLines, int nLength, double* pScratch)
{
    Lines<c_nGaussianRowLanes>(g, pLines, nLength, pScratch);
}
void ColumnLines(const GaussianCoefficients& g, uint8_t* pLines, int nLength, double* pScratch)
{
    Lines<c_nGaussianColumnLanes>(g, pLines, nLength, pScratch);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(RowLines);
HWY_EXPORT(ColumnLines);

void GaussianLines(const GaussianCoefficients& coefficients, int nLanes, std::uint8_t* pLines, int nLength, double* pScratch)
{
    if (nLanes == c_nGaussianRowLanes)
        HWY_DYNAMIC_DISPATCH(RowLines)(coefficients, pLines, nLength, pScratch);
    else
        HWY_DYNAMIC_DISPATCH(ColumnLines)(coefficients, pLines, nLength, pScratch);
}

} // namespace kestrune
#endif
