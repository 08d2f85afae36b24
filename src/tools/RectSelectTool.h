#pragma once

#include "tools/SelectTool.h"

namespace kestrune {

/// Selects a rectangle between two corners, or one of the bar's fixed size that follows the mouse.
class CRectSelectTool : public CSelectTool {
public:
    using CSelectTool::CSelectTool;

protected:
    void BeginShape(CToolView& view) override;
    void ContinueShape(CToolView& view) override;
    CRect ShapeBounds() const override;
    void DrawShape(const MaskPlane& plane, const CRect& rcPart) const override;
    std::uint32_t UndoKind() const override;
    bool IsColumns() const override { return true; }
    void AddBand(const CToolView& view, ToolOverlay& overlay) const override;

private:
    CSize m_sizeFixed; ///< in pixels of the picture; 0 without
};

} // namespace kestrune
