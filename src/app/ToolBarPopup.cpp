#include "app/ToolBarPopup.h"

#include "app/CommandTable.h"
#include "app/CommandUi.h"
#include "ui/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QToolButton>

#include <algorithm>

namespace kestrune {

namespace {
constexpr QSize c_button(30, 28);
constexpr int c_nOverlap = 7; ///< how far it comes nearer on the left side
} // namespace

CToolBarPopup::CToolBarPopup(std::span<const int> commands, int nCurrent, const std::function<bool(int)>& isEnabled, QWidget* pParent)
    : QFrame(pParent, Qt::ToolTip) // a window that takes neither focus nor mouse
    , m_pName(new QLabel(this))
    , m_nCurrent(nCurrent)
{
    setObjectName(QStringLiteral("ToolBarPopup"));
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Button);
    auto* pColumn = new QVBoxLayout(this);
    pColumn->setContentsMargins(3, 3, 3, 3);
    pColumn->setSpacing(2);
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(1);
    int nWidest = 0;
    for (const int nCommand : commands) {
        const CommandRow& row = *FindCommand(nCommand);
        auto* pButton = new QToolButton(this);
        pButton->setAutoRaise(true);
        pButton->setFixedSize(c_button);
        pButton->setIconSize({20, 20});
        pButton->setIcon(LoadIcon(ToQString(row.icon)));
        pButton->setAccessibleName(PlainText(row.text));
        pButton->setEnabled(isEnabled(nCommand));
        pButton->setCheckable(true);
        pRow->addWidget(pButton);
        m_entries.push_back({nCommand, pButton});
        nWidest = std::max(nWidest, fontMetrics().horizontalAdvance(TipOf(row)));
    }
    pRow->addStretch(1);
    pColumn->addLayout(pRow);
    m_pName->setMinimumWidth(nWidest + 4);
    m_pName->setContentsMargins(2, 0, 2, 0);
    pColumn->addWidget(m_pName);
    Track({});
}

void CToolBarPopup::ShowBeside(const QWidget& button)
{
    resize(sizeHint()); // not adjustSize(), which makes no window narrower than 200
    const QRect rcScreen = button.screen()->availableGeometry();
    QPoint pt = button.mapToGlobal(QPoint(button.width() + 1, 0));
    if (pt.x() + width() > rcScreen.right())
        pt.setX(button.mapToGlobal(QPoint()).x() - width() - c_nOverlap);
    pt.setY(std::clamp(pt.y(), rcScreen.top(), std::max(rcScreen.top(), rcScreen.bottom() - height())));
    move(pt);
    show();
    raise();
}

void CToolBarPopup::Track(QPoint ptScreen)
{
    const int nCommand = CommandAt(ptScreen);
    for (const Entry& entry : m_entries) // one is lit: the one that letting go chooses, else the one that stays
        entry.pButton->setChecked(entry.nCommand == (nCommand ? nCommand : m_nCurrent));
    m_pName->setText(TipOf(*FindCommand(nCommand ? nCommand : m_nCurrent)));
}

int CToolBarPopup::CommandAt(QPoint ptScreen) const
{
    if (!isVisible())
        return 0;
    for (const Entry& entry : m_entries)
        if (entry.pButton->isEnabled() && entry.pButton->rect().contains(entry.pButton->mapFromGlobal(ptScreen)))
            return entry.nCommand;
    return 0;
}

QPoint CToolBarPopup::CentreOf(int nCommand) const
{
    const auto it = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.nCommand == nCommand; });
    return it == m_entries.end() ? QPoint(-1, -1) : it->pButton->mapToGlobal(it->pButton->rect().center());
}

} // namespace kestrune
