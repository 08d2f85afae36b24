#include "tools/SkewVertTool.h"

namespace kestrune {

void CSkewVertTool::Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const
{
    Slant(drag, false, corners, matrix);
}

} // namespace kestrune
