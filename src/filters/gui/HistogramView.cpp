#include "filters/gui/HistogramView.h"

#include "ui/HandleSlider.h"
#include "ui/Theme.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace kestrune {

void DrawHistogram(QPainter& painter, const QRectF& rc, const std::array<int, 256>& counts, const QColor& color)
{
    const int nMost = std::max(1, *std::max_element(counts.begin(), counts.end()));
    const double fWidth = rc.width() / 256;
    for (int i = 0; i < 256; i++) {
        const double fHeight = rc.height() * counts[static_cast<std::size_t>(i)] / nMost;
        painter.fillRect(QRectF(rc.left() + i * fWidth, rc.bottom() - fHeight, fWidth, fHeight), color);
    }
}

CHistogramView::CHistogramView(int nHeight, QWidget* pParent)
    : QWidget(pParent)
{
    setFixedSize(256 + 2 * CHandleSlider::c_nMargin, nHeight);
}

void CHistogramView::SetCounts(const std::array<int, 256>& counts)
{
    m_counts = counts;
    m_bRamp = false;
    update();
}

void CHistogramView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect rc = rect().adjusted(CHandleSlider::c_nMargin, 0, -CHandleSlider::c_nMargin, 0);
    if (m_bRamp) {
        QLinearGradient ramp(rc.topLeft(), rc.topRight());
        ramp.setColorAt(0, Qt::black);
        ramp.setColorAt(1, Qt::white);
        painter.fillRect(rc, ramp);
    } else {
        painter.fillRect(rc, palette().color(QPalette::Base));
        DrawHistogram(painter, rc.adjusted(0, 2, 0, 0), m_counts, palette().color(QPalette::Text));
    }
    painter.setPen(ThemeLine());
    painter.drawRect(rc.adjusted(0, 0, -1, -1));
}

} // namespace kestrune
