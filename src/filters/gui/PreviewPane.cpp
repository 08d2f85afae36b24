#include "filters/gui/PreviewPane.h"

#include "doc/Bitmap.h"
#include "doc/ScreenScale.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nHandCursor = 904;
constexpr int c_nKeyStep = 16; ///< pane pixels that an arrow key pans

/// The hand is loaded once for the whole program.
const QCursor& HandCursor()
{
    static const QCursor cursor = LoadCursor(c_nHandCursor);
    return cursor;
}

/// What the geometry shows of the bitmap, drawn for a screen of that scale.
QImage DrawSource(const CPreviewGeometry& geometry, const LBitmapBase& bitmap, double fScale)
{
    const auto toScreen = [fScale](int n) { return static_cast<int>(std::lround(n * fScale)); };
    const CRect &rcSource = geometry.SourceRect(), &rcDest = geometry.DestRect();
    QImage image(toScreen(rcDest.Width()), toScreen(rcDest.Height()), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    const double fZoom = geometry.PaintScale() * fScale;
    // The corner of what is seen within the scaled picture; rounding must not leave a gap at its far edges.
    const auto corner = [fZoom](int nFrom, int nImage, int nLength) {
        return std::max(
            0, std::min(static_cast<int>(std::lround(nFrom * fZoom)), static_cast<int>(nImage * fZoom) - nLength));
    };
    const int x = corner(rcSource.left, bitmap.GetWidth(), image.width());
    const int y = corner(rcSource.top, bitmap.GetHeight(), image.height());
    image.fill(ThemeWorkspace());
    ScaleToScreen(bitmap, fZoom, {x, y, x + image.width(), y + image.height()},
                  reinterpret_cast<std::uint32_t*>(image.bits()), image.bytesPerLine());
    return image;
}

} // namespace

CPreviewPane::CPreviewPane(CPreviewGeometry& geometry, const LBitmapBase& bitmap, QWidget* pParent)
    : QWidget(pParent)
    , m_geometry(geometry)
    , m_bitmap(bitmap)
{
    setFixedSize(sizeHint());
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize CPreviewPane::sizeHint() const
{
    const int nSide = m_geometry.GetPane() + 2 * c_nFrame;
    return {nSide, nSide};
}

CPoint CPreviewPane::ToDialog(QPointF pt) const
{
    return {static_cast<int>(std::floor(pt.x())) - c_nFrame + CPreviewGeometry::c_nPaneLeft,
            static_cast<int>(std::floor(pt.y())) - c_nFrame + CPreviewGeometry::c_nPaneTop};
}

void CPreviewPane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), ThemeWorkspace());
    painter.setPen(hasFocus() ? ThemeAccent() : ThemeLine());
    painter.drawRect(0, 0, width() - 1, height() - 1);
    const double fScale = devicePixelRatioF();
    QImage image = DrawSource(m_geometry, m_bitmap, fScale);
    image.setDevicePixelRatio(fScale);
    const CRect& rc = m_geometry.DestRect();
    painter.drawImage(
        QPoint(rc.left - CPreviewGeometry::c_nPaneLeft + c_nFrame, rc.top - CPreviewGeometry::c_nPaneTop + c_nFrame),
        image);
}

void CPreviewPane::UpdateCursor(QPointF pt)
{
    const CPoint at = ToDialog(pt);
    if (m_geometry.DestRect().Contains(at.x, at.y))
        setCursor(HandCursor());
    else
        setCursor(Qt::ArrowCursor);
}

void CPreviewPane::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton && m_geometry.BeginDrag(ToDialog(pEvent->position())))
        Q_EMIT DragStarted();
}

void CPreviewPane::mouseMoveEvent(QMouseEvent* pEvent)
{
    UpdateCursor(pEvent->position());
    if ((pEvent->buttons() & Qt::LeftButton) && m_geometry.Drag(ToDialog(pEvent->position())))
        update();
}

void CPreviewPane::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton && m_geometry.EndDrag())
        Q_EMIT DragEnded();
}

void CPreviewPane::wheelEvent(QWheelEvent* pEvent)
{
    if (const int nSteps = m_wheel.Take(*pEvent))
        Q_EMIT ZoomStep(nSteps);
    pEvent->accept();
}

/// Arrow keys pan as a short drag does.
void CPreviewPane::keyPressEvent(QKeyEvent* pEvent)
{
    CPoint by;
    switch (pEvent->key()) {
    case Qt::Key_Left:
        by.x = c_nKeyStep;
        break;
    case Qt::Key_Right:
        by.x = -c_nKeyStep;
        break;
    case Qt::Key_Up:
        by.y = c_nKeyStep;
        break;
    case Qt::Key_Down:
        by.y = -c_nKeyStep;
        break;
    case Qt::Key_Plus:
        return Q_EMIT ZoomStep(1);
    case Qt::Key_Minus:
        return Q_EMIT ZoomStep(-1);
    default:
        return QWidget::keyPressEvent(pEvent);
    }
    const CRect& rc = m_geometry.DestRect();
    const CPoint from{(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
    if (m_geometry.IsDragging() || !m_geometry.BeginDrag(from))
        return;
    Q_EMIT DragStarted();
    m_geometry.Drag({from.x + by.x, from.y + by.y});
    m_geometry.EndDrag();
    update();
    Q_EMIT DragEnded();
}

} // namespace kestrune
