#pragma once

#include "filters/ChannelHistograms.h"
#include "filters/FilterValues.h"

#include <QWidget>

#include <optional>

namespace kestrune {

/// The graph of Curves: 256 x 256 values, input from left to right, output upwards.
///
/// A press near a point takes it, elsewhere it sets a new one where the pointer is; dragging moves it, as far as its
/// neighbours' places. A point that is dragged out of the graph, clicked with the right button or met by Delete goes
/// away, as long as two remain. With the keyboard: Page keys choose a point, arrows move it (by ten with Shift), Insert
/// adds one.
class CCurveGraph : public QWidget {
    Q_OBJECT
public:
    /// Both live longer than the graph.
    CCurveGraph(CurvesValues& values, const ChannelHistograms& histograms, QWidget* pParent = nullptr);

    void ShowChannel(int nChannel);
    /// Sets a point of the channel shown, 0..255 both ways: it replaces what its slot held. The curve is drawn anew.
    void SetPoint(int x, int y);

    QSize sizeHint() const override;
    /// Where a point of the graph stands in the widget, and the graph's point there, which may lie outside 0..255.
    QPointF ToWidget(int x, int y) const;
    QPoint FromWidget(QPointF pt) const;

Q_SIGNALS:
    void Changed();
    /// Under the pointer, or the point that is being moved.
    void Pointed(int nInput, int nOutput);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void leaveEvent(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    CurvesValues::Points& Points() { return m_values.points[static_cast<std::size_t>(m_nChannel)]; }
    int PointAt(QPointF pt) const;
    int CountPoints() const;
    void MovePoint(int x, int y);
    void RemovePoint(int iSlot);
    void ChoosePoint(int nStep);
    void Tell();
    void DrawGrid(QPainter& painter, const QRectF& rc) const;
    void DrawCurve(QPainter& painter) const;

    CurvesValues& m_values;
    const ChannelHistograms& m_histograms;
    int m_nChannel = 0;
    int m_iPoint = -1; ///< the slot of the point under the mouse, or chosen by keys; -1 when none
    bool m_bDragging = false;
    std::optional<CurvePoint> m_pulledOut; ///< the point that is being dragged while the pointer is outside
};

} // namespace kestrune
