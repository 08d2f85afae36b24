#include "paint/SmudgeCore.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {
constexpr double c_fSmudgeSpacing = 0.05; ///< dense, or the smear would jump
} // namespace

/// The corner of the dab's rectangle before clipping, in image pixels.
CPoint SmudgeCore::SmearOrigin() const
{
    return {static_cast<int>(m_ptCurrent.x) - m_nBrushWidth / 2 - 1, static_cast<int>(m_ptCurrent.y) - m_nBrushHeight / 2 - 1};
}

/// The smear's pixel under an image point.
std::uint8_t* SmudgeCore::SmearAt(int x, int y)
{
    const CPoint origin = SmearOrigin();
    return m_aSmear.data() + (static_cast<std::size_t>(y - origin.y) * SmearWidth() + (x - origin.x)) * 3;
}

void SmudgeCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_bIncremental = true;
    m_nMode = 0;
    m_fSpacing = c_fSmudgeSpacing;
    m_nKeep = static_cast<int>(m_settings.nPressure / 100.0 * 255 + 0.5);
    if (m_nBrushWidth == 0)
        return;
    m_aSmear.assign(static_cast<std::size_t>(SmearWidth()) * (m_nBrushHeight + 2) * 3, 0);
    const bool bTile = GetTile();
    if (!bTile || m_tile.nWidth != m_nBrushWidth || m_tile.nHeight != m_nBrushHeight) {
        // Cut by the border: where the smear has nothing below it, it begins with the colour of the press point.
        const int px = std::clamp(static_cast<int>(x), 0, m_nImageWidth - 1), py = std::clamp(static_cast<int>(y), 0, m_nImageHeight - 1);
        PrepareCanvas(py, py + 1);
        const std::uint8_t* pPixel = CanvasRow(py, px, 1);
        for (std::size_t i = 0; i < m_aSmear.size(); i++)
            m_aSmear[i] = pPixel[i % 3];
    }
    for (int j = 0; bTile && j < m_tile.nHeight; j++)
        std::memcpy(SmearAt(m_tile.x, m_tile.y + j), CanvasRow(m_tile.y + j, m_tile.x, m_tile.nWidth), static_cast<std::size_t>(m_tile.nWidth) * 3);
    LayFirst();
}

void SmudgeCore::Dab()
{
    if (!GetTile())
        return;
    m_tile.aInk.resize(m_tile.nHeight);
    for (int j = 0; j < m_tile.nHeight; j++) {
        std::uint8_t* pSmear = SmearAt(m_tile.x, m_tile.y + j);
        SmearRow(CanvasRow(m_tile.y + j, m_tile.x, m_tile.nWidth), pSmear, m_nKeep, static_cast<std::size_t>(m_tile.nWidth) * 3);
        m_tile.aInk[j] = pSmear;
    }
    Paint();
}

} // namespace kestrune
