#include "filters/gui/ColorBalanceDialog.h"
#include "filters/gui/CurvesDialog.h"
#include "filters/gui/FilterDialog.h"
#include "filters/gui/HueSaturationDialog.h"
#include "filters/gui/LevelsDialog.h"
#include "filters/gui/MatrixDialog.h"

namespace kestrune {

std::unique_ptr<CFilterDialog> MakeFilterDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData,
                                                QWidget* pParent)
{
    switch (row.dialog) {
    case FilterDialogKind::Common:
    case FilterDialogKind::Colourize:
        return std::make_unique<CCommonFilterDialog>(row, image, dialogData, pParent);
    case FilterDialogKind::Matrix:
        return std::make_unique<CMatrixDialog>(row, image, dialogData, pParent);
    case FilterDialogKind::HueSaturation:
        return std::make_unique<CHueSaturationDialog>(row, image, dialogData, pParent);
    case FilterDialogKind::ColorBalance:
        return std::make_unique<CColorBalanceDialog>(row, image, dialogData, pParent);
    case FilterDialogKind::Levels:
        return std::make_unique<CLevelsDialog>(row, image, dialogData, pParent);
    case FilterDialogKind::Curves:
        return std::make_unique<CCurvesDialog>(row, image, dialogData, pParent);
    default:
        return nullptr;
    }
}

CFilterDialogHost::CFilterDialogHost(CProfile& profile, QWidget* pParent)
    : m_profile(profile)
    , m_pParent(pParent)
{
}

bool CFilterDialogHost::DoModal(const FilterRow& row, CPaintImage& image, FilterDialogData& data)
{
    PrepareFilterDialog(image, data);
    data.values = LoadFilterValues(row, m_profile);
    const std::unique_ptr<CFilterDialog> pDialog = MakeFilterDialog(row, image, data, m_pParent);
    if (!pDialog || pDialog->DoModal() != QDialog::Accepted)
        return false;
    SaveFilterValues(row, data.values, m_profile);
    if (row.undo == FilterUndo::AfterDialog)
        ApplyFilter(row, image, data);
    return true;
}

} // namespace kestrune
