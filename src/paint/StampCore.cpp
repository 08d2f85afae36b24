#include "paint/StampCore.h"

#include "doc/PaintImage.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

CPoint s_ptSource;
bool s_bFirst = true; ///< no dab since the source was set or the stroke began

} // namespace

CPoint StampCore::Source()
{
    return s_ptSource;
}

void StampCore::Begin(unsigned nFlags, double x, double y)
{
    if (nFlags == c_nSourceFlags) {
        s_ptSource = {static_cast<int>(x), static_cast<int>(y)};
        s_bFirst = true;
        return;
    }
    PaintCore::Begin(nFlags, x, y);
    s_bFirst = true;
    m_ptKept = s_ptSource;
    LayFirst();
}

void StampCore::End()
{
    PaintCore::End();
    if (!s_bFirst)
        s_ptSource = m_ptKept;
}

void StampCore::Dab()
{
    const CPoint ptCurrent{static_cast<int>(m_ptCurrent.x), static_cast<int>(m_ptCurrent.y)};
    if (s_bFirst)
        m_ptOffset = {s_ptSource.x - ptCurrent.x, s_ptSource.y - ptCurrent.y};
    s_bFirst = false;
    s_ptSource = {ptCurrent.x + m_ptOffset.x, ptCurrent.y + m_ptOffset.y};
    if (!GetTile())
        return;
    CRect rcSource = m_tile.Rect();
    rcSource.Offset(m_ptOffset.x, m_ptOffset.y);
    const CRect rcInside = Intersect(rcSource, {0, 0, m_nImageWidth, m_nImageHeight});
    if (!rcInside.IsEmpty())
        PrepareCanvas(rcInside.top, rcInside.bottom);
    if (rcInside == rcSource && !m_pImage->m_pFloatMask) {
        m_tile.aInk.resize(m_tile.nHeight);
        for (int j = 0; j < m_tile.nHeight; j++)
            m_tile.aInk[j] = CanvasRow(rcSource.top + j, rcSource.left, m_tile.nWidth);
    } else {
        CRect rcRegion = rcInside;
        rcRegion.Offset(-m_ptOffset.x, -m_ptOffset.y);
        CopySource(rcInside.IsEmpty() ? CRect{} : rcRegion);
    }
    Paint();
}

/// The tile with the pixels of the region, transparent around it, and inside only as far as a selection goes.
void StampCore::CopySource(const CRect& rcRegion)
{
    const std::size_t nWidth = m_tile.nWidth;
    std::uint8_t* pInk = MakeInk();
    std::uint8_t* pAlpha = MakeAlpha();
    std::fill_n(pInk, nWidth * 3 * m_tile.nHeight, std::uint8_t{0});
    std::fill_n(pAlpha, nWidth * m_tile.nHeight, std::uint8_t{0});
    const std::uint8_t* pMask = m_pImage->m_pFloatMask ? m_pImage->m_pMask.get() : nullptr;
    for (int y = rcRegion.top; y < rcRegion.bottom; y++) {
        const std::size_t nCell = nWidth * (y - m_tile.y) + (rcRegion.left - m_tile.x);
        std::memcpy(pInk + nCell * 3, CanvasRow(y + m_ptOffset.y, rcRegion.left + m_ptOffset.x, rcRegion.Width()), static_cast<std::size_t>(rcRegion.Width()) * 3);
        if (pMask)
            std::memcpy(pAlpha + nCell, pMask + static_cast<std::size_t>(y) * m_nImageWidth + rcRegion.left, rcRegion.Width());
        else
            std::memset(pAlpha + nCell, 255, rcRegion.Width());
    }
}

} // namespace kestrune
