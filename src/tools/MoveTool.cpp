#include "tools/MoveTool.h"

#include "doc/PaintImage.h"
#include "tools/FloatActs.h"
#include "tools/ToolTable.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"

namespace kestrune {

namespace {

constexpr int c_nLongStep = 10;

CPoint StepOfKey(int nKey)
{
    switch (nKey) {
    case VK_LEFT: return {-1, 0};
    case VK_RIGHT: return {1, 0};
    case VK_UP: return {0, -1};
    case VK_DOWN: return {0, 1};
    default: return {};
    }
}

} // namespace

void CMoveTool::OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonDown(view, nFlags, pt);
    m_pImage = view.GetImage();
    m_bDragging = m_bMoved = false;
    if (!m_pImage || !HasFloat(*m_pImage))
        return; // the view drags the whole picture out then
    m_ptStart = view.ClientToImage(pt);
    m_ptFloatStart = {m_pImage->m_nFloatX, m_pImage->m_nFloatY};
    view.StopOutline();
    PushSelection(*m_pImage, UNDO_MOVE_SELECTION);
    m_bDragging = true;
}

void CMoveTool::OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (!m_bDragging || !(nFlags & MK_LBUTTON) || m_pImage != view.GetImage() || !HasFloat(*m_pImage))
        return;
    const CPoint at = view.ClientToImage(pt);
    const CPoint to{m_ptFloatStart.x + at.x - m_ptStart.x, m_ptFloatStart.y + at.y - m_ptStart.y};
    if (to == CPoint{m_pImage->m_nFloatX, m_pImage->m_nFloatY})
        return;
    if (!m_pImage->m_bFloating)
        m_bMoved = false; // not lifted yet, or a step back in the history has put it down in between
    LiftFloat(*m_pImage);
    m_pImage->MoveFloatTo(to.x, to.y, m_bMoved ? CPaintImage::CompositeFrom::LastStep : CPaintImage::CompositeFrom::Base);
    m_bMoved = true;
}

void CMoveTool::OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonUp(view, nFlags, pt);
    if (!m_bDragging)
        return;
    m_bDragging = false;
    if (m_pImage != view.GetImage())
        return;
    if (m_bMoved && HasFloat(*m_pImage))
        SelectionFollowsFloat(*m_pImage);
    SettleHistory(*m_pImage);
    view.StartOutline();
    view.RepaintAll();
}

/// Steps that follow each other are one act in the history.
bool CMoveTool::OnKeyDown(int nKey, int, unsigned nFlags)
{
    const CPoint step = StepOfKey(nKey);
    CPaintImage* pImage = g_pActiveToolView ? g_pActiveToolView->GetImage() : nullptr;
    if (step == CPoint{} || m_bDragging || !pImage || !HasFloat(*pImage))
        return false;
    const int nLength = nFlags & MK_SHIFT ? c_nLongStep : 1;
    const CPoint to{pImage->m_nFloatX + step.x * nLength, pImage->m_nFloatY + step.y * nLength};
    static const UndoRecord* s_pOwn = nullptr; // only compared: what the last step has pushed
    const auto newest = [&] { return pImage->m_UndoList.empty() ? nullptr : pImage->m_UndoList.front(); };
    const bool bGoesOn = newest() && newest() == s_pOwn && newest()->nKind == UNDO_MOVE_SELECTION && pImage->m_RedoList.empty()
        && pImage->m_bFloating;
    if (!bGoesOn)
        PushSelection(*pImage, UNDO_MOVE_SELECTION);
    s_pOwn = newest();
    LiftFloat(*pImage);
    pImage->MoveFloatTo(to.x, to.y, CPaintImage::CompositeFrom::Base);
    SelectionFollowsFloat(*pImage);
    SettleHistory(*pImage);
    g_pActiveToolView->RepaintAll(); // with the outline at its new place
    return true;
}

bool CMoveTool::OnSetCursor(CToolView& view, CPoint)
{
    view.SetToolCursor(FindToolRow(TOOL_MOVE)->nCursor);
    return true;
}

} // namespace kestrune
