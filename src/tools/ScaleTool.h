#pragma once

#include "tools/TransformTool.h"

namespace kestrune {

/// Drags a corner while the sides keep their directions along the axes: the opposite corner stays where it is, and the rectangle
/// cannot be turned over.
class CScaleTool : public CTransformTool {
public:
    using CTransformTool::CTransformTool;

protected:
    void Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const override;
};

} // namespace kestrune
