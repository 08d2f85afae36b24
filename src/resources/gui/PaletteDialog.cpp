#include "resources/gui/PaletteDialog.h"

#include "base/StringTable.h"
#include "resources/gui/ColorPickerDialog.h"
#include "resources/gui/PaletteStrip.h"
#include "ui/DialogRows.h"

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>

namespace kestrune {

namespace {

constexpr int c_nLeastCount = 2;
constexpr char c_szExtension[] = ".PAL";

std::filesystem::path ToPath(const QString& strPath)
{
    return QFile::encodeName(strPath).toStdString();
}

/// "R,G,B", each 0 to 255.
std::optional<COLORREF> ParseTriple(const QString& strText)
{
    const QStringList parts = strText.split(u',');
    int aChannel[3];
    if (parts.size() != 3)
        return {};
    for (int i = 0; i < 3; i++) {
        bool bNumber = false;
        aChannel[i] = parts[i].toInt(&bNumber);
        if (!bNumber || aChannel[i] < 0 || aChannel[i] > 255)
            return {};
    }
    return Rgb(aChannel[0], aChannel[1], aChannel[2]);
}

} // namespace

CPaletteDialog::CPaletteDialog(QWidget* pParent)
    : CPaintDialog(pParent)
    , m_pCount(new QComboBox(this))
    , m_pStrip(new CPaletteStrip(m_table, this))
{
    setWindowTitle(TextOf(IDS_PALETTE_TITLE));
    for (int n = c_nLeastCount; n <= c_nPaletteEntries; n++)
        m_pCount->addItem(QString::number(n), n);
    m_pCount->setCurrentIndex(m_pCount->count() - 1);

    auto* pRows = new CDialogRows;
    pRows->AddRow(TextOf(IDS_PALETTE_COUNT), m_pCount, TextOf(IDS_PALETTE_COUNT_TIP));
    pRows->AddWide(m_pStrip);
    m_pBand = new QLabel(this);
    pRows->AddWide(m_pBand);
    Body()->addLayout(pRows);
    QPushButton* pOpen = AddFileButton(IDS_PALETTE_OPEN, IDS_PALETTE_OPEN_TIP, &CPaletteDialog::OnOpen);
    QPushButton* pSave = AddFileButton(IDS_PALETTE_SAVE, IDS_PALETTE_SAVE_TIP, &CPaletteDialog::OnSave);
    setTabOrder(m_pCount, m_pStrip);
    setTabOrder(m_pStrip, pOpen);
    setTabOrder(pOpen, pSave);
    setTabOrder(pSave, OkButton());

    connect(m_pCount, &QComboBox::currentIndexChanged, this, [this] { m_pStrip->SetCount(m_pCount->currentData().toInt()); });
    connect(m_pStrip, &CPaletteStrip::SelectionChanged, this, &CPaletteDialog::ShowBand);
    connect(m_pStrip, &CPaletteStrip::BandPicked, this, &CPaletteDialog::PickBand);
    ShowBand();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

QPushButton* CPaletteDialog::AddFileButton(int nTextId, int nTipId, void (CPaletteDialog::*act)())
{
    auto* pButton = new QPushButton(TextOf(nTextId), this);
    pButton->setAutoDefault(false);
    pButton->setToolTip(TextOf(nTipId));
    ButtonRow()->addWidget(pButton);
    connect(pButton, &QPushButton::clicked, this, act);
    return pButton;
}

void CPaletteDialog::PickBand(int iBand)
{
    const PaletteEntry& entry = m_table[static_cast<std::size_t>(iBand)];
    if (const auto cr = CColorPickerDialog::Pick(Rgb(entry.nRed, entry.nGreen, entry.nBlue), this))
        SetBand(iBand, *cr);
}

void CPaletteDialog::SetBand(int iBand, COLORREF cr)
{
    const auto byte = [](int n) { return static_cast<std::uint8_t>(n); };
    m_table[static_cast<std::size_t>(iBand)] = {byte(RedOf(cr)), byte(GreenOf(cr)), byte(BlueOf(cr))};
    m_pStrip->update();
    ShowBand();
}

void CPaletteDialog::ShowBand()
{
    const int iBand = m_pStrip->Selected();
    const PaletteEntry& entry = m_table[static_cast<std::size_t>(iBand)];
    m_pBand->setText(TextOf(IDS_PALETTE_BAND).arg(iBand + 1).arg(entry.nRed).arg(entry.nGreen).arg(entry.nBlue));
}

bool CPaletteDialog::OpenFile(const QString& strPath)
{
    if (!ReadPaletteFile(ToPath(strPath), m_table))
        return false;
    m_pStrip->update();
    ShowBand();
    return true;
}

void CPaletteDialog::OnOpen()
{
    const QString strPath = QFileDialog::getOpenFileName(this, PlainLabel(TextOf(IDS_PALETTE_OPEN)), {}, TextOf(IDS_PALETTE_FILTER));
    if (!strPath.isEmpty())
        OpenFile(strPath);
}

void CPaletteDialog::OnSave()
{
    QFileDialog dialog(this, PlainLabel(TextOf(IDS_PALETTE_SAVE)), {}, TextOf(IDS_PALETTE_FILTER));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromLatin1(c_szExtension + 1)); // before it asks about a file that is there already
    if (dialog.exec() == Accepted && !dialog.selectedFiles().isEmpty())
        WritePaletteFile(ToPath(dialog.selectedFiles().front()), m_table);
}

void CPaletteDialog::accept()
{
    g_aPaletteTable = m_table;
    CPaintDialog::accept();
}

std::optional<QString> CPaletteDialog::SetKey(const QString& strKey, const QString& strValue)
{
    const QString strRefused = QStringLiteral("the control refuses the value \"%1\"").arg(strValue);
    const auto done = [&](bool bGood) { return bGood ? std::nullopt : std::optional(strRefused); };
    bool bNumber = false;
    const int nValue = strValue.toInt(&bNumber);
    if (strKey == u"Count") {
        const int iRow = bNumber ? m_pCount->findData(nValue) : -1;
        if (iRow >= 0)
            m_pCount->setCurrentIndex(iRow);
        return done(iRow >= 0);
    }
    if (strKey == u"Band") {
        const bool bGood = bNumber && nValue >= 0 && nValue < m_pStrip->Count();
        if (bGood)
            m_pStrip->Select(nValue);
        return done(bGood);
    }
    if (strKey == u"Color") {
        const std::optional<COLORREF> cr = ParseTriple(strValue);
        if (cr)
            SetBand(m_pStrip->Selected(), *cr);
        return done(cr.has_value());
    }
    if (strKey == u"Open")
        return done(OpenFile(strValue));
    if (strKey == u"Save") {
        const bool bBare = QFileInfo(strValue).suffix().isEmpty();
        return done(WritePaletteFile(ToPath(bBare ? strValue + QLatin1String(c_szExtension) : strValue), m_table));
    }
    return CPaintDialog::SetKey(strKey, strValue);
}

} // namespace kestrune
