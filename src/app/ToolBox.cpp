#include "app/ToolBox.h"

#include "app/CommandTable.h"
#include "app/CommandUi.h"
#include "app/ToolBarPopup.h"
#include "app/ToolBoxButton.h"
#include "ui/Icons.h"

#include <QGridLayout>
#include <QMenu>

#include <algorithm>
#include <sstream>
#include <utility>

namespace kestrune {

namespace {

constexpr QSize c_button(30, 28);
constexpr int c_nGap = 1;
constexpr int c_nMargin = 3;
constexpr int c_nFootGap = 8;
constexpr char c_szSection[] = "ToolBox", c_szKey[] = "Buttons";

constexpr int HeightOfRows(int nRows)
{
    return nRows * (c_button.height() + c_nGap) - c_nGap + 2 * c_nMargin;
}

/// Asks for no more height than two columns need, so that the window can be made that low.
class CPanel : public QWidget {
public:
    using QWidget::QWidget;
    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override
    {
        const int nRows = static_cast<int>(ToolBoxButtons().size() + 1) / 2;
        return {layout()->minimumSize().width(), HeightOfRows(nRows)};
    }
};

} // namespace

CToolBox::CToolBox(std::function<CommandState(int)> query, QWidget* pParent)
    : QToolBar(pParent)
    , m_query(std::move(query))
    , m_pPanel(new CPanel(this))
    , m_pGrid(new QGridLayout(m_pPanel))
{
    setObjectName(QStringLiteral("ToolBox"));
    setMovable(false);
    setFloatable(false);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    m_pGrid->setContentsMargins(c_nMargin, c_nMargin, c_nMargin, c_nMargin);
    m_pGrid->setSpacing(c_nGap);
    m_pGrid->setSizeConstraint(QLayout::SetNoConstraint);
    m_pPanel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    for (const ToolBoxButton& row : ToolBoxButtons()) {
        const int nIndex = ButtonCount();
        auto* pButton = new CToolBoxButton(ToolBoxGroup(row.nGroupResource).size() > 1, m_pPanel);
        pButton->setFixedSize(c_button);
        pButton->setIconSize({20, 20});
        pButton->setEnabled(false);
        connect(pButton, &QToolButton::clicked, this, [this, nIndex] { Q_EMIT CommandChosen(CommandAt(nIndex)); });
        connect(pButton, &CToolBoxButton::Held, this, [this, nIndex] { OpenPopup(nIndex); });
        connect(pButton, &CToolBoxButton::HoldMoved, this, [this](QPoint ptScreen) {
            if (m_pPopup)
                m_pPopup->Track(ptScreen);
        });
        connect(pButton, &CToolBoxButton::HoldReleased, this, [this, nIndex](QPoint ptScreen) { OnReleased(nIndex, ptScreen); });
        connect(pButton, &CToolBoxButton::MenuRequested, this, [this, nIndex] { OpenMenu(nIndex); });
        connect(pButton, &CToolBoxButton::ArrowPressed, this, [this, nIndex](int nKey) { MoveFocus(nIndex, nKey); });
        m_slots.push_back({pButton, row.nCommand, row.nGroupResource});
        ShowCommand(m_slots.back());
    }
    addWidget(m_pPanel);
    Arrange();
}

CToolBox::~CToolBox() = default;

QToolButton* CToolBox::Button(int nIndex) const
{
    return m_slots[static_cast<std::size_t>(nIndex)].pButton;
}

void CToolBox::LoadIcons()
{
    m_bIcons = true;
    for (const Slot& slot : m_slots)
        ShowCommand(slot);
}

void CToolBox::ShowCommand(const Slot& slot)
{
    const CommandRow& row = *FindCommand(slot.nCommand);
    slot.pButton->setToolTip(TipOf(row));
    slot.pButton->setStatusTip(ToQString(row.prompt));
    slot.pButton->setAccessibleName(ToQString(row.text));
    if (m_bIcons)
        slot.pButton->setIcon(LoadIcon(ToQString(row.icon)));
}

void CToolBox::SetCommand(Slot& slot, int nCommand)
{
    if (std::exchange(slot.nCommand, nCommand) != nCommand)
        ShowCommand(slot);
}

void CToolBox::ShowTool(int nCommand)
{
    for (Slot& slot : m_slots) {
        const std::span<const int> group = ToolBoxGroup(slot.nGroup);
        if (std::find(group.begin(), group.end(), nCommand) != group.end())
            SetCommand(slot, nCommand);
    }
}

void CToolBox::UpdateStates(bool bMarks)
{
    for (const Slot& slot : m_slots) {
        const CommandState state = m_query(slot.nCommand);
        slot.pButton->setEnabled(state.bEnabled);
        if (bMarks) {
            // Unchecked first: a button that ceases to be checkable does not draw itself anew.
            if (!state.bChecked)
                slot.pButton->setChecked(false);
            slot.pButton->setCheckable(state.bChecked);
            slot.pButton->setChecked(state.bChecked);
        }
    }
}

void CToolBox::OpenPopup(int nIndex)
{
    const Slot& slot = m_slots[static_cast<std::size_t>(nIndex)];
    slot.pButton->SetHolding(true);
    m_pPopup = std::make_unique<CToolBarPopup>(ToolBoxGroup(slot.nGroup), slot.nCommand,
                                               [this](int nId) { return m_query(nId).bEnabled; }, this);
    m_pPopup->ShowBeside(*slot.pButton);
}

void CToolBox::OnReleased(int nIndex, QPoint ptScreen)
{
    const int nCommand = m_pPopup ? m_pPopup->CommandAt(ptScreen) : 0;
    m_pPopup.reset();
    if (!nCommand)
        return;
    SetCommand(m_slots[static_cast<std::size_t>(nIndex)], nCommand);
    Q_EMIT CommandChosen(nCommand);
}

/// The same choice without holding: for the keyboard, and for hands that cannot hold.
void CToolBox::OpenMenu(int nIndex)
{
    Slot& slot = m_slots[static_cast<std::size_t>(nIndex)];
    auto* pMenu = new QMenu(this);
    pMenu->setAttribute(Qt::WA_DeleteOnClose);
    for (const int nCommand : ToolBoxGroup(slot.nGroup)) {
        const CommandRow& row = *FindCommand(nCommand);
        QAction* pAction = pMenu->addAction(LoadIcon(ToQString(row.icon)), PlainText(row.text));
        pAction->setEnabled(m_query(nCommand).bEnabled);
        connect(pAction, &QAction::triggered, this, [this, &slot, nCommand] {
            SetCommand(slot, nCommand);
            Q_EMIT CommandChosen(nCommand);
        });
    }
    pMenu->popup(slot.pButton->mapToGlobal(QPoint(slot.pButton->width() + 1, 0)));
}

/// To the next button in that direction that can be pressed; at the end of the row or column it stays.
void CToolBox::MoveFocus(int nIndex, int nKey)
{
    const int nRow = nKey == Qt::Key_Down || nKey == Qt::Key_Up ? m_nColumns : 1;
    const int nStep = nKey == Qt::Key_Down || nKey == Qt::Key_Right ? nRow : -nRow;
    do
        nIndex += nStep;
    while (nIndex >= 0 && nIndex < ButtonCount() && !Button(nIndex)->isEnabled());
    if (nIndex >= 0 && nIndex < ButtonCount())
        Button(nIndex)->setFocus(Qt::ShortcutFocusReason);
}

void CToolBox::LoadState(const CProfile& profile)
{
    std::istringstream text(profile.GetString(c_szSection, c_szKey, {}));
    for (int nCommand = 0; text >> nCommand;)
        ShowTool(nCommand); // what belongs to no group changes nothing
}

void CToolBox::SaveState(CProfile& profile) const
{
    std::string text;
    for (const Slot& slot : m_slots)
        text += (text.empty() ? "" : " ") + std::to_string(slot.nCommand);
    profile.WriteString(c_szSection, c_szKey, text);
}

void CToolBox::SetFoot(QWidget* pFoot)
{
    m_pFoot = pFoot;
    Arrange();
}

void CToolBox::FitHeight(int nHeight)
{
    if (m_pFoot)
        nHeight -= m_pFoot->sizeHint().height() + c_nFootGap;
    const int nColumns = nHeight < HeightOfRows(ButtonCount()) ? 2 : 1;
    if (nColumns == m_nColumns)
        return;
    m_nColumns = nColumns;
    Arrange();
}

void CToolBox::Arrange()
{
    int nPlace = 0;
    for (const Slot& slot : m_slots) {
        m_pGrid->removeWidget(slot.pButton);
        m_pGrid->addWidget(slot.pButton, nPlace / m_nColumns, nPlace % m_nColumns);
        nPlace++;
    }
    if (m_pFoot) {
        const int nGap = (nPlace + m_nColumns - 1) / m_nColumns;
        m_pGrid->addWidget(m_pFoot, nGap + 1, 0, 1, m_nColumns, Qt::AlignHCenter);
        for (int nRow = 0; nRow <= nPlace; nRow++)
            m_pGrid->setRowMinimumHeight(nRow, nRow == nGap ? c_nFootGap : 0);
        nPlace = std::max(nPlace, nGap + 2);
    }
    // The stretch keeps the buttons together at the top.
    for (int nRow = 0; nRow <= nPlace; nRow++)
        m_pGrid->setRowStretch(nRow, nRow == nPlace ? 1 : 0);
    m_pPanel->updateGeometry();
    updateGeometry();
}

} // namespace kestrune
