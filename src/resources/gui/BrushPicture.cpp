#include "resources/gui/BrushPicture.h"

#include "resources/BrushPrepare.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {
constexpr QColor c_crWidth(0, 200, 255);
constexpr int c_nWidthPixels = 9;
} // namespace

QImage BrushPicture(const std::vector<std::uint8_t>& mask, int nWidth, int nHeight, int nSide, double fScale)
{
    // On a fine screen the square has more pixels and shows more of the brush, at the size in which it lies on the paper.
    const int nPixels = static_cast<int>(std::lround(nSide * fScale));
    const std::vector<std::uint8_t> square = SampleBrush(mask, nWidth, nHeight, nPixels);
    QImage image(nPixels, nPixels, QImage::Format_Grayscale8);
    for (int y = 0; y < nPixels; y++)
        std::copy_n(square.data() + static_cast<std::ptrdiff_t>(y) * nPixels, nPixels, image.scanLine(y));
    image.setDevicePixelRatio(fScale);
    return image;
}

void DrawBrushWidth(QPainter& painter, const QRect& rc, int nWidth)
{
    painter.save();
    QFont font = painter.font();
    font.setPixelSize(c_nWidthPixels);
    painter.setFont(font);
    painter.setPen(c_crWidth);
    painter.drawText(rc, Qt::AlignRight | Qt::AlignBottom, QString::asprintf("%3d", nWidth));
    painter.restore();
}

} // namespace kestrune
