#pragma once

#include <QWidget>

#include <array>

namespace kestrune {

/// A histogram in bars of one pixel, its largest bar as high as the box. The bars stand under the values of a handle
/// slider of the same width. Without counts it is a ramp from black to white.
class CHistogramView : public QWidget {
    Q_OBJECT
public:
    explicit CHistogramView(int nHeight, QWidget* pParent = nullptr);

    void SetCounts(const std::array<int, 256>& counts);

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    std::array<int, 256> m_counts{};
    bool m_bRamp = true;
};

/// Bars of the counts into a rectangle of the painter, from its lower edge.
void DrawHistogram(QPainter& painter, const QRectF& rc, const std::array<int, 256>& counts, const QColor& color);

} // namespace kestrune
