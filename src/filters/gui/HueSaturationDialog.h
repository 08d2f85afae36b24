#pragma once

#include "filters/gui/FilterDialog.h"

#include <array>

class QComboBox;

namespace kestrune {

/// Hue and saturation: seven ranges of colour, each with a hue, a saturation and a lightness of its own.
/// Keys: `Range` (0 to 6), `Hue` `Saturation` `Lightness` of the range chosen last.
class CHueSaturationDialog : public CFilterDialog {
    Q_OBJECT
public:
    CHueSaturationDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);

private:
    HueSaturationValues& Ranges() { return std::get<HueSaturationValues>(Values().extra); }
    std::array<double, 7>& ValuesOf(int iSlider);
    void ShowRange();

    QComboBox* m_pRange;
    std::array<CSliderEdit*, 3> m_sliders{}; ///< hue, saturation, lightness
};

} // namespace kestrune
