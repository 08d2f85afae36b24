#pragma once

#include "tools/TransformTool.h"

namespace kestrune {

/// Slants the rectangle: its left or right edge goes with the mouse, the opposite one the other way, and the middle stays.
class CSkewVertTool : public CTransformTool {
public:
    using CTransformTool::CTransformTool;

protected:
    void Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const override;
};

} // namespace kestrune
