#include "selection/MaskDisc.h"

#include <algorithm>
#include <vector>

namespace kestrune {

namespace {

using Bytes = std::vector<std::uint8_t>;

template <typename Pick>
void PickDiscPlain(const MaskPlane& mask, int nRadius, std::uint8_t nNeutral, const Pick& pick)
{
    const Bytes source(mask.pBytes, mask.pBytes + mask.Size());
    for (int y = 0; y < mask.nHeight; y++)
        for (int x = 0; x < mask.nWidth; x++) {
            std::uint8_t n = nNeutral;
            for (int i = std::max(-nRadius, -x); i <= std::min(nRadius, mask.nWidth - 1 - x); i++)
                for (int j = -DiscReach(nRadius, i); j <= DiscReach(nRadius, i); j++)
                    if (y + j >= 0 && y + j < mask.nHeight)
                        n = pick(n, source[static_cast<std::size_t>(y + j) * mask.nWidth + x + i]);
            mask.Row(y)[x] = n;
        }
}

bool IsEdge(const MaskPlane& mask, int x, int y)
{
    if (mask.Row(y)[x] < 128)
        return false;
    for (int j = std::max(y - 1, 0); j <= std::min(y + 1, mask.nHeight - 1); j++)
        for (int i = std::max(x - 1, 0); i <= std::min(x + 1, mask.nWidth - 1); i++)
            if (mask.Row(j)[i] < 128)
                return true;
    return false;
}

} // namespace

void PlainGrowMask(const MaskPlane& mask, int nRadius)
{
    if (nRadius >= 1)
        PickDiscPlain(mask, nRadius, 0, [](std::uint8_t a, std::uint8_t b) { return std::max(a, b); });
}

void PlainShrinkMask(const MaskPlane& mask, int nRadius)
{
    if (nRadius < 1)
        return;
    for (int y = 0; y < mask.nHeight; y++)
        for (int x = 0; x < mask.nWidth; x++)
            if (x == 0 || y == 0 || x == mask.nWidth - 1 || y == mask.nHeight - 1)
                mask.Row(y)[x] = 0;
    PickDiscPlain(mask, nRadius, 255, [](std::uint8_t a, std::uint8_t b) { return std::min(a, b); });
}

void PlainBorderMask(const MaskPlane& mask, int nRadiusX, int nRadiusY)
{
    Bytes out(mask.Size(), 0);
    const bool bEdgeAlone = nRadiusX == 1 && nRadiusY == 1;
    for (int y = 0; nRadiusX > 0 && nRadiusY > 0 && y < mask.nHeight; y++)
        for (int x = 0; x < mask.nWidth; x++) {
            if (!IsEdge(mask, x, y))
                continue;
            if (bEdgeAlone) {
                out[static_cast<std::size_t>(y) * mask.nWidth + x] = 255;
                continue;
            }
            for (int j = std::max(y - nRadiusY, 0); j <= std::min(y + nRadiusY, mask.nHeight - 1); j++)
                for (int i = std::max(x - nRadiusX, 0); i <= std::min(x + nRadiusX, mask.nWidth - 1); i++) {
                    std::uint8_t& n = out[static_cast<std::size_t>(j) * mask.nWidth + i];
                    n = std::max(n, SoftDisc(i - x, j - y, nRadiusX, nRadiusY));
                }
        }
    std::copy(out.begin(), out.end(), mask.pBytes);
}

} // namespace kestrune
