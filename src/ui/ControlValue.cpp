#include "ui/ControlValue.h"

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

} // namespace

std::optional<QString> PutIntoControl(QObject& control, const QString& strValue)
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

} // namespace kestrune
