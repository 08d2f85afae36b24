#pragma once

#include "base/Color.h"

#include <QWidget>

namespace kestrune {

/// The two overlapping patches of foreground and background colour with their small buttons "swap" and "black and white".
/// A press on a patch makes it the active one; a press on the active one asks for the picker.
class CColorPatches : public QWidget {
    Q_OBJECT
public:
    /// SMALL is as wide as a button of the toolbox.
    enum Size { LARGE, SMALL };
    explicit CColorPatches(QWidget* pParent = nullptr, Size size = LARGE);

    void SetColors(COLORREF crForeground, COLORREF crBackground);
    /// True while the background patch is the active one.
    bool IsBackgroundActive() const { return m_bBackground; }
    void SetBackgroundActive(bool bBackground);

    QSize sizeHint() const override;

Q_SIGNALS:
    void ActiveChanged();
    void PickRequested(bool bBackground);
    void SwapRequested();
    void DefaultsRequested();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    QRect PatchRect(bool bBackground) const;

    struct Measures;
    static const Measures c_aMeasures[];

    const Measures& m_measures;
    COLORREF m_crForeground = 0xFFFFFF;
    COLORREF m_crBackground = 0;
    bool m_bBackground = false;
};

} // namespace kestrune
