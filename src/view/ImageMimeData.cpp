#include "view/ImageMimeData.h"

#include <QBuffer>
#include <QImage>

#include <cstring>

namespace kestrune {

namespace {

constexpr const char* c_pszBmp = "image/bmp";
constexpr const char* c_pszPng = "image/png";
constexpr const char* c_pszQtImage = "application/x-qt-image"; // the toolkit's own name, which becomes the system's bitmap

constexpr double c_fInchPerMeter = 39.3700787;

} // namespace

CImageMimeData::CImageMimeData(const LBitmapBase& bitmap)
{
    m_bitmap.Copy(bitmap);
}

QStringList CImageMimeData::formats() const
{
    return {c_pszBmp, c_pszPng, c_pszQtImage};
}

bool CImageMimeData::hasFormat(const QString& strType) const
{
    return formats().contains(strType);
}

QVariant CImageMimeData::retrieveData(const QString& strType, QMetaType) const
{
    if (!hasFormat(strType))
        return {};
    const QImage image = ToQImage(m_bitmap);
    if (strType == c_pszQtImage)
        return image;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, strType == c_pszBmp ? "BMP" : "PNG");
    return bytes;
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
