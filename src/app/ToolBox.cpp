#include "app/ToolBox.h"

#include "app/CommandTable.h"
#include "app/CommandUi.h"
#include "ui/Icons.h"

#include <QGridLayout>
#include <QToolButton>

#include <algorithm>

namespace kestrune {

namespace {

constexpr QSize c_button(30, 28);
constexpr int c_nGap = 1;
constexpr int c_nMargin = 3;
constexpr int c_nFootGap = 8;

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

CToolBox::CToolBox(QWidget* pParent)
    : QToolBar(pParent)
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
    for (const ToolBoxButton& button : ToolBoxButtons()) {
        auto* pButton = new QToolButton(m_pPanel);
        pButton->setAutoRaise(true);
        pButton->setFixedSize(c_button);
        pButton->setIconSize({20, 20});
        pButton->setFocusPolicy(Qt::NoFocus);
        pButton->setEnabled(false);
        const CommandRow& row = *FindCommand(button.nCommand);
        pButton->setToolTip(TipOf(row));
        pButton->setStatusTip(ToQString(row.prompt));
        pButton->setAccessibleName(ToQString(row.text));
        connect(pButton, &QToolButton::clicked, this, [this, nId = button.nCommand] { Q_EMIT CommandChosen(nId); });
        m_buttons.insert(button.nCommand, pButton);
    }
    addWidget(m_pPanel);
    Arrange();
}

void CToolBox::LoadIcons()
{
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it)
        it.value()->setIcon(LoadIcon(ToQString(FindCommand(it.key())->icon)));
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
    const int nColumns = nHeight < HeightOfRows(static_cast<int>(m_buttons.size())) ? 2 : 1;
    if (nColumns == m_nColumns)
        return;
    m_nColumns = nColumns;
    Arrange();
}

void CToolBox::Arrange()
{
    int nPlace = 0;
    for (const ToolBoxButton& button : ToolBoxButtons()) {
        QToolButton* pButton = m_buttons.value(button.nCommand);
        m_pGrid->removeWidget(pButton);
        m_pGrid->addWidget(pButton, nPlace / m_nColumns, nPlace % m_nColumns);
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
