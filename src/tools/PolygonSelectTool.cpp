#include "tools/PolygonSelectTool.h"

#include "undo/UndoKinds.h"

namespace kestrune {

void CPolygonSelectTool::OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (!m_bDragging || m_pImage != view.GetImage()) {
        CFreeSelectTool::OnLButtonDown(view, nFlags, pt);
        return;
    }
    view.SetCapture();
    m_aCorners[1] = ClampedPoint(view, pt);
    m_nCorner = 2;
    m_points.push_back(m_aCorners[1]);
    ShowBand(view);
}

void CPolygonSelectTool::OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (IsMovingOutline())
        CFreeSelectTool::OnLButtonUp(view, nFlags, pt);
    else
        CPaintTool::OnLButtonUp(view, nFlags, pt); // the polygon goes on with the next click
}

void CPolygonSelectTool::OnLButtonDblClk(CToolView& view, unsigned, CPoint)
{
    if (m_bDragging && !IsMovingOutline())
        Finish(view); // its first click was the last corner
}

void CPolygonSelectTool::OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (!m_bDragging || m_pImage != view.GetImage())
        return;
    if (IsMovingOutline()) {
        CFreeSelectTool::OnMouseMove(view, nFlags, pt);
        return;
    }
    m_aCorners[1] = ClampedPoint(view, pt); // where the band from the last corner leads, button or not
    ShowBand(view);
}

bool CPolygonSelectTool::OnKeyDown(int nKey, int nRepeat, unsigned nFlags)
{
    const bool bDrawing = m_bDragging && !IsMovingOutline() && g_pActiveToolView;
    if (bDrawing && nKey == VK_RETURN) {
        Finish(*g_pActiveToolView);
        return true;
    }
    if (bDrawing && nKey == VK_BACK && m_points.size() > 1) {
        m_points.pop_back();
        ShowBand(*g_pActiveToolView);
        return true;
    }
    return CFreeSelectTool::OnKeyDown(nKey, nRepeat, nFlags);
}

std::uint32_t CPolygonSelectTool::UndoKind() const
{
    return UNDO_SELECT_POLYGON;
}

void CPolygonSelectTool::AddBand(const CToolView& view, ToolOverlay& overlay) const
{
    CFreeSelectTool::AddBand(view, overlay);
    if (!m_points.empty())
        overlay.aLines.push_back({ToClient(view, m_points.back()), ToClient(view, m_aCorners[1])});
}

} // namespace kestrune
