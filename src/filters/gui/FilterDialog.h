#pragma once

#include "filters/FilterCommand.h"
#include "ui/Dialog.h"

#include <vector>

class QGridLayout;

namespace kestrune {

class CFilterPreview;
class CSliderEdit;

/// Base of the filter dialogs: preview at the left, controls at the right. A derived dialog fills the column of
/// controls, keeps `Values()` up to date and calls `ValuesChanged` after each change; all else is done here.
class CFilterDialog : public CPaintDialog {
    Q_OBJECT
public:
    /// `dialogData` is prepared, with the values that the dialog opens with, and outlives the dialog.
    CFilterDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);

    CFilterPreview& Preview() { return *m_pPreview; }

protected:
    /// Builds preview and frame; `pControls` is the right side. To be called once, by the derived constructor.
    void Build(QLayout* pControls, int nPane);
    /// A button at the lower left that calls `reset` and then tells of the change.
    void AddDefaultsButton(std::function<void()> reset);
    /// A change of a parameter: starts the preview's timer.
    void ValuesChanged();

    const FilterRow& Row() const { return m_row; }
    FilterDialogData& Data() { return m_data; }
    FilterValues& Values() { return m_data.values; }

private:
    const FilterRow& m_row;
    CPaintImage& m_image;
    FilterDialogData& m_data;
    CFilterPreview* m_pPreview = nullptr;
};

/// The dialog of the filters whose parameters are sliders, check boxes and choices, one line each, as their row tells.
class CCommonFilterDialog : public CFilterDialog {
    Q_OBJECT
public:
    CCommonFilterDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;

private:
    void AddParameter(QGridLayout& grid, std::size_t iParam);
    void AddReferenceColor(QGridLayout& grid);
    void PickReferenceColor();
    void ShowReferenceColor();

    std::vector<CSliderEdit*> m_sliders; ///< by parameter; null where it is no slider
    QPushButton* m_pReference = nullptr;
};

/// The dialogs that the filters' handlers show.
class CFilterDialogHost : public CFilterDialogs {
public:
    CFilterDialogHost(CProfile& profile, QWidget* pParent);
    bool DoModal(const FilterRow& row, CPaintImage& image, FilterDialogData& data) override;

private:
    CProfile& m_profile;
    QWidget* m_pParent;
};

/// The dialog of a row, of whichever class it is; null for a row without one.
std::unique_ptr<CFilterDialog> MakeFilterDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData,
                                                QWidget* pParent);

} // namespace kestrune
