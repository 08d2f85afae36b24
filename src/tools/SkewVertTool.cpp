#include "tools/SkewVertTool.h"

#include <cmath>

namespace kestrune {

void CSkewVertTool::Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const
{
    const PointF centre = Centre(drag.start);
    // Half of the rectangle's side, with the sign of the edge that is dragged, so that this edge follows the mouse.
    const double fHalf = drag.start[drag.nHandle].x - centre.x;
    if (std::abs(fHalf) < drag.fPixel / 2)
        return; // the corner lies on the middle line, which no slant moves
    Matrix3 step;
    step.Translate(-centre.x, -centre.y);
    step.ShearY((drag.to.y - drag.from.y) / fHalf);
    step.Translate(centre.x, centre.y);
    Map(step, corners);
    matrix = step * matrix;
}

} // namespace kestrune
