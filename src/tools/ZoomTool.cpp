#include "tools/ZoomTool.h"

#include "tools/ToolTable.h"

namespace kestrune {

void CZoomTool::OnLButtonDown(CToolView& view, unsigned, CPoint pt)
{
    view.ZoomAt(true, pt); // no capture: a press is all there is
}

void CZoomTool::OnRButtonDown(CToolView& view, unsigned, CPoint pt)
{
    view.ZoomAt(false, pt);
}

bool CZoomTool::OnSetCursor(CToolView& view, CPoint pt)
{
    if (!IsInClient(view, pt))
        return false;
    view.SetToolCursor(FindToolRow(TOOL_ZOOM)->nCursor);
    return true;
}

} // namespace kestrune
