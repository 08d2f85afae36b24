#include "app/SpaceKey.h"

#include "ui/NumEdit.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

namespace kestrune {

namespace {

/// A number box has no use for a space.
bool TakesSpaces(const QWidget& widget)
{
    const auto* pCombo = qobject_cast<const QComboBox*>(&widget);
    return (pCombo && pCombo->isEditable()) || (qobject_cast<const QLineEdit*>(&widget) && !qobject_cast<const CNumEdit*>(&widget));
}

} // namespace

CSpaceKey::CSpaceKey(QWidget* pFrame, std::function<QAbstractScrollArea*()> view)
    : QObject(pFrame)
    , m_pFrame(pFrame)
    , m_view(std::move(view))
{
    qApp->installEventFilter(this);
}

/// The view that the key is for while another widget has the keyboard; null when it is for that widget.
QAbstractScrollArea* CSpaceKey::ViewFor(const QWidget& focus) const
{
    if (m_bByKey || QApplication::activePopupWidget() || QApplication::activeModalWidget() || TakesSpaces(focus))
        return nullptr;
    const QWidget* p = &focus;
    while (p && p != m_pFrame) // past the window that a floating box is
        p = p->parentWidget();
    QAbstractScrollArea* pView = p ? m_view() : nullptr;
    return pView && pView != &focus && QApplication::widgetAt(QCursor::pos()) == pView->viewport() ? pView : nullptr;
}

bool CSpaceKey::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const QEvent::Type type = pEvent->type();
    if (type == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(pEvent)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
            m_bByKey = true;
        else if (reason == Qt::MouseFocusReason)
            m_bByKey = false;
        return false;
    }
    if ((type != QEvent::KeyPress && type != QEvent::KeyRelease) || pWatched != QApplication::focusWidget())
        return false; // the parents of what has the keyboard are asked only when it has not used the key
    const auto* pKey = static_cast<QKeyEvent*>(pEvent);
    if (pKey->key() != Qt::Key_Space)
        return false;
    const auto* pFocus = static_cast<QWidget*>(pWatched);
    if (type == QEvent::KeyRelease && !pKey->isAutoRepeat() && std::exchange(m_bGiven, false)) {
        // From a floating box the window may change only after the key is up.
        QAbstractScrollArea* pView = m_view();
        return pView && pView != pFocus && QCoreApplication::sendEvent(pView, pEvent);
    }
    QAbstractScrollArea* pView = type == QEvent::KeyPress && !pKey->modifiers() ? ViewFor(*pFocus) : nullptr;
    if (!pView)
        return false;
    m_bGiven = true;
    pView->activateWindow();
    pView->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(pView, pEvent);
    return true;
}

} // namespace kestrune
