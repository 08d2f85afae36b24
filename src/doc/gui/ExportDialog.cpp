#include "doc/gui/ExportDialog.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/files/DecodedImage.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"
#include "ui/WaitCursor.h"
#include "ui/PopupSlider.h"

#include <QFileInfo>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrune {

namespace {

constexpr const char* c_strSection = "Export";

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QStringList ExtensionsOf(const ExportFormat& format)
{
    return Text(format.extensions).split(u' ');
}

QList<FileFilter> ExportFilters()
{
    QList<FileFilter> filters;
    for (const ExportFormat& format : ExportFormats()) {
        QStringList patterns;
        for (const QString& strExtension : ExtensionsOf(format))
            patterns << QStringLiteral("*.") + strExtension;
        filters << FileFilter{Text(format.text) + QStringLiteral(" (") + patterns.first() + u')', patterns.join(u' ')};
    }
    return filters;
}

} // namespace

CExportDialog::CExportDialog(CProfile& profile, QWidget* pParent)
    : CFileDialogFrame(profile, SaveFile, TextOf(IDS_EXPORT_BUTTON), pParent)
    , m_settings(profile)
{
    setWindowTitle(TextOf(IDS_EXPORT_TITLE));
    SetFilters(ExportFilters());
    SetPane(BuildPane());
    RegisterKey(QStringLiteral("Quality"), m_pQuality);
    RegisterKey(QStringLiteral("Lossless"), m_pLossless);
    RegisterKey(QStringLiteral("Palette"), m_pPalette);
    RegisterKey(QStringLiteral("Compression"), m_pCompression);
    RegisterKey(QStringLiteral("Dither"), m_pDither);
    LoadOptions();
    EnableOptions();
    connect(&Browser(), &QFileDialog::filterSelected, this, &CExportDialog::FormatChosen);
    connect(m_pLossless, &QCheckBox::toggled, this, &CExportDialog::EnableOptions);
}

CExportDialog::~CExportDialog() = default;

QWidget* CExportDialog::BuildPane()
{
    auto* pGroup = new QGroupBox(TextOf(IDS_EXPORT_OPTIONS));
    auto* pRows = new CDialogRows;
    m_pQuality = new CNumEdit;
    m_pQuality->SetRange(1, 100);
    auto* pSlider = m_pQualitySlider = new CPopupSlider;
    pSlider->SetRange(1, 100);
    pSlider->setFixedWidth(160);
    pSlider->setAccessibleName(PlainLabel(TextOf(IDS_EXPORT_QUALITY)));
    pSlider->SetDefault(ExportOptions().nQuality);
    connect(pSlider, &CPopupSlider::Moved, m_pQuality, [this](int nPos) { m_pQuality->SetValue(static_cast<float>(nPos)); });
    connect(m_pQuality, &QLineEdit::textChanged, pSlider, [this, pSlider] { pSlider->SetPos(static_cast<int>(m_pQuality->GetValue())); });
    m_pCompression = new QComboBox;
    m_pCompression->addItems({TextOf(IDS_COMPRESS_NONE), TextOf(IDS_COMPRESS_LZW), TextOf(IDS_COMPRESS_DEFLATE)});
    const auto check = [](int nTextId, int nTipId) {
        auto* pBox = new QCheckBox(TextOf(nTextId));
        pBox->setToolTip(TextOf(nTipId));
        return pBox;
    };
    m_pLossless = check(IDS_EXPORT_LOSSLESS, IDS_EXPORT_LOSSLESS_TIP);
    m_pPalette = check(IDS_EXPORT_PALETTE, IDS_EXPORT_PALETTE_TIP);
    m_pDither = check(IDS_EXPORT_DITHER, IDS_EXPORT_DITHER_TIP);

    pRows->AddNumber(TextOf(IDS_EXPORT_QUALITY), m_pQuality, TextOf(IDS_EXPORT_QUALITY_TIP));
    pRows->AddWide(pSlider);
    pRows->AddWide(m_pLossless);
    pRows->AddGap();
    pRows->AddRow(TextOf(IDS_EXPORT_COMPRESSION), m_pCompression, TextOf(IDS_EXPORT_COMPRESSION_TIP));
    pRows->AddGap();
    pRows->AddWide(m_pPalette);
    pRows->AddWide(m_pDither);
    auto* pColumn = new QVBoxLayout(pGroup);
    pColumn->setContentsMargins(c_nDialogMargin, c_nDialogMargin, c_nDialogMargin, c_nDialogMargin);
    pColumn->addLayout(pRows);
    pColumn->addStretch(1);
    return pGroup;
}

void CExportDialog::LoadOptions()
{
    const ExportOptions initial;
    SetFilterRow(std::clamp(m_settings.GetInt(c_strSection, "Format", 0), 0, static_cast<int>(ExportFormats().size()) - 1));
    m_pQuality->SetValue(static_cast<float>(std::clamp(m_settings.GetInt(c_strSection, "Quality", initial.nQuality), 1, 100)));
    m_pLossless->setChecked(m_settings.GetInt(c_strSection, "Lossless", initial.bLossless) != 0);
    m_pPalette->setChecked(m_settings.GetInt(c_strSection, "Palette", initial.bPalette) != 0);
    m_pCompression->setCurrentIndex(std::clamp(m_settings.GetInt(c_strSection, "Compression", initial.nPacking), 0, 2));
    m_pDither->setChecked(m_settings.GetInt(c_strSection, "Dither", initial.bDither) != 0);
}

void CExportDialog::SaveOptions()
{
    const ExportOptions options = Options();
    m_settings.WriteInt(c_strSection, "Format", FormatRow());
    m_settings.WriteInt(c_strSection, "Quality", options.nQuality);
    m_settings.WriteInt(c_strSection, "Lossless", options.bLossless);
    m_settings.WriteInt(c_strSection, "Palette", options.bPalette);
    m_settings.WriteInt(c_strSection, "Compression", options.nPacking);
    m_settings.WriteInt(c_strSection, "Dither", options.bDither);
}

void CExportDialog::Suggest(const std::string& strTitle)
{
    const QString strStem = QFileInfo(QString::fromStdString(strTitle)).completeBaseName();
    if (!strStem.isEmpty())
        SetName(QString(strStem + u'.' + ExtensionsOf(Format()).first()).toStdString());
}

int CExportDialog::FormatRow() const
{
    const int nOfName = m_bFormatTyped ? -1 : ExportFormatOfPath(Path());
    return nOfName >= 0 ? nOfName : FilterRow();
}

const ExportFormat& CExportDialog::Format() const
{
    return ExportFormats()[static_cast<std::size_t>(FormatRow())];
}

ExportOptions CExportDialog::Options() const
{
    return {static_cast<int>(m_pQuality->GetValue()), m_pLossless->isChecked(), m_pPalette->isChecked(),
            m_pCompression->currentIndex(), m_pDither->isChecked()};
}

std::filesystem::path CExportDialog::Target() const
{
    return QFile::encodeName(CompleteName(QFile::decodeName(Path().c_str()))).toStdString();
}

QString CExportDialog::CompleteName(const QString& strPath) const
{
    if (QFileInfo(strPath).fileName().contains(u'.'))
        return strPath;
    return strPath + u'.' + ExtensionsOf(Format()).first();
}

void CExportDialog::FormatChosen()
{
    // The name in the box follows the format, so that the two never say different things.
    if (auto* pName = Browser().findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
        const QString strName = pName->text();
        if (ExportFormatOfPath(strName.toStdString()) >= 0) {
            const ExportFormat& format = ExportFormats()[static_cast<std::size_t>(FilterRow())];
            pName->setText(strName.left(strName.lastIndexOf(u'.') + 1) + ExtensionsOf(format).first());
        }
    }
    EnableOptions();
}

void CExportDialog::EnableOptions()
{
    const unsigned nOptions = Format().nOptions;
    m_pLossless->setEnabled(nOptions & EXPORT_LOSSLESS);
    const bool bLossless = m_pLossless->isEnabled() && m_pLossless->isChecked();
    m_pQuality->setEnabled((nOptions & EXPORT_QUALITY) && !bLossless);
    m_pQualitySlider->setEnabled(m_pQuality->isEnabled());
    m_pPalette->setEnabled(nOptions & EXPORT_PALETTE);
    m_pCompression->setEnabled(nOptions & EXPORT_PACKING);
    m_pDither->setEnabled(nOptions & EXPORT_DITHER);
}

std::optional<QString> CExportDialog::SetKey(const QString& strKey, const QString& strValue)
{
    if (strKey == u"Format") {
        bool bNumber = false;
        int nRow = strValue.toInt(&bNumber);
        if (!bNumber)
            nRow = ExportFormatOfPath(QString(QStringLiteral("x.") + strValue).toStdString());
        if (nRow < 0 || nRow >= static_cast<int>(ExportFormats().size()))
            return QStringLiteral("there is no format \"%1\"").arg(strValue);
        m_bFormatTyped = true;
        SetFilterRow(nRow);
        EnableOptions();
        return {};
    }
    const std::optional<QString> error = CFileDialogFrame::SetKey(strKey, strValue);
    if (strKey == u"Path" || strKey == u"Filter")
        EnableOptions();
    return error;
}

void CExportDialog::accept()
{
    CFileDialogFrame::accept();
    if (result() == Accepted)
        SaveOptions();
}

bool RunExport(CProfile& profile, const CPaintDoc& doc, QWidget* pParent)
{
    if (!doc.m_pImage)
        return false;
    CExportDialog dialog(profile, pParent);
    dialog.Suggest(doc.GetTitle());
    if (dialog.DoModal() != QDialog::Accepted)
        return false;

    const CWaitCursor wait;
    const std::filesystem::path path = dialog.Target();
    Bytes bytes;
    const int nError = dialog.Format().encode(*doc.m_pImage, dialog.Options(), bytes);
    std::optional<std::string> error;
    if (nError == IMG_SUCCESS)
        error = WriteFileDurably(path, bytes);
    else
        error = std::to_string(nError);
    if (error) {
        SayMessage(std::string(StringText(IDS_EXPORT_FAILED)) + *error);
        return false;
    }
    Messages().StatusText(std::string(StringText(IDS_EXPORT_DONE)) + path.string());
    return true;
}

} // namespace kestrune
