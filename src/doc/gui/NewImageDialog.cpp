#include "doc/gui/NewImageDialog.h"

#include "base/StringTable.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nMinSide = 1;
constexpr int c_nMaxSide = 5000;

struct UnitRow {
    int nTextId;
    int nDecimals;
};
constexpr UnitRow c_aUnits[UNIT_COUNT] = {
    {IDS_UNIT_PIXEL, 0},
    {IDS_UNIT_CENTIMETER, 2},
    {IDS_UNIT_MILLIMETER, 1},
    {IDS_UNIT_INCH, 3},
};
constexpr int c_aKinds[] = {IDS_FILL_WHITE, IDS_FILL_BLACK, IDS_FILL_BACKGROUND};
constexpr int c_aColors[] = {IDS_COLOR_BITMAP, IDS_COLOR_GRAY, IDS_COLOR_RGB};
/// Bits of a pixel by picture type, for the memory figure.
constexpr int c_aBits[] = {1, 8, 24};

QIcon ColorPatch(QColor color, const QWidget& over)
{
    const int nSide = over.fontMetrics().height();
    const qreal fRatio = over.devicePixelRatioF();
    QPixmap pixmap(QSize(nSide, nSide) * fRatio);
    pixmap.setDevicePixelRatio(fRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(QColor(128, 128, 128), 1));
    painter.setBrush(color);
    painter.drawRect(QRectF(1.5, 1.5, nSide - 3, nSide - 3));
    return pixmap;
}

QString MemoryText(CSize size, int nBits)
{
    const double fKilobytes = double(size.cx) * size.cy * nBits / 8 / 1024;
    return fKilobytes < 1024 ? QStringLiteral("%1 KB").arg(fKilobytes, 0, 'f', 1)
                             : QStringLiteral("%1 MB").arg(fKilobytes / 1024, 0, 'f', 1);
}

} // namespace

CNewImageDialog::CNewImageDialog(const NewImageParams& params, LengthUnit unit, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_size{std::clamp(params.nWidth, c_nMinSide, c_nMaxSide), std::clamp(params.nHeight, c_nMinSide, c_nMaxSide)}
{
    setWindowTitle(TextOf(IDS_NEW_IMAGE_TITLE));
    auto* pRows = new CDialogRows;
    AddSizeRows(*pRows);
    pRows->AddGap();

    m_pKind = new QComboBox;
    for (const int nTextId : c_aKinds)
        m_pKind->addItem(TextOf(nTextId));
    const QColor aPatches[] = {Qt::white, Qt::black, QColor(RedOf(g_crBackground), GreenOf(g_crBackground), BlueOf(g_crBackground))};
    for (int i = 0; i < m_pKind->count(); i++)
        m_pKind->setItemIcon(i, ColorPatch(aPatches[i], *this));
    pRows->AddRow(TextOf(IDS_NEW_KIND), m_pKind, TextOf(IDS_NEW_KIND_TIP));

    m_pColor = new QComboBox;
    for (const int nTextId : c_aColors)
        m_pColor->addItem(TextOf(nTextId));
    pRows->AddRow(TextOf(IDS_NEW_COLOR), m_pColor, TextOf(IDS_NEW_COLOR_TIP));
    pRows->AddGap();
    m_pMemory = pRows->AddFigure(TextOf(IDS_NEW_MEMORY));
    Body()->addLayout(pRows);

    RegisterKey(QStringLiteral("Width"), m_pWidth);
    RegisterKey(QStringLiteral("Height"), m_pHeight);
    RegisterKey(QStringLiteral("Unit"), m_pUnit);
    RegisterKey(QStringLiteral("Kind"), m_pKind);
    RegisterKey(QStringLiteral("Color"), m_pColor);

    m_pKind->setCurrentIndex(std::clamp<int>(params.nFillKind, 0, m_pKind->count() - 1));
    m_pColor->setCurrentIndex(std::clamp<int>(params.nColorKind, 0, m_pColor->count() - 1));
    m_pUnit->setCurrentIndex(std::clamp<int>(unit, 0, UNIT_COUNT - 1));
    UnitChanged();

    connect(m_pUnit, &QComboBox::currentIndexChanged, this, &CNewImageDialog::UnitChanged);
    connect(m_pColor, &QComboBox::currentIndexChanged, this, &CNewImageDialog::ShowMemory);
    for (CNumEdit* pBox : {m_pWidth, m_pHeight})
        connect(pBox, &CNumEdit::ValueEdited, this, &CNewImageDialog::SizeEdited);
    m_pWidth->selectAll();
    m_pWidth->setFocus();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void CNewImageDialog::AddSizeRows(CDialogRows& rows)
{
    m_pWidth = new CNumEdit;
    m_pHeight = new CNumEdit;
    m_pUnit = new QComboBox;
    for (const UnitRow& row : c_aUnits)
        m_pUnit->addItem(TextOf(row.nTextId));
    rows.AddNumber(TextOf(IDS_NEW_WIDTH), m_pWidth, TextOf(IDS_NEW_WIDTH_TIP));
    rows.AddNumber(TextOf(IDS_NEW_HEIGHT), m_pHeight, TextOf(IDS_NEW_HEIGHT_TIP));
    rows.AddRow(TextOf(IDS_NEW_UNIT), m_pUnit, TextOf(IDS_NEW_UNIT_TIP));
}

NewImageParams CNewImageDialog::Params() const
{
    return {m_size.cx, m_size.cy, m_pKind->currentIndex(), m_pColor->currentIndex()};
}

void CNewImageDialog::UnitChanged()
{
    m_unit = static_cast<LengthUnit>(m_pUnit->currentIndex());
    const double fPixels = PixelsPerUnit(m_unit);
    const int nDecimals = c_aUnits[m_unit].nDecimals;
    const double fStep = std::pow(10.0, -nDecimals);
    const auto show = [&](CNumEdit& box, int nPixels) { // the size stays, its text alone changes: rounding must not creep into it
        box.SetDecimalPlaces(nDecimals);
        // The limits as the unit's decimals show them, outwards, so that 1 pixel of 0.0104 inches, shown as 0.010, is taken. They
        // still mean 1..5000 whole pixels. A tenth of a step more keeps the rounding of the limits themselves out of it.
        const double fMin = std::max(1.0, std::floor(c_nMinSide / fPixels / fStep)) - 0.1;
        const double fMax = std::ceil(c_nMaxSide / fPixels / fStep) + 0.1;
        box.SetRange(static_cast<float>(fMin * fStep), static_cast<float>(fMax * fStep));
        box.SetDelta(static_cast<float>(m_unit == UNIT_PIXEL ? 1 : fStep * 10));
        box.SetValue(std::clamp(static_cast<float>(nPixels / fPixels), box.GetMin(), box.GetMax()));
    };
    show(*m_pWidth, m_size.cx);
    show(*m_pHeight, m_size.cy);
    ShowMemory();
}

void CNewImageDialog::SizeEdited()
{
    const double fPixels = PixelsPerUnit(m_unit);
    const double fHalfStep = 0.5001 * std::pow(10.0, -c_aUnits[m_unit].nDecimals);
    const auto side = [&](const CNumEdit& box, int nOld) {
        const double fValue = static_cast<double>(box.GetValue());
        if (box.Verify() != NUM_OK || std::abs(fValue - nOld / fPixels) < fHalfStep)
            return nOld; // a number under way, or the old side, rounded
        return std::clamp(static_cast<int>(std::lround(fValue * fPixels)), c_nMinSide, c_nMaxSide);
    };
    m_size = {side(*m_pWidth, m_size.cx), side(*m_pHeight, m_size.cy)};
    ShowMemory();
}

void CNewImageDialog::ShowMemory()
{
    m_pMemory->setText(QStringLiteral("%1  (%2 × %3)")
                           .arg(MemoryText(m_size, c_aBits[m_pColor->currentIndex()]))
                           .arg(m_size.cx)
                           .arg(m_size.cy));
}

} // namespace kestrune
