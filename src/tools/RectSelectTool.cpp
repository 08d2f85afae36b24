#include "tools/RectSelectTool.h"

#include "selection/Shapes.h"
#include "tools/ToolOptions.h"
#include "undo/UndoKinds.h"

#include <algorithm>

namespace kestrune {

void CRectSelectTool::BeginShape(CToolView&)
{
    m_sizeFixed = {};
    if (!GetToolOption(ToolOption::FloaterStyle))
        return;
    m_sizeFixed = {GetToolOption(ToolOption::FloaterWidth), GetToolOption(ToolOption::FloaterHeight)};
    m_nCorner = 2; // the press alone says all
}

void CRectSelectTool::ContinueShape(CToolView&)
{
    if (m_sizeFixed.cx)
        m_aCorners[0] = m_aCorners[1];
}

CRect CRectSelectTool::ShapeBounds() const
{
    CRect rc{static_cast<int>(m_aCorners[0].x), static_cast<int>(m_aCorners[0].y), static_cast<int>(m_aCorners[1].x),
             static_cast<int>(m_aCorners[1].y)};
    if (m_sizeFixed.cx) { // pushed back where it would stick out
        rc.left = std::max(std::min(rc.left, m_nImageWidth - m_sizeFixed.cx), 0);
        rc.top = std::max(std::min(rc.top, m_nImageHeight - m_sizeFixed.cy), 0);
        rc.right = std::min(rc.left + m_sizeFixed.cx, m_nImageWidth);
        rc.bottom = std::min(rc.top + m_sizeFixed.cy, m_nImageHeight);
    }
    rc.Normalize();
    return rc;
}

void CRectSelectTool::DrawShape(const MaskPlane& plane, const CRect& rcPart) const
{
    CRect rc = ShapeBounds();
    rc.Offset(-rcPart.left, -rcPart.top);
    DrawRectangle(plane, rc);
}

std::uint32_t CRectSelectTool::UndoKind() const
{
    return UNDO_SELECT_RECT;
}

void CRectSelectTool::AddBand(const CToolView& view, ToolOverlay& overlay) const
{
    const CRect rc = ShapeBounds();
    if (!rc.IsEmpty())
        overlay.AddRect(ToClient(view, rc));
}

} // namespace kestrune
