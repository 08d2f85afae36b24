#include "tools/SelectTool.h"

#include "doc/PaintImage.h"
#include "tools/SelectionActs.h"
#include "tools/ToolOptions.h"
#include "tools/ToolTable.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr CPoint c_noOffset{0, 0};

SelectMode ModeOfBar()
{
    return static_cast<SelectMode>(GetToolOption(ToolOption::FloaterMode));
}

/// The picture's point under a client point, with its fraction.
PointF ToImage(const CToolView& view, CPoint pt)
{
    const CPoint origin = view.GetImageOrigin(), scroll = view.GetScrollPosition();
    const double fZoom = view.GetZoom();
    return {(pt.x + scroll.x - origin.x) / fZoom, (pt.y + scroll.y - origin.y) / fZoom};
}

} // namespace

void CSelectTool::OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonDown(view, nFlags, pt);
    m_nFeather = GetToolOption(ToolOption::FloaterFeather);
    m_pImage = view.GetImage();
    m_bDragging = m_pImage != nullptr;
    if (!m_pImage)
        return;
    m_nImageWidth = m_pImage->m_nWidth;
    m_nImageHeight = m_pImage->m_nHeight;
    m_pImage->ReleaseFloat(); // its pixels are in the picture
    m_ptPress = m_ptLast = pt;
    m_aCorners[0] = m_aCorners[1] = ClampedPoint(view, pt);
    m_nCorner = 1;
    m_pressMode = nFlags & MK_SHIFT ? SelectMode::Add : nFlags & MK_CONTROL ? SelectMode::Subtract : SelectMode::New;
    if (ModeOfBar() != SelectMode::New)
        m_pressMode = SelectMode::New; // the bar has it, and keys may still change it
    const PointF ptImage = ToImage(view, pt);
    m_bMoving = Mode() == SelectMode::New && ptImage.x >= 0 && ptImage.y >= 0
        && m_pImage->IsInMask(static_cast<int>(ptImage.x), static_cast<int>(ptImage.y));
    if (!IsMovingOutline())
        BeginShape(view);
    ShowBand(view);
}

void CSelectTool::OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (!m_bDragging || !(nFlags & MK_LBUTTON) || m_pImage != view.GetImage())
        return;
    m_ptLast = pt;
    if (IsMovingOutline()) {
        view.OffsetOutline({pt.x - m_ptPress.x, pt.y - m_ptPress.y});
        return;
    }
    m_aCorners[1] = ClampedPoint(view, pt);
    m_nCorner = 2;
    ContinueShape(view);
    ShowBand(view);
}

void CSelectTool::OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonUp(view, nFlags, pt);
    if (m_bDragging)
        Finish(view);
}

void CSelectTool::Finish(CToolView& view)
{
    m_bDragging = false;
    view.SetOverlay({});
    view.OffsetOutline(c_noOffset);
    if (!m_pImage || m_pImage != view.GetImage())
        return EndShape();
    if (IsMovingOutline() && m_ptLast != m_ptPress)
        MoveOutline(view);
    else if (!IsMovingOutline() && m_nCorner != 1 && HasShape())
        SelectShape(*m_pImage, ShapeBounds(), [this](const MaskPlane& plane, const CRect& rc) { DrawShape(plane, rc); },
                    {Mode(), m_nFeather, UndoKind(), IsColumns()});
    else
        SelectNone(*m_pImage);
    EndShape();
}

/// Moves the mask by the drag's offset. The float's rectangle is larger than the mask's by the feather, as it has always been.
void CSelectTool::MoveOutline(CToolView& view)
{
    const double fZoom = view.GetZoom();
    const int dx = static_cast<int>((m_ptLast.x - m_ptPress.x) / fZoom), dy = static_cast<int>((m_ptLast.y - m_ptPress.y) / fZoom);
    if (dx == 0 && dy == 0)
        return FinishSelection(*m_pImage); // less than a pixel of the picture
    MoveSelectionMask(*m_pImage, dx, dy);
    CRect rc;
    m_pImage->GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom);
    const int n = m_nFeather;
    FinishSelection(*m_pImage, Intersect({rc.left - n, rc.top - n, rc.right + n, rc.bottom + n}, {0, 0, m_nImageWidth, m_nImageHeight}));
}

void CSelectTool::Cancel(CToolView& view)
{
    m_bDragging = false;
    view.SetOverlay({});
    view.OffsetOutline(c_noOffset);
    if (m_pImage && m_pImage == view.GetImage() && m_pImage->m_bSelection)
        FinishSelection(*m_pImage); // the press let go of the float
    EndShape();
}

SelectMode CSelectTool::Mode() const
{
    return ModeOfBar() == SelectMode::New ? m_pressMode : ModeOfBar();
}

bool CSelectTool::OnKeyDown(int nKey, int, unsigned)
{
    if (nKey == VK_SHIFT || nKey == VK_CONTROL) {
        HoldToolOption(ToolOption::FloaterMode, static_cast<int>(nKey == VK_SHIFT ? SelectMode::Add : SelectMode::Subtract));
        return true;
    }
    if (nKey != VK_ESCAPE || !m_bDragging || !g_pActiveToolView)
        return false;
    Cancel(*g_pActiveToolView);
    return true;
}

bool CSelectTool::OnKeyUp(int nKey, int, unsigned)
{
    if (nKey != VK_SHIFT && nKey != VK_CONTROL)
        return false;
    LetGoToolOption(ToolOption::FloaterMode, static_cast<int>(SelectMode::New));
    return true;
}

bool CSelectTool::OnSetCursor(CToolView& view, CPoint pt)
{
    const CPaintImage* pImage = view.GetImage();
    if (!pImage)
        return false;
    const PointF at = ToImage(view, pt);
    const bool bOver = ModeOfBar() == SelectMode::New && !m_bDragging && at.x >= 0 && at.y >= 0
        && pImage->IsInMask(static_cast<int>(at.x), static_cast<int>(at.y));
    view.SetToolCursor(bOver ? c_nCursorMoveSelection : FindToolRow(m_nToolId)->nCursor);
    return true;
}

void CSelectTool::OnDrawOverlay(CToolView& view)
{
    if (m_bDragging && m_pImage == view.GetImage())
        ShowBand(view);
}

void CSelectTool::OnDeactivate()
{
    if (m_bDragging && g_pActiveToolView)
        Cancel(*g_pActiveToolView);
    m_bDragging = false;
}

void CSelectTool::ShowBand(CToolView& view)
{
    ToolOverlay overlay;
    if (!IsMovingOutline())
        AddBand(view, overlay);
    view.SetOverlay(std::move(overlay));
}

PointF CSelectTool::ClampedPoint(const CToolView& view, CPoint pt) const
{
    const PointF at = ToImage(view, pt);
    return {std::clamp<double>(at.x, 0, m_nImageWidth), std::clamp<double>(at.y, 0, m_nImageHeight)};
}

CPoint CSelectTool::ToClient(const CToolView& view, PointF pt)
{
    const CPoint origin = view.GetImageOrigin(), scroll = view.GetScrollPosition();
    const double fZoom = view.GetZoom();
    return {static_cast<int>(std::lround(pt.x * fZoom)) - scroll.x + origin.x,
            static_cast<int>(std::lround(pt.y * fZoom)) - scroll.y + origin.y};
}

CRect CSelectTool::ToClient(const CToolView& view, const CRect& rc)
{
    const CPoint a = view.ImageToClient({rc.left, rc.top}), b = view.ImageToClient({rc.right, rc.bottom});
    return {a.x, a.y, b.x, b.y};
}

} // namespace kestrune
