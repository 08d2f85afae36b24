#include "app/ToolBoxButton.h"

#include "ui/Icons.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace kestrune {

namespace {
constexpr int c_nCorner = 8;
}

CToolBoxButton::CToolBoxButton(bool bGroup, QWidget* pParent)
    : QToolButton(pParent)
    , m_bGroup(bGroup)
{
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard with the picture
    m_timer.setSingleShot(true);
    m_timer.setInterval(c_nHoldTime);
    connect(&m_timer, &QTimer::timeout, this, &CToolBoxButton::Held);
}

void CToolBoxButton::SetHolding(bool bHolding)
{
    m_bHolding = bHolding;
}

void CToolBoxButton::mousePressEvent(QMouseEvent* pEvent)
{
    QToolButton::mousePressEvent(pEvent);
    if (m_bGroup && isEnabled() && pEvent->button() == Qt::LeftButton)
        m_timer.start();
}

void CToolBoxButton::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (m_bHolding)
        Q_EMIT HoldMoved(pEvent->globalPosition().toPoint());
    else
        QToolButton::mouseMoveEvent(pEvent);
}

void CToolBoxButton::mouseReleaseEvent(QMouseEvent* pEvent)
{
    m_timer.stop();
    if (!m_bHolding || pEvent->button() != Qt::LeftButton) {
        QToolButton::mouseReleaseEvent(pEvent);
        return;
    }
    m_bHolding = false;
    setDown(false);
    Q_EMIT HoldReleased(pEvent->globalPosition().toPoint());
}

void CToolBoxButton::contextMenuEvent(QContextMenuEvent* pEvent)
{
    if (!m_bGroup) {
        QToolButton::contextMenuEvent(pEvent);
        return;
    }
    pEvent->accept();
    Q_EMIT MenuRequested();
}

void CToolBoxButton::keyPressEvent(QKeyEvent* pEvent)
{
    const int nKey = pEvent->key();
    if (m_bGroup && nKey == Qt::Key_Down && pEvent->modifiers() & Qt::AltModifier)
        Q_EMIT MenuRequested();
    else if (nKey == Qt::Key_Down || nKey == Qt::Key_Right || nKey == Qt::Key_Up || nKey == Qt::Key_Left)
        Q_EMIT ArrowPressed(nKey);
    else if (nKey == Qt::Key_Return || nKey == Qt::Key_Enter)
        click();
    else
        QToolButton::keyPressEvent(pEvent);
}

void CToolBoxButton::paintEvent(QPaintEvent* pEvent)
{
    QToolButton::paintEvent(pEvent);
    if (!m_bGroup)
        return;
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1 : 0.4);
    LoadIcon(QStringLiteral("widgets/popup-corner")).paint(&painter, QRect(width() - c_nCorner - 2, height() - c_nCorner - 2, c_nCorner, c_nCorner));
}

} // namespace kestrune
