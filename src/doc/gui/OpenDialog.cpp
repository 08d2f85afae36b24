#include "doc/gui/OpenDialog.h"

#include "base/StringTable.h"
#include "doc/files/ImageFile.h"
#include "doc/gui/FileInfoDialog.h"
#include "ui/DialogRows.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace kestrune {

namespace {

constexpr int c_nPreviewSide = 220;  ///< device-independent pixels
constexpr int c_nSettleTime = 120;   ///< ms that the selection rests before its file is read
constexpr qint64 c_nMaxPreviewBytes = qint64{512} << 20;

/// All files, then a row for each format in the order of the format table.
QList<FileFilter> OpenFilters()
{
    QList<FileFilter> filters{{TextOf(IDS_FILTER_ALL) + QStringLiteral(" (*.*)"), QStringLiteral("*")}};
    for (const ImageFormatRow& row : ImageFormats()) {
        const auto text = [](std::string_view view) { return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size())); };
        QStringList patterns;
        for (const QString& strExtension : text(row.extensions).split(u' '))
            patterns << QStringLiteral("*.") + strExtension;
        filters << FileFilter{text(row.description) + QStringLiteral(" (") + patterns.first().toUpper() + u')', patterns.join(u' ')};
    }
    return filters;
}

} // namespace

CDlgImageFile::CDlgImageFile(CProfile& profile, QWidget* pParent)
    : CFileDialogFrame(profile, OpenFiles, TextOf(IDS_OPEN_BUTTON), pParent)
    , m_loader(QSize(c_nPreviewSide, c_nPreviewSide) * devicePixelRatioF())
{
    setWindowTitle(TextOf(IDS_OPEN_TITLE));
    SetFilters(OpenFilters());
    SetPane(BuildPane());
    m_timerSettle.setSingleShot(true);
    m_timerSettle.setInterval(c_nSettleTime);
    connect(&Browser(), &QFileDialog::currentChanged, this, &CDlgImageFile::SelectionChanged);
    connect(&m_timerSettle, &QTimer::timeout, this, &CDlgImageFile::LoadSelected);
    connect(&m_loader, &CPreviewLoader::Ready, this, &CDlgImageFile::ShowResult);
    SelectionChanged({});
}

QWidget* CDlgImageFile::BuildPane()
{
    auto* pPane = new QWidget;
    auto* pColumn = new QVBoxLayout(pPane);
    pColumn->setContentsMargins(0, 0, 0, 0);
    pColumn->setSpacing(c_nRowGap);
    m_pPicture = new QLabel;
    m_pPicture->setFixedSize(c_nPreviewSide + 2, c_nPreviewSide + 2); // the frame's line around it
    m_pPicture->setFrameShape(QFrame::StyledPanel);
    m_pPicture->setAlignment(Qt::AlignCenter);
    m_pPicture->setWordWrap(true);
    m_pPicture->setTextFormat(Qt::PlainText);
    m_pPicture->setAccessibleName(TextOf(IDS_PREVIEW_NAME));
    m_pCaption = new QLabel;
    m_pCaption->setTextFormat(Qt::PlainText);
    m_pCaption->setAlignment(Qt::AlignHCenter);
    m_pInformation = new QPushButton(TextOf(IDS_INFO_BUTTON));
    m_pInformation->setAutoDefault(false);
    m_pInformation->setToolTip(TextOf(IDS_INFO_BUTTON_TIP));
    connect(m_pInformation, &QPushButton::clicked, this, &CDlgImageFile::ShowInformation);
    pColumn->addWidget(m_pPicture);
    pColumn->addWidget(m_pCaption);
    pColumn->addWidget(m_pInformation, 0, Qt::AlignHCenter);
    pColumn->addStretch(1);
    return pPane;
}

void CDlgImageFile::SelectionChanged(const QString& strPath)
{
    m_loader.Cancel();
    m_result.reset();
    m_pInformation->setEnabled(false);
    m_pCaption->clear();
    m_strSelected = QFileInfo(strPath).isFile() ? strPath : QString();
    if (m_strSelected.isEmpty()) {
        m_timerSettle.stop();
        ShowText(IDS_PREVIEW_NONE);
        return;
    }
    m_timerSettle.start(); // running through a list with an arrow key reads nothing until it rests
}

void CDlgImageFile::LoadSelected()
{
    if (QFileInfo(m_strSelected).size() > c_nMaxPreviewBytes) {
        ShowText(IDS_PREVIEW_TOO_BIG);
        return;
    }
    ShowText(IDS_PREVIEW_BUSY);
    m_loader.Request(m_strSelected);
}

void CDlgImageFile::ShowResult(const PreviewResult& result)
{
    if (result.strPath != m_strSelected)
        return;
    if (result.nError != IMG_SUCCESS || result.image.isNull()) {
        ShowText(IDS_PREVIEW_FAILED);
        return;
    }
    m_result = result;
    QPixmap pixmap = QPixmap::fromImage(result.image);
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    m_pPicture->setPixmap(pixmap);
    m_pCaption->setText(QStringLiteral("%1 × %2").arg(result.nWidth).arg(result.nHeight));
    m_pInformation->setEnabled(true);
}

void CDlgImageFile::ShowInformation()
{
    if (m_result)
        CFileInfoDialog(*m_result, this).DoModal();
}

void CDlgImageFile::ShowText(int nTextId)
{
    m_pPicture->setText(TextOf(nTextId));
}

} // namespace kestrune
