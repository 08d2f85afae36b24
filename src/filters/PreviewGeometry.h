#pragma once

#include "base/Geometry.h"

namespace kestrune {

/// What part of the picture the preview pane of a filter dialog shows, and where: zoom, panning and the two rectangles,
/// without a window. Points and `DestRect` are in the dialog's coordinates, in which the pane (150 x 150 in most
/// dialogs) stands at (10, 10).
///
/// A picture that is smaller than the pane at the present zoom stands in its middle and is seen whole. Steps towards a
/// larger zoom and towards a smaller one differ in two ways, kept as users know them: when the picture covers the pane
/// exactly, a larger zoom takes the picture for one that fits, a smaller one does not; and only a smaller zoom brings
/// the centre back into the picture (a larger one needs no such help, its view shrinks around the centre).
class CPreviewGeometry {
public:
    static constexpr int c_nPaneSize = 150; ///< of most dialogs
    static constexpr int c_nPaneLeft = 10;
    static constexpr int c_nPaneTop = 10;

    explicit CPreviewGeometry(CSize sizeImage, int nPane = c_nPaneSize);

    int GetPane() const { return m_nPane; }

    /// The buttons "+" and "-" (0.2 to 10.0 in steps of 0.2) and the click on the label (back to 1.0). False when
    /// nothing changes.
    bool ZoomIn();
    bool ZoomOut();
    bool ZoomActual();
    float GetZoom() const { return m_fZoom; }
    /// What the label shows before its percent sign.
    int GetPercent() const;

    /// The picture's part shown, in image pixels, and where it stands.
    const CRect& SourceRect() const { return m_rcSource; }
    const CRect& DestRect() const { return m_rcDest; }
    /// Pane pixels per image pixel as they are drawn. Where the picture fills the pane the source is stretched to it:
    /// an odd view shows one pixel less than the zoom asks for, and no unfiltered edge comes into sight.
    double PaintScale() const;
    /// The picture's part that a preview run has to filter; it lies inside the picture.
    CRect FilterRect() const;
    /// The picture is seen whole along both axes, so that there is nothing to pan.
    bool FitsPane() const { return m_horizontal.nShown < m_nPane && m_vertical.nShown < m_nPane; }

    /// A press; false (and no drag) outside `DestRect`.
    bool BeginDrag(CPoint pt);
    /// A move with the button held; true when the rectangles changed.
    bool Drag(CPoint pt);
    /// The release; true when there was a drag.
    bool EndDrag();
    bool IsDragging() const { return m_bDragging; }

private:
    /// One axis of the picture.
    struct Axis {
        int nImage = 0; ///< image pixels
        int nPane = 0; ///< pane pixels
        int nView = 0; ///< image pixels that the pane shows
        int nShown = 0; ///< pane pixels that the picture covers
        int nOffset = 0; ///< from the pane's edge to the picture
        int nCentre = 0; ///< the image pixel at the pane's middle

        void Open();
        void Zoom(float fZoom, bool bLarger);
        void Pan(int nBy);
        void Clamp();
    };

    void SetStep(int nStep);
    void PlaceRects();
    CPoint ToImage(CPoint pt) const;

    int m_nPane;
    Axis m_horizontal, m_vertical;
    int m_nStep; ///< the zoom in fifths
    float m_fZoom = 1.0f;
    CRect m_rcSource, m_rcDest;
    CPoint m_ptLastDrag;
    bool m_bDragging = false;
};

} // namespace kestrune
