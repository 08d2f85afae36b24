#include "resources/gui/BrushZoomView.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kestrune {

namespace {
constexpr int c_nZoomOne = 10; // and where it begins, for a brush that fits
constexpr int c_nZoomStep = 2;
constexpr int c_nZoomMin = 4;
constexpr int c_nZoomMax = 100;
} // namespace

CBrushZoomView::CBrushZoomView(SoftMask mask, QWidget* pParent)
    : QWidget(pParent)
    , m_mask(std::move(mask))
    , m_image(m_mask.nWidth, m_mask.nHeight, QImage::Format_Grayscale8)
{
    const QSize szPane = sizeHint();
    while (m_nZoom > c_nZoomMin && (m_mask.nWidth * Zoom() > szPane.width() || m_mask.nHeight * Zoom() > szPane.height()))
        m_nZoom -= c_nZoomStep; // a large brush is seen whole at first
    setMinimumSize(szPane);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::OpenHandCursor);
    setAccessibleName(TextOf(IDS_BRUSH_PREVIEW));
    setToolTip(TextOf(IDS_BRUSH_ZOOM_TIP));
}

void CBrushZoomView::SetMap(const std::array<std::uint8_t, 256>& map)
{
    for (int y = 0; y < m_mask.nHeight; y++) {
        const std::uint8_t* pRow = m_mask.aBytes.data() + static_cast<std::ptrdiff_t>(y) * m_mask.nWidth;
        std::transform(pRow, pRow + m_mask.nWidth, m_image.scanLine(y), [&](std::uint8_t n) { return static_cast<uchar>(255 - map[n]); });
    }
    update();
}

void CBrushZoomView::SetZoom(int nZoom)
{
    nZoom = std::clamp(nZoom, c_nZoomMin, c_nZoomMax);
    if (nZoom == m_nZoom)
        return;
    m_ptPan *= static_cast<double>(nZoom) / m_nZoom;
    m_nZoom = nZoom;
    update();
    Q_EMIT ZoomChanged();
}

void CBrushZoomView::ZoomBy(int nSteps)
{
    SetZoom(m_nZoom + nSteps * c_nZoomStep);
}

void CBrushZoomView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    const QSizeF size = QSizeF(m_image.size()) * Zoom();
    const QPointF ptMiddle = QRectF(rect()).center() + m_ptPan;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, Zoom() < 2);
    painter.drawImage(QRectF(ptMiddle - QPointF(size.width() / 2, size.height() / 2), size), m_image);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CBrushZoomView::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    SetZoom(c_nZoomOne);
    m_bPanning = true;
    m_ptGrab = pEvent->position() - m_ptPan;
    setCursor(Qt::ClosedHandCursor);
}

void CBrushZoomView::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!m_bPanning)
        return;
    // As far as the brush's middle stays in the pane: a brush out of sight is a brush that the user has lost.
    const QPointF pt = pEvent->position() - m_ptGrab;
    m_ptPan = {std::clamp(pt.x(), -width() / 2.0, width() / 2.0), std::clamp(pt.y(), -height() / 2.0, height() / 2.0)};
    update();
}

void CBrushZoomView::mouseReleaseEvent(QMouseEvent*)
{
    m_bPanning = false;
    setCursor(Qt::OpenHandCursor);
}

void CBrushZoomView::wheelEvent(QWheelEvent* pEvent)
{
    if (pEvent->angleDelta().y())
        ZoomBy(pEvent->angleDelta().y() > 0 ? 1 : -1);
}

} // namespace kestrune
