#include "resources/gui/PaletteStrip.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kestrune {

namespace {
constexpr int c_nLevels = 256;
constexpr int c_nHeight = 36;
constexpr int c_nFrame = 3; // room for the mark of the selected band
} // namespace

CPaletteStrip::CPaletteStrip(const PaletteTable& table, QWidget* pParent)
    : QWidget(pParent)
    , m_table(table)
{
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    setAccessibleName(TextOf(IDS_PALETTE_STRIP));
    setToolTip(TextOf(IDS_PALETTE_STRIP_TIP));
}

QSize CPaletteStrip::sizeHint() const
{
    return {c_nLevels + 2 * c_nFrame, c_nHeight + 2 * c_nFrame};
}

void CPaletteStrip::SetCount(int nCount)
{
    m_nCount = std::clamp(nCount, 1, c_nPaletteEntries);
    Select(m_iSelected);
    update();
}

void CPaletteStrip::Select(int iBand)
{
    m_iSelected = std::clamp(iBand, 0, m_nCount - 1);
    update();
    Q_EMIT SelectionChanged(m_iSelected);
}

QRect CPaletteStrip::BandRect(int iBand) const
{
    const int nWidth = PaletteBandWidth(m_nCount);
    return {c_nFrame + iBand * nWidth, c_nFrame, nWidth, c_nHeight};
}

void CPaletteStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (int i = 0; i < m_nCount; i++) {
        const PaletteEntry& entry = m_table[static_cast<std::size_t>(i)];
        painter.fillRect(BandRect(i), QColor(entry.nRed, entry.nGreen, entry.nBlue));
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(BandRect(0).united(BandRect(m_nCount - 1)).adjusted(-1, -1, 0, 0));
    const QRect rc = BandRect(m_iSelected);
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::WindowText), 2));
    painter.drawRect(rc.adjusted(-1, -1, 1, 1));
    painter.setPen(palette().color(QPalette::Base)); // a light rim keeps dark colours apart from the mark
    painter.drawRect(rc.adjusted(0, 0, -1, -1));
}

void CPaletteStrip::mousePressEvent(QMouseEvent* pEvent)
{
    const QPoint pt = pEvent->position().toPoint() - QPoint(c_nFrame, c_nFrame);
    const int iBand = PaletteBandAt(pt.x(), m_nCount);
    if (pEvent->button() != Qt::LeftButton || iBand < 0 || pt.y() < 0 || pt.y() >= c_nHeight)
        return;
    Select(iBand);
    Q_EMIT BandPicked(iBand);
}

void CPaletteStrip::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Left:
        return Select(m_iSelected - 1);
    case Qt::Key_Right:
        return Select(m_iSelected + 1);
    case Qt::Key_Home:
        return Select(0);
    case Qt::Key_End:
        return Select(m_nCount - 1);
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT BandPicked(m_iSelected);
        return;
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

void CPaletteStrip::focusInEvent(QFocusEvent* pEvent)
{
    QWidget::focusInEvent(pEvent);
    update();
}

void CPaletteStrip::focusOutEvent(QFocusEvent* pEvent)
{
    QWidget::focusOutEvent(pEvent);
    update();
}

} // namespace kestrune
