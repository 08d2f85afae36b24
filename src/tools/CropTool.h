#pragma once

#include "tools/PaintTool.h"

namespace kestrune {

/// Draws the rectangle to which the picture is cropped, and changes it by its sides, its corners or as a whole. A double click or Enter
/// crops, Escape drops the rectangle. The rectangle stands in the picture (`m_rcCrop`), so that it outlives zooming and the hand.
class CCropTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonDblClk(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    bool OnKeyDown(int nKey, int nRepeat, unsigned nFlags) override;
    bool OnSetCursor(CToolView& view, CPoint pt) override;
    void OnDrawOverlay(CToolView& view) override;
    void OnActivate() override;
    void OnDeactivate() override;

private:
    /// What a drag changes: the sides by bits (a corner has two), all of it, or nothing yet.
    enum Mode : unsigned { NONE = 0, LEFT = 1, TOP = 2, RIGHT = 4, BOTTOM = 8, WHOLE = 16, NEW = 32 };

    static CRect ClientRect(const CToolView& view, const CPaintImage& image);
    static unsigned HitTest(const CToolView& view, const CPaintImage& image, CPoint pt);
    static int CursorOf(unsigned nMode);
    CPoint PictureAt(const CToolView& view, CPoint pt) const;
    void Drag(CPoint at);
    void Drop(CToolView& view, CPaintImage& image);
    void Apply(CToolView& view, CPaintImage& image);
    static void ShowRect(CToolView& view);

    unsigned m_nMode = NONE;
    CRect m_rcStart; ///< at the press
    CPoint m_ptStart; ///< of a new rectangle
};

} // namespace kestrune
