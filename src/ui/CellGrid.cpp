#include "ui/CellGrid.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace kestrune {

CCellGrid::CCellGrid(int nCell, QWidget* pParent)
    : QAbstractScrollArea(pParent)
    , m_nCell(nCell)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    viewport()->setBackgroundRole(QPalette::Window);
}

QSize CCellGrid::sizeHint() const
{
    return {m_nCell * 5 + verticalScrollBar()->sizeHint().width(), m_nCell * 3};
}

QSize CCellGrid::minimumSizeHint() const
{
    return {m_nCell * 2 + verticalScrollBar()->sizeHint().width(), m_nCell};
}

int CCellGrid::GetColumns() const
{
    return std::max(1, (width() - verticalScrollBar()->sizeHint().width()) / m_nCell);
}

QRect CCellGrid::CellRect(int iCell) const
{
    const int nColumns = GetColumns();
    return {iCell % nColumns * m_nCell, iCell / nColumns * m_nCell - verticalScrollBar()->value(), m_nCell, m_nCell};
}

int CCellGrid::CellAt(QPoint pt) const
{
    const int nY = pt.y() + verticalScrollBar()->value();
    const int nColumns = GetColumns();
    if (pt.x() < 0 || nY < 0 || pt.x() >= nColumns * m_nCell)
        return -1;
    const int iCell = nY / m_nCell * nColumns + pt.x() / m_nCell;
    return iCell < m_nCount ? iCell : -1;
}

void CCellGrid::SetCount(int nCount)
{
    m_nCount = nCount;
    m_iSelected = std::clamp(m_iSelected, 0, std::max(0, nCount - 1));
    UpdateScrollBar();
    viewport()->update();
}

void CCellGrid::Select(int iCell)
{
    if (!m_nCount)
        return;
    viewport()->update(CellRect(m_iSelected));
    m_iSelected = std::clamp(iCell, 0, m_nCount - 1);
    const QRect rc = CellRect(m_iSelected);
    QScrollBar* pBar = verticalScrollBar();
    if (rc.top() < 0)
        pBar->setValue(pBar->value() + rc.top());
    else if (rc.bottom() >= viewport()->height())
        pBar->setValue(pBar->value() + rc.bottom() - viewport()->height() + 1);
    viewport()->update(CellRect(m_iSelected));
    setAccessibleDescription(CellText(m_iSelected));
}

void CCellGrid::UpdateScrollBar()
{
    const int nRows = (m_nCount + GetColumns() - 1) / GetColumns();
    verticalScrollBar()->setSingleStep(m_nCell);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, nRows * m_nCell - viewport()->height()));
}

void CCellGrid::paintEvent(QPaintEvent* pEvent)
{
    QPainter painter(viewport());
    for (int i = 0; i < m_nCount; i++) {
        const QRect rcCell = CellRect(i);
        if (!rcCell.intersects(pEvent->rect()))
            continue;
        const QRect rc = rcCell.adjusted(1, 1, -2, -2); // drawn frames end one pixel farther right and below
        DrawCell(painter, i, rc.adjusted(1, 1, 0, 0));
        painter.setPen(i == m_iSelected ? Qt::red : Qt::black);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rc);
        if (i == m_iSelected && hasFocus()) {
            painter.setPen(palette().color(QPalette::Highlight));
            painter.drawRect(rc.adjusted(1, 1, -1, -1));
        }
    }
}

void CCellGrid::resizeEvent(QResizeEvent* pEvent)
{
    QAbstractScrollArea::resizeEvent(pEvent);
    UpdateScrollBar();
    viewport()->update();
}

void CCellGrid::mousePressEvent(QMouseEvent* pEvent)
{
    const int iCell = CellAt(pEvent->position().toPoint());
    if (iCell < 0 || pEvent->button() != Qt::LeftButton)
        return;
    Select(iCell);
    Q_EMIT CellClicked(iCell);
}

void CCellGrid::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    const int iCell = CellAt(pEvent->position().toPoint());
    if (iCell >= 0 && pEvent->button() == Qt::LeftButton)
        Q_EMIT CellDoubleClicked(iCell);
}

int CCellGrid::Target(int nKey) const
{
    const int nPage = std::max(1, viewport()->height() / m_nCell) * GetColumns();
    switch (nKey) {
    case Qt::Key_Left: return m_iSelected - 1;
    case Qt::Key_Right: return m_iSelected + 1;
    case Qt::Key_Up: return m_iSelected - GetColumns();
    case Qt::Key_Down: return m_iSelected + GetColumns();
    case Qt::Key_PageUp: return m_iSelected - nPage;
    case Qt::Key_PageDown: return m_iSelected + nPage;
    case Qt::Key_Home: return 0;
    case Qt::Key_End: return m_nCount - 1;
    default: return m_iSelected;
    }
}

void CCellGrid::keyPressEvent(QKeyEvent* pEvent)
{
    const int nKey = pEvent->key();
    if (m_nCount && (nKey == Qt::Key_Return || nKey == Qt::Key_Enter)) {
        Q_EMIT CellDoubleClicked(m_iSelected);
        return;
    }
    const int iTarget = m_nCount && pEvent->modifiers() == Qt::NoModifier ? std::clamp(Target(nKey), 0, m_nCount - 1) : m_iSelected;
    if (iTarget != m_iSelected) {
        Select(iTarget);
        Q_EMIT CellClicked(m_iSelected);
    } else {
        pEvent->ignore(); // letters are the tools'
    }
}

void CCellGrid::focusInEvent(QFocusEvent* pEvent)
{
    QAbstractScrollArea::focusInEvent(pEvent);
    viewport()->update(CellRect(m_iSelected));
}

void CCellGrid::focusOutEvent(QFocusEvent* pEvent)
{
    QAbstractScrollArea::focusOutEvent(pEvent);
    viewport()->update(CellRect(m_iSelected));
}

bool CCellGrid::viewportEvent(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(pEvent);
    const auto* pHelp = static_cast<QHelpEvent*>(pEvent);
    if (const int iCell = CellAt(pHelp->pos()); iCell >= 0)
        QToolTip::showText(pHelp->globalPos(), CellText(iCell), viewport(), CellRect(iCell));
    else
        QToolTip::hideText();
    return true;
}

} // namespace kestrune
