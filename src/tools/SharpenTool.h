#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The sharpen tool: sharpens what it passes.
class CSharpenTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
