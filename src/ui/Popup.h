#pragma once

#include <QFrame>
#include <QToolButton>

namespace kestrune {

class CNumEdit;
class CPopupSlider;

/// The frame that holds a slider for a moment beside a number box. Each move writes the position into the box as if typed.
///
/// It closes on Escape, Enter, a press outside and on losing the focus. When it was opened by a press it follows the pointer
/// without a second press, and closes when that button goes up after a drag.
class CPopup : public QFrame {
    Q_OBJECT
public:
    /// `pEdit` is the box; its range becomes the slider's. Deleted when it closes.
    CPopup(CNumEdit* pEdit, QWidget* pParent = nullptr);

    CPopupSlider& Slider() { return *m_pSlider; }
    /// Opens beside the box (below it, or above where the screen ends).
    void Open();
    /// The same while a button is held at that point of the screen: the thumb lies under the pointer and follows it.
    void OpenAt(QPoint ptScreen);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;

private:
    void PassOn(QMouseEvent& event);
    void Place(int x);
    void OnReleased();

    CNumEdit* m_pEdit;
    CPopupSlider* m_pSlider;
    int m_nPosAtPress = 0;
    bool m_bHeld = false; ///< the button that opened it is still down
};

/// The small arrow beside a number box that drops its slider. Alt+Down in the box does the same.
class CPopupArrow : public QToolButton {
    Q_OBJECT
public:
    explicit CPopupArrow(CNumEdit* pEdit, QWidget* pParent = nullptr);

    /// Opens the popup as the keyboard does.
    void OpenPopup();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    CNumEdit* m_pEdit;
};

} // namespace kestrune
