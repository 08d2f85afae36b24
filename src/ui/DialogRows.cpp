#include "ui/DialogRows.h"

#include "ui/NumEdit.h"
#include "ui/NumSpinCtrl.h"

#include <QRegularExpression>

namespace kestrune {

namespace {
enum Column { COLUMN_LABEL, COLUMN_CONTROL, COLUMN_AFTER, COLUMN_COUNT };
}

QString PlainLabel(QString strLabel)
{
    static const QRegularExpression rxKoreanMnemonic(QStringLiteral("\\(&.\\)")); // "폭(&W):" is read "폭"
    strLabel.remove(rxKoreanMnemonic);
    strLabel.remove(u'&');
    while (strLabel.endsWith(u':') || strLabel.endsWith(u'.') || strLabel.endsWith(u' '))
        strLabel.chop(1);
    return strLabel;
}

CDialogRows::CDialogRows(QWidget* pParent)
    : QGridLayout(pParent)
{
    setContentsMargins(0, 0, 0, 0);
    setHorizontalSpacing(c_nLabelGap);
    setVerticalSpacing(c_nRowGap);
    setColumnStretch(COLUMN_CONTROL, 1);
}

void CDialogRows::AddLabel(int nRow, const QString& strLabel, QWidget* pControl, const QString& strTip)
{
    auto* pLabel = new QLabel(strLabel);
    pLabel->setBuddy(pControl);
    pControl->setAccessibleName(PlainLabel(strLabel));
    pControl->setToolTip(strTip);
    addWidget(pLabel, nRow, COLUMN_LABEL, Qt::AlignLeft | Qt::AlignVCenter);
}

void CDialogRows::AddRow(const QString& strLabel, QWidget* pControl, const QString& strTip, QWidget* pAfter)
{
    const int nRow = rowCount();
    AddLabel(nRow, strLabel, pControl, strTip);
    addWidget(pControl, nRow, COLUMN_CONTROL);
    if (pAfter)
        addWidget(pAfter, nRow, COLUMN_AFTER, Qt::AlignLeft | Qt::AlignVCenter);
}

void CDialogRows::AddNumber(const QString& strLabel, CNumEdit* pEdit, const QString& strTip, const QString& strUnit)
{
    const int nRow = rowCount();
    AddLabel(nRow, strLabel, pEdit, strTip);
    auto* pPair = new QHBoxLayout;
    pPair->setSpacing(0);
    pPair->addWidget(pEdit, 1);
    pPair->addWidget(new CNumSpinCtrl(pEdit));
    addLayout(pPair, nRow, COLUMN_CONTROL);
    if (!strUnit.isEmpty())
        addWidget(new QLabel(strUnit), nRow, COLUMN_AFTER, Qt::AlignLeft | Qt::AlignVCenter);
}

QLabel* CDialogRows::AddFigure(const QString& strLabel, const QString& strText)
{
    const int nRow = rowCount();
    auto* pFigure = new QLabel(strText);
    pFigure->setTextFormat(Qt::PlainText);
    pFigure->setAccessibleName(PlainLabel(strLabel));
    addWidget(new QLabel(strLabel), nRow, COLUMN_LABEL, Qt::AlignLeft | Qt::AlignTop);
    addWidget(pFigure, nRow, COLUMN_CONTROL, 1, COLUMN_COUNT - COLUMN_CONTROL);
    return pFigure;
}

void CDialogRows::AddWide(QWidget* pControl)
{
    addWidget(pControl, rowCount(), COLUMN_LABEL, 1, COLUMN_COUNT);
}

void CDialogRows::AddGap()
{
    // An empty row has no spacing of its own, so its height adds to the row gap before it.
    setRowMinimumHeight(rowCount(), c_nGroupGap - c_nRowGap);
}

} // namespace kestrune
