#pragma once

#include "tools/PaintTool.h"

namespace kestrune {

/// Drags the float. The first step lifts it from the picture; at the end the selection follows it. The arrow keys move it by a pixel, with
/// Shift by ten.
class CMoveTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    bool OnKeyDown(int nKey, int nRepeat, unsigned nFlags) override;
    bool OnSetCursor(CToolView& view, CPoint pt) override;

private:
    bool m_bDragging = false;
    bool m_bMoved = false;  ///< the drag has put the float somewhere else, and nobody but it writes to the picture meanwhile
    CPoint m_ptStart;       ///< of the drag, in the picture
    CPoint m_ptFloatStart;  ///< the float's corner then
};

} // namespace kestrune
