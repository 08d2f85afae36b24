#pragma once

#include <QTimer>
#include <QToolButton>

namespace kestrune {

/// How long a button is held until its group drops, in milliseconds.
inline constexpr int c_nHoldTime = 400;

/// A button of the toolbox. One that stands for a group has a small triangle in its corner, and speaks when it is held.
class CToolBoxButton : public QToolButton {
    Q_OBJECT
public:
    CToolBoxButton(bool bGroup, QWidget* pParent);

    /// The hold has become something else: letting go is no click any more.
    void SetHolding(bool bHolding);

Q_SIGNALS:
    void Held();
    /// While it is held: where the pointer is, and where it was let go.
    void HoldMoved(QPoint ptScreen);
    void HoldReleased(QPoint ptScreen);
    /// A right click, the menu key or Alt+Down.
    void MenuRequested();
    /// One of the four arrow keys.
    void ArrowPressed(int nKey);

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    bool m_bGroup;
    bool m_bHolding = false;
    QTimer m_timer;
};

} // namespace kestrune
