#pragma once

#include "resources/BrushPrepare.h"

#include <QImage>
#include <QWidget>

#include <array>
#include <cstdint>

namespace kestrune {

/// The brush under the curve, black on white, in a pane that zooms in steps of 0.2 from 0.4 to 10. A press brings the zoom back to
/// 1; a drag moves the brush in the pane. It begins at 1, or below for a brush that is larger than the pane.
class CBrushZoomView : public QWidget {
    Q_OBJECT
public:
    CBrushZoomView(SoftMask mask, QWidget* pParent);

    /// Shows the mask through that map.
    void SetMap(const std::array<std::uint8_t, 256>& map);
    void ZoomBy(int nSteps);
    double Zoom() const { return m_nZoom / 10.0; }

    QSize sizeHint() const override { return {256, 140}; }

Q_SIGNALS:
    void ZoomChanged();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    void SetZoom(int nZoom);

    SoftMask m_mask;
    QImage m_image;
    int m_nZoom = 10; ///< tenths, so that steps add up exactly
    QPointF m_ptPan;  ///< of the brush's middle from the pane's
    QPointF m_ptGrab;
    bool m_bPanning = false;
};

} // namespace kestrune
