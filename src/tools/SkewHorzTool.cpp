#include "tools/SkewHorzTool.h"

namespace kestrune {

void CSkewHorzTool::Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const
{
    Slant(drag, true, corners, matrix);
}

} // namespace kestrune
