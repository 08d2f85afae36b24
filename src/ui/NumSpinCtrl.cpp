#include "ui/NumSpinCtrl.h"

#include "ui/Icons.h"
#include "base/StringTable.h"
#include "ui/Dialog.h"
#include "ui/NumEdit.h"

#include <QToolButton>
#include <QVBoxLayout>

namespace kestrune {

namespace {

constexpr int c_nNeutral = 500;
constexpr int c_nRange = 1000;
constexpr int c_nStep = 1;
constexpr int c_nWidth = 16;

QToolButton* MakeButton(QWidget* pParent, const char* pszIcon, int nNameId)
{
    auto* pButton = new QToolButton(pParent);
    pButton->setIcon(LoadIcon(QString::fromLatin1(pszIcon)));
    pButton->setAutoRaise(true);
    pButton->setAutoRepeat(true);
    pButton->setFocusPolicy(Qt::NoFocus); // the box itself answers to the arrow keys
    pButton->setAccessibleName(TextOf(nNameId));
    pButton->setIconSize({8, 8});
    // The two share the box's height, which is less than they would take by themselves.
    pButton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    pButton->setFixedWidth(c_nWidth);
    return pButton;
}

} // namespace

CNumSpinCtrl::CNumSpinCtrl(CNumEdit* pBuddy, QWidget* pParent)
    : QWidget(pParent)
    , m_pBuddy(pBuddy)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setSizeConstraint(QLayout::SetNoConstraint);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    QToolButton* pUp = MakeButton(this, "widgets/spin-up", IDS_NUMBER_MORE);
    QToolButton* pDown = MakeButton(this, "widgets/spin-down", IDS_NUMBER_LESS);
    pLayout->addWidget(pUp);
    pLayout->addWidget(pDown);
    connect(pUp, &QToolButton::clicked, this, [this] { Step(c_nStep); });
    connect(pDown, &QToolButton::clicked, this, [this] { Step(-c_nStep); });
}

QSize CNumSpinCtrl::sizeHint() const
{
    return {c_nWidth, m_pBuddy ? m_pBuddy->sizeHint().height() : 22};
}

void CNumSpinCtrl::Step(int nSteps)
{
    m_nPos += nSteps;
    if (m_nPos <= c_nStep || m_nPos >= c_nRange - c_nStep)
        m_nPos = c_nNeutral;
    if (m_pBuddy)
        m_pBuddy->StepBy(nSteps);
}

} // namespace kestrune
