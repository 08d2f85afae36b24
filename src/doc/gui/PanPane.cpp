#include "doc/gui/PanPane.h"

#include "ui/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace kestrune {

namespace {
constexpr int c_nKeyStep = 16;
}

CPanPane::CPanPane(QSize size, QWidget* pParent)
    : QWidget(pParent)
{
    setFixedSize(size);
    setCursor(Qt::OpenHandCursor);
    setFocusPolicy(Qt::StrongFocus);
}

void CPanPane::ShowImage(const QImage& image)
{
    m_image = image;
    update();
}

void CPanPane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), ThemeWorkspace());
    const qreal fRatio = devicePixelRatioF();
    m_image.setDevicePixelRatio(fRatio);
    const QSize room = PixelSize(); // whole pixels, so that a picture of dots stays one
    painter.drawImage(QPointF((room.width() - m_image.width()) / 2, (room.height() - m_image.height()) / 2) / fRatio, m_image);
    if (hasFocus()) {
        painter.setPen(QPen(ThemeAccent(), 1));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void CPanPane::mousePressEvent(QMouseEvent* pEvent)
{
    m_ptLast = pEvent->position();
}

void CPanPane::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!(pEvent->buttons() & Qt::LeftButton))
        return;
    const QPoint by = ((pEvent->position() - m_ptLast) * devicePixelRatioF()).toPoint();
    m_ptLast += QPointF(by) / devicePixelRatioF(); // what is less than a pixel stays for the next move
    if (!by.isNull())
        Q_EMIT Dragged(by);
}

void CPanPane::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Left:
        return Q_EMIT Dragged({c_nKeyStep, 0});
    case Qt::Key_Right:
        return Q_EMIT Dragged({-c_nKeyStep, 0});
    case Qt::Key_Up:
        return Q_EMIT Dragged({0, c_nKeyStep});
    case Qt::Key_Down:
        return Q_EMIT Dragged({0, -c_nKeyStep});
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

} // namespace kestrune
