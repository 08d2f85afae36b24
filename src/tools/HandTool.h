#pragma once

#include "tools/PaintTool.h"

namespace kestrune {

/// Drags the picture under the window.
class CHandTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    bool OnSetCursor(CToolView& view, CPoint pt) override;

private:
    CPoint m_ptLast;
};

} // namespace kestrune
