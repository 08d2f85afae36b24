#include "filters/PreviewGeometry.h"

#include <algorithm>

namespace kestrune {

namespace {

// The zoom is counted in steps and multiplied, not added up: forty-five sums of 0.2 in single precision end
// at 9.999995, and the largest zoom would be 10.2.
constexpr float c_fStep = 0.2f;
constexpr int c_nSmallest = 1, c_nActual = 5, c_nLargest = 50;

int Scaled(int nImage, float fZoom) { return static_cast<int>(static_cast<float>(nImage) * fZoom); }

} // namespace

void CPreviewGeometry::Axis::Open()
{
    nCentre = nImage / 2;
    nView = nShown = std::min(nImage, nPane);
    nOffset = (nPane - nShown) / 2;
}

void CPreviewGeometry::Axis::Zoom(float fZoom, bool bLarger)
{
    nShown = Scaled(nImage, fZoom);
    if (nShown < nPane + (bLarger ? 1 : 0)) {
        nOffset = (nPane - nShown) / 2;
        nView = nImage;
        if (!bLarger)
            nCentre = nView / 2;
    } else {
        nOffset = 0;
        nShown = nPane;
        nView = static_cast<int>(static_cast<double>(nPane) / static_cast<double>(fZoom));
        if (!bLarger)
            Clamp();
    }
}

void CPreviewGeometry::Axis::Pan(int nBy)
{
    if (nShown < nPane) {
        nCentre = nView / 2;
        return;
    }
    nCentre -= nBy;
    Clamp();
}

void CPreviewGeometry::Axis::Clamp() { nCentre = std::max(std::min(nCentre, nImage - nView / 2), nView / 2); }

CPreviewGeometry::CPreviewGeometry(CSize sizeImage, int nPane)
    : m_nPane(nPane)
    , m_nStep(c_nActual)
{
    m_horizontal.nImage = sizeImage.cx;
    m_vertical.nImage = sizeImage.cy;
    m_horizontal.nPane = m_vertical.nPane = nPane;
    m_horizontal.Open();
    m_vertical.Open();
    PlaceRects();
}

int CPreviewGeometry::GetPercent() const { return static_cast<int>(m_fZoom * 100); }

bool CPreviewGeometry::ZoomIn()
{
    if (m_nStep >= c_nLargest)
        return false;
    SetStep(m_nStep + 1);
    return true;
}

bool CPreviewGeometry::ZoomOut()
{
    if (m_nStep <= c_nSmallest)
        return false;
    SetStep(m_nStep - 1);
    return true;
}

bool CPreviewGeometry::ZoomActual()
{
    if (m_nStep == c_nActual)
        return false;
    SetStep(c_nActual);
    return true;
}

void CPreviewGeometry::SetStep(int nStep)
{
    const bool bLarger = nStep > m_nStep;
    m_nStep = nStep;
    m_fZoom = static_cast<float>(nStep) * c_fStep;
    m_horizontal.Zoom(m_fZoom, bLarger);
    m_vertical.Zoom(m_fZoom, bLarger);
    PlaceRects();
}

void CPreviewGeometry::PlaceRects()
{
    const Axis &h = m_horizontal, &v = m_vertical;
    m_rcSource = {h.nCentre - h.nView / 2, v.nCentre - v.nView / 2, h.nCentre + h.nView / 2, v.nCentre + v.nView / 2};
    // The picture that is seen whole shows its last pixel also when its size is odd.
    if (h.nView == h.nImage)
        m_rcSource.right = h.nImage;
    if (v.nView == v.nImage)
        m_rcSource.bottom = v.nImage;
    const int x = h.nOffset + c_nPaneLeft, y = v.nOffset + c_nPaneTop;
    m_rcDest = {x, y, x + h.nShown, y + v.nShown};
}

CRect CPreviewGeometry::FilterRect() const
{
    const auto from = [](const Axis& axis) { return axis.nCentre - axis.nView / 2; };
    const int x = from(m_horizontal), y = from(m_vertical);
    // An odd view at the far edge reaches one pixel beyond the picture.
    return Intersect({x, y, x + m_horizontal.nView, y + m_vertical.nView},
                     {0, 0, m_horizontal.nImage, m_vertical.nImage});
}

double CPreviewGeometry::PaintScale() const
{
    double fScale = static_cast<double>(m_fZoom);
    if (m_horizontal.nShown == m_nPane)
        fScale = std::max(fScale, static_cast<double>(m_nPane) / m_rcSource.Width());
    if (m_vertical.nShown == m_nPane)
        fScale = std::max(fScale, static_cast<double>(m_nPane) / m_rcSource.Height());
    return fScale;
}

CPoint CPreviewGeometry::ToImage(CPoint pt) const
{
    return {static_cast<int>(static_cast<float>(pt.x) / m_fZoom), static_cast<int>(static_cast<float>(pt.y) / m_fZoom)};
}

bool CPreviewGeometry::BeginDrag(CPoint pt)
{
    m_bDragging = m_rcDest.Contains(pt.x, pt.y);
    m_ptLastDrag = ToImage(pt);
    return m_bDragging;
}

bool CPreviewGeometry::Drag(CPoint pt)
{
    if (!m_bDragging || FitsPane())
        return false;
    const CPoint ptNow = ToImage(pt);
    const CRect rcBefore = m_rcSource;
    m_horizontal.Pan(ptNow.x - m_ptLastDrag.x);
    m_vertical.Pan(ptNow.y - m_ptLastDrag.y);
    m_ptLastDrag = ptNow;
    PlaceRects();
    return !(rcBefore == m_rcSource);
}

bool CPreviewGeometry::EndDrag()
{
    const bool bWas = m_bDragging;
    m_bDragging = false;
    return bWas;
}

} // namespace kestrune
