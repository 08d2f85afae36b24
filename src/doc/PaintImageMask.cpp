#include "doc/PaintImage.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

/// The first byte of [0, n) that is not 0, or n. Eight bytes at a time: most of a mask is empty.
int FirstSet(const std::uint8_t* p, int n)
{
    int i = 0;
    for (std::uint64_t word = 0; i + 8 <= n; i += 8) {
        std::memcpy(&word, p + i, 8);
        if (word)
            break;
    }
    while (i < n && !p[i])
        i++;
    return i;
}

/// One past the last byte of [0, n) that is not 0, or 0.
int EndOfSet(const std::uint8_t* p, int n)
{
    for (std::uint64_t word = 0; n >= 8; n -= 8) {
        std::memcpy(&word, p + n - 8, 8);
        if (word)
            break;
    }
    while (n > 0 && !p[n - 1])
        n--;
    return n;
}

} // namespace

void CPaintImage::AllocateMask()
{
    m_pMask.reset();
    // Not cleared, so that a picture without a selection never touches these pages.
    m_pMask.reset(new std::uint8_t[static_cast<std::size_t>(m_nWidth) * m_nHeight]);
    m_bMaskEmpty = true;
    m_bMaskBoundsValid = true;
    m_nMaskX1 = m_nMaskY1 = 0;
    m_nMaskX2 = m_nWidth;
    m_nMaskY2 = m_nHeight;
}

bool CPaintImage::GetMaskBounds(int& x1, int& y1, int& x2, int& y2)
{
    if (!m_bMaskBoundsValid) {
        CRect rc{m_nWidth, 0, 0, 0};
        for (int y = 0; m_pMask && y < m_nHeight; y++) {
            const std::uint8_t* pRow = m_pMask.get() + static_cast<std::size_t>(y) * m_nWidth;
            const int nFirst = FirstSet(pRow, m_nWidth);
            if (nFirst == m_nWidth)
                continue;
            if (rc.right == 0)
                rc.top = y;
            rc.bottom = y + 1;
            rc.left = std::min(rc.left, nFirst);
            rc.right = std::max(rc.right, EndOfSet(pRow, m_nWidth));
        }
        m_bMaskEmpty = rc.right == 0;
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
    m_bMaskEmpty = rc.IsEmpty();
    if (m_bMaskEmpty)
        rc = {0, 0, m_nWidth, m_nHeight};
    m_nMaskX1 = rc.left;
    m_nMaskY1 = rc.top;
    m_nMaskX2 = rc.right;
    m_nMaskY2 = rc.bottom;
    m_bMaskBoundsValid = true;
}

} // namespace kestrune
