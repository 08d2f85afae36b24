#pragma once

#include "tools/PaintTool.h"

namespace kestrune {

/// A tool that shows its cursor and does no more: those whose work is still to come.
class CCursorTool : public CPaintTool {
public:
    using CPaintTool::CPaintTool;

    /// Inside the client area alone, where nothing but the picture and the space around it lies.
    bool OnSetCursor(CToolView& view, CPoint pt) override;
    /// The eyedropper and the text tool show theirs at once, without waiting for the pointer to move.
    void OnActivate() override;
};

} // namespace kestrune
