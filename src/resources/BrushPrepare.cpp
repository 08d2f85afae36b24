#include "resources/BrushPrepare.h"

#include "resources/BrushBlur.h"

#include <algorithm>
#include <cstddef>

namespace kestrune {

SoftMask SoftenBrush(const BrushEntry& entry, int nSoftEdge)
{
    nSoftEdge = std::clamp(nSoftEdge, 0, c_nMaxSoftEdge);
    SoftMask mask;
    mask.nWidth = entry.m_nWidth + 2 * nSoftEdge + 1;
    mask.nHeight = entry.m_nHeight + 2 * nSoftEdge + 1;
    mask.aBytes.resize(static_cast<std::size_t>(mask.nWidth) * static_cast<std::size_t>(mask.nHeight));
    for (int y = 0; y < entry.m_nHeight; y++)
        std::copy_n(entry.m_pMask.data() + static_cast<std::ptrdiff_t>(y) * entry.m_nWidth, entry.m_nWidth,
                    mask.aBytes.data() + static_cast<std::ptrdiff_t>(y + nSoftEdge) * mask.nWidth + nSoftEdge);
    BlurBrush(mask.aBytes, mask.nWidth, mask.nHeight, nSoftEdge);
    return mask;
}

ActiveBrush PrepareBrush(const BrushEntry& entry, int nSoftEdge, const ResponseTable& response)
{
    SoftMask mask = SoftenBrush(entry, nSoftEdge);
    const std::array<std::uint8_t, 256> map = ResponseMap(response);
    for (std::uint8_t& nByte : mask.aBytes)
        nByte = map[nByte];
    ActiveBrush brush;
    brush.aMask = std::move(mask.aBytes);
    brush.nWidth = mask.nWidth;
    brush.nHeight = mask.nHeight;
    std::copy_n(entry.m_xAxis, 2, brush.xAxis);
    std::copy_n(entry.m_yAxis, 2, brush.yAxis);
    brush.dSpacing = entry.m_nSpacing;
    return brush;
}

std::vector<std::uint8_t> SampleBrush(const std::vector<std::uint8_t>& mask, int nWidth, int nHeight, int nSide)
{
    std::vector<std::uint8_t> square(static_cast<std::size_t>(nSide) * static_cast<std::size_t>(nSide), 255);
    if (nWidth < 1 || nHeight < 1)
        return square;
    const int S = std::max((nWidth + nSide - 1) / nSide, (nHeight + nSide - 1) / nSide);
    const int x0 = nSide / 2 - nWidth / (2 * S), y0 = nSide / 2 - nHeight / (2 * S);
    for (int dy = 0; dy < nHeight / S; dy++)
        for (int dx = 0; dx < std::min(nWidth / S, nSide); dx++)
            square[static_cast<std::size_t>((y0 + dy) * nSide + x0 + dx)]
                = static_cast<std::uint8_t>(255 - mask[static_cast<std::size_t>(S) * (static_cast<std::size_t>(dy) * static_cast<std::size_t>(nWidth) + static_cast<std::size_t>(dx))]);
    return square;
}

} // namespace kestrune
