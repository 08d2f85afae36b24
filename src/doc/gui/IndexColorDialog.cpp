#include "doc/gui/IndexColorDialog.h"

#include "base/StringTable.h"
#include "doc/ColorReduce.h"
#include "doc/gui/PanPane.h"
#include "ui/DialogRows.h"

#include <QImage>

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr int c_nPane = 180;
constexpr int c_nSampleSide = 320;

struct Choice {
    int nTextId;
    std::uint32_t dwFlag; ///< of `ColorResFlags`
};
constexpr Choice c_aPalettes16[] = {{IDS_PALETTE_OPTIMIZED, CRF_OPTIMIZEDPALETTE},
                                    {IDS_PALETTE_SYSTEM, CRF_FIXEDPALETTE},
                                    {IDS_PALETTE_GREY, CRF_GRAYPALETTE}};
constexpr Choice c_aPalettes256[] = {{IDS_PALETTE_OPTIMIZED, CRF_OPTIMIZEDPALETTE},
                                     {IDS_PALETTE_CUBE, CRF_FIXEDPALETTE},
                                     {IDS_PALETTE_WEB, CRF_NETSCAPEPALETTE},
                                     {IDS_PALETTE_GREY, CRF_GRAYPALETTE}};
constexpr Choice c_aDithers[] = {{IDS_DITHER_NONE, CRF_NODITHER},
                                 {IDS_DITHER_DIFFUSION, CRF_ERRORDIFFUSION},
                                 {IDS_DITHER_ORDERED, CRF_ORDEREDDITHER}};
constexpr int c_nFirstDither = 1; ///< error diffusion: the one that shows a photograph best

void Fill(QComboBox& combo, std::span<const Choice> choices)
{
    for (const Choice& choice : choices)
        combo.addItem(TextOf(choice.nTextId), choice.dwFlag);
}

LBitmapBase SampleOf(const LBitmapBase& bitmap)
{
    LBitmapBase sample = bitmap;
    sample.Size(std::min(bitmap.GetWidth(), c_nSampleSide), std::min(bitmap.GetHeight(), c_nSampleSide), SIZE_NEAREST); // no colour of its own
    return sample;
}

QImage ImageOf(const LBitmapBase& bitmap)
{
    QImage image(bitmap.GetWidth(), bitmap.GetHeight(), QImage::Format_BGR888);
    for (int y = 0; y < bitmap.GetHeight(); y++)
        std::memcpy(image.scanLine(y), bitmap.Row(y), bitmap.GetRowBytes());
    return image;
}

} // namespace

CIndexColorDialog::CIndexColorDialog(const LBitmapBase& bitmap, int nBits, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_bitmap(bitmap)
    , m_sample(SampleOf(bitmap))
    , m_nBits(nBits)
    , m_ptPart((bitmap.GetWidth() - c_nPane) / 2, (bitmap.GetHeight() - c_nPane) / 2)
    , m_pBefore(new CPanPane({c_nPane, c_nPane}))
    , m_pAfter(new CPanPane({c_nPane, c_nPane}))
    , m_pPalette(new QComboBox)
    , m_pDither(new QComboBox)
{
    setWindowTitle(TextOf(IDS_INDEX_TITLE));
    Body()->addLayout(MakePane(*m_pBefore, IDS_INDEX_BEFORE));
    Body()->addLayout(MakePane(*m_pAfter, IDS_INDEX_AFTER));
    Fill(*m_pPalette, nBits == 4 ? std::span<const Choice>(c_aPalettes16) : std::span<const Choice>(c_aPalettes256));
    Fill(*m_pDither, c_aDithers);
    m_pDither->setCurrentIndex(c_nFirstDither);
    auto* pRows = new CDialogRows;
    pRows->AddFigure(TextOf(IDS_INDEX_COLORS), TextOf(IDS_INDEX_COLORS_VALUE).arg(1 << nBits));
    pRows->AddRow(TextOf(IDS_INDEX_PALETTE), m_pPalette, TextOf(IDS_INDEX_PALETTE_TIP));
    pRows->AddRow(TextOf(IDS_INDEX_DITHER), m_pDither, TextOf(IDS_INDEX_DITHER_TIP));
    auto* pColumn = new QVBoxLayout;
    pColumn->addLayout(pRows);
    pColumn->addStretch(1);
    Body()->addLayout(pColumn);

    RegisterKey(QStringLiteral("Palette"), m_pPalette);
    RegisterKey(QStringLiteral("Dither"), m_pDither);
    for (QComboBox* pCombo : {m_pPalette, m_pDither})
        connect(pCombo, &QComboBox::currentIndexChanged, this, &CIndexColorDialog::ShowPart);
    for (CPanPane* pPane : {m_pBefore, m_pAfter})
        connect(pPane, &CPanPane::Dragged, this, [this](QPoint by) {
            m_ptPart -= by;
            ShowPart();
        });
    m_pPalette->setFocus();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

QLayout* CIndexColorDialog::MakePane(CPanPane& pane, int nTextId)
{
    auto* pLayout = new QVBoxLayout;
    pLayout->setSpacing(c_nRowGap);
    pLayout->addWidget(&pane);
    pLayout->addWidget(new QLabel(TextOf(nTextId)), 0, Qt::AlignHCenter);
    pLayout->addStretch(1);
    pane.setAccessibleName(TextOf(nTextId));
    pane.setToolTip(TextOf(IDS_INDEX_PAN_TIP));
    return pLayout;
}

std::uint32_t CIndexColorDialog::Flags() const
{
    return m_pPalette->currentData().toUInt() | m_pDither->currentData().toUInt();
}

/// A script that fills in the dialog never shows it, and needs no preview.
void CIndexColorDialog::showEvent(QShowEvent* pEvent)
{
    CPaintDialog::showEvent(pEvent);
    ShowPart();
}

void CIndexColorDialog::ShowPart()
{
    if (!isVisible())
        return;
    const QSize pane = m_pBefore->PixelSize();
    const auto Keep = [](int n, int nPicture, int nPane) { return std::clamp(n, 0, std::max(0, nPicture - nPane)); };
    m_ptPart = {Keep(m_ptPart.x(), m_bitmap.GetWidth(), pane.width()), Keep(m_ptPart.y(), m_bitmap.GetHeight(), pane.height())};
    LBitmapBase part = m_bitmap;
    part.Trim(m_ptPart.x(), m_ptPart.y(), pane.width(), pane.height());
    m_pBefore->ShowImage(ImageOf(part));
    // The palette is the whole picture's, not the part's.
    part.ColorRes(m_nBits, CRF_USERPALETTE | m_pDither->currentData().toUInt(), ChoosePalette(m_sample, m_nBits, Flags(), {}));
    part.ColorRes(24, CRF_TRUECOLOR);
    m_pAfter->ShowImage(ImageOf(part));
}

} // namespace kestrune
