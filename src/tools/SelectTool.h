#pragma once

#include "base/Matrix3.h"
#include "selection/MaskPlane.h"
#include "tools/PaintTool.h"

#include <cstdint>

namespace kestrune {

/// What the selection tools share: the drag, its rubber band, the modes with their keys, moving the outline, and the click that
/// deselects. A tool of its own says what its shape is.
///
/// A press inside the selection, in mode "new", drags the outline in place of making a new one. Points are kept in the picture's
/// coordinates with their fraction, so that a shape stays where it is when the view scrolls or zooms meanwhile.
class CSelectTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    /// Shift adds and Control subtracts for as long as they are held; Escape drops the drag.
    bool OnKeyDown(int nKey, int nRepeat, unsigned nFlags) override;
    bool OnKeyUp(int nKey, int nRepeat, unsigned nFlags) override;
    bool OnSetCursor(CToolView& view, CPoint pt) override;
    void OnDrawOverlay(CToolView& view) override;
    void OnDeactivate() override;

protected:
    /// The press (its point is corner 0) and each move (corner 1), when no outline is moved. The float is already gone.
    virtual void BeginShape(CToolView&) {}
    virtual void ContinueShape(CToolView&) {}
    /// The drag is over, whatever came of it: what it held may go.
    virtual void EndShape() {}
    /// True when what was dragged is a shape and not a click.
    virtual bool HasShape() const { return !ShapeBounds().IsEmpty(); }
    /// Holds all of the shape, in the picture's pixels.
    virtual CRect ShapeBounds() const = 0;
    virtual void DrawShape(const MaskPlane& plane, const CRect& rcPart) const = 0;
    virtual std::uint32_t UndoKind() const = 0;
    /// The shape is written column by column (`SelectShapeParams::bColumns`).
    virtual bool IsColumns() const { return false; }
    virtual void AddBand(const CToolView&, ToolOverlay&) const {}

    /// What the drag does: the bar's mode, or the one that a modifier of the press stands for when its key was pressed elsewhere.
    SelectMode Mode() const;
    bool IsMovingOutline() const { return m_bMoving; }
    /// Ends the drag: shape, moved outline, or click.
    void Finish(CToolView& view);
    void Cancel(CToolView& view);
    void ShowBand(CToolView& view);

    /// The picture's point under a client point, limited to the picture's edge.
    PointF ClampedPoint(const CToolView& view, CPoint pt) const;
    static CPoint ToClient(const CToolView& view, PointF pt);
    static CRect ToClient(const CToolView& view, const CRect& rc);

    PointF m_aCorners[2]; ///< where the drag began, and where it is
    int m_nCorner = 0;    ///< 1 after the press, 2 once a second corner is known
    int m_nFeather = 0;   ///< pixels, as the bar said at the press
    bool m_bDragging = false;

private:
    void MoveOutline(CToolView& view);

    CPoint m_ptPress, m_ptLast; ///< client points of the drag, not limited
    SelectMode m_pressMode = SelectMode::New;
};

} // namespace kestrune
