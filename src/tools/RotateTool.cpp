#include "tools/RotateTool.h"

#include <cmath>

namespace kestrune {

void CRotateTool::Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const
{
    const PointF centre = Centre(drag.start);
    const double fAngle = std::atan2(drag.to.y - centre.y, drag.to.x - centre.x) - std::atan2(drag.from.y - centre.y, drag.from.x - centre.x);
    Matrix3 step;
    step.Translate(-centre.x, -centre.y);
    step.Rotate(fAngle);
    step.Translate(centre.x, centre.y);
    Map(step, corners);
    matrix = step * matrix;
}

} // namespace kestrune
