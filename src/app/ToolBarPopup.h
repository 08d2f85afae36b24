#pragma once

#include <QFrame>

#include <functional>
#include <span>
#include <vector>

class QLabel;
class QToolButton;

namespace kestrune {

/// The tools of a group in a row, with the name of the one under the pointer below. It takes no mouse of its own: the button
/// that dropped it holds the mouse and tells where the pointer is.
class CToolBarPopup : public QFrame {
    Q_OBJECT
public:
    /// `isEnabled` tells whether a command can be chosen now.
    CToolBarPopup(std::span<const int> commands, int nCurrent, const std::function<bool(int)>& isEnabled, QWidget* pParent);

    /// Shows it beside a button: to its right, or to its left where the screen ends.
    void ShowBeside(const QWidget& button);
    /// Lights what is under that point of the screen.
    void Track(QPoint ptScreen);
    /// The command under the point; 0 when there is none, or it cannot be chosen.
    int CommandAt(QPoint ptScreen) const;
    /// The middle of a command's button on the screen; for tests and for whoever points there.
    QPoint CentreOf(int nCommand) const;

private:
    struct Entry {
        int nCommand;
        QToolButton* pButton;
    };

    std::vector<Entry> m_entries;
    QLabel* m_pName;
    int m_nCurrent;
};

} // namespace kestrune
