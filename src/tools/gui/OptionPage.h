#pragma once

#include "tools/gui/OptionTable.h"

#include <QWidget>

#include <vector>

class QHBoxLayout;
class QLabel;

namespace kestrune {

class CNumEdit;
class CTextureBox;

/// The boxes that drop from the bars: one of each for all of them.
struct OptionBoxes {
    CTextureBox* pTexture;
    CTextureBox* pPattern;
};

/// The option bar of one family of tools: a row of controls made from the table of controls, each bound to its setting.
class COptionPage : public QWidget {
    Q_OBJECT
public:
    COptionPage(ToolBar bar, const OptionBoxes& boxes, QWidget* pParent = nullptr);

    /// Shows what the bar has for this tool of the family: its picture, its own controls, an effect's title and label.
    void ShowTool(const ToolRow& tool, int nCommand);
    /// The control of a setting, a widget or a QButtonGroup; null when this bar has none.
    QObject* Control(ToolOption option) const;
    /// The pattern's number box; null when this bar has none.
    CNumEdit* PatternPercent() const { return m_pPatternPercent; }
    /// The setting changed: its control follows, without telling anybody.
    void ShowOption(ToolOption option);

    QSize minimumSizeHint() const override { return {0, 0}; }

Q_SIGNALS:
    /// The user is done with a control: the keyboard goes back to the picture.
    void Done();

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    struct Entry {
        const OptionControlRow* pRow;
        QObject* pControl;
        QLabel* pLabel;   ///< before the control; null without one
        QWidget* pPanel;  ///< all that stands in the bar for it
    };

    void Add(const OptionControlRow& row);
    void AddLabel(Entry& entry);
    void AddNumber(Entry& entry);
    void AddList(Entry& entry);
    void AddCheck(Entry& entry);
    void AddButtons(Entry& entry);
    void AddPatch(Entry& entry);
    void ShowPatternPercent();
    void ShowIcon();
    /// What depends on a check box follows it.
    void EnableEntries(ToolOption check);
    CNumEdit* MakeEdit(int nUnit, int nMin, int nMax, int nDefault);
    void PutEdit(Entry& entry, CNumEdit* pEdit);
    void Put(Entry& entry, QWidget* pWidget);
    void Settle(CNumEdit& edit);
    static bool IsFor(OptionFor tools, const ToolRow& tool, int nCommand);

    OptionBoxes m_boxes;
    QHBoxLayout* m_pLayout;
    QLabel* m_pIcon;
    int m_nIconCommand = 0; ///< whose drawing it shows; 0: none
    QLabel* m_pTitle; ///< of an effect
    CNumEdit* m_pPatternPercent = nullptr;
    std::vector<Entry> m_aEntries;
};

} // namespace kestrune
