#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The stamp tool: a press with Control sets the source, other strokes copy from there. A cross marks the source.
class CStampTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
    bool BeforeStroke(CToolView& view, unsigned nFlags, CPoint ptImage) override;
    void AddToOverlay(CToolView& view, ToolOverlay& overlay) override;

private:
    bool m_bNoSource = true;
};

} // namespace kestrune
