#include "tools/EllipseSelectTool.h"

#include "selection/Shapes.h"
#include "undo/UndoKinds.h"

namespace kestrune {

void CEllipseSelectTool::DrawShape(const MaskPlane& plane, const CRect& rcPart) const
{
    CRect rc = ShapeBounds();
    rc.Offset(-rcPart.left, -rcPart.top);
    DrawEllipse(plane, rc);
}

std::uint32_t CEllipseSelectTool::UndoKind() const
{
    return UNDO_SELECT_ELLIPSE;
}

void CEllipseSelectTool::AddBand(const CToolView& view, ToolOverlay& overlay) const
{
    const CRect rc = ShapeBounds();
    if (!rc.IsEmpty())
        overlay.aEllipses.push_back(ToClient(view, rc));
}

} // namespace kestrune
