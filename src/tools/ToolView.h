#pragma once

#include "base/Geometry.h"
#include "tools/ToolOverlay.h"

namespace kestrune {

class CPaintImage;

/// State of buttons and keys that comes with a mouse event.
enum MouseFlags : unsigned { MK_LBUTTON = 1, MK_RBUTTON = 2, MK_SHIFT = 4, MK_CONTROL = 8, MK_MBUTTON = 16 };

/// Virtual key numbers that tools ask for; letters and digits are their capital character codes.
enum VirtualKey {
    VK_BACK = 8, VK_TAB = 9, VK_RETURN = 13, VK_SHIFT = 16, VK_CONTROL = 17, VK_MENU = 18, VK_ESCAPE = 27, VK_SPACE = 32,
    VK_PRIOR = 33, VK_NEXT = 34, VK_END = 35, VK_HOME = 36, VK_LEFT = 37, VK_UP = 38, VK_RIGHT = 39, VK_DOWN = 40,
    VK_INSERT = 45, VK_DELETE = 46, VK_F1 = 112
};

/// What a tool asks of the view it works in. Client coordinates are pixels of the view's client area, as the screen
/// has them: one image pixel measures `GetZoom()` of them.
class CToolView {
public:
    virtual ~CToolView() = default;

    /// The picture of the view's document; null when there is none.
    virtual CPaintImage* GetImage() const = 0;

    virtual float GetZoom() const = 0;
    /// The offset of the picture in the client area: centring when the client is larger, else 0, on each axis.
    virtual CPoint GetImageOrigin() const = 0;
    /// Truncates toward zero, so the first pixel left of the picture also yields 0.
    virtual CPoint ClientToImage(CPoint pt) const = 0;
    virtual CPoint ImageToClient(CPoint pt) const = 0;
    virtual CSize GetClientSize() const = 0;

    virtual CPoint GetScrollPosition() const = 0;
    /// Scrolls as near to that position as the scroll bars allow.
    virtual void ScrollToPosition(CPoint pt) = 0;
    /// An axis whose picture fits has no scroll bar.
    virtual bool HasHScroll() const = 0;
    virtual bool HasVScroll() const = 0;
    /// The magnifier's step, in or out, after which the picture's point under `pt` comes to the centre.
    virtual void ZoomAt(bool bIn, CPoint pt) = 0;

    virtual void SetCapture() = 0;
    virtual void ReleaseCapture() = 0;
    virtual bool HasCapture() const = 0;

    /// Shows the cursor of that number (the table of the tools) over the view.
    virtual void SetToolCursor(int nCursor) = 0;
    /// Asks the tool for its cursor where the pointer rests now: another tool has become the current one.
    virtual void RefreshCursor() {}
    /// Replaces what the tool draws over the picture; an empty one removes it.
    virtual void SetOverlay(ToolOverlay overlay) = 0;

    /// Calls `OnTimer` of the current tool with that number every `nMilliseconds`, until killed.
    virtual void StartTimer(int nTimer, int nMilliseconds) = 0;
    virtual void KillTimer(int nTimer) = 0;

    /// Pixels of the picture changed (image coordinates); the screen follows at the next turn of the event loop.
    virtual void RepaintRect(const CRect& rcImage) = 0;
    virtual void RepaintAll() = 0;

    /// The selection's moving outline rests while the picture moves under it.
    virtual void StopOutline() = 0;
    virtual void StartOutline() = 0;
    /// Shows the selection's outline that far (client pixels) from where the mask is, while a drag moves it.
    virtual void OffsetOutline(CPoint) {}
};

/// The view that has the keyboard; null without one. Operations of a tool that are not told a view (keys, activation) ask here.
extern CToolView* g_pActiveToolView;

} // namespace kestrune
