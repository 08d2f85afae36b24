#pragma once

#include "base/Geometry.h"
#include "selection/BoundaryTracer.h"

#include <QImage>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

class QPainter;

namespace kestrune {

/// Where a boundary stands on the screen. Client pixels are the screen's.
struct OutlinePlace {
    std::uint32_t nMask = 0; ///< the mask's number: another one after each change
    float fZoom = 1;
    CPoint ptOrigin;  ///< the client point of the picture's corner
    CSize sizeClient;
    CSize sizePicture;

    bool operator==(const OutlinePlace&) const = default;
};

/// The marching outline of a selection, in one view.
///
/// Every pixel of the outline is either black or white and hides what lies below, and the pattern is that of diagonal stripes eight
/// pixels wide. So a step changes a quarter of its pixels and nothing else on the screen: the view paints the outline alone over what
/// it showed before. The pixels in sight are collected once for a place, into a picture of their own and eight lists by their place in the
/// pattern; a step writes two of the lists and draws the tiles of the picture that hold any.
class CSelectionOutline {
public:
    static constexpr int c_nInterval = 100; ///< milliseconds from step to step
    static constexpr int c_nPhases = 8;

    /// Takes the boundary for a place when it is another than before; true when it was. The phase goes on, so that a picture that scrolls
    /// takes its outline along.
    bool Follow(std::span<const MaskSegment> segments, const OutlinePlace& place);
    /// Nothing is to be drawn until a boundary is taken again.
    void Forget();

    /// The next phase.
    void Tick();
    int Phase() const { return m_nPhase; }

    /// Around drawing that must not mix with it; they nest. A resume without a pause does nothing.
    void Pause() { m_nPause++; }
    void Resume();
    bool IsPaused() const { return m_nPause > 0; }

    /// Draws what of the outline lies in the rectangle (client pixels, which the painter's must be).
    void Draw(QPainter& painter, const CRect& rc) const;
    /// Rectangles of client pixels that together hold all of the outline that is in sight.
    const std::vector<CRect>& Tiles() const { return m_tiles; }
    bool IsEmpty() const { return m_tiles.empty(); }

private:
    void AddLine(CPoint a, CPoint b);
    void CollectTiles();
    void Paint(const std::vector<std::uint32_t>& pixels, QRgb color);

    OutlinePlace m_place;
    bool m_bTaken = false;
    QImage m_image; ///< the outline in the client area, transparent elsewhere
    /// Places in the image, by the sum of their coordinates modulo the number of phases.
    std::array<std::vector<std::uint32_t>, c_nPhases> m_pixels;
    std::vector<CRect> m_tiles;
    int m_nPhase = 0;
    int m_nPause = 0;
};

} // namespace kestrune
