#include "doc/gui/ResizeDialog.h"

#include "base/StringTable.h"
#include "base/Units.h"
#include "doc/Bitmap.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

/// By `SizeFlags`.
constexpr int c_aMethods[] = {IDS_METHOD_NEAREST, IDS_METHOD_BILINEAR, IDS_METHOD_BICUBIC, IDS_METHOD_AREA};

/// Centimetres of so many pixels, in whole hundredths.
double PrintLength(int nPixels, int nResolution)
{
    return static_cast<double>(std::int64_t{nPixels} * 254 / nResolution) / 100;
}

} // namespace

CResizeDialog::CResizeDialog(const ResizeParams& params, QWidget* pParent)
    : CPictureSizeDialog(params.size, params.nBitsPerPixel, pParent)
    , m_aResolution{params.nXResolution > 0 ? params.nXResolution : c_nDefaultResolution,
                    params.nYResolution > 0 ? params.nYResolution : c_nDefaultResolution}
{
    setWindowTitle(TextOf(IDS_SIZE_TITLE));
    auto* pRows = new CDialogRows;
    AddSizeRows(*pRows, IDS_SIZE_WIDTH_TIP, IDS_SIZE_HEIGHT_TIP);
    m_pProportions = new QCheckBox(TextOf(IDS_SIZE_PROPORTIONS));
    m_pProportions->setToolTip(TextOf(IDS_SIZE_PROPORTIONS_TIP));
    m_pProportions->setChecked(true);
    pRows->AddWide(m_pProportions);
    pRows->AddGap();
    m_pMethod = new QComboBox;
    for (const int nTextId : c_aMethods)
        m_pMethod->addItem(TextOf(nTextId));
    m_pMethod->setCurrentIndex(SIZE_BICUBIC);
    pRows->AddRow(TextOf(IDS_SIZE_METHOD), m_pMethod, TextOf(IDS_SIZE_METHOD_TIP));
    pRows->AddGap();
    AddPrintRows(*pRows);
    pRows->AddGap();
    AddMemory(*pRows);
    Body()->addLayout(pRows);

    RegisterKey(QStringLiteral("Proportions"), m_pProportions);
    RegisterKey(QStringLiteral("Method"), m_pMethod);
    connect(m_pProportions, &QCheckBox::toggled, this, &CResizeDialog::ProportionsToggled);
    SizeChanged();
    StartWithWidth();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void CResizeDialog::AddPrintRows(CDialogRows& rows)
{
    for (const Side side : {SIDE_WIDTH, SIDE_HEIGHT}) {
        auto* pBox = m_aPrint[side] = new CNumEdit;
        pBox->SetDecimalPlaces(2);
        pBox->SetDelta(0.1f);
        pBox->SetRange(0, 1e5f);
        connect(pBox, &CNumEdit::ValueEdited, this, [this, side] { PrintEdited(side); });
        rows.AddNumber(TextOf(side == SIDE_WIDTH ? IDS_SIZE_PRINT_WIDTH : IDS_SIZE_PRINT_HEIGHT), pBox, TextOf(IDS_SIZE_PRINT_TIP), QStringLiteral("cm"));
        RegisterKey(side == SIDE_WIDTH ? QStringLiteral("PrintWidth") : QStringLiteral("PrintHeight"), pBox);
    }
    const QString strDpi = m_aResolution[0] == m_aResolution[1] ? QString::number(m_aResolution[0])
                                                                : QStringLiteral("%1 × %2").arg(m_aResolution[0]).arg(m_aResolution[1]);
    rows.AddFigure(TextOf(IDS_SIZE_RESOLUTION), TextOf(IDS_INFO_DPI_VALUE).arg(strDpi));
}

/// A length that the present pixels already measure, rounded as it is, changes nothing.
void CResizeDialog::PrintEdited(Side side)
{
    const double fValue = static_cast<double>(m_aPrint[side]->GetValue());
    const CSize size = PictureSize();
    if (std::abs(fValue - PrintLength(side == SIDE_WIDTH ? size.cx : size.cy, m_aResolution[side])) < 0.005)
        return;
    const int nPixels = std::max(1, static_cast<int>(std::lround(std::min(fValue * m_aResolution[side] / 2.54, 1e6))));
    if (TrySize(SizeAfter(side, nPixels), side))
        SideTyped(side);
    else
        m_aPrint[side]->SetValue(static_cast<float>(PrintLength(side == SIDE_WIDTH ? size.cx : size.cy, m_aResolution[side])));
}

CSize CResizeDialog::SizeAfter(Side side, int nValue) const
{
    if (!m_pProportions->isChecked())
        return CPictureSizeDialog::SizeAfter(side, nValue);
    const auto Follow = [nValue](int nOther, int nOld) { return static_cast<int>(std::max<std::int64_t>(std::int64_t{nOther} * nValue / nOld, 1)); };
    return side == SIDE_WIDTH ? CSize{nValue, Follow(m_sizeOld.cy, m_sizeOld.cx)} : CSize{Follow(m_sizeOld.cx, m_sizeOld.cy), nValue};
}

void CResizeDialog::SideTyped(Side side)
{
    m_sideTyped = side;
    (side == SIDE_WIDTH ? m_sizeTyped.cx : m_sizeTyped.cy) = side == SIDE_WIDTH ? PictureSize().cx : PictureSize().cy;
}

/// Switched on, the side that was not typed last follows; switched off, what was typed into both boxes comes back.
void CResizeDialog::ProportionsToggled(bool bKeep)
{
    const CSize size = PictureSize();
    if (!bKeep && m_sizeTyped.cx > 0 && m_sizeTyped.cy > 0)
        TrySize(m_sizeTyped, m_sideTyped);
    else if (bKeep && !TrySize(SizeAfter(m_sideTyped, m_sideTyped == SIDE_WIDTH ? size.cx : size.cy), m_sideTyped))
        m_pProportions->setChecked(false);
}

void CResizeDialog::SizeChanged()
{
    CPictureSizeDialog::SizeChanged();
    const CSize size = PictureSize();
    for (const Side side : {SIDE_WIDTH, SIDE_HEIGHT})
        if (!m_aPrint[side]->hasFocus()) // not under the fingers of who types there
            m_aPrint[side]->SetValue(static_cast<float>(PrintLength(side == SIDE_WIDTH ? size.cx : size.cy, m_aResolution[side])));
}

} // namespace kestrune
