#include "doc/gui/ResizeDialog.h"

#include "base/StringTable.h"
#include "base/Units.h"
#include "doc/Bitmap.h"
#include "ui/DialogRows.h"

#include <algorithm>

namespace kestrune {

namespace {

/// By `SizeFlags`.
constexpr int c_aMethods[] = {IDS_METHOD_NEAREST, IDS_METHOD_BILINEAR, IDS_METHOD_BICUBIC, IDS_METHOD_AREA};

/// Centimetres of so many pixels, in whole hundredths.
QString PrintLength(int nPixels, int nResolution)
{
    return QString::number(static_cast<double>(std::int64_t{nPixels} * 254 / nResolution) / 100, 'f', 2);
}

} // namespace

CResizeDialog::CResizeDialog(const ResizeParams& params, QWidget* pParent)
    : CPictureSizeDialog(params.size, params.nBitsPerPixel, pParent)
    , m_resolution{params.nXResolution > 0 ? params.nXResolution : c_nDefaultResolution,
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
    m_pPrint = pRows->AddFigure(TextOf(IDS_SIZE_PRINT));
    AddMemory(*pRows);
    Body()->addLayout(pRows);

    RegisterKey(QStringLiteral("Proportions"), m_pProportions);
    RegisterKey(QStringLiteral("Method"), m_pMethod);
    connect(m_pProportions, &QCheckBox::toggled, this, &CResizeDialog::ProportionsToggled);
    SizeChanged();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
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
    const QString strDpi = m_resolution.cx == m_resolution.cy ? QString::number(m_resolution.cx)
                                                              : QStringLiteral("%1 × %2").arg(m_resolution.cx).arg(m_resolution.cy);
    m_pPrint->setText(TextOf(IDS_SIZE_PRINT_VALUE).arg(PrintLength(size.cx, m_resolution.cx), PrintLength(size.cy, m_resolution.cy), strDpi));
}

} // namespace kestrune
