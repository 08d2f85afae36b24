#pragma once

#include "tools/TransformTool.h"

namespace kestrune {

/// Moves each corner by itself: the float is seen in perspective.
class CFreeTransformTool : public CTransformTool {
public:
    using CTransformTool::CTransformTool;

protected:
    void Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const override;
};

} // namespace kestrune
