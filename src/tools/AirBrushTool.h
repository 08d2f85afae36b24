#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The air brush tool: its paint builds up, also while the mouse rests.
class CAirBrushTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;
    void OnTimer(CToolView& view, int nTimer) override;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
    void AfterPress(CToolView& view) override;
    void BeforeRelease(CToolView& view) override;
};

} // namespace kestrune
