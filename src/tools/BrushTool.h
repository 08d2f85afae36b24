#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The brush tool: paints with the foreground colour, fading out if asked to.
class CBrushTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
