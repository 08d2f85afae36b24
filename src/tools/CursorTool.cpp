#include "tools/CursorTool.h"

#include "tools/ToolTable.h"

namespace kestrune {

bool CCursorTool::OnSetCursor(CToolView& view, CPoint pt)
{
    const ToolRow* pRow = FindToolRow(m_nToolId);
    if (!pRow || !pRow->nCursor || !IsInClient(view, pt))
        return false;
    view.SetToolCursor(pRow->nCursor);
    return true;
}

void CCursorTool::OnActivate()
{
    if (g_pActiveToolView && (m_nToolId == TOOL_EYEDROPPER || m_nToolId == TOOL_TEXT))
        g_pActiveToolView->SetToolCursor(FindToolRow(m_nToolId)->nCursor);
}

} // namespace kestrune
