#include "selection/Shapes.h"

#include "base/ParallelRows.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrune {

void DrawRectangle(const MaskPlane& plane, const CRect& rc)
{
    const CRect rcIn = Intersect(rc, {0, 0, plane.nWidth, plane.nHeight});
    for (int y = rcIn.top; y < rcIn.bottom; y++)
        std::memset(plane.Row(y) + rcIn.left, 255, rcIn.Width());
}

std::uint8_t EllipseCoverage(const CRect& rc, int x, int y)
{
    const double w = rc.Width(), h = rc.Height();
    const double dx = x + 0.5 - (rc.left + w / 2.0), dy = y + 0.5 - (rc.top + h / 2.0);
    double d = -1; // on the row through the centre all of the width is covered
    if (dy != 0) {
        const double fSlope = dx * dx / (dy * dy);
        const double fReach = (w * w / 4) / (fSlope + (w * w / 4) / (h * h / 4));
        d = std::sqrt(dx * dx + dy * dy) - std::sqrt(fSlope * fReach + fReach);
    }
    if (d < -0.5)
        return 255;
    return d >= 0.5 ? 0 : static_cast<std::uint8_t>((1 - (d + 0.5)) * 255);
}

void DrawEllipse(const MaskPlane& plane, const CRect& rc)
{
    if (rc.IsEmpty())
        return;
    const int nTop = std::max(rc.top, 0), nBottom = std::min(rc.bottom, plane.nHeight);
    ParallelRows(nBottom - nTop, 64, [&](int y0, int y1) {
        for (int y = nTop + y0; y < nTop + y1; y++) {
            const auto Put = [&](int x, std::uint8_t n) {
                if (x >= 0 && x < plane.nWidth)
                    plane.Row(y)[x] = n;
            };
            for (int x = rc.left; x < rc.left + (rc.Width() + 1) / 2; x++) {
                const int xMirror = rc.left + rc.right - 1 - x;
                const std::uint8_t n = EllipseCoverage(rc, x, y);
                if (n == 255) {
                    const int x1 = std::max(x, 0), x2 = std::min(xMirror + 1, plane.nWidth);
                    if (x2 > x1)
                        std::memset(plane.Row(y) + x1, 255, x2 - x1);
                    break;
                }
                Put(x, n);
                Put(xMirror, n);
            }
        }
    });
}

} // namespace kestrune
