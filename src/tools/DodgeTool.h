#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The dodge tool: makes lighter what it passes.
class CDodgeTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    /// What the bar that dodge and burn share holds.
    static StrokeSettings Settings();
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune
