#pragma once

#include "ui/WheelSteps.h"

#include <QColor>
#include <QWidget>

#include <vector>

namespace kestrune {

/// A track with several handles below it: the base of `CMultiSlider` and `C2PtSlider`.
///
/// A press picks the nearest handle (the earlier one on a tie) and drags it. With the keyboard: Up and Down choose the handle,
/// Left and Right move it by one, Page keys by a sixteenth of the range, Home and End to the ends. The wheel moves the handle
/// under the pointer; a double click brings the handles back to their defaults.
class CHandleSlider : public QWidget {
    Q_OBJECT
public:
    /// Pixels of margin on each side of the client area.
    static constexpr int c_nMargin = 5;

    CHandleSlider(std::vector<QColor> handleFills, QWidget* pParent);

    int GetHandle(int iHandle) const { return m_aValues[static_cast<std::size_t>(iHandle)]; }
    /// The handle that a press at that client x picks.
    int HandleAt(int x) const;
    int ValueToX(int nValue) const;
    int XToValue(int x) const;

    QSize sizeHint() const override { return {266, 22}; }
    QSize minimumSizeHint() const override { return {80, 22}; }

Q_SIGNALS:
    /// A handle moved by hand.
    void HandleMoved(int iHandle);

protected:
    /// Moves a handle as far as the others allow and lets them follow; the value may lie anywhere.
    virtual void MoveHandle(int iHandle, int nValue) = 0;
    virtual void ResetHandles() = 0;

    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;

    int m_nMin = 0;
    int m_nMax = 255;
    std::vector<int> m_aValues;

private:
    void MoveByHand(int iHandle, int nValue);

    std::vector<QColor> m_aFills;
    int m_iCurrent = 0; ///< the handle that keys move
    bool m_bDragging = false;
    CWheelSteps m_wheel;
};

} // namespace kestrune
