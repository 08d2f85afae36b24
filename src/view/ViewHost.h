#pragma once

#include "base/Geometry.h"

#include <QRect>
#include <QString>
#include <QStringList>

namespace kestrune {

class CPaintView;
struct ToolRow;

/// What a view asks of the frame around it. The main frame implements it; a test may leave the defaults.
/// Sizes and places of frames are in the toolkit's units; the view counts pixels of the screen itself (`CPaintView::ClientScale`).
class CViewHost {
public:
    virtual ~CViewHost() = default;

    /// The mouse position pane, image coordinates (0, 0 outside the picture).
    virtual void ShowMousePosition(int, int) {}
    /// The zoom or the scaled size changed: the option bar's zoom box, the zoom pane and the child frame's title follow.
    virtual void ZoomChanged(CPaintView&) {}
    /// The space that a child frame may take, in the toolkit's units, before the view's own deductions.
    virtual CSize AvailableSpace(const CPaintView&) const { return {1000, 700}; }
    /// The zoom panel's option "윈도우 크기 동시 변경": the child frame follows the zoom.
    virtual bool FrameFollowsZoom() const { return false; }
    /// Resizes the child frame of the view so that its client area gets that size (FrameFollowsZoom, new pictures).
    virtual void ResizeFrame(CPaintView&, CSize) {}
    /// Moves and resizes the child frame (the Fit command).
    virtual void PlaceFrame(CPaintView&, const QRect&) {}
    /// A view came to the front or left it.
    virtual void ViewActivated(CPaintView&, bool) {}
    /// A press is about to reach the tool: the history box is synced, open popups close.
    virtual void BeforePress(CPaintView&) {}
    /// Files were dropped on the view.
    virtual void FilesDropped(const QStringList&) {}

    /// The child frame shows rulers, which take room from the view.
    virtual bool RulersVisible(const CPaintView&) const { return false; }
    /// The pointer moved: the rulers' markers follow. Client pixels.
    virtual void MoveRulerMarkers(CPaintView&, CPoint) {}
    /// Zoom, scroll position or size changed: the rulers are drawn anew.
    virtual void RefreshRulers(CPaintView&) {}
    /// A tool command: shows the tool's option bar and side box. Comes before the old tool is left.
    virtual void ShowToolBars(const ToolRow&, int /*nCommand*/) {}

    /// What the picture asks of the tool option bar and the history box (`CImageSite`).
    virtual int FloatOpacity() const { return 100; }
    virtual int MoveMode() const { return 0; }
    virtual void SyncHistoryBox(CPaintView&, int) {}
};

} // namespace kestrune
