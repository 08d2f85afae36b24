#pragma once

#include "filters/PreviewGeometry.h"
#include "ui/WheelSteps.h"

#include <QWidget>

namespace kestrune {

class LBitmapBase;

/// The pane of a filter dialog: draws the part of a bitmap that the geometry names, and turns presses, moves and arrow
/// keys into panning. It is 150 x 150 in a thin frame, at every screen scale in pixels of the screen.
class CPreviewPane : public QWidget {
    Q_OBJECT
public:
    /// Both live longer than the pane.
    CPreviewPane(CPreviewGeometry& geometry, const LBitmapBase& bitmap, QWidget* pParent = nullptr);

    static constexpr int c_nFrame = 1;

    QSize sizeHint() const override;

Q_SIGNALS:
    /// A press in the picture: what the pane shows until the release is the unfiltered picture.
    void DragStarted();
    void DragEnded();
    /// A step of the wheel over the pane, positive for a larger zoom.
    void ZoomStep(int nSteps);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    CPoint ToDialog(QPointF pt) const;
    void UpdateCursor(QPointF pt);

    CPreviewGeometry& m_geometry;
    const LBitmapBase& m_bitmap;
    CWheelSteps m_wheel;
};

} // namespace kestrune
