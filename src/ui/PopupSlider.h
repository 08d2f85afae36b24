#pragma once

#include "ui/WheelSteps.h"

#include <QWidget>

namespace kestrune {

/// Why a `CPopupSlider` speaks: the codes of a scroll bar.
enum SliderCode {
    SLIDER_LINE_DOWN = 0,
    SLIDER_LINE_UP = 1,
    SLIDER_PAGE_DOWN = 2,
    SLIDER_PAGE_UP = 3,
    SLIDER_TRACK = 5,
    SLIDER_MINIMUM = 6,
    SLIDER_MAXIMUM = 7
};

/// A horizontal slider with one thumb. Page Up lowers by a page, Page Down raises, Home and End go to the ends, Left and
/// Right move by a line; the wheel moves by a line, a double click goes back to the default.
class CPopupSlider : public QWidget {
    Q_OBJECT
public:
    explicit CPopupSlider(QWidget* pParent = nullptr);

    void SetRange(int nMin, int nMax);
    /// A tenth of the range for the page, 1 for the line, unless said otherwise.
    void SetSteps(int nLine, int nPage);
    void SetPos(int nPos);
    int GetPos() const { return m_nPos; }
    int GetMin() const { return m_nMin; }
    int GetMax() const { return m_nMax; }
    /// Where a double click goes.
    void SetDefault(int nDefault) { m_nDefault = nDefault; }
    /// Follows the pointer from now on as if the thumb had been pressed at `x`, until the button goes up.
    void BeginTracking(int x);
    /// Where the thumb's middle is.
    int ThumbX() const;

    QSize sizeHint() const override { return {160, 22}; }
    QSize minimumSizeHint() const override { return {80, 22}; }

Q_SIGNALS:
    /// The position changed by hand; `nCode` is a `SliderCode`.
    void Moved(int nPos, int nCode);
    /// The button that dragged the thumb went up.
    void Released();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    int PosAt(int x) const;
    void MoveByHand(int nPos, int nCode);

    int m_nMin = 0;
    int m_nMax = 100;
    int m_nPos = 0;
    int m_nLine = 1;
    int m_nPage = 10;
    int m_nDefault = 0;
    bool m_bTracking = false;
    int m_nGrab = 0; ///< from the thumb's middle to where it is held
    CWheelSteps m_wheel;
};

} // namespace kestrune
