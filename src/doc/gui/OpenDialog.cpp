#include "doc/gui/OpenDialog.h"

#include "base/StringTable.h"
#include "doc/files/DecodedImage.h"
#include "doc/gui/FileInfoDialog.h"
#include "ui/DialogRows.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace kestrune {

namespace {

constexpr int c_nPreviewSide = 220;  ///< device-independent pixels
constexpr int c_nSettleTime = 120;   ///< ms that the selection rests before its file is read
constexpr qint64 c_nMaxPreviewBytes = qint64{512} << 20;

// The first row lets everything through. A pattern shown in capitals also stands for the other endings of its kind.
constexpr FileFilter c_aFilters[] = {
    {"모든 파일 (*.*)", "*"},
    {"윈도우 비트맵 (*.BMP)", "*.bmp"},
    {"클립보드 파일 (*.CLP)", "*.clp"},
    {"CUT 이미지 (*.CUT)", "*.cut"},
    {"장치 독립 비트맵 (*.DIB)", "*.dib"},
    {"여러 장 PCX (*.DCX)", "*.dcx"},
    {"EPS (*.EPS)", "*.eps"},
    {"GIF 이미지 (*.GIF)", "*.gif"},
    {"아이콘 (*.ICO)", "*.ico"},
    {"JPEG 이미지 (*.JPG)", "*.jpg *.jpeg *.jpe *.jfif"},
    {"PNTG 그림 (*.PNTG)", "*.pntg *.mac"},
    {"MSP 그림 (*.MSP)", "*.msp"},
    {"포토 CD (*.PCD)", "*.pcd"},
    {"PCX 이미지 (*.PCX)", "*.pcx"},
    {"PICT 이미지 (*.PICT)", "*.pict *.pct *.pic"},
    {"PNG 이미지 (*.PNG)", "*.png"},
    {"PSD 이미지 (*.PSD)", "*.psd"},
    {"SGI 이미지 (*.SGI)", "*.sgi *.rgb *.bw"},
    {"TGA 이미지 (*.TGA)", "*.tga"},
    {"TIFF 이미지 (*.TIF)", "*.tif *.tiff"},
    {"윈도우 메타파일 (*.WMF)", "*.wmf"},
    {"WPG 이미지 (*.WPG)", "*.wpg"},
    {"WebP 이미지 (*.WEBP)", "*.webp"},
    {"AVIF 이미지 (*.AVIF)", "*.avif"},
    {"HEIC 이미지 (*.HEIC)", "*.heic *.heif"},
    {"JPEG XL 이미지 (*.JXL)", "*.jxl"},
    {"SVG 그림 (*.SVG)", "*.svg *.svgz"},
};

} // namespace

CDlgImageFile::CDlgImageFile(CProfile& profile, QWidget* pParent)
    : CFileDialogFrame(profile, OpenFiles, TextOf(IDS_OPEN_BUTTON), pParent)
    , m_loader(QSize(c_nPreviewSide, c_nPreviewSide) * devicePixelRatioF())
{
    setWindowTitle(TextOf(IDS_OPEN_TITLE));
    SetFilters(c_aFilters);
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
