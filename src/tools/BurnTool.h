#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The burn tool: makes darker what it passes.
class CBurnTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
