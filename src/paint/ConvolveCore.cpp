#include "paint/ConvolveCore.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {
constexpr int c_nBorder = 2;   ///< of a dab stays unfiltered
constexpr int c_nSmallest = 5; ///< side of a dab that is filtered at all
} // namespace

void ConvolveCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_bIncremental = true;
    m_nMode = 0;
    m_nCenter = static_cast<int>(Center(std::min(m_settings.nPressure / 100.0, 1.0)) * c_nConvolveUnit);
    LayFirst();
}

void ConvolveCore::Dab()
{
    if (!GetTile())
        return;
    const int nWidth = m_tile.nWidth, nHeight = m_tile.nHeight;
    std::uint8_t* pInk = MakeInk();
    for (int j = 0; j < nHeight; j++, pInk += nWidth * 3) {
        const int y = m_tile.y + j;
        std::memcpy(pInk, CanvasRow(y, m_tile.x, nWidth), static_cast<std::size_t>(nWidth) * 3);
        if (nWidth < c_nSmallest || nHeight < c_nSmallest || j < c_nBorder || j >= nHeight - c_nBorder)
            continue;
        const auto around = [&](int dy) { return CanvasRow(y + dy, m_tile.x, nWidth) + c_nBorder * 3; };
        ConvolveRow({around(-1), around(0), around(1)}, pInk + c_nBorder * 3, m_nCenter,
                    static_cast<std::size_t>(nWidth - 2 * c_nBorder) * 3);
    }
    Paint();
}

} // namespace kestrune
