#include "tools/FreeTransformTool.h"

namespace kestrune {

/// Four corners determine a projective map, so that it is built from the float's own rectangle at once, whatever was pending before.
void CFreeTransformTool::Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const
{
    PointF& corner = corners[drag.nHandle];
    corner = {corner.x + drag.to.x - drag.from.x, corner.y + drag.to.y - drag.from.y};
    Matrix3 toUnit;
    toUnit.Translate(-drag.whole[0].x, -drag.whole[0].y);
    toUnit.Scale(1 / (drag.whole[2].x - drag.whole[0].x), 1 / (drag.whole[2].y - drag.whole[0].y));
    matrix = UnitSquareTo(corners) * toUnit;
}

} // namespace kestrune
