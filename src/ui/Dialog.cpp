#include "ui/Dialog.h"

#include "base/StringTable.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>

namespace kestrune {

namespace {

using Error = std::optional<QString>;

CPaintDialog::Driver& TheDriver()
{
    static CPaintDialog::Driver driver;
    return driver;
}

Error Refused(const QString& strValue)
{
    return QStringLiteral("the control refuses the value \"%1\"").arg(strValue);
}

Error TypeInto(QAbstractSpinBox& box, const QString& strValue)
{
    QString strText = strValue;
    int nPos = 0;
    auto* pEdit = box.findChild<QLineEdit*>();
    if (box.isReadOnly() || !pEdit || box.validate(strText, nPos) != QValidator::Acceptable)
        return Refused(strValue);
    pEdit->setText(strText);
    box.interpretText();
    Q_EMIT box.editingFinished();
    return {};
}

Error TypeInto(QLineEdit& edit, const QString& strValue)
{
    if (edit.isReadOnly())
        return Refused(strValue);
    edit.selectAll();
    edit.insert(strValue); // as typing does: validator and mask act, textEdited is told
    if (edit.text() != strValue || !edit.hasAcceptableInput())
        return Refused(strValue);
    Q_EMIT edit.editingFinished();
    return {};
}

Error TypeInto(CNumEdit& edit, const QString& strValue)
{
    if (edit.isReadOnly())
        return Refused(strValue);
    const QString strBefore = edit.text();
    edit.selectAll();
    edit.insert(strValue);
    Q_EMIT edit.editingFinished(); // leaving the box works out a sum
    const int nCode = edit.Verify();
    if (nCode == NUM_OK)
        return {};
    edit.setText(strBefore);
    if (nCode == NUM_OUT_OF_RANGE)
        return QStringLiteral("%1 is not in %2 to %3").arg(strValue).arg(edit.GetMin()).arg(edit.GetMax());
    return QStringLiteral("\"%1\" is no number").arg(strValue);
}

Error Choose(QComboBox& combo, const QString& strValue)
{
    bool bNumber = false;
    int nIndex = strValue.toInt(&bNumber);
    if (!bNumber) {
        nIndex = combo.findData(strValue);
        if (nIndex < 0)
            nIndex = combo.findText(strValue);
    }
    if (nIndex < 0 || nIndex >= combo.count()) {
        if (!combo.isEditable())
            return Refused(strValue);
        combo.setEditText(strValue);
        return {};
    }
    combo.setCurrentIndex(nIndex);
    Q_EMIT combo.activated(nIndex);
    return {};
}

Error Press(QAbstractButton& button, const QString& strValue)
{
    if (!button.isCheckable() || (strValue != u"0" && strValue != u"1"))
        return Refused(strValue);
    if (button.isChecked() != (strValue == u"1"))
        button.click();
    return button.isChecked() == (strValue == u"1") ? Error{} : Refused(strValue);
}

Error Press(QButtonGroup& group, const QString& strValue)
{
    bool bNumber = false;
    const int nId = strValue.toInt(&bNumber);
    QAbstractButton* pButton = bNumber ? group.button(nId) : nullptr;
    if (!pButton || !pButton->isEnabled())
        return Refused(strValue);
    if (!pButton->isChecked())
        pButton->click();
    return {};
}

Error Slide(QAbstractSlider& slider, const QString& strValue)
{
    bool bNumber = false;
    const int nValue = strValue.toInt(&bNumber);
    if (!bNumber || nValue < slider.minimum() || nValue > slider.maximum())
        return Refused(strValue);
    slider.setValue(nValue);
    return {};
}

Error PutInto(QObject& control, const QString& strValue)
{
    if (auto* pGroup = qobject_cast<QButtonGroup*>(&control))
        return Press(*pGroup, strValue);
    if (const auto* pWidget = qobject_cast<QWidget*>(&control); pWidget && !pWidget->isEnabled())
        return QStringLiteral("the control is disabled");
    if (auto* pBox = qobject_cast<QAbstractSpinBox*>(&control))
        return TypeInto(*pBox, strValue);
    if (auto* pNumber = qobject_cast<CNumEdit*>(&control))
        return TypeInto(*pNumber, strValue);
    if (auto* pEdit = qobject_cast<QLineEdit*>(&control))
        return TypeInto(*pEdit, strValue);
    if (auto* pCombo = qobject_cast<QComboBox*>(&control))
        return Choose(*pCombo, strValue);
    if (auto* pButton = qobject_cast<QAbstractButton*>(&control))
        return Press(*pButton, strValue);
    if (auto* pSlider = qobject_cast<QAbstractSlider*>(&control))
        return Slide(*pSlider, strValue);
    return Refused(strValue);
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
    if (const Driver driver = TheDriver()) // a copy: the driver may be replaced while it runs
        return driver(*this);
    return exec();
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
    return PutInto(*pControl, strValue);
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
}

} // namespace kestrune
