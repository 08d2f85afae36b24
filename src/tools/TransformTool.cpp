#include "tools/TransformTool.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/PaintImage.h"
#include "tools/FloatActs.h"
#include "tools/ToolTable.h"
#include "undo/UndoStack.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace kestrune {

namespace {

constexpr int c_nHandleHalf = 5;   ///< a handle reaches that far to each side of its corner
constexpr int c_nCatchRadius = 12; ///< and is caught within that distance; both in pixels of the screen, at every zoom

/// Where the picture's corner stands in the client area.
CPoint ClientOffset(const CToolView& view)
{
    const CPoint origin = view.GetImageOrigin(), scroll = view.GetScrollPosition();
    return {origin.x - scroll.x, origin.y - scroll.y};
}

/// A sum that misses a whole number by a rounding error is that number: it is cut to one later.
double Tidy(double f)
{
    const double fWhole = std::round(f);
    return std::abs(f - fWhole) < 1e-6 ? fWhole : f;
}

PointF ToClient(const CToolView& view, PointF pt)
{
    const CPoint offset = ClientOffset(view);
    const double fZoom = view.GetZoom();
    return {Tidy(pt.x * fZoom + offset.x), Tidy(pt.y * fZoom + offset.y)};
}

PointF ToPicture(const CToolView& view, PointF pt)
{
    const CPoint offset = ClientOffset(view);
    const double fZoom = view.GetZoom();
    return {(pt.x - offset.x) / fZoom, (pt.y - offset.y) / fZoom};
}

PointF ToPicture(const CToolView& view, CPoint pt)
{
    return ToPicture(view, PointF{static_cast<double>(pt.x), static_cast<double>(pt.y)});
}

constexpr double c_fFar = 1e8; ///< a band's end out there is as good as one at infinity

CPoint Cut(PointF pt)
{
    const auto cut = [](double f) { return static_cast<int>(std::isfinite(f) ? std::clamp(f, -c_fFar, c_fFar) : 0); };
    return {cut(pt.x), cut(pt.y)};
}

/// The float's corners as they are pending, or its rectangle.
Quad CornersOf(const CPaintImage& image)
{
    return image.m_bTransforming ? image.m_Corner : image.FloatCorners();
}

/// The nearest handle that the point catches, 1 to 4; the first of several, 0 for none. The nearest and not the first one hit: on a small
/// or far away float all four lie over each other.
int HandleAt(const Quad& client, CPoint pt)
{
    int nBest = 0;
    double fBest = c_nCatchRadius * c_nCatchRadius;
    for (int i = 0; i < 4; i++) {
        const CPoint corner = Cut(client[i]);
        const double dx = corner.x - pt.x, dy = corner.y - pt.y;
        if (dx * dx + dy * dy < fBest) {
            fBest = dx * dx + dy * dy;
            nBest = i + 1;
        }
    }
    return nBest;
}

CPaintImage* ActiveImage()
{
    return g_pActiveToolView ? g_pActiveToolView->GetImage() : nullptr;
}

} // namespace

PointF CTransformTool::Centre(const Quad& q)
{
    return {(q[0].x + q[1].x + q[2].x + q[3].x) / 4, (q[0].y + q[1].y + q[2].y + q[3].y) / 4};
}

void CTransformTool::Map(const Matrix3& m, Quad& corners)
{
    for (PointF& pt : corners)
        pt = m.Apply(pt);
}

void CTransformTool::Slant(const Drag& drag, bool bSideways, Quad& corners, Matrix3& matrix)
{
    const PointF centre = Centre(drag.start);
    // Half of the rectangle's side, with the sign of the edge that is dragged.
    const double fHalf = bSideways ? drag.start[drag.nHandle].y - centre.y : drag.start[drag.nHandle].x - centre.x;
    if (std::abs(fHalf) < drag.fPixel / 2)
        return; // the corner lies on the middle line, which no slant moves
    Matrix3 step;
    step.Translate(-centre.x, -centre.y);
    if (bSideways)
        step.ShearX((drag.to.x - drag.from.x) / fHalf);
    else
        step.ShearY((drag.to.y - drag.from.y) / fHalf);
    step.Translate(centre.x, centre.y);
    Map(step, corners);
    matrix = step * matrix;
}

void CTransformTool::OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonDown(view, nFlags, pt);
    m_pImage = view.GetImage();
    m_bDragging = m_pImage != nullptr;
    m_nHandle = 0;
    if (!m_pImage)
        return;
    if (!HasFloat(*m_pImage)) {
        m_bDragging = false;
        view.ReleaseCapture(); // the message takes the mouse
        SayMessage(IDS_SELECT_AREA_FIRST);
        return;
    }
    m_ptLast = pt;
    const Quad corners = CornersOf(*m_pImage);
    for (int i = 0; i < 4; i++)
        m_CornerStart[i] = ToClient(view, corners[i]);
    m_TransformStart = m_pImage->m_bTransforming ? m_pImage->m_Transform : Matrix3();
    m_nHandle = HandleAt(m_CornerStart, pt);
}

void CTransformTool::OnMouseMove(CToolView& view, unsigned, CPoint pt)
{
    if (!m_bDragging || m_nHandle == 0 || m_pImage != view.GetImage() || !HasFloat(*m_pImage))
        return;
    Drag drag;
    for (int i = 0; i < 4; i++)
        drag.start[i] = ToPicture(view, m_CornerStart[i]);
    drag.nHandle = m_nHandle - 1;
    drag.from = ToPicture(view, m_ptLast);
    drag.to = ToPicture(view, pt);
    drag.fPixel = 1.0 / view.GetZoom();
    drag.whole = m_pImage->FloatCorners();
    Quad corners = drag.start;
    Matrix3 matrix = m_TransformStart;
    Bend(drag, corners, matrix);
    m_pImage->m_Corner = corners;
    m_pImage->m_Transform = matrix;
    m_pImage->m_bTransforming = true;
    ShowBand(view);
}

void CTransformTool::OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt)
{
    CPaintTool::OnLButtonUp(view, nFlags, pt);
    if (!std::exchange(m_bDragging, false) || m_pImage != view.GetImage() || !m_pImage->m_bTransforming)
        return;
    // The handles stand on whole pixels of the screen.
    for (PointF& corner : m_pImage->m_Corner) {
        const CPoint cut = Cut(ToClient(view, corner));
        corner = ToPicture(view, cut);
    }
    ShowBand(view);
}

void CTransformTool::OnLButtonDblClk(CToolView& view, unsigned, CPoint)
{
    CPaintImage* pImage = view.GetImage();
    if (pImage && HasFloat(*pImage))
        Apply(view, *pImage);
}

bool CTransformTool::OnKeyDown(int nKey, int, unsigned)
{
    CPaintImage* pImage = ActiveImage();
    if (!pImage || !HasFloat(*pImage) || (nKey != VK_RETURN && nKey != VK_ESCAPE))
        return false;
    if (nKey == VK_RETURN && !m_bDragging)
        Apply(*g_pActiveToolView, *pImage);
    if (nKey == VK_ESCAPE) {
        if (!m_bDragging && !pImage->m_bTransforming)
            return false;
        pImage->m_bTransforming = false;
        m_bDragging = false;
        m_nHandle = 0;
        ShowBand(*g_pActiveToolView);
    }
    return true;
}

/// Resamples the float. All that may fail comes first: then picture, history and what is pending are as they were.
void CTransformTool::Apply(CToolView& view, CPaintImage& image)
{
    m_bDragging = false;
    m_nHandle = 0;
    const Matrix3 matrix = image.m_bTransforming ? image.m_Transform : Matrix3();
    try {
        std::optional<FloatPixels> pixels = image.TransformedFloat(matrix);
        if (!pixels) {
            Messages().StatusText(std::string(StringText(IDS_TRANSFORM_IMPOSSIBLE)));
            return;
        }
        PushSelection(image, FindToolRow(GetId())->nUndoKind);
        view.SetOverlay({});
        LiftFloat(image);
        image.ReplaceFloat(std::move(*pixels));
        SelectionFollowsFloat(image);
        SettleHistory(image);
    } catch (const std::bad_alloc&) {
        Messages().StatusText(std::string(StringText(IDS_OUT_OF_MEMORY)));
        return;
    }
    view.RepaintAll(); // with the outline of the new selection
    ShowBand(view);
}

void CTransformTool::ShowBand(CToolView& view)
{
    ToolOverlay overlay;
    if (const CPaintImage* pImage = view.GetImage(); pImage && HasFloat(*pImage)) {
        const Quad corners = CornersOf(*pImage);
        CPoint at[4];
        for (int i = 0; i < 4; i++)
            at[i] = Cut(ToClient(view, corners[i]));
        for (int i = 0; i < 4; i++)
            overlay.aLines.push_back({at[i], at[(i + 1) % 4]});
        for (const CPoint& pt : at)
            overlay.aHandles.push_back({pt.x - c_nHandleHalf, pt.y - c_nHandleHalf, pt.x + c_nHandleHalf, pt.y + c_nHandleHalf});
    }
    view.SetOverlay(std::move(overlay));
}

void CTransformTool::OnDrawOverlay(CToolView& view)
{
    ShowBand(view);
}

void CTransformTool::OnActivate()
{
    if (g_pActiveToolView)
        ShowBand(*g_pActiveToolView);
}

void CTransformTool::OnDeactivate()
{
    m_bDragging = false;
    if (g_pActiveToolView)
        g_pActiveToolView->SetOverlay({});
}

} // namespace kestrune
