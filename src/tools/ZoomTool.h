#pragma once

#include "tools/PaintTool.h"

namespace kestrune {

/// The magnifier: a left press zooms in at the point, a right press out.
class CZoomTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnRButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    bool OnSetCursor(CToolView& view, CPoint pt) override;
};

} // namespace kestrune
