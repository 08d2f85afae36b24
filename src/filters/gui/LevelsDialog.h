#pragma once

#include "filters/ChannelHistograms.h"
#include "filters/gui/FilterDialog.h"

#include <array>

class QComboBox;

namespace kestrune {

class C2PtSlider;
class CHistogramView;
class CMultiSlider;
class CNumEdit;

/// Levels: black, gamma and white of the input below a histogram, black and white of the output below a ramp, for each
/// channel. Keys: `Channel` (0 RGB, 1 red, 2 green, 3 blue), `Black` `Gamma` `White` `OutBlack` `OutWhite` of the
/// channel chosen last.
class CLevelsDialog : public CFilterDialog {
    Q_OBJECT
public:
    CLevelsDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);
    ~CLevelsDialog() override;

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    enum Edit { EDIT_BLACK, EDIT_GAMMA, EDIT_WHITE, EDIT_OUT_BLACK, EDIT_OUT_WHITE, EDIT_COUNT };

    LevelsChannel& Channel();
    void BuildEdits();
    QLayout* BuildColumn();
    void ConnectControls();
    void OnEdited(int iEdit);
    void OnInputMoved(int iHandle);
    void OnOutputMoved(int iHandle);
    /// Shows the channel in all controls but one, into which the user types.
    void ShowChannel(const CNumEdit* pExcept = nullptr);

    QComboBox* m_pChannel;
    std::array<CNumEdit*, EDIT_COUNT> m_edits{};
    CHistogramView* m_pHistogram;
    CMultiSlider* m_pInput;
    C2PtSlider* m_pOutput;
    ChannelHistograms m_histograms;
};

} // namespace kestrune
