#include "acquire/gui/ImageMimeData.h"

#include "acquire/ClipboardPicture.h"

#include <QImage>

#include <cstring>

namespace kestrune {

namespace {

constexpr const char* c_pszQtImage = "application/x-qt-image"; // the toolkit's own name, which becomes the system's bitmap

constexpr double c_fInchPerMeter = 39.3700787;

} // namespace

CImageMimeData::CImageMimeData(const LBitmapBase& bitmap)
{
    m_bitmap.Copy(bitmap);
}

QStringList CImageMimeData::formats() const
{
    QStringList list;
    for (const ClipboardFormat& row : ClipboardFormats())
        if (row.write)
            list << QString::fromUtf8(row.mimeType.data(), static_cast<qsizetype>(row.mimeType.size()));
    return list << QLatin1String(c_pszQtImage);
}

bool CImageMimeData::hasFormat(const QString& strType) const
{
    return formats().contains(strType);
}

QVariant CImageMimeData::retrieveData(const QString& strType, QMetaType) const
{
    if (strType == QLatin1String(c_pszQtImage))
        return ToQImage(m_bitmap);
    const ClipboardFormat* pFormat = FindClipboardFormat(strType.toStdString());
    if (!pFormat || !pFormat->write)
        return {};
    const std::vector<std::uint8_t> bytes = EncodeClipboard(m_bitmap, *pFormat);
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

QImage ToQImage(const LBitmapBase& bitmap)
{
    QImage image(bitmap.GetWidth(), bitmap.GetHeight(), QImage::Format_BGR888);
    if (image.isNull())
        return image;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        std::memcpy(image.scanLine(y), bitmap.Row(y), bitmap.GetRowBytes());
    if (bitmap.GetXResolution() > 0 && bitmap.GetYResolution() > 0) {
        image.setDotsPerMeterX(qRound(bitmap.GetXResolution() * c_fInchPerMeter));
        image.setDotsPerMeterY(qRound(bitmap.GetYResolution() * c_fInchPerMeter));
    }
    return image;
}

} // namespace kestrune
