#include "app/PaneFocus.h"

#include <QApplication>
#include <QToolButton>

#include <algorithm>

namespace kestrune {

namespace {

bool CanTake(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && widget.focusPolicy() & Qt::TabFocus && !widget.focusProxy();
}

/// Where the keyboard enters a pane; null for one that takes none.
QWidget* EntryOf(QWidget& pane)
{
    if (CanTake(pane))
        return &pane;
    QWidget* pFirst = nullptr;
    for (QWidget* p = pane.nextInFocusChain(); p != &pane; p = p->nextInFocusChain()) {
        if (!pane.isAncestorOf(p) || !CanTake(*p))
            continue;
        const auto* pButton = qobject_cast<QToolButton*>(p);
        if (pButton && pButton->isChecked())
            return p;
        if (!pFirst)
            pFirst = p;
    }
    return pFirst;
}

} // namespace

void FocusNextPane(std::span<QWidget* const> panes, bool bForward)
{
    const QWidget* pFocus = QApplication::focusWidget();
    const auto has = [pFocus](const QWidget* pPane) { return pFocus && (pPane == pFocus || pPane->isAncestorOf(pFocus)); };
    const std::size_t nCount = panes.size();
    const std::size_t iNow = static_cast<std::size_t>(std::find_if(panes.begin(), panes.end(), has) - panes.begin());
    for (std::size_t n = 1; n <= nCount; n++) {
        // From nowhere it goes to the first, or backwards to the last.
        const std::size_t i = iNow == nCount ? (bForward ? n - 1 : nCount - n) : (iNow + (bForward ? n : nCount - n)) % nCount;
        QWidget* pEntry = panes[i]->isVisible() ? EntryOf(*panes[i]) : nullptr;
        if (!pEntry)
            continue;
        if (!pEntry->isActiveWindow())
            pEntry->activateWindow(); // to or from a box that floats
        pEntry->setFocus(Qt::ShortcutFocusReason); // the reason with which the toolkit shows where the keyboard is
        return;
    }
}

} // namespace kestrune
