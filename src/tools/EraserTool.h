#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The eraser tool: paints with the background colour, or takes pixels out of the float.
class CEraserTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
    bool LaysHardMask() const override;
};

} // namespace kestrune
