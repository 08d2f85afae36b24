#include "tools/CropTool.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/PaintImage.h"
#include "tools/PictureActs.h"
#include "tools/ToolTable.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

namespace kestrune {

namespace {

constexpr int c_nReach = 8;      ///< a handle or side is caught within that distance, in pixels of the screen at every zoom
constexpr int c_nHandleHalf = 4;
constexpr int c_nCursorDiagonal = 176;
constexpr int c_nCursorSide = 163;

/// How near `n` comes to either end of [a, b]: -1 the first, 1 the last, 0 neither. Within, at least half of the way stays free of both.
int NearEnd(int n, int a, int b)
{
    const int nInner = std::min(c_nReach, (b - a) / 4);
    const auto near = [&](int nOutwards) { return nOutwards >= 0 ? nOutwards <= c_nReach : -nOutwards <= nInner; };
    return near(a - n) ? -1 : near(n - b) ? 1 : 0;
}

} // namespace

CRect CCropTool::ClientRect(const CToolView& view, const CPaintImage& image)
{
    CRect rc = image.m_rcCrop;
    rc.Normalize();
    rc = Intersect(rc, {0, 0, image.m_nWidth, image.m_nHeight});
    const CPoint a = view.ImageToClient({rc.left, rc.top}), b = view.ImageToClient({rc.right, rc.bottom});
    return {a.x, a.y, b.x, b.y};
}

unsigned CCropTool::HitTest(const CToolView& view, const CPaintImage& image, CPoint pt)
{
    if (!image.m_bCropActive)
        return NEW;
    const CRect rc = ClientRect(view, image);
    const CRect rcReach{rc.left - c_nReach, rc.top - c_nReach, rc.right + c_nReach + 1, rc.bottom + c_nReach + 1};
    if (!rcReach.Contains(pt.x, pt.y))
        return NEW;
    const int x = NearEnd(pt.x, rc.left, rc.right), y = NearEnd(pt.y, rc.top, rc.bottom);
    const unsigned nSides = (x < 0 ? LEFT : x > 0 ? RIGHT : NONE) | (y < 0 ? TOP : y > 0 ? BOTTOM : NONE);
    return nSides ? nSides : WHOLE;
}

int CCropTool::CursorOf(unsigned nMode)
{
    if (nMode == WHOLE)
        return c_nCursorMoveSelection;
    if (nMode == NEW || nMode == NONE)
        return FindToolRow(TOOL_CROP)->nCursor;
    return (nMode & (LEFT | RIGHT)) && (nMode & (TOP | BOTTOM)) ? c_nCursorDiagonal : c_nCursorSide;
}

/// The pixel edge of the picture nearest to the pointer, from 0 to the size itself on each axis.
CPoint CCropTool::PictureAt(const CToolView& view, CPoint pt) const
{
    const CPoint at = view.ClientToImage(ClampToImage(view, pt, *m_pImage));
    return {std::clamp(at.x, 0, m_pImage->m_nWidth), std::clamp(at.y, 0, m_pImage->m_nHeight)};
}

void CCropTool::OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonDown(view, nFlags, pt);
    m_pImage = view.GetImage();
    m_nMode = NONE;
    if (!m_pImage)
        return;
    m_nMode = HitTest(view, *m_pImage, pt);
    m_ptStart = PictureAt(view, pt);
    m_rcStart = m_pImage->m_rcCrop;
    // How far the pointer stands from what it drags, which so does not jump.
    const CPoint at = m_ptStart;
    m_pImage->m_ptCropDrag = {at.x - (m_nMode & RIGHT ? m_rcStart.right : m_rcStart.left), at.y - (m_nMode & BOTTOM ? m_rcStart.bottom : m_rcStart.top)};
    view.SetToolCursor(CursorOf(m_nMode));
    if (m_nMode == NEW)
        Drop(view, *m_pImage);
}

void CCropTool::OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt)
{
    if (m_nMode == NONE || !(nFlags & MK_LBUTTON) || !m_pImage || m_pImage != view.GetImage())
        return;
    Drag(PictureAt(view, pt));
    view.SetToolCursor(CursorOf(m_nMode));
    ShowRect(view);
}

/// Sides may cross while they are dragged; the release puts them in order.
void CCropTool::Drag(CPoint at)
{
    CRect& rc = m_pImage->m_rcCrop;
    const CPoint to{at.x - m_pImage->m_ptCropDrag.x, at.y - m_pImage->m_ptCropDrag.y};
    const int nWidth = m_pImage->m_nWidth, nHeight = m_pImage->m_nHeight;
    if (m_nMode == NEW) {
        rc = {m_ptStart.x, m_ptStart.y, at.x, at.y};
    } else if (m_nMode == WHOLE) {
        rc = m_rcStart;
        rc.Offset(std::clamp(to.x, 0, nWidth - rc.Width()) - rc.left, std::clamp(to.y, 0, nHeight - rc.Height()) - rc.top);
    } else {
        const CPoint in{std::clamp(to.x, 0, nWidth), std::clamp(to.y, 0, nHeight)};
        if (m_nMode & LEFT)
            rc.left = in.x;
        if (m_nMode & RIGHT)
            rc.right = in.x;
        if (m_nMode & TOP)
            rc.top = in.y;
        if (m_nMode & BOTTOM)
            rc.bottom = in.y;
    }
    m_pImage->m_bCropActive = true;
}

void CCropTool::OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonUp(view, nFlags, pt);
    if (std::exchange(m_nMode, NONE) == NONE || m_pImage != view.GetImage())
        return;
    m_pImage->m_rcCrop.Normalize();
    if (m_pImage->m_rcCrop.IsEmpty())
        Drop(view, *m_pImage);
    else
        ShowRect(view);
}

void CCropTool::OnLButtonDblClk(CToolView& view, unsigned, CPoint)
{
    if (CPaintImage* pImage = view.GetImage())
        Apply(view, *pImage);
}

bool CCropTool::OnKeyDown(int nKey, int, unsigned)
{
    CPaintImage* pImage = g_pActiveToolView ? g_pActiveToolView->GetImage() : nullptr;
    if (!pImage || !pImage->m_bCropActive || (nKey != VK_RETURN && nKey != VK_ESCAPE))
        return false;
    m_nMode = NONE; // a drag ends with it
    if (nKey == VK_RETURN)
        Apply(*g_pActiveToolView, *pImage);
    else
        Drop(*g_pActiveToolView, *pImage);
    return true;
}

void CCropTool::Drop(CToolView& view, CPaintImage& image)
{
    image.m_bCropActive = false;
    image.m_rcCrop = {};
    ShowRect(view);
}

void CCropTool::Apply(CToolView& view, CPaintImage& image)
{
    if (!image.m_bCropActive)
        return;
    const CRect rc = image.m_rcCrop;
    try {
        CropPicture(image, rc);
        image.m_bCropActive = false;
    } catch (const std::bad_alloc&) {
        Messages().StatusText(std::string(StringText(IDS_OUT_OF_MEMORY)));
    }
    ShowRect(view);
}

void CCropTool::ShowRect(CToolView& view)
{
    ToolOverlay overlay;
    if (const CPaintImage* pImage = view.GetImage(); pImage && pImage->m_bCropActive) {
        const CRect rc = ClientRect(view, *pImage);
        const CPoint a = view.ImageToClient({0, 0}), b = view.ImageToClient({pImage->m_nWidth, pImage->m_nHeight});
        overlay.ShadeAround(rc, {a.x, a.y, b.x, b.y});
        overlay.AddRect(rc);
        const int xMiddle = (rc.left + rc.right) / 2, yMiddle = (rc.top + rc.bottom) / 2;
        const CPoint aHandles[] = {{rc.left, rc.top}, {xMiddle, rc.top}, {rc.right, rc.top}, {rc.right, yMiddle},
                                   {rc.right, rc.bottom}, {xMiddle, rc.bottom}, {rc.left, rc.bottom}, {rc.left, yMiddle}};
        for (const CPoint& pt : aHandles)
            overlay.aHandles.push_back({pt.x - c_nHandleHalf, pt.y - c_nHandleHalf, pt.x + c_nHandleHalf, pt.y + c_nHandleHalf});
    }
    view.SetOverlay(std::move(overlay));
}

bool CCropTool::OnSetCursor(CToolView& view, CPoint pt)
{
    const CPaintImage* pImage = view.GetImage();
    view.SetToolCursor(CursorOf(pImage ? HitTest(view, *pImage, pt) : NEW));
    return true;
}

void CCropTool::OnDrawOverlay(CToolView& view)
{
    ShowRect(view);
}

void CCropTool::OnActivate()
{
    if (g_pActiveToolView)
        ShowRect(*g_pActiveToolView);
}

void CCropTool::OnDeactivate()
{
    m_nMode = NONE;
    if (g_pActiveToolView)
        g_pActiveToolView->SetOverlay({});
}

} // namespace kestrune
