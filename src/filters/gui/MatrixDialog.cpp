#include "filters/gui/MatrixDialog.h"

#include "filters/FilterStrings.h"
#include "filters/PreviewGeometry.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QGridLayout>

#include <cmath>

namespace kestrune {

namespace {

constexpr float c_fCellLimit = 999;
constexpr float c_fLargest = 9999;
constexpr int c_nCellGap = 4;

CNumEdit* MakeNumber(float fMin, float fMax, int nValue)
{
    auto* pEdit = new CNumEdit;
    pEdit->SetRange(fMin, fMax);
    pEdit->SetClamping(true);
    pEdit->SetValue(static_cast<float>(nValue));
    return pEdit;
}

} // namespace

// Loading and saving of a matrix have never had a file format; buttons that do nothing are left out.
CMatrixDialog::CMatrixDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent)
    : CFilterDialog(row, image, dialogData, pParent)
    , m_pScale(MakeNumber(1, c_fLargest, Matrix().nScale))
    , m_pOffset(MakeNumber(-c_fLargest, c_fLargest, Matrix().nOffset))
{
    auto* pColumn = new QVBoxLayout;
    pColumn->setSpacing(c_nGroupGap);
    pColumn->addLayout(BuildCells());
    auto* pRows = new CDialogRows;
    pRows->AddNumber(TextOf(IDS_MATRIX_SCALE), m_pScale, TextOf(IDS_MATRIX_SCALE_TIP));
    pRows->AddNumber(TextOf(IDS_MATRIX_OFFSET), m_pOffset, TextOf(IDS_MATRIX_OFFSET_TIP));
    pColumn->addLayout(pRows);
    RegisterKey(QStringLiteral("Scale"), m_pScale);
    RegisterKey(QStringLiteral("Offset"), m_pOffset);
    for (CNumEdit* pEdit : {m_pScale, m_pOffset})
        connect(pEdit, &CNumEdit::ValueEdited, this, &CMatrixDialog::OnEdited);
    Build(pColumn, CPreviewGeometry::c_nPaneSize);
    m_cells[m_cells.size() / 2]->setFocus();
}

QLayout* CMatrixDialog::BuildCells()
{
    auto* pGrid = new QGridLayout;
    pGrid->setSpacing(c_nCellGap);
    for (int i = 0; i < c_nSide * c_nSide; i++) {
        CNumEdit* pEdit = m_cells[i] = MakeNumber(-c_fCellLimit, c_fCellLimit, Matrix().anMatrix[i]);
        pEdit->setFixedWidth(pEdit->fontMetrics().horizontalAdvance(QStringLiteral("-999")) + 14);
        pEdit->setAccessibleName(TextOf(IDS_MATRIX_CELL).arg(i / c_nSide + 1).arg(i % c_nSide + 1));
        pEdit->setToolTip(TextOf(IDS_MATRIX_CELL_TIP));
        pGrid->addWidget(pEdit, i / c_nSide, i % c_nSide);
        connect(pEdit, &CNumEdit::ValueEdited, this, &CMatrixDialog::OnEdited);
    }
    return pGrid;
}

/// The one handler of all 27 boxes: a box that holds no number keeps its last value.
void CMatrixDialog::OnEdited()
{
    const auto read = [](const CNumEdit& edit, std::int32_t& nValue) {
        if (edit.Verify() == NUM_OK)
            nValue = static_cast<std::int32_t>(std::lround(edit.GetValue())); // as the box will show it
    };
    for (std::size_t i = 0; i < m_cells.size(); i++)
        read(*m_cells[i], Matrix().anMatrix[i]);
    read(*m_pScale, Matrix().nScale);
    read(*m_pOffset, Matrix().nOffset);
    ValuesChanged();
}

std::optional<QString> CMatrixDialog::SetKey(const QString& strKey, const QString& strValue)
{
    if (strKey != QLatin1String("Matrix"))
        return CFilterDialog::SetKey(strKey, strValue);
    const QStringList parts = strValue.split(u',');
    if (parts.size() != static_cast<qsizetype>(m_cells.size()))
        return QStringLiteral("a matrix has 25 numbers, not %1").arg(parts.size());
    // Each cell takes its number as typed; the key is made known for the moment in which that happens.
    for (std::size_t i = 0; i < m_cells.size(); i++) {
        RegisterKey(strKey, m_cells[i]);
        if (const std::optional<QString> error = CFilterDialog::SetKey(strKey, parts[static_cast<qsizetype>(i)]))
            return error;
    }
    return {};
}

} // namespace kestrune
