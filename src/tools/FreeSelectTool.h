#pragma once

#include "tools/SelectTool.h"

#include <vector>

namespace kestrune {

/// Selects what the mouse goes around: every position it reports is a corner of the outline, however many.
class CFreeSelectTool : public CSelectTool {
public:
    using CSelectTool::CSelectTool;

protected:
    void BeginShape(CToolView& view) override;
    void ContinueShape(CToolView& view) override;
    void EndShape() override { m_points.clear(); }
    CRect ShapeBounds() const override;
    void DrawShape(const MaskPlane& plane, const CRect& rcPart) const override;
    std::uint32_t UndoKind() const override;
    void AddBand(const CToolView& view, ToolOverlay& overlay) const override;

    std::vector<PointF> m_points; ///< of the picture, with their fraction
};

} // namespace kestrune
