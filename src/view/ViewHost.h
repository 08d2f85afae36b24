#pragma once

#include "base/Geometry.h"

#include <QRect>
#include <QString>

namespace kestrune {

class CPaintView;

/// What a view asks of the frame around it. The main frame implements it; a test may leave the defaults.
class CViewHost {
public:
    virtual ~CViewHost() = default;

    /// The mouse position pane, image coordinates (0, 0 outside the picture).
    virtual void ShowMousePosition(int, int) {}
    /// The zoom changed: the option bar's zoom box, the zoom pane and the child frame's title follow.
    virtual void ZoomChanged(CPaintView&) {}
    /// The space that a child frame may take, in client pixels of the document area, before the view's own deductions.
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
};

} // namespace kestrune
