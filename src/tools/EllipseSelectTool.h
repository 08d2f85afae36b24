#pragma once

#include "tools/RectSelectTool.h"

namespace kestrune {

/// Selects the ellipse that fills the rectangle between two corners, or that of the bar's fixed size.
class CEllipseSelectTool : public CRectSelectTool {
public:
    using CRectSelectTool::CRectSelectTool;

protected:
    void DrawShape(const MaskPlane& plane, const CRect& rcPart) const override;
    std::uint32_t UndoKind() const override;
    void AddBand(const CToolView& view, ToolOverlay& overlay) const override;
};

} // namespace kestrune
