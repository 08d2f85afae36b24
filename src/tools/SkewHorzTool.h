#pragma once

#include "tools/TransformTool.h"

namespace kestrune {

/// Slants the rectangle: its upper or lower edge goes with the mouse, the opposite one the other way, and the middle stays.
class CSkewHorzTool : public CTransformTool {
public:
    using CTransformTool::CTransformTool;

protected:
    void Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const override;
};

} // namespace kestrune
