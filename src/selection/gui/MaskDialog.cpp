#include "selection/gui/MaskDialog.h"

#include "base/StringTable.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace kestrune {

namespace {

constexpr MaskDialogRow c_aRows[] = {
    {30060, IDS_FEATHER_TITLE, IDS_MASK_RADIUS, IDS_FEATHER_TIP, "Radius", 5, 0.2f, 250, 1},
    {30134, IDS_BORDER_TITLE, IDS_MASK_WIDTH, IDS_BORDER_TIP, "Width", 5, 1, 200, 0},
    {30061, IDS_GROW_TITLE, IDS_MASK_RADIUS, IDS_GROW_TIP, "Radius", 5, 1, 100, 0},
    {30062, IDS_SHRINK_TITLE, IDS_MASK_RADIUS, IDS_SHRINK_TIP, "Radius", 5, 1, 100, 0},
};
static_assert(std::ranges::all_of(c_aRows, [](const MaskDialogRow& row) { return row.fMin <= row.fDefault && row.fDefault <= row.fMax; }));

/// For each dialog what was last asked for.
float& LastNumber(const MaskDialogRow& row)
{
    static auto s_aLast = [] {
        std::array<float, std::size(c_aRows)> aLast{};
        std::ranges::transform(c_aRows, aLast.begin(), &MaskDialogRow::fDefault);
        return aLast;
    }();
    return s_aLast[&row - c_aRows];
}

} // namespace

const MaskDialogRow* FindMaskDialog(int nCommand)
{
    const auto it = std::ranges::find(c_aRows, nCommand, &MaskDialogRow::nCommand);
    return it == std::end(c_aRows) ? nullptr : &*it;
}

CMaskDialog::CMaskDialog(const MaskDialogRow& row, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_row(row)
    , m_pNumber(new CNumEdit)
{
    setWindowTitle(TextOf(row.nTitleId));
    m_pNumber->SetUnit(NUMUNIT_PIXEL);
    m_pNumber->SetDecimalPlaces(row.nDecimals);
    m_pNumber->SetRange(row.fMin, row.fMax);
    m_pNumber->SetDefault(row.fDefault);
    m_pNumber->SetValue(LastNumber(row));
    auto* pRows = new CDialogRows;
    pRows->AddNumber(TextOf(row.nLabelId), m_pNumber, TextOf(row.nTipId));
    Body()->addLayout(pRows);
    RegisterKey(QLatin1String(row.strKey), m_pNumber);
    m_pNumber->selectAll();
    m_pNumber->setFocus();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

std::optional<double> CMaskDialog::Ask()
{
    if (DoModal() != QDialog::Accepted)
        return {};
    LastNumber(m_row) = m_pNumber->GetValue();
    return LastNumber(m_row);
}

} // namespace kestrune
