#include "tools/ScaleTool.h"

#include <algorithm>

namespace kestrune {

namespace {

/// The new length of a side, with its sign: a pixel of the screen is the least. One without length (of a square that was turned onto its
/// corner) cannot grow.
double NewLength(double fOld, double fChange, double fLeast)
{
    if (fOld == 0)
        return 0;
    return fOld < 0 ? std::min(fOld + fChange, -fLeast) : std::max(fOld + fChange, fLeast);
}

} // namespace

void CScaleTool::Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const
{
    const PointF dragged = drag.start[drag.nHandle], fixed = drag.start[(drag.nHandle + 2) % 4];
    const double wOld = dragged.x - fixed.x, hOld = dragged.y - fixed.y;
    const double w = NewLength(wOld, drag.to.x - drag.from.x, drag.fPixel);
    const double h = NewLength(hOld, drag.to.y - drag.from.y, drag.fPixel);
    const double sx = wOld == 0 ? 1 : w / wOld, sy = hOld == 0 ? 1 : h / hOld;
    // Worked out from the first corner, which so comes to lie exactly where it belongs.
    const PointF first = drag.start[0];
    const auto place = [](double f, double fFixed, double fScale, double fDragged, double fNew) {
        return f == fFixed ? f : f == fDragged ? fFixed + fNew : fFixed + (f - fFixed) * fScale;
    };
    Matrix3 step;
    step.Translate(-first.x, -first.y);
    step.Scale(sx, sy);
    step.Translate(place(first.x, fixed.x, sx, dragged.x, w), place(first.y, fixed.y, sy, dragged.y, h));
    Map(step, corners);
    matrix = step * matrix;
}

} // namespace kestrune
