#pragma once

#include "filters/ChannelHistograms.h"
#include "filters/gui/FilterDialog.h"

class QComboBox;
class QLabel;

namespace kestrune {

class CCurveGraph;

/// Curves: a graph for each channel. What OK leaves is there again at the next opening, as long as the program runs.
/// Keys: `Channel` (0 RGB, 1 red, 2 green, 3 blue), `Points` (x:y,x:y,... of the channel chosen last, 0..255 both
/// ways).
class CCurvesDialog : public CFilterDialog {
    Q_OBJECT
public:
    CCurvesDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;
    void accept() override;

private:
    CurvesValues& Curves() { return std::get<CurvesValues>(Values().extra); }

    ChannelHistograms m_histograms;
    QComboBox* m_pChannel;
    CCurveGraph* m_pGraph;
    QLabel* m_pReadout;
};

} // namespace kestrune
