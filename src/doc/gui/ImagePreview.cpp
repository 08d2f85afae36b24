#include "doc/gui/ImagePreview.h"

#include "doc/Bitmap.h"
#include "doc/files/DecodedImage.h"
#include "doc/gui/ToolkitImage.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QThreadPool>

#include <new>

namespace kestrune {

namespace {

void FillIn(PreviewResult& result, QSize sizeLimit)
{
    LBitmapBase bitmap;
    bitmap.SetFileName(std::filesystem::path(QFile::encodeName(result.strPath).toStdString()));
    result.nError = bitmap.Load();
    if (result.nError != IMG_SUCCESS)
        return;
    result.nBitsPerPixel = bitmap.GetBitsPerPixel();
    result.nWidth = bitmap.GetWidth();
    result.nHeight = bitmap.GetHeight();
    result.nXResolution = bitmap.GetXResolution();
    result.nYResolution = bitmap.GetYResolution();
    bitmap.ColorRes(24, CRF_TRUECOLOR);
    const QSize size = QSize(result.nWidth, result.nHeight).scaled(sizeLimit, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (size.width() < result.nWidth) // a small picture stays as it is
        bitmap.Size(size.width(), size.height(), SIZE_AREA);
    result.image = ToToolkitImage(bitmap);
}

} // namespace

PreviewResult LoadPreview(const QString& strPath, QSize sizeLimit)
{
    PreviewResult result;
    result.strPath = strPath;
    try {
        FillIn(result, sizeLimit);
    } catch (const std::bad_alloc&) {
        result.nError = IMG_ERROR_MEMORY;
        result.image = {};
    }
    return result;
}

CPreviewLoader::CPreviewLoader(QSize sizeLimit, QObject* pParent)
    : QObject(pParent)
    , m_sizeLimit(sizeLimit)
{
}

CPreviewLoader::~CPreviewLoader() = default;

void CPreviewLoader::Request(const QString& strPath)
{
    m_strWanted = strPath;
    if (!m_bBusy)
        Start(strPath);
}

void CPreviewLoader::Cancel()
{
    m_strWanted.clear();
}

void CPreviewLoader::Start(const QString& strPath)
{
    m_bBusy = true;
    // The dialog may be gone before the decoder is done; the application is not, it waits for the pool's threads at its end.
    QThreadPool::globalInstance()->start([strPath, size = m_sizeLimit, pThis = QPointer<CPreviewLoader>(this)] {
        const PreviewResult result = LoadPreview(strPath, size);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [pThis, result] {
                if (pThis)
                    pThis->Finished(result);
            },
            Qt::QueuedConnection);
    });
}

void CPreviewLoader::Finished(const PreviewResult& result)
{
    m_bBusy = false;
    if (m_strWanted == result.strPath) {
        m_strWanted.clear();
        Q_EMIT Ready(result);
    } else if (!m_strWanted.isEmpty()) {
        Start(m_strWanted);
    }
}

} // namespace kestrune
