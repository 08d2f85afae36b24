#pragma once

#include <QHash>
#include <QToolBar>

class QGridLayout;
class QToolButton;

namespace kestrune {

/// The toolbox at the left: a button for each group of tools, in one column, or two when the window is low.
class CToolBox : public QToolBar {
    Q_OBJECT
public:
    explicit CToolBox(QWidget* pParent);

    /// Puts the drawings on the buttons; apart from the construction, so that the window need not wait for them.
    void LoadIcons();
    /// What stands below the buttons.
    void SetFoot(QWidget* pFoot);
    /// The column count for a toolbox of that height.
    void FitHeight(int nHeight);
    int Columns() const { return m_nColumns; }

    /// The buttons by command id.
    const QHash<int, QToolButton*>& Buttons() const { return m_buttons; }

Q_SIGNALS:
    void CommandChosen(int nId);

private:
    void Arrange();

    QWidget* m_pPanel;
    QGridLayout* m_pGrid;
    QHash<int, QToolButton*> m_buttons;
    QWidget* m_pFoot = nullptr;
    int m_nColumns = 1;
};

} // namespace kestrune
