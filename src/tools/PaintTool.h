#pragma once

#include "tools/ToolView.h"

#include <memory>

namespace kestrune {

/// Base of all tools, and itself the tool that does nothing. There is one object for each tool id in the whole process,
/// shared by all documents; the view looks the current one up on every event and forwards to it.
class CPaintTool {
public:
    /// Appends the tool to `ToolRegistry`.
    explicit CPaintTool(int nToolId);
    virtual ~CPaintTool();
    CPaintTool(const CPaintTool&) = delete;
    CPaintTool& operator=(const CPaintTool&) = delete;

    int GetId() const { return m_nToolId; }

    // Points are client coordinates of the view; `nFlags` are `MouseFlags`.
    virtual void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt); ///< captures the mouse, clears `m_bMoving`
    virtual void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt);   ///< releases the capture if the view has it
    virtual void OnLButtonDblClk(CToolView&, unsigned, CPoint) {}
    virtual void OnMouseMove(CToolView&, unsigned, CPoint) {}
    virtual void OnRButtonDown(CToolView&, unsigned, CPoint) {}
    virtual void OnRButtonUp(CToolView&, unsigned, CPoint) {}
    virtual void OnChar(int /*nChar*/, int /*nRepeat*/, unsigned /*nFlags*/) {} ///< no message reaches it
    /// Keys are `VirtualKey` numbers. True when the tool has used the key, so that the view does not scroll by it.
    virtual bool OnKeyDown(int /*nKey*/, int /*nRepeat*/, unsigned /*nFlags*/) { return false; }
    virtual bool OnKeyUp(int /*nKey*/, int /*nRepeat*/, unsigned /*nFlags*/) { return false; }
    /// True when the tool has set a cursor for the pointer at that client point.
    virtual bool OnSetCursor(CToolView&, CPoint) { return false; }
    /// The pointer left the view.
    virtual void OnMouseLeave(CToolView&) {}
    /// True when a drag is to be told every position the mouse was at, not only the last before each turn of the event loop.
    virtual bool WantsEveryMove() const { return false; }
    /// True when the second press of a double click is a press like any other: a quick hand that taps a place twice, or taps
    /// it and draws on from there, means both.
    virtual bool TakesSecondPress() const { return false; }
    /// The view's zoom or scroll position changed: a tool with something on the overlay sets it anew.
    virtual void OnDrawOverlay(CToolView&) {}
    virtual void OnTimer(CToolView&, int /*nTimer*/) {}
    virtual void OnActivate() {}
    virtual void OnDeactivate() {}

protected:
    struct Segment {
        int x0, y0, x1, y1;
    };

    /// The client point limited to the picture's edge: from the origin to the origin plus the scaled size, compared as
    /// 32-bit floats and truncated. Every tool that draws applies it first, so a drag that starts outside starts on the border.
    static CPoint ClampToImage(const CToolView& view, CPoint pt, const CPaintImage& image);
    /// True while the pointer lies inside the view's client area.
    static bool IsInClient(const CToolView& view, CPoint pt);

    CPaintImage* m_pImage = nullptr; ///< the image being worked on, from mouse-down on; not owned
    CRect m_rcWork;
    int m_nImageWidth = 0;
    int m_nImageHeight = 0;
    bool m_bMoving = false;                ///< the press fell inside the selection: the drag moves it
    std::unique_ptr<Segment[]> m_pOutline; ///< the rubber-band copy of the selection's boundary
    int m_nToolId;
};

} // namespace kestrune
