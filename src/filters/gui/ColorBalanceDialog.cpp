#include "filters/gui/ColorBalanceDialog.h"

#include "filters/FilterStrings.h"
#include "filters/PreviewGeometry.h"
#include "filters/gui/SliderEdit.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>

namespace kestrune {

namespace {

struct ChannelRow {
    const char* pszKey;
    int nLabelId;
};
constexpr ChannelRow c_aChannels[]
    = {{"Red", IDS_BALANCE_RED}, {"Green", IDS_BALANCE_GREEN}, {"Blue", IDS_BALANCE_BLUE}};
constexpr int c_nMidtones = 1;

} // namespace

CColorBalanceDialog::CColorBalanceDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData,
                                         QWidget* pParent)
    : CFilterDialog(row, image, dialogData, pParent)
    , m_pRanges(new QButtonGroup(this))
    , m_pLuminosity(new QCheckBox(TextOf(IDS_BALANCE_LUMINOSITY)))
{
    auto* pGrid = new CDialogRows;
    for (int i = 0; i < 3; i++) {
        m_sliders[i] = new CSliderEdit({-100, 100, -100, 100}, this);
        m_sliders[i]->AddTo(*pGrid, TextOf(c_aChannels[i].nLabelId));
        RegisterKey(QString::fromLatin1(c_aChannels[i].pszKey), m_sliders[i]->Edit());
        connect(m_sliders[i], &CSliderEdit::Changed, this, [this, i](int nValue) {
            Balance().anDelta[m_pRanges->checkedId()][i] = nValue;
            ValuesChanged();
        });
    }
    pGrid->AddGap();
    pGrid->addLayout(BuildRanges(), pGrid->rowCount(), 0, 1, 3);
    m_pLuminosity->setToolTip(TextOf(IDS_BALANCE_LUMINOSITY_TIP));
    m_pLuminosity->setChecked(Balance().bLuminosity);
    pGrid->AddWide(m_pLuminosity);
    RegisterKey(QStringLiteral("Luminosity"), m_pLuminosity);
    connect(m_pLuminosity, &QCheckBox::toggled, this, [this](bool bOn) {
        Balance().bLuminosity = bOn;
        ValuesChanged();
    });
    Build(pGrid, CPreviewGeometry::c_nPaneSize);
    AddDefaultsButton([this] { // the nine values; the check box is none of them
        Balance().anDelta = {};
        ShowRange();
    });
    ShowRange();
    m_sliders[0]->Edit()->setFocus();
    m_sliders[0]->Edit()->selectAll();
}

QLayout* CColorBalanceDialog::BuildRanges()
{
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(c_nGroupGap);
    for (int i = 0; i < 3; i++) {
        auto* pRadio = new QRadioButton(TextOf(IDS_BALANCE_FIRST_RANGE + i));
        pRadio->setToolTip(TextOf(IDS_BALANCE_RANGE_TIP));
        m_pRanges->addButton(pRadio, i);
        pRow->addWidget(pRadio);
    }
    pRow->addStretch(1);
    m_pRanges->button(c_nMidtones)->setChecked(true);
    RegisterKey(QStringLiteral("Range"), m_pRanges);
    connect(m_pRanges, &QButtonGroup::idToggled, this, [this](int, bool bOn) {
        if (bOn)
            ShowRange();
    });
    return pRow;
}

void CColorBalanceDialog::ShowRange()
{
    for (int i = 0; i < 3; i++)
        m_sliders[i]->SetValue(Balance().anDelta[m_pRanges->checkedId()][i]);
}

} // namespace kestrune
