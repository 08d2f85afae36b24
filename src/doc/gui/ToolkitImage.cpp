#include "doc/gui/ToolkitImage.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {
int DotsPerMeter(int nDotsPerInch)
{
    return static_cast<int>(std::lround(nDotsPerInch / 0.0254));
}
} // namespace

QImage ToToolkitImage(const LBitmapBase& bitmap)
{
    const bool bIndexed = bitmap.GetBitsPerPixel() <= 8;
    QImage image(bitmap.GetWidth(), bitmap.GetHeight(), bIndexed ? QImage::Format_Indexed8 : QImage::Format_BGR888);
    if (image.isNull())
        return image;
    if (bIndexed) {
        QList<QRgb> colors;
        for (const RGBQUAD& entry : bitmap.Palette())
            colors << qRgb(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
        image.setColorTable(colors);
    }
    for (int y = 0; y < image.height(); y++)
        std::copy_n(bitmap.Row(y), bitmap.GetRowBytes(), image.scanLine(y));
    if (bitmap.GetXResolution() > 0 && bitmap.GetYResolution() > 0) {
        image.setDotsPerMeterX(DotsPerMeter(bitmap.GetXResolution()));
        image.setDotsPerMeterY(DotsPerMeter(bitmap.GetYResolution()));
    }
    return image;
}

} // namespace kestrune
