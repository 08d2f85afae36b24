#include "resources/gui/ColorWnd.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nBorder = 2; // on each side of the cells; with the scroll bar it makes the 4 pixels that no column gets

QColor ToColor(COLORREF cr)
{
    return {RedOf(cr), GreenOf(cr), BlueOf(cr)};
}

} // namespace

CColorWnd::CColorWnd(QWidget* pParent)
    : QAbstractScrollArea(pParent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    viewport()->setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Window);
    setAccessibleName(TextOf(IDS_COLOR_SWATCHES));
    setMinimumSize(c_nCell * 4, c_nCell * 2);
}

void CColorWnd::SetColors(const Colors& colors)
{
    m_aColors = colors;
    viewport()->update();
}

int CColorWnd::GetColumns() const
{
    const int nScrollBar = verticalScrollBar()->sizeHint().width();
    return std::max(1, (width() - nScrollBar - 2 * c_nBorder) / c_nCell);
}

QRect CColorWnd::CellRect(int iCell) const
{
    const int nColumns = GetColumns();
    return {c_nBorder + iCell % nColumns * c_nCell, c_nBorder + iCell / nColumns * c_nCell - verticalScrollBar()->value(), c_nCell, c_nCell};
}

int CColorWnd::CellAt(QPoint pt) const
{
    const int nX = pt.x() - c_nBorder;
    const int nY = pt.y() - c_nBorder + verticalScrollBar()->value();
    const int nColumns = GetColumns();
    if (nX < 0 || nY < 0 || nX >= nColumns * c_nCell)
        return -1;
    const int iCell = nY / c_nCell * nColumns + nX / c_nCell;
    return iCell < c_nColors ? iCell : -1;
}

void CColorWnd::Select(int iCell)
{
    viewport()->update(CellRect(m_iSelected).adjusted(-1, -1, 1, 1));
    m_iSelected = std::clamp(iCell, 0, c_nColors - 1);
    const QRect rc = CellRect(m_iSelected);
    if (rc.top() < 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rc.top() - c_nBorder);
    else if (rc.bottom() >= viewport()->height())
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rc.bottom() - viewport()->height() + 1 + c_nBorder);
    viewport()->update(CellRect(m_iSelected).adjusted(-1, -1, 1, 1));
}

void CColorWnd::Choose(int iCell)
{
    Select(iCell);
    Q_EMIT ColorChosen(m_aColors[static_cast<std::size_t>(iCell)]);
}

void CColorWnd::Store(int iCell)
{
    m_aColors[static_cast<std::size_t>(iCell)] = m_crCurrent;
    viewport()->update(CellRect(iCell));
}

void CColorWnd::Hover(int iCell)
{
    if (iCell == m_iHover)
        return;
    for (const int i : {m_iHover, iCell})
        if (i >= 0)
            viewport()->update(CellRect(i).adjusted(-1, -1, 1, 1));
    m_iHover = iCell;
}

void CColorWnd::UpdateScrollBar()
{
    const int nRows = (c_nColors + GetColumns() - 1) / GetColumns();
    verticalScrollBar()->setSingleStep(c_nCell);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, nRows * c_nCell + 2 * c_nBorder - viewport()->height()));
}

void CColorWnd::paintEvent(QPaintEvent* pEvent)
{
    QPainter painter(viewport());
    for (int i = 0; i < c_nColors; i++) {
        const QRect rc = CellRect(i);
        if (!rc.intersects(pEvent->rect()))
            continue;
        painter.fillRect(rc.adjusted(0, 0, -1, -1), ToColor(m_aColors[static_cast<std::size_t>(i)]));
    }
    const auto frame = [&](int iCell, const QColor& color, Qt::PenStyle style) {
        painter.setPen(QPen(color, 1, style));
        painter.drawRect(CellRect(iCell).adjusted(-1, -1, -1, -1));
    };
    frame(m_iSelected, palette().color(hasFocus() ? QPalette::Highlight : QPalette::WindowText), Qt::SolidLine);
    if (m_iHover >= 0)
        frame(m_iHover, palette().color(QPalette::Highlight), Qt::SolidLine);
}

void CColorWnd::resizeEvent(QResizeEvent* pEvent)
{
    QAbstractScrollArea::resizeEvent(pEvent);
    UpdateScrollBar();
    viewport()->update();
}

void CColorWnd::mousePressEvent(QMouseEvent* pEvent)
{
    const int iCell = CellAt(pEvent->position().toPoint());
    if (iCell < 0)
        return;
    if (pEvent->button() == Qt::LeftButton)
        Choose(iCell);
    else if (pEvent->button() == Qt::RightButton)
        Store(iCell);
}

void CColorWnd::mouseMoveEvent(QMouseEvent* pEvent)
{
    Hover(CellAt(pEvent->position().toPoint()));
}

void CColorWnd::leaveEvent(QEvent* pEvent)
{
    Hover(-1);
    QAbstractScrollArea::leaveEvent(pEvent);
}

bool CColorWnd::viewportEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Leave)
        Hover(-1);
    if (pEvent->type() == QEvent::ToolTip) {
        const auto* pHelp = static_cast<QHelpEvent*>(pEvent);
        if (const int iCell = CellAt(pHelp->pos()); iCell >= 0) {
            const COLORREF cr = m_aColors[static_cast<std::size_t>(iCell)];
            QToolTip::showText(pHelp->globalPos(), QStringLiteral("R %1  G %2  B %3").arg(RedOf(cr)).arg(GreenOf(cr)).arg(BlueOf(cr)), this);
        }
        return true;
    }
    return QAbstractScrollArea::viewportEvent(pEvent);
}

void CColorWnd::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Left:
        return Select(m_iSelected - 1);
    case Qt::Key_Right:
        return Select(m_iSelected + 1);
    case Qt::Key_Up:
        return Select(m_iSelected - GetColumns());
    case Qt::Key_Down:
        return Select(m_iSelected + GetColumns());
    case Qt::Key_Home:
        return Select(0);
    case Qt::Key_End:
        return Select(c_nColors - 1);
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Choose(m_iSelected);
    case Qt::Key_Insert:
        return Store(m_iSelected);
    default:
        QAbstractScrollArea::keyPressEvent(pEvent);
    }
}

} // namespace kestrune
