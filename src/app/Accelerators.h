#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QWidget>

#include <functional>

namespace kestrune {

/// Turns key presses into commands, by the shortcuts of the command table.
///
/// It works at the door of the application instead of through the toolkit's shortcuts, because a bare letter must also work
/// while a Hangul input method is on: a key whose character is no Latin letter is matched by the key's position, and a single
/// jamo, as a key's text or committed by an input method, counts as its key of the two-set layout.
/// Boxes that take text keep their keys; nothing happens while a dialog or a menu is open or a mouse button is held.
class CAccelerators : public QObject {
    Q_OBJECT
public:
    using Execute = std::function<bool(int)>;

    /// Watches the windows of `pFrame` and the boxes that float beside it.
    CAccelerators(QWidget* pFrame, Execute execute);

    /// The command of a key press, 0 when it has none.
    static int CommandOfKey(const QKeyEvent& event);
    /// The key (`Qt::Key_A` ... `Qt::Key_Z`) of a jamo on the two-set layout; 0 for any other character.
    static int KeyOfJamo(QChar character);

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool IsOurs(const QWidget* pWidget) const;

    QWidget* m_pFrame;
    Execute m_execute;
};

} // namespace kestrune
