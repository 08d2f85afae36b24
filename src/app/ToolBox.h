#pragma once

#include "base/CommandTarget.h"
#include "base/Profile.h"

#include <QToolBar>

#include <functional>
#include <memory>
#include <vector>

class QGridLayout;
class QToolButton;

namespace kestrune {

class CToolBarPopup;
class CToolBoxButton;

/// The toolbox at the left: a button for each group of tools, in one column, or two when the window is low. A button that is
/// held down drops the group's other tools beside it; let go over one of them, it takes that tool's place.
class CToolBox : public QToolBar {
    Q_OBJECT
public:
    /// `query` tells what the command route says of a command.
    CToolBox(std::function<CommandState(int)> query, QWidget* pParent);
    ~CToolBox() override;

    /// Puts the drawings on the buttons; apart from the construction, so that the window need not wait for them.
    void LoadIcons();
    /// What stands below the buttons.
    void SetFoot(QWidget* pFoot);
    /// The column count for a toolbox of that height.
    void FitHeight(int nHeight);
    int Columns() const { return m_nColumns; }

    /// The buttons in their order, and the command that one of them stands for now.
    int ButtonCount() const { return static_cast<int>(m_slots.size()); }
    QToolButton* Button(int nIndex) const;
    int CommandAt(int nIndex) const { return m_slots[static_cast<std::size_t>(nIndex)].nCommand; }
    /// The tool was chosen, here or elsewhere: its group's button stands for it from now on.
    void ShowTool(int nCommand);
    /// Shows what the route says of each button's command. `bMarks` is false while no picture is open: the marks stay then.
    void UpdateStates(bool bMarks);

    /// Which tool each button stands for.
    void LoadState(const CProfile& profile);
    void SaveState(CProfile& profile) const;

    /// The tools that a held button has dropped; null when none has.
    CToolBarPopup* Popup() const { return m_pPopup.get(); }

Q_SIGNALS:
    void CommandChosen(int nId);

private:
    struct Slot {
        CToolBoxButton* pButton;
        int nCommand;
        int nGroup;
    };

    void Arrange();
    void SetCommand(Slot& slot, int nCommand);
    void ShowCommand(const Slot& slot);
    void OpenPopup(int nIndex);
    void OnReleased(int nIndex, QPoint ptScreen);
    void OpenMenu(int nIndex);
    void MoveFocus(int nIndex, int nKey);

    std::function<CommandState(int)> m_query;
    QWidget* m_pPanel;
    QGridLayout* m_pGrid;
    std::vector<Slot> m_slots;
    std::unique_ptr<CToolBarPopup> m_pPopup;
    QWidget* m_pFoot = nullptr;
    int m_nColumns = 1;
    bool m_bIcons = false;
};

} // namespace kestrune
