#include "filters/gui/HueSaturationDialog.h"

#include "filters/FilterStrings.h"
#include "filters/PreviewGeometry.h"
#include "filters/gui/SliderEdit.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QComboBox>

namespace kestrune {

namespace {

struct SliderRow {
    const char* pszKey;
    int nLabelId;
    int nLimit; ///< both ways from 0
};
constexpr SliderRow c_aSliders[] = {
    {"Hue", IDS_HUE_HUE, 180},
    {"Saturation", IDS_HUE_SATURATION, 100},
    {"Lightness", IDS_HUE_LIGHTNESS, 100},
};
constexpr int c_nRanges = 7;

} // namespace

CHueSaturationDialog::CHueSaturationDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData,
                                           QWidget* pParent)
    : CFilterDialog(row, image, dialogData, pParent)
    , m_pRange(new QComboBox)
{
    auto* pGrid = new CDialogRows;
    for (int i = 0; i < c_nRanges; i++)
        m_pRange->addItem(TextOf(IDS_HUE_FIRST_RANGE + i));
    pGrid->AddRow(TextOf(IDS_HUE_RANGE), m_pRange, TextOf(IDS_HUE_RANGE_TIP));
    RegisterKey(QStringLiteral("Range"), m_pRange);
    pGrid->AddGap();
    for (int i = 0; i < 3; i++) {
        const int nLimit = c_aSliders[i].nLimit;
        m_sliders[i] = new CSliderEdit({-nLimit, nLimit, -nLimit, nLimit}, this);
        m_sliders[i]->AddTo(*pGrid, TextOf(c_aSliders[i].nLabelId));
        RegisterKey(QString::fromLatin1(c_aSliders[i].pszKey), m_sliders[i]->Edit());
        connect(m_sliders[i], &CSliderEdit::Changed, this, [this, i](int nValue) {
            ValuesOf(i)[m_pRange->currentIndex()] = nValue;
            ValuesChanged();
        });
    }
    connect(m_pRange, &QComboBox::currentIndexChanged, this, &CHueSaturationDialog::ShowRange);
    Build(pGrid, CPreviewGeometry::c_nPaneSize);
    ShowRange();
    m_sliders[0]->Edit()->setFocus();
    m_sliders[0]->Edit()->selectAll();
}

std::array<double, 7>& CHueSaturationDialog::ValuesOf(int iSlider)
{
    return iSlider == 0 ? Ranges().adHue : iSlider == 1 ? Ranges().adSaturation : Ranges().adLightness;
}

void CHueSaturationDialog::ShowRange()
{
    for (int i = 0; i < 3; i++)
        m_sliders[i]->SetValue(static_cast<int>(ValuesOf(i)[m_pRange->currentIndex()]));
}

} // namespace kestrune
