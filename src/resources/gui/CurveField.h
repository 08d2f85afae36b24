#pragma once

#include "resources/ResponseCurve.h"

#include <QWidget>

namespace kestrune {

/// The field of 256 by 256 in which the response curve is bent: a press takes hold of a point or makes one, a drag moves it, a
/// right press or Delete takes it away. By keyboard: Page Up and Page Down choose a point, the arrows move it.
class CCurveField : public QWidget {
    Q_OBJECT
public:
    CCurveField(const CResponseCurve& curve, QWidget* pParent);

    const CResponseCurve& Curve() const { return m_curve; }
    /// A press at that coverage and nothing more.
    void SetPoint(int x, int y);
    void Reset();
    /// The point of the field, in the widget's coordinates, that a coverage pair lies at.
    static QPoint ToField(CPoint pt);

Q_SIGNALS:
    void CurveChanged();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void Changed();
    void ChoosePoint(int nStep);
    void RemovePoint(int iSlot);

    CResponseCurve m_curve;
    int m_iCurrent = 0; ///< the slot that keys move
    bool m_bDragging = false;
};

} // namespace kestrune
