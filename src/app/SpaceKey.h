#pragma once

#include <QObject>

#include <functional>

class QAbstractScrollArea;
class QWidget;

namespace kestrune {

/// Takes the Space key to the picture under the pointer when a click has left the keyboard in one of the boxes: whoever has just
/// chosen a brush or a colour means the hand with it. Where the keyboard went by the keyboard itself, the key stays there, and
/// so it does in boxes that take text.
class CSpaceKey : public QObject {
    Q_OBJECT
public:
    /// Watches the windows of `pFrame` and the boxes that float beside it; `view` yields the active picture's view or null.
    CSpaceKey(QWidget* pFrame, std::function<QAbstractScrollArea*()> view);

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QAbstractScrollArea* ViewFor(const QWidget& focus) const;

    QWidget* m_pFrame;
    std::function<QAbstractScrollArea*()> m_view;
    bool m_bByKey = false; ///< the keyboard came where it is by Tab, F6 or a mnemonic
    bool m_bGiven = false; ///< the key is down and was taken to the picture
};

} // namespace kestrune
