#include "tools/StrokeTool.h"

#include "doc/PaintImage.h"
#include "paint/PaintCore.h"
#include "tools/ToolTable.h"
#include "undo/UndoStack.h"

namespace kestrune {

CStrokeTool::CStrokeTool(int nToolId)
    : CPaintTool(nToolId)
{
}

CStrokeTool::~CStrokeTool() = default;

/// The point in the picture, limited to its edges: right and bottom themselves included, one past the last pixel.
CPoint CStrokeTool::ImagePoint(const CToolView& view, CPoint pt) const
{
    return view.ClientToImage(ClampToImage(view, pt, *m_pImage));
}

void CStrokeTool::DropStroke()
{
    m_bStroking = false;
    m_pCore.reset();
}

void CStrokeTool::OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonDown(view, nFlags, pt);
    DropStroke();
    m_pImage = view.GetImage();
    if (!m_pImage)
        return;
    const CPoint ptImage = ImagePoint(view, pt);
    if (!BeforeStroke(view, nFlags, ptImage)) {
        ShowOverlay(view, pt);
        return;
    }
    m_bStroking = true;
    m_pCore = MakeCore(*m_pImage);
    m_nImageWidth = m_pImage->m_nWidth;
    m_nImageHeight = m_pImage->m_nHeight;
    PushRect(*m_pImage, 0, 0, m_nImageWidth, m_nImageHeight, FindToolRow(m_nToolId)->nUndoKind);
    m_pCore->Begin(nFlags, ptImage.x, ptImage.y);
    AfterPress(view);
    ShowOverlay(view, pt);
}

void CStrokeTool::OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (m_bStroking && m_pCore && (nFlags & MK_LBUTTON) && view.GetImage() == m_pImage) {
        const CPoint ptImage = ImagePoint(view, pt);
        m_pCore->StrokeTo(ptImage.x, ptImage.y);
    }
    if (m_bStroking)
        ShowOverlay(view, pt);
    CPaintTool::OnMouseMove(view, nFlags, pt);
}

void CStrokeTool::OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonUp(view, nFlags, pt);
    if (!m_bStroking || !m_pCore) {
        m_bStroking = false;
        return;
    }
    BeforeRelease(view);
    if (view.GetImage() == m_pImage) {
        m_pCore->End();
        SettleHistory(*m_pImage);
    }
    DropStroke();
    ShowOverlay(view, pt);
}

bool CStrokeTool::OnSetCursor(CToolView& view, CPoint pt)
{
    view.SetToolCursor(FindToolRow(m_nToolId)->nCursor);
    ShowOverlay(view, pt);
    return true;
}

void CStrokeTool::OnMouseLeave(CToolView& view)
{
    m_pPointerView = nullptr;
    view.SetOverlay({});
}

void CStrokeTool::OnDeactivate()
{
    if (g_pActiveToolView)
        OnMouseLeave(*g_pActiveToolView);
}

void CStrokeTool::OnDrawOverlay(CToolView& view)
{
    if (m_pPointerView == &view)
        ShowOverlay(view, m_ptPointer);
}

void CStrokeTool::ShowOverlay(CToolView& view, CPoint pt)
{
    m_ptPointer = pt;
    m_pPointerView = IsInClient(view, pt) ? &view : nullptr;
    ToolOverlay overlay;
    if (m_pPointerView && view.GetImage()) {
        m_outline.Place(view, pt, LaysHardMask(), overlay);
        AddToOverlay(view, overlay);
    }
    view.SetOverlay(std::move(overlay));
}

} // namespace kestrune
