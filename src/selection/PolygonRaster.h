#pragma once

#include "base/Geometry.h"
#include "base/Matrix3.h"
#include "selection/MaskPlane.h"

#include <span>
#include <vector>

namespace kestrune {

/// Fills a closed path, even-odd. With a factor of 3 each pixel is sampled three times in each direction, with 1 its middle alone decides.
/// A scan line is sampled at its middle, the places where the path crosses it are truncated, and of a pair of crossings the left one
/// belongs to the area, the right one not.
class PolygonRaster {
public:
    PolygonRaster(int nWidth, int nHeight, int nFactor);

    /// Adds the edges from point to point; pixels, in the picture. Points that follow in another call go on from the last one.
    void AddPolyline(std::span<const PointF> points);
    /// Closes the path and writes the coverage, 0..255, of that part of the picture into a plane of the part's size.
    void Render(const CRect& rc, const MaskPlane& plane);

private:
    void AddEdge(CPoint a, CPoint b);
    void RenderRow(int y, const CRect& rc, std::uint8_t* pOut, std::vector<int>& steps) const;

    int m_nWidth, m_nHeight, m_nFactor;
    std::vector<std::vector<int>> m_lines; ///< for each scan line (height times factor) where the path crosses it
    bool m_bStarted = false;
    CPoint m_ptFirst, m_ptLast; ///< in samples
};

} // namespace kestrune
