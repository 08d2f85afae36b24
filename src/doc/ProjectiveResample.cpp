#include "doc/ProjectiveResample.h"

#include "base/ParallelRows.h"
#include "doc/ProjectiveKernels.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace kestrune {

namespace {

constexpr double c_fFarthest = 1e6; ///< pixels; no picture is as large, and differences of such numbers fit an int
constexpr double c_fRoundingError = 1e-8;
constexpr int c_nGrain = 16;

/// The homogeneous coordinates of a row's first pixel. The order of the additions is part of the result.
ProjectiveRow RowStart(const Matrix3& m, int y)
{
    ProjectiveRow row;
    for (int i = 0; i < 3; i++) {
        row.start[i] = m.a[i][1] * y + m.a[i][2];
        row.step[i] = m.a[i][0];
    }
    return row;
}

/// The Catmull-Rom spline through p1 (t = 0) and p2 (t = 1).
double Cubic(double t, const double (&p)[4])
{
    return ((((3 * p[1] - p[0] - 3 * p[2] + p[3]) * t + (2 * p[0] - 5 * p[1] + 4 * p[2] - p[3])) * t + (p[2] - p[0])) * t + 2 * p[1]) / 2;
}

/// One output pixel, looked up around (u, v) of the source.
void SamplePlain(const MaskedSource& source, double u, double v, std::uint8_t* pBgr, std::uint8_t& nMask)
{
    const int nWidth = source.bitmap.GetWidth(), nHeight = source.bitmap.GetHeight();
    const double fu = std::floor(u), fv = std::floor(v);
    if (!(fu + 2 >= 0 && fu - 1 < nWidth && fv + 2 >= 0 && fv - 1 < nHeight))
        return;
    const int nLeft = static_cast<int>(fu) - 1, nTop = static_cast<int>(fv) - 1;
    double across[4][4]; // channel, row; channel 3 is alpha
    for (int r = 0; r < 4; r++) {
        double taps[4][4] = {};
        for (int k = 0; k < 4; k++) {
            const int x = nLeft + k, y = nTop + r;
            if (x < 0 || y < 0 || x >= nWidth || y >= nHeight)
                continue;
            const int a = source.pMask[static_cast<std::size_t>(y) * nWidth + x];
            for (int c = 0; c < 3; c++)
                taps[c][k] = source.bitmap.Row(y)[x * 3 + c] * a;
            taps[3][k] = a;
        }
        for (int c = 0; c < 3; c++)
            across[c][r] = Cubic(u - fu, taps[c]);
        across[3][r] = std::trunc(Cubic(u - fu, taps[3]));
    }
    const double a = Cubic(v - fv, across[3]);
    if (a <= 0)
        return;
    nMask = static_cast<std::uint8_t>(a >= 255 ? 255 : std::floor(a + 0.5));
    const double fOver = 1 / a;
    for (int c = 0; c < 3; c++)
        pBgr[c] = static_cast<std::uint8_t>(std::clamp(std::floor(Cubic(v - fv, across[c]) * fOver + 0.5), 0.0, 255.0));
}

} // namespace

CRect ProjectedRect(const Matrix3& m, int nWidth, int nHeight)
{
    const double w = nWidth, h = nHeight;
    double x1 = c_fFarthest, y1 = c_fFarthest, x2 = -c_fFarthest, y2 = -c_fFarthest;
    for (const PointF corner : {PointF{0, 0}, PointF{w, 0}, PointF{w, h}, PointF{0, h}}) {
        const PointF pt = m.Apply(corner);
        if (!(std::abs(pt.x) < c_fFarthest && std::abs(pt.y) < c_fFarthest))
            return {};
        x1 = std::min(x1, pt.x);
        y1 = std::min(y1, pt.y);
        x2 = std::max(x2, pt.x);
        y2 = std::max(y2, pt.y);
    }
    // A product like 10 / 49 x 49 may miss its whole number by a bit of its last place, which must not cost a row of pixels.
    const auto whole = [](double f) { return static_cast<int>(f + std::copysign(c_fRoundingError, f)); };
    const CRect rc{whole(x1), whole(y1), whole(x2), whole(y2)};
    return rc.IsEmpty() ? CRect{} : rc;
}

void ResampleProjectivePlain(const MaskedSource& source, const Matrix3& inverse, const MaskedTarget& out)
{
    const int nWidth = out.bitmap.GetWidth();
    for (int y = 0; y < out.bitmap.GetHeight(); y++) {
        ProjectiveRow row = RowStart(inverse, y);
        std::uint8_t* pBgr = out.bitmap.WriteRow(y);
        std::uint8_t* pMask = out.pMask + static_cast<std::size_t>(y) * nWidth;
        std::fill_n(pBgr, static_cast<std::size_t>(nWidth) * 3, std::uint8_t{0});
        std::fill_n(pMask, nWidth, std::uint8_t{0});
        for (int x = 0; x < nWidth; x++) {
            const auto& [X, Y, W] = row.start;
            if (W == 1)
                SamplePlain(source, X, Y, pBgr + x * 3, pMask[x]);
            else if (W != 0)
                SamplePlain(source, X / W, Y / W, pBgr + x * 3, pMask[x]);
            for (int k = 0; k < 3; k++)
                row.start[k] += row.step[k];
        }
    }
}

void ResampleProjective(const MaskedSource& source, const Matrix3& inverse, const MaskedTarget& out)
{
    if (!HasProjectiveKernel())
        return ResampleProjectivePlain(source, inverse, out);
    constexpr int p = c_nProjectivePad;
    const int nWidth = source.bitmap.GetWidth(), nHeight = source.bitmap.GetHeight();
    const std::size_t nStride = (static_cast<std::size_t>(nWidth) + 2 * p) * 4;
    const std::unique_ptr<std::uint16_t[]> pixels(new std::uint16_t[nStride * (nHeight + 2 * p)]);
    ParallelRows(nHeight + 2 * p, c_nGrain, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            std::uint16_t* pOut = pixels.get() + nStride * y;
            if (y < p || y >= nHeight + p) {
                std::fill_n(pOut, nStride, std::uint16_t{0});
                continue;
            }
            pOut = std::fill_n(pOut, p * 4, std::uint16_t{0});
            PremultiplyRow(source.bitmap.Row(y - p), source.pMask + static_cast<std::size_t>(y - p) * nWidth, pOut, nWidth);
            std::fill_n(pOut + static_cast<std::size_t>(nWidth) * 4, p * 4, std::uint16_t{0});
        }
    });
    const PremultipliedSource premultiplied{pixels.get(), nWidth, nHeight, nStride};
    out.bitmap.DetachRows(0, out.bitmap.GetHeight());
    ParallelRows(out.bitmap.GetHeight(), c_nGrain, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            const ProjectedRow row{out.bitmap.WriteRow(y), out.pMask + static_cast<std::size_t>(y) * out.bitmap.GetWidth(), out.bitmap.GetWidth()};
            ProjectRow(premultiplied, RowStart(inverse, y), row);
        }
    });
}

} // namespace kestrune
