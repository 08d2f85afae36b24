#pragma once

#include "filters/gui/FilterDialog.h"

#include <array>

namespace kestrune {

class CNumEdit;

/// The user's own filter: 25 cells, a divisor and an offset. Keys: `Matrix` (25 numbers parted by commas), `Scale`,
/// `Offset`.
class CMatrixDialog : public CFilterDialog {
    Q_OBJECT
public:
    CMatrixDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent);

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;

private:
    MatrixValues& Matrix() { return std::get<MatrixValues>(Values().extra); }
    QLayout* BuildCells();
    void OnEdited();

    static constexpr int c_nSide = 5;
    std::array<CNumEdit*, c_nSide * c_nSide> m_cells{};
    CNumEdit* m_pScale;
    CNumEdit* m_pOffset;
};

} // namespace kestrune
