#include "ui/Dialog.h"

#include "base/StringTable.h"
#include "ui/ControlValue.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

namespace kestrune {

namespace {

/// The last of a window's widgets, apart from those two, that the Tab key goes to; null without one.
QWidget* LastInTabOrder(QWidget& window, const QWidget* pFirst, const QWidget* pSecond)
{
    for (QWidget* p = window.previousInFocusChain(); p != &window; p = p->previousInFocusChain())
        if (p != pFirst && p != pSecond && !p->focusProxy() && p->focusPolicy() & Qt::TabFocus)
            return p;
    return nullptr;
}

/// Beside a dialog's own title: what the toolkit adds to it, and the window's buttons.
constexpr int c_nBesideTitle = 190;

CPaintDialog::Driver& TheDriver()
{
    static CPaintDialog::Driver driver;
    return driver;
}

} // namespace

QString TextOf(int nStringId)
{
    const std::string_view text = StringText(nStringId);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

CPaintDialog::CPaintDialog(QWidget* pParent)
    : QDialog(pParent)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

int CPaintDialog::DoModal()
{
    setResult(Rejected);
    if (m_pTitleRoom) { // the title is to be read, however little the dialog asks
        m_pTitleRoom->changeSize(fontMetrics().horizontalAdvance(windowTitle()) + c_nBesideTitle, 0);
        layout()->invalidate();
    }
    SettleTabOrder();
    if (const Driver driver = TheDriver()) // a copy: the driver may be replaced while it runs
        return driver(*this);
    return exec();
}

void CPaintDialog::SettleTabOrder()
{
    // The buttons are made with the frame, before most contents, and the first in the order has the focus when the dialog opens.
    if (!m_pOk)
        return;
    QWidget* pLast = LastInTabOrder(*this, m_pOk, m_pCancel);
    if (!pLast)
        return;
    // Cancel first: the order is a ring, so that for the toolkit OK at its beginning does follow the last already.
    setTabOrder(pLast, m_pCancel);
    setTabOrder(pLast, m_pOk);
}

void CPaintDialog::accept()
{
    for (CNumEdit* pEdit : findChildren<CNumEdit*>()) {
        if (!pEdit->isEnabled())
            continue;
        Q_EMIT pEdit->editingFinished();
        if (pEdit->VerifyAloud() == NUM_OK)
            continue;
        pEdit->setFocus();
        pEdit->selectAll();
        return;
    }
    QDialog::accept();
}

std::optional<QString> CPaintDialog::SetKey(const QString& strKey, const QString& strValue)
{
    QObject* pControl = m_mapKeys.value(strKey);
    if (!pControl)
        return QStringLiteral("the dialog has no key \"%1\"").arg(strKey);
    return PutIntoControl(*pControl, strValue);
}

void CPaintDialog::SetDriver(Driver driver)
{
    TheDriver() = std::move(driver);
}

bool CPaintDialog::IsDriven()
{
    return static_cast<bool>(TheDriver());
}

void CPaintDialog::RegisterKey(const QString& strKey, QObject* pControl)
{
    m_mapKeys.insert(strKey, pControl);
}

QHBoxLayout* CPaintDialog::Body()
{
    BuildFrame();
    return m_pBody;
}

QHBoxLayout* CPaintDialog::ButtonRow()
{
    BuildFrame();
    return m_pButtonRow;
}

QPushButton* CPaintDialog::OkButton()
{
    BuildFrame();
    return m_pOk;
}

QPushButton* CPaintDialog::CancelButton()
{
    BuildFrame();
    return m_pCancel;
}

void CPaintDialog::BuildFrame()
{
    if (m_pBody)
        return;
    auto* pFrame = new QVBoxLayout(this);
    pFrame->setContentsMargins(c_nDialogMargin, c_nDialogMargin, c_nDialogMargin, c_nDialogMargin);
    pFrame->setSpacing(c_nGroupGap);
    m_pBody = new QHBoxLayout;
    m_pBody->setSpacing(c_nGroupGap);
    pFrame->addLayout(m_pBody, 1);

    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(c_nLabelGap);
    m_pButtonRow = new QHBoxLayout;
    m_pButtonRow->setSpacing(c_nLabelGap);
    pRow->addLayout(m_pButtonRow);
    pRow->addStretch(1);
    m_pOk = new QPushButton(TextOf(IDS_BUTTON_OK));
    m_pOk->setDefault(true);
    m_pCancel = new QPushButton(TextOf(IDS_BUTTON_CANCEL));
    m_pCancel->setAutoDefault(false);
    connect(m_pOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_pCancel, &QPushButton::clicked, this, &QDialog::reject);
    for (QPushButton* pButton : {m_pOk, m_pCancel}) {
        pButton->setMinimumWidth(80);
        pRow->addWidget(pButton);
    }
    pFrame->addLayout(pRow);
    m_pTitleRoom = new QSpacerItem(0, 0);
    pFrame->addItem(m_pTitleRoom);
}

} // namespace kestrune
