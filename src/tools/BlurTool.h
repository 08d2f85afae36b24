#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The blur tool: softens what it passes.
class CBlurTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
