#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The smudge tool: smears what it passes.
class CSmudgeTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
