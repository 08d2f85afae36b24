#include "doc/gui/CanvasPreview.h"

#include "doc/Canvas.h"
#include "doc/ScreenScale.h"
#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>

namespace kestrune {

namespace {

constexpr double c_fThumbnailSide = 380; ///< twice the preview, for dense screens
constexpr double c_fCutOffOpacity = 0.3;

QImage Thumbnail(const LBitmapBase& bitmap)
{
    const double fZoom = std::min(1.0, c_fThumbnailSide / std::max(bitmap.GetWidth(), bitmap.GetHeight()));
    QImage image(std::max(1, static_cast<int>(bitmap.GetWidth() * fZoom)), std::max(1, static_cast<int>(bitmap.GetHeight() * fZoom)),
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    ScaleToScreen(bitmap, fZoom, {0, 0, image.width(), image.height()}, reinterpret_cast<std::uint32_t*>(image.bits()), image.bytesPerLine());
    return image;
}

} // namespace

CCanvasPreview::CCanvasPreview(const LBitmapBase& bitmap, COLORREF crRest, QWidget* pParent)
    : QWidget(pParent)
    , m_thumbnail(Thumbnail(bitmap))
    , m_sizePicture{bitmap.GetWidth(), bitmap.GetHeight()}
    , m_canvas(m_sizePicture)
    , m_crRest(RedOf(crRest), GreenOf(crRest), BlueOf(crRest))
{
    setFixedSize(sizeHint());
}

void CCanvasPreview::SetCanvas(CSize canvas, int nAnchor)
{
    m_canvas = canvas;
    m_nAnchor = nAnchor;
    update();
}

void CCanvasPreview::paintEvent(QPaintEvent*)
{
    const CPoint pt = CanvasOffset(m_sizePicture, m_canvas, m_nAnchor);
    const QRectF rcCanvas(0, 0, m_canvas.cx, m_canvas.cy), rcPicture(pt.x, pt.y, m_sizePicture.cx, m_sizePicture.cy);
    const QRectF rcAll = rcCanvas | rcPicture;
    const QRectF rcRoom = QRectF(rect()).adjusted(4, 4, -4, -4);
    const double fScale = std::min(rcRoom.width() / rcAll.width(), rcRoom.height() / rcAll.height());
    const auto Place = [&](const QRectF& rc) {
        const QPointF ptMiddle = rcRoom.center();
        return QRectF(ptMiddle.x() + (rc.x() - rcAll.center().x()) * fScale, ptMiddle.y() + (rc.y() - rcAll.center().y()) * fScale,
                      rc.width() * fScale, rc.height() * fScale);
    };
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(rect(), ThemeWorkspace());
    painter.setOpacity(c_fCutOffOpacity);
    painter.drawImage(Place(rcPicture), m_thumbnail);
    painter.setOpacity(1);
    painter.fillRect(Place(rcCanvas), m_crRest);
    painter.save();
    painter.setClipRect(Place(rcCanvas));
    painter.drawImage(Place(rcPicture), m_thumbnail);
    painter.restore();
    // A dark line with a light one around it stands out on every colour.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(255, 255, 255, 200), 3));
    painter.drawRect(Place(rcCanvas));
    painter.setPen(QPen(QColor(60, 60, 60), 1));
    painter.drawRect(Place(rcCanvas));
}

} // namespace kestrune
