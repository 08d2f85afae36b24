#include "doc/PaintImage.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "selection/MaskBounds.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestrune {

void CPaintImage::AllocateMask()
{
    m_pMask.reset();
    // Not cleared, so that a picture without a selection never touches these pages.
    m_pMask.reset(new std::uint8_t[static_cast<std::size_t>(m_nWidth) * m_nHeight]);
    InvalidateMaskBounds();
    m_bMaskEmpty = true;
    m_bMaskBoundsValid = true;
    m_nMaskX1 = m_nMaskY1 = 0;
    m_nMaskX2 = m_nWidth;
    m_nMaskY2 = m_nHeight;
}

bool CPaintImage::GetMaskBounds(int& x1, int& y1, int& x2, int& y2)
{
    if (!m_bMaskBoundsValid) {
        CRect rc = m_pMask ? ScanMaskBounds(Mask()) : CRect{};
        m_bMaskEmpty = rc.IsEmpty();
        if (m_bMaskEmpty)
            rc = {0, 0, m_nWidth, m_nHeight};
        m_nMaskX1 = rc.left;
        m_nMaskY1 = rc.top;
        m_nMaskX2 = rc.right;
        m_nMaskY2 = rc.bottom;
        m_bMaskBoundsValid = true;
    }
    x1 = m_nMaskX1;
    y1 = m_nMaskY1;
    x2 = m_nMaskX2;
    y2 = m_nMaskY2;
    return !m_bMaskEmpty;
}

bool CPaintImage::IsInMask(int x, int y) const
{
    const CRect rcPicture{0, 0, m_nWidth, m_nHeight};
    const CRect rcBounds{m_nMaskX1, m_nMaskY1, m_nMaskX2, m_nMaskY2};
    if (!m_pMask || !rcPicture.Contains(x, y))
        return false;
    if (m_bMaskBoundsValid && (m_bMaskEmpty || !rcBounds.Contains(x, y)))
        return false;
    return m_pMask[static_cast<std::size_t>(y) * m_nWidth + x] > 127;
}

void CPaintImage::MoveMask(int dx, int dy)
{
    CRect rc;
    if (!m_pMask || !GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom))
        return; // nothing is selected, so nothing moves; the mask's memory may never have been written
    rc.Offset(dx, dy);
    rc = Intersect(rc, {0, 0, m_nWidth, m_nHeight});
    const auto At = [this](int x, int y) { return m_pMask.get() + static_cast<std::size_t>(y) * m_nWidth + x; };
    std::vector<std::uint8_t> block(static_cast<std::size_t>(rc.Width()) * rc.Height());
    for (int y = 0; y < rc.Height(); y++)
        std::memcpy(block.data() + static_cast<std::size_t>(y) * rc.Width(), At(rc.left - dx, rc.top + y - dy), rc.Width());
    std::fill_n(m_pMask.get(), static_cast<std::size_t>(m_nWidth) * m_nHeight, std::uint8_t{0});
    for (int y = 0; y < rc.Height(); y++)
        std::memcpy(At(rc.left, rc.top + y), block.data() + static_cast<std::size_t>(y) * rc.Width(), rc.Width());
    InvalidateMaskBounds();
    m_bMaskEmpty = rc.IsEmpty();
    if (m_bMaskEmpty)
        rc = {0, 0, m_nWidth, m_nHeight};
    m_nMaskX1 = rc.left;
    m_nMaskY1 = rc.top;
    m_nMaskX2 = rc.right;
    m_nMaskY2 = rc.bottom;
    m_bMaskBoundsValid = true;
}

std::span<const MaskSegment> CPaintImage::GetBoundary()
{
    if (m_nTracedSerial == m_nMaskSerial)
        return m_pBoundary;
    m_nTracedSerial = m_nMaskSerial;
    m_pBoundary = {};
    m_pBoundaryAll.clear();
    CRect rc;
    if (m_pMask && GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom)) {
        try {
            TraceBoundary(Mask(), rc, m_pBoundaryAll); // nothing outside the bounds has an edge
        } catch (const std::bad_alloc&) {
            m_pBoundaryAll.clear();
            SayMessage(IDS_BOUNDARY_MEMORY);
        }
        m_pBoundary = m_pBoundaryAll;
    }
    return m_pBoundary;
}

} // namespace kestrune
