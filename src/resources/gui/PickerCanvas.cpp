#include "resources/gui/PickerCanvas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nBorder = 4; // room for the strip's marks and the field's ring at the edges

int ToPixels(PickerComponent component, int nValue, int nSpan)
{
    return nValue * (nSpan - 1) / c_aPickerMax[component];
}

int ToValue(PickerComponent component, int nPixels, int nSpan)
{
    return std::clamp((nPixels * c_aPickerMax[component] + (nSpan - 1) / 2) / (nSpan - 1), 0, c_aPickerMax[component]);
}

} // namespace

CPickerCanvas::CPickerCanvas(Kind kind, QWidget* pParent)
    : QWidget(pParent)
    , m_kind(kind)
{
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    setCursor(Qt::CrossCursor);
}

QSize CPickerCanvas::sizeHint() const
{
    return {(m_kind == FIELD ? c_nPickerFieldWidth : c_nPickerStripWidth) + 2 * c_nBorder, c_nPickerFieldHeight + 2 * c_nBorder};
}

PickerComponent CPickerCanvas::ComponentX() const
{
    return c_aPickerAxes[m_onStrip].x;
}

PickerComponent CPickerCanvas::ComponentY() const
{
    return m_kind == FIELD ? c_aPickerAxes[m_onStrip].y : m_onStrip;
}

bool CPickerCanvas::NeedsPicture(PickerComponent onStrip, const CPickerColor& color) const
{
    if (onStrip != m_onStrip)
        return true;
    if (m_kind == FIELD)
        return color.Get(onStrip) != m_color.Get(onStrip);
    const PickerAxes axes = c_aPickerAxes[onStrip];
    return onStrip != PICK_HUE && (color.Get(axes.x) != m_color.Get(axes.x) || color.Get(axes.y) != m_color.Get(axes.y));
}

void CPickerCanvas::ShowColor(PickerComponent onStrip, const CPickerColor& color)
{
    if (NeedsPicture(onStrip, color)) {
        if (m_kind == FIELD)
            RenderPickerField(m_bitmap, onStrip, color);
        else
            RenderPickerStrip(m_bitmap, onStrip, color);
    }
    m_onStrip = onStrip;
    m_color = color;
    update();
}

void CPickerCanvas::paintEvent(QPaintEvent*)
{
    if (!m_bitmap.IsAllocated())
        return;
    QPainter painter(this);
    const int nWidth = m_bitmap.GetWidth();
    const int nHeight = m_bitmap.GetHeight();
    for (int y = 0; y < nHeight; y++) {
        const QImage row(m_bitmap.Row(y), nWidth, 1, nWidth * 3, QImage::Format_BGR888);
        painter.drawImage(c_nBorder, c_nBorder + y, row);
    }
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.drawRect(c_nBorder - 1, c_nBorder - 1, nWidth + 1, nHeight + 1);

    painter.setRenderHint(QPainter::Antialiasing);
    const int nY = c_nBorder + nHeight - 1 - ToPixels(ComponentY(), m_color.Get(ComponentY()), nHeight);
    if (m_kind == FIELD) {
        const QPointF at(c_nBorder + ToPixels(ComponentX(), m_color.Get(ComponentX()), nWidth) + 0.5, nY + 0.5);
        painter.setPen(QPen(Qt::black, 2.5));
        painter.drawEllipse(at, 4, 4);
        painter.setPen(QPen(Qt::white, 1.2));
        painter.drawEllipse(at, 4, 4);
    } else {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
        painter.drawLine(0, nY, c_nBorder, nY);
        painter.drawLine(c_nBorder + nWidth, nY, 2 * c_nBorder + nWidth, nY);
    }
}

void CPickerCanvas::MoveTo(QPoint pt)
{
    const int nY = ToValue(ComponentY(), m_bitmap.GetHeight() - 1 - std::clamp(pt.y() - c_nBorder, 0, m_bitmap.GetHeight() - 1), m_bitmap.GetHeight());
    const int nX = ToValue(ComponentX(), std::clamp(pt.x() - c_nBorder, 0, m_bitmap.GetWidth() - 1), m_bitmap.GetWidth());
    Q_EMIT Moved(nX, nY);
}

void CPickerCanvas::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        MoveTo(pEvent->position().toPoint());
}

void CPickerCanvas::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (pEvent->buttons() & Qt::LeftButton)
        MoveTo(pEvent->position().toPoint());
}

void CPickerCanvas::keyPressEvent(QKeyEvent* pEvent)
{
    const int nX = m_color.Get(ComponentX());
    const int nY = m_color.Get(ComponentY());
    switch (pEvent->key()) {
    case Qt::Key_Left:
        Q_EMIT Moved(std::max(0, nX - 1), nY);
        return;
    case Qt::Key_Right:
        Q_EMIT Moved(std::min(c_aPickerMax[ComponentX()], nX + 1), nY);
        return;
    case Qt::Key_Up:
        Q_EMIT Moved(nX, std::min(c_aPickerMax[ComponentY()], nY + 1));
        return;
    case Qt::Key_Down:
        Q_EMIT Moved(nX, std::max(0, nY - 1));
        return;
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

} // namespace kestrune
