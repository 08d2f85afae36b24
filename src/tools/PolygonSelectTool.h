#pragma once

#include "tools/FreeSelectTool.h"

namespace kestrune {

/// Selects a polygon: each click is a corner, a double click or Enter closes it, Backspace takes the last corner back.
class CPolygonSelectTool : public CFreeSelectTool {
public:
    using CFreeSelectTool::CFreeSelectTool;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonDblClk(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    bool OnKeyDown(int nKey, int nRepeat, unsigned nFlags) override;

protected:
    std::uint32_t UndoKind() const override;
    void AddBand(const CToolView& view, ToolOverlay& overlay) const override;
};

} // namespace kestrune
