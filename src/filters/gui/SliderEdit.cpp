#include "filters/gui/SliderEdit.h"

#include "filters/FilterStrings.h"
#include "ui/Dialog.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"
#include "ui/NumSpinCtrl.h"
#include "ui/PopupSlider.h"

#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nBoxWidth = 60;
constexpr int c_nSliderWidth = 160;
constexpr int c_anFactors[] = {1, 10, 100, 1000};

} // namespace

QWidget* WithSpin(CNumEdit* pEdit)
{
    auto* pPair = new QWidget;
    auto* pRow = new QHBoxLayout(pPair);
    pRow->setContentsMargins(0, 0, 0, 0);
    pRow->setSpacing(0);
    pEdit->setFixedWidth(std::max(c_nBoxWidth, pEdit->fontMetrics().horizontalAdvance(QStringLiteral("-999.99")) + 12));
    pRow->addWidget(pEdit);
    pRow->addWidget(new CNumSpinCtrl(pEdit));
    return pPair;
}

CSliderEdit::CSliderEdit(const SliderRange& range, QObject* pParent)
    : QObject(pParent)
    , m_range(range)
    , m_nFactor(c_anFactors[range.nDecimals])
    , m_pSlider(new CPopupSlider)
    , m_pEdit(new CNumEdit)
{
    const auto shown = [this](int nValue) { return static_cast<float>(nValue) / static_cast<float>(m_nFactor); };
    m_pSlider->SetRange(range.nMin, range.nMax);
    m_pSlider->SetDefault(range.nDefault);
    m_pSlider->setMinimumWidth(c_nSliderWidth);
    m_pEdit->SetDecimalPlaces(range.nDecimals);
    m_pEdit->SetRange(shown(range.nEditMin), shown(range.nEditMax));
    m_pEdit->SetClamping(true);
    m_pEdit->SetDelta(1.0f / static_cast<float>(m_nFactor));
    m_pEdit->SetDefault(shown(range.nDefault));
    SetValue(range.nDefault);
    connect(m_pSlider, &CPopupSlider::Moved, this, [this](int nPos) { OnSlider(nPos); });
    connect(m_pEdit, &CNumEdit::ValueEdited, this, &CSliderEdit::OnEdited);
    // Whatever was typed, the box shows in the end the value that counts.
    connect(m_pEdit, &QLineEdit::editingFinished, this, [this] {
        if (m_pEdit->Verify() == NUM_OK)
            ShowInEdit();
    });
}

void CSliderEdit::AddTo(QGridLayout& grid, const QString& strLabel, const QString& strUnit)
{
    const int nRow = grid.rowCount();
    auto* pLabel = new QLabel(strLabel);
    pLabel->setBuddy(m_pEdit);
    const QString strName = PlainLabel(strLabel);
    const QString strTip = TextOf(IDS_FILTER_VALUE_TIP)
                               .arg(static_cast<double>(m_pEdit->GetMin()), 0, 'f', m_range.nDecimals)
                               .arg(static_cast<double>(m_pEdit->GetMax()), 0, 'f', m_range.nDecimals);
    m_pEdit->setAccessibleName(strName);
    m_pSlider->setAccessibleName(TextOf(IDS_FILTER_SLIDER).arg(strName));
    for (QWidget* pWidget : {static_cast<QWidget*>(m_pEdit), static_cast<QWidget*>(m_pSlider)})
        pWidget->setToolTip(strTip);
    grid.addWidget(pLabel, nRow, 0);
    grid.addWidget(m_pSlider, nRow, 1);
    grid.addWidget(WithSpin(m_pEdit), nRow, 2);
    if (!strUnit.isEmpty())
        grid.addWidget(new QLabel(strUnit), nRow, 3);
}

void CSliderEdit::SetValue(int nValue)
{
    m_nValue = std::clamp(nValue, m_range.nEditMin, m_range.nEditMax);
    m_pSlider->SetPos(m_nValue);
    ShowInEdit();
}

void CSliderEdit::ShowInEdit() { m_pEdit->SetValue(static_cast<float>(m_nValue) / static_cast<float>(m_nFactor)); }

void CSliderEdit::OnSlider(int nPos)
{
    SetValue(nPos);
    Q_EMIT Changed(m_nValue);
}

void CSliderEdit::OnEdited(float fValue)
{
    // A whole number is cut at its point; of a real one the nearest step counts, since single precision rarely meets
    // it.
    const double fSteps = static_cast<double>(fValue) * m_nFactor;
    const int nValue = m_nFactor == 1 ? static_cast<int>(fSteps) : static_cast<int>(std::lround(fSteps));
    m_nValue = std::clamp(nValue, m_range.nEditMin, m_range.nEditMax);
    m_pSlider->SetPos(m_nValue);
    Q_EMIT Changed(m_nValue);
}

} // namespace kestrune
