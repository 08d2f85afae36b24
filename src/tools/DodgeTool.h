#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The dodge tool: makes lighter what it passes.
class CDodgeTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
