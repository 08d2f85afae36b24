#pragma once

#include "tools/TransformTool.h"

namespace kestrune {

/// Turns the rectangle around its middle by the angle that the mouse goes.
class CRotateTool : public CTransformTool {
public:
    using CTransformTool::CTransformTool;

protected:
    void Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const override;
};

} // namespace kestrune
