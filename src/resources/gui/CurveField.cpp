#include "resources/gui/CurveField.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace kestrune {

namespace {

constexpr int c_nField = 256;
constexpr int c_nRim = 4; // so that the squares at the ends are whole
constexpr int c_nSquare = 7;
constexpr int c_nGrid = 64;
constexpr int c_nBigStep = 8;

CPoint FromField(QPointF pt)
{
    return {static_cast<int>(pt.x()) - c_nRim, c_nField - 1 - (static_cast<int>(pt.y()) - c_nRim)};
}

} // namespace

CCurveField::CCurveField(const CResponseCurve& curve, QWidget* pParent)
    : QWidget(pParent)
    , m_curve(curve)
{
    setFixedSize(c_nField + 2 * c_nRim, c_nField + 2 * c_nRim);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setAccessibleName(TextOf(IDS_BRUSH_CURVE));
    setToolTip(TextOf(IDS_BRUSH_CURVE_TIP));
}

QPoint CCurveField::ToField(CPoint pt)
{
    return {pt.x + c_nRim, c_nField - 1 - pt.y + c_nRim};
}

void CCurveField::Changed()
{
    update();
    Q_EMIT CurveChanged();
}

void CCurveField::SetPoint(int x, int y)
{
    m_iCurrent = m_curve.Press(x, y);
    Changed();
}

void CCurveField::Reset()
{
    m_curve.Reset();
    m_iCurrent = 0;
    Changed();
}

void CCurveField::RemovePoint(int iSlot)
{
    if (!m_curve.Remove(iSlot))
        return;
    ChoosePoint(-1);
    Changed();
}

void CCurveField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect rcField(c_nRim, c_nRim, c_nField, c_nField);
    painter.fillRect(rcField, palette().color(QPalette::Base));
    QColor crGrid = palette().color(QPalette::Text);
    crGrid.setAlpha(40);
    painter.setPen(crGrid);
    for (int n = c_nGrid; n < c_nField; n += c_nGrid) {
        painter.drawLine(c_nRim + n, c_nRim, c_nRim + n, c_nRim + c_nField - 1);
        painter.drawLine(c_nRim, c_nRim + n, c_nRim + c_nField - 1, c_nRim + n);
    }
    painter.drawLine(rcField.bottomLeft(), rcField.topRight());
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.drawRect(rcField.adjusted(-1, -1, 0, 0));

    // Points and curve invert what lies below them, so that each shows on the other and on both themes.
    painter.setCompositionMode(QPainter::CompositionMode_Difference);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < CResponseCurve::c_nSlots; i++) {
        if (!m_curve.IsUsed(i))
            continue;
        const QPoint pt = ToField(m_curve.Point(i));
        painter.fillRect(pt.x() - c_nSquare / 2, pt.y() - c_nSquare / 2, c_nSquare, c_nSquare, Qt::white);
        if (i == m_iCurrent && hasFocus())
            painter.fillRect(pt.x() - c_nSquare / 2 + 2, pt.y() - c_nSquare / 2 + 2, c_nSquare - 4, c_nSquare - 4, Qt::white);
    }
    int yLast = ToField({0, m_curve.Table()[0]}).y();
    for (int x = 0; x < c_nField; x++) {
        // One pixel a column, and where the curve is steep those between it and the last one: no dotted line.
        const QPoint pt = ToField({x, m_curve.Table()[static_cast<std::size_t>(x)]});
        const int yFirst = yLast > pt.y() ? pt.y() : std::min(yLast + 1, pt.y());
        const int nLength = std::max(1, yLast > pt.y() ? yLast - pt.y() : pt.y() - yFirst + 1);
        painter.fillRect(pt.x(), yFirst, 1, nLength, Qt::white);
        yLast = pt.y();
    }
}

void CCurveField::mousePressEvent(QMouseEvent* pEvent)
{
    const CPoint pt = FromField(pEvent->position());
    if (pEvent->button() == Qt::LeftButton) {
        m_bDragging = true;
        SetPoint(pt.x, pt.y);
        return;
    }
    if (pEvent->button() != Qt::RightButton || m_bDragging)
        return;
    for (int i = 0; i < CResponseCurve::c_nSlots; i++) {
        const CPoint& ptSlot = m_curve.Point(i);
        if (m_curve.IsUsed(i) && std::abs(ptSlot.x - pt.x) <= c_nSquare && std::abs(ptSlot.y - pt.y) <= c_nSquare)
            return RemovePoint(i);
    }
}

void CCurveField::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!m_bDragging)
        return;
    const CPoint pt = FromField(pEvent->position());
    m_curve.Drag(m_iCurrent, pt.x, pt.y);
    Changed();
}

void CCurveField::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        m_bDragging = false;
}

void CCurveField::ChoosePoint(int nStep)
{
    for (int i = m_iCurrent + nStep; i >= 0 && i < CResponseCurve::c_nSlots; i += nStep)
        if (m_curve.IsUsed(i)) {
            m_iCurrent = i;
            break;
        }
    update();
}

void CCurveField::keyPressEvent(QKeyEvent* pEvent)
{
    const int nStep = pEvent->modifiers() & Qt::ShiftModifier ? c_nBigStep : 1;
    CPoint pt = m_curve.Point(m_iCurrent);
    switch (pEvent->key()) {
    case Qt::Key_PageUp: return ChoosePoint(-1);
    case Qt::Key_PageDown: return ChoosePoint(1);
    case Qt::Key_Delete: return RemovePoint(m_iCurrent);
    case Qt::Key_Left: pt.x -= nStep; break;
    case Qt::Key_Right: pt.x += nStep; break;
    case Qt::Key_Up: pt.y += nStep; break;
    case Qt::Key_Down: pt.y -= nStep; break;
    default: return QWidget::keyPressEvent(pEvent);
    }
    m_curve.Drag(m_iCurrent, pt.x, pt.y);
    Changed();
}

} // namespace kestrune
