#pragma once

#include "filters/gui/FilterDialog.h"

#include <array>

class QButtonGroup;
class QCheckBox;

namespace kestrune {

/// Colour balance: red, green and blue of the shadows, the midtones and the highlights.
/// Keys: `Range` (0 shadows, 1 midtones, 2 highlights), `Red` `Green` `Blue` of the range chosen last, `Luminosity` (0,
/// 1).
class CColorBalanceDialog : public CFilterDialog {
    Q_OBJECT
public:
    CColorBalanceDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);

private:
    ColorBalanceValues& Balance() { return std::get<ColorBalanceValues>(Values().extra); }
    QLayout* BuildRanges();
    void ShowRange();

    QButtonGroup* m_pRanges;
    std::array<CSliderEdit*, 3> m_sliders{};
    QCheckBox* m_pLuminosity;
};

} // namespace kestrune
