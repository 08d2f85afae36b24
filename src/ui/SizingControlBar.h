#pragma once

#include "base/Profile.h"

#include <QDockWidget>

#include <array>
#include <functional>
#include <string>

namespace kestrune {

/// A box of the program: a docking, resizable bar that remembers its size when docked horizontally (top, bottom), docked
/// vertically (left, right) and floating.
class CSizingControlBar : public QDockWidget {
    Q_OBJECT
public:
    CSizingControlBar(int nBarId, const QString& strTitle, QSize created, QWidget* pParent);

    int BarId() const { return m_nBarId; }

    /// Puts the box's contents in; the bar owns it.
    void SetContents(QWidget* pContents);
    /// Gives the title a menu button; `show` opens the menu at a point of the screen. A right click on the title does too.
    void SetMenu(std::function<void(QPoint)> show);

    /// The six sizes, in a section of the bar's own.
    void LoadState(const CProfile& profile);
    void SaveState(CProfile& profile) const;
    /// Back to the sizes at creation.
    void ResetSizes();

    QSize HorzSize() const { return m_szHorz; }
    QSize VertSize() const { return m_szVert; }
    QSize FloatSize() const { return m_szFloat; }
    /// The size of the present place.
    QSize PreferredSize() const;
    /// Where the bar appears when it floats for the first time.
    void SetFirstFloatPosition(QPoint pt) { m_ptFirstFloat = pt; }

    /// "Kestrune-SCBar-5001"
    std::string ProfileSection() const;

protected:
    void resizeEvent(QResizeEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QSize* SizeOfPlace();
    void OnTopLevelChanged(bool bFloating);

    int m_nBarId;
    QSize m_szCreated;
    QSize m_szHorz;
    QSize m_szVert;
    QSize m_szFloat;
    QPoint m_ptFirstFloat;
    bool m_bHasFloated = false;
    bool m_bMoving = false; ///< the size is ours to set, not to remember
};

/// The same with a gripper: a slim title to drag it by, and a close button.
class CSizingControlBarG : public CSizingControlBar {
    Q_OBJECT
public:
    CSizingControlBarG(int nBarId, const QString& strTitle, QSize created, QWidget* pParent);
};

} // namespace kestrune
