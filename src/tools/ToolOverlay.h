#pragma once

#include "base/Geometry.h"

#include <memory>
#include <vector>

namespace kestrune {

struct OverlayShape;

/// What a tool draws over the picture while it works: rubber bands, outlines and handles, in client pixels. It is a list and
/// not a painting call, so that a tool needs no window system and the view can repaint just what changed.
struct ToolOverlay {
    struct Line {
        CPoint a, b; ///< both ends belong to the line
    };
    std::vector<Line> aLines;      ///< drawn in two tones, visible over any picture
    std::vector<CRect> aHandles;   ///< small squares with a rim
    std::vector<CRect> aEllipses;  ///< outlines, as the lines
    std::vector<CRect> aShades;    ///< darkened, beneath all else; they don't overlap each other
    std::shared_ptr<const OverlayShape> pShape; ///< an outline that stays as it is and only moves; null: none
    CPoint ptShape;                             ///< where its origin lies

    bool IsEmpty() const { return aLines.empty() && aHandles.empty() && aEllipses.empty() && aShades.empty() && !pShape; }
    /// Darkens what of `rcAll` lies outside of `rc`.
    void ShadeAround(const CRect& rc, const CRect& rcAll)
    {
        const CRect in = Intersect(rc, rcAll);
        for (const CRect& strip : {CRect{rcAll.left, rcAll.top, rcAll.right, in.top}, CRect{rcAll.left, in.top, in.left, in.bottom},
                                   CRect{in.right, in.top, rcAll.right, in.bottom}, CRect{rcAll.left, in.bottom, rcAll.right, rcAll.bottom}})
            if (!strip.IsEmpty())
                aShades.push_back(strip);
    }
    void AddRect(const CRect& rc)
    {
        const int r = rc.right - 1, b = rc.bottom - 1;
        aLines.push_back({{rc.left, rc.top}, {r, rc.top}});
        aLines.push_back({{r, rc.top}, {r, b}});
        aLines.push_back({{r, b}, {rc.left, b}});
        aLines.push_back({{rc.left, b}, {rc.left, rc.top}});
    }
};

/// Many lines that are repainted as one rectangle, drawn as the others.
struct OverlayShape {
    std::vector<ToolOverlay::Line> aLines;
    CRect rc; ///< holds them all
};

} // namespace kestrune
