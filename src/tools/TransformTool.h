#pragma once

#include "base/Matrix3.h"
#include "tools/PaintTool.h"

namespace kestrune {

/// Base of the five tools that bend the float's rectangle by its corners. A drag changes what is pending, a rubber band shows it; several
/// drags add up. A double click or Enter applies it to the pixels, Escape drops it, a change of the tool leaves it.
///
/// The corners and the matrix stand in the picture, in its coordinates, so that they outlive zooming, scrolling and the tool.
class CTransformTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonDblClk(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    bool OnKeyDown(int nKey, int nRepeat, unsigned nFlags) override;
    void OnDrawOverlay(CToolView& view) override;
    void OnActivate() override;
    void OnDeactivate() override;

protected:
    /// A drag, in pixels of the picture with their fractions.
    struct Drag {
        Quad start;    ///< the corners at the press
        int nHandle;   ///< the corner that is dragged, 0 to 3
        PointF from;   ///< where the mouse was pressed
        PointF to;     ///< where it is
        double fPixel; ///< the size of a pixel of the screen
        Quad whole;    ///< the float's own rectangle
    };
    /// Works out the corners and the whole pending matrix, which holds what was pending at the press.
    virtual void Bend(const Drag& drag, Quad& corners, Matrix3& matrix) const = 0;
    /// The middle of four corners.
    static PointF Centre(const Quad& corners);
    static void Map(const Matrix3& m, Quad& corners);
    /// Slants around the centre, sideways or up and down, so that the dragged edge follows the mouse.
    static void Slant(const Drag& drag, bool bSideways, Quad& corners, Matrix3& matrix);

private:
    void Apply(CToolView& view, CPaintImage& image);
    void ShowBand(CToolView& view);

    Quad m_CornerStart{};     ///< client pixels
    int m_nHandle = 0;        ///< 0: none; 1 to 4: the corner being dragged
    CPoint m_ptLast;          ///< of the press; the drag's way counts from here, so that a corner that had to stop is found again
    Matrix3 m_TransformStart; ///< what was pending at the press
    bool m_bDragging = false;
};

} // namespace kestrune
