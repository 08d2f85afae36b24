#include "selection/PolygonRaster.h"

#include "base/ParallelRows.h"

#include <algorithm>

namespace kestrune {

PolygonRaster::PolygonRaster(int nWidth, int nHeight, int nFactor)
    : m_nWidth(nWidth)
    , m_nHeight(nHeight)
    , m_nFactor(nFactor)
    , m_lines(static_cast<std::size_t>(nHeight) * nFactor)
{
}

void PolygonRaster::AddPolyline(std::span<const PointF> points)
{
    for (const PointF& point : points) {
        const CPoint pt{static_cast<int>(point.x * m_nFactor), static_cast<int>(point.y * m_nFactor)};
        if (m_bStarted)
            AddEdge(m_ptLast, pt);
        else
            m_ptFirst = pt;
        m_bStarted = true;
        m_ptLast = pt;
    }
}

void PolygonRaster::AddEdge(CPoint a, CPoint b)
{
    if (a.y > b.y)
        std::swap(a, b);
    const int nEnd = std::min(b.y, static_cast<int>(m_lines.size()));
    for (int y = std::max(a.y, 0); y < nEnd; y++)
        m_lines[y].push_back(static_cast<int>(a.x + (y + 0.5 - a.y) * (b.x - a.x) / (b.y - a.y)));
}

void PolygonRaster::Render(const CRect& rc, const MaskPlane& plane)
{
    if (m_bStarted && !(m_ptLast == m_ptFirst)) {
        AddEdge(m_ptLast, m_ptFirst);
        m_ptLast = m_ptFirst;
    }
    for (std::vector<int>& line : m_lines)
        std::sort(line.begin(), line.end());
    ParallelRows(rc.Height(), 64, [&](int y0, int y1) {
        std::vector<int> steps(static_cast<std::size_t>(rc.Width()) + 1);
        for (int y = y0; y < y1; y++)
            RenderRow(rc.top + y, rc, plane.Row(y), steps);
    });
}

/// Sums the row's scan lines: `steps` holds by how much each pixel's count of samples differs from the one before it, so that a span
/// costs its two ends, however wide it is.
void PolygonRaster::RenderRow(int y, const CRect& rc, std::uint8_t* pOut, std::vector<int>& steps) const
{
    std::fill(steps.begin(), steps.end(), 0);
    const int nLeft = rc.left * m_nFactor, nRight = std::min(rc.right, m_nWidth) * m_nFactor;
    for (int i = 0; i < m_nFactor; i++) {
        const std::vector<int>& line = m_lines[static_cast<std::size_t>(y) * m_nFactor + i];
        for (std::size_t j = 0; j + 1 < line.size(); j += 2) {
            const int a = std::clamp(line[j], nLeft, nRight) - nLeft, b = std::clamp(line[j + 1], nLeft, nRight) - nLeft;
            // From a on each sample counts, from b on none: within the pixel of an end the part that is left of it, or right.
            const auto Step = [&](int x, int nSign) {
                const int nPixel = x / m_nFactor, nPart = x % m_nFactor;
                steps[nPixel] += nSign * (m_nFactor - nPart);
                if (nPixel + 1 < static_cast<int>(steps.size()))
                    steps[nPixel + 1] += nSign * nPart;
            };
            if (b > a) {
                Step(a, 1);
                Step(b, -1);
            }
        }
    }
    const int nSamples = m_nFactor * m_nFactor;
    int nSum = 0;
    for (int x = 0; x < rc.Width(); x++) {
        nSum += steps[x];
        pOut[x] = static_cast<std::uint8_t>(nSum * 255 / nSamples);
    }
}

} // namespace kestrune
