#include "tools/HandTool.h"

#include "tools/ToolTable.h"

namespace kestrune {

void CHandTool::OnLButtonDown(CToolView& view, unsigned, CPoint pt)
{
    view.SetToolCursor(c_nCursorGrab);
    view.SetCapture();
    m_ptLast = pt;
    view.StopOutline();
}

void CHandTool::OnMouseMove(CToolView& view, unsigned, CPoint pt)
{
    if (!view.HasCapture() || pt == m_ptLast)
        return;
    CPoint scroll = view.GetScrollPosition();
    if (view.HasHScroll())
        scroll.x -= pt.x - m_ptLast.x;
    if (view.HasVScroll())
        scroll.y -= pt.y - m_ptLast.y;
    view.ScrollToPosition(scroll); // repaints what came into sight
    m_ptLast = pt;
}

void CHandTool::OnLButtonUp(CToolView& view, unsigned, CPoint)
{
    if (!view.HasCapture())
        return; // the release behind a double click ends no drag
    view.ReleaseCapture();
    view.StartOutline();
    view.RepaintAll();
}

bool CHandTool::OnSetCursor(CToolView& view, CPoint pt)
{
    if (!IsInClient(view, pt))
        return false;
    view.SetToolCursor(FindToolRow(TOOL_HAND)->nCursor);
    return true;
}

} // namespace kestrune
