#include "tools/PaintTool.h"
#include "view/LPaint.h"
#include "view/PaintView.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>
#include <utility>
#include <vector>

namespace kestrune {

namespace {

constexpr int c_nShade = 110;     ///< how dark the overlay's shades are, of 255
constexpr int c_nRim = 120;       ///< of the rim around a shape's line, 0..255
constexpr int c_nRimWidth = 1;    ///< on each side
constexpr int c_nMostShapePixels = 1 << 20; ///< of a shape that is kept as an image
constexpr int c_nHandleReach = 1; ///< the pen around what the overlay lists
constexpr int c_nMostRects = 24;  ///< a region of more pieces is drawn as a whole

/// Paints in pixels of the device, with the corner of the widget on a whole one, whatever the screen scale.
void UseDevicePixels(QPainter& painter)
{
    const QTransform device = painter.deviceTransform();
    painter.setWorldTransform(QTransform::fromTranslate(std::round(device.dx()), std::round(device.dy())) * device.inverted());
}

} // namespace

void CPaintView::paintEvent(QPaintEvent* pEvent)
{
    QPainter painter(viewport());
    UseDevicePixels(painter);
    const double fScale = ClientScale();
    const auto toClient = [&](const QRect& rc) {
        return CRect{static_cast<int>(std::floor(rc.left() * fScale)), static_cast<int>(std::floor(rc.top() * fScale)),
                     static_cast<int>(std::ceil((rc.right() + 1) * fScale)), static_cast<int>(std::ceil((rc.bottom() + 1) * fScale))};
    };
    const QRegion& region = pEvent->region();
    std::vector<CRect> dirty;
    if (region.rectCount() > c_nMostRects && !m_bOutlineStep)
        dirty.push_back(toClient(region.boundingRect()));
    else
        for (const QRect& rc : region)
            dirty.push_back(toClient(rc));
    // A step of the outline leaves what is below it as it is. So the shades, which would grow darker each time, lie below it too.
    if (!m_bOutlineStep) {
        FollowOutline();
        for (const CRect& rc : dirty)
            DrawRect(painter, rc);
        for (const CRect& rc : m_overlay.aShades)
            painter.fillRect(rc.left, rc.top, rc.Width(), rc.Height(), QColor(0, 0, 0, c_nShade));
    }
    for (const CRect& rc : dirty)
        DrawOutline(painter, rc);
    DrawOverlay(painter);
}

/// Draws one dirty rectangle: the picture's part of it and the four strips around, none twice, so nothing flickers.
void CPaintView::DrawRect(QPainter& painter, const CRect& rcDirty)
{
    const CRect rcPicture = GetPictureRect();
    const CRect rcIn = Intersect(rcDirty, rcPicture);
    const CPoint scroll = GetScrollPosition();
    painter.setBrushOrigin(-(scroll.x % 8), -(scroll.y % 8)); // the stripes move with the picture
    const auto back = [&](int x1, int y1, int x2, int y2) {
        if (x2 > x1 && y2 > y1)
            painter.fillRect(x1, y1, x2 - x1, y2 - y1, m_BackBrush);
    };
    if (rcIn.IsEmpty()) {
        back(rcDirty.left, rcDirty.top, rcDirty.right, rcDirty.bottom);
        return;
    }
    back(rcDirty.left, rcDirty.top, rcDirty.right, rcIn.top);
    back(rcDirty.left, rcIn.top, rcIn.left, rcIn.bottom);
    back(rcIn.right, rcIn.top, rcDirty.right, rcIn.bottom);
    back(rcDirty.left, rcIn.bottom, rcDirty.right, rcDirty.bottom);

    const LBitmapBase& bitmap = GetImage()->m_Bitmap;
    LPaint paint(bitmap, painter);
    paint.SetSrcRect({0, 0, bitmap.GetWidth(), bitmap.GetHeight()});
    paint.SetDstRect(rcPicture);
    paint.SetClipDstRect(rcDirty);
    paint.SetZoom(m_fZoom);
    paint.PaintDC();
}

/// The overlay's lines and handles: white lines with black dashes over them are seen on every picture.
void CPaintView::DrawOverlay(QPainter& painter)
{
    if (m_overlay.IsEmpty())
        return;
    QPen dashes(Qt::black, 1);
    dashes.setDashPattern({4, 4});
    for (const QPen& pen : {QPen(Qt::white, 1), dashes}) {
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        for (const ToolOverlay::Line& line : m_overlay.aLines)
            painter.drawLine(line.a.x, line.a.y, line.b.x, line.b.y);
        for (const CRect& rc : m_overlay.aEllipses)
            painter.drawEllipse(rc.left, rc.top, rc.Width() - 1, rc.Height() - 1);
    }
    DrawShape(painter);
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::white);
    for (const CRect& rc : m_overlay.aHandles)
        painter.drawRect(rc.left, rc.top, rc.Width() - 1, rc.Height() - 1);
}

/// A shape is of many short lines, on which dashes would not be seen: a white line with a dark rim.
void CPaintView::DrawShapeLines(QPainter& painter, CPoint pt) const
{
    std::vector<QLine> aLines;
    aLines.reserve(m_overlay.pShape->aLines.size());
    for (const ToolOverlay::Line& line : m_overlay.pShape->aLines)
        aLines.emplace_back(line.a.x, line.a.y, line.b.x, line.b.y);
    const auto draw = [&](int dx, int dy) {
        painter.translate(pt.x + dx, pt.y + dy);
        painter.drawLines(aLines.data(), static_cast<int>(aLines.size()));
        painter.translate(-pt.x - dx, -pt.y - dy);
    };
    painter.setPen(QPen(QColor(0, 0, 0, c_nRim), 1));
    draw(-1, 0);
    draw(1, 0);
    draw(0, -1);
    draw(0, 1);
    painter.setPen(QPen(Qt::white, 1));
    draw(0, 0);
}

/// A shape comes with every movement of the mouse and stays the same, so one of a usual size is drawn once and kept as an image:
/// its hundreds of lines take longer than the dab beneath them.
void CPaintView::DrawShape(QPainter& painter)
{
    if (!m_overlay.pShape)
        return;
    const CRect& rc = m_overlay.pShape->rc;
    if (static_cast<std::int64_t>(rc.Width()) * rc.Height() > c_nMostShapePixels) {
        DrawShapeLines(painter, m_overlay.ptShape);
        return;
    }
    if (m_pDrawnShape != m_overlay.pShape) {
        m_pDrawnShape = m_overlay.pShape;
        m_shapeImage = QImage(rc.right + 2 * c_nRimWidth, rc.bottom + 2 * c_nRimWidth, QImage::Format_ARGB32_Premultiplied);
        m_shapeImage.fill(Qt::transparent);
        QPainter shape(&m_shapeImage);
        DrawShapeLines(shape, {c_nRimWidth, c_nRimWidth});
    }
    painter.drawImage(QPoint(m_overlay.ptShape.x - c_nRimWidth, m_overlay.ptShape.y - c_nRimWidth), m_shapeImage);
}

/// The viewport's rectangle, in the toolkit's units, that holds all of a rectangle of client pixels.
QRect CPaintView::ToViewport(const CRect& rc) const
{
    const double fScale = ClientScale();
    const QPoint a(static_cast<int>(std::floor(rc.left / fScale)), static_cast<int>(std::floor(rc.top / fScale)));
    const QPoint b(static_cast<int>(std::ceil(rc.right / fScale)), static_cast<int>(std::ceil(rc.bottom / fScale)));
    return {a, b - QPoint(1, 1)};
}

QRegion CPaintView::OverlayRegion() const
{
    QRegion region;
    const auto add = [&](CRect rc) {
        rc.Normalize();
        region += ToViewport({rc.left - c_nHandleReach, rc.top - c_nHandleReach, rc.right + c_nHandleReach + 1, rc.bottom + c_nHandleReach + 1});
    };
    for (const ToolOverlay::Line& line : m_overlay.aLines)
        add({line.a.x, line.a.y, line.b.x, line.b.y});
    for (const CRect& rc : m_overlay.aHandles)
        add(rc);
    for (const CRect& rc : m_overlay.aEllipses)
        add(rc);
    if (m_overlay.pShape) {
        CRect rc = m_overlay.pShape->rc;
        rc.Offset(m_overlay.ptShape.x, m_overlay.ptShape.y);
        add(rc);
    }
    return region;
}

QRegion CPaintView::ShadeRegion() const
{
    const CSize client = GetClientSize();
    QRegion region;
    for (const CRect& rc : m_overlay.aShades)
        region += ToViewport(Intersect(rc, {0, 0, client.cx + 1, client.cy + 1}));
    return region;
}

/// Repaints the places of both overlays; of the shades, which are large, just where they differ.
void CPaintView::SetOverlay(ToolOverlay overlay)
{
    QRegion region = OverlayRegion();
    const QRegion shade = ShadeRegion();
    m_overlay = std::move(overlay);
    region += OverlayRegion();
    region += shade.xored(ShadeRegion());
    if (!region.isEmpty())
        viewport()->update(region);
}

void CPaintView::RepaintRect(const CRect& rcImage)
{
    const CPoint origin = GetImageOrigin(), scroll = GetScrollPosition();
    const int dx = origin.x - scroll.x, dy = origin.y - scroll.y;
    // One pixel more on each side: below 100 % a pixel of the screen mixes neighbours.
    const CRect rc{static_cast<int>(std::floor(rcImage.left * static_cast<double>(m_fZoom))) + dx - 1,
                   static_cast<int>(std::floor(rcImage.top * static_cast<double>(m_fZoom))) + dy - 1,
                   static_cast<int>(std::ceil(rcImage.right * static_cast<double>(m_fZoom))) + dx + 1,
                   static_cast<int>(std::ceil(rcImage.bottom * static_cast<double>(m_fZoom))) + dy + 1};
    const CSize client = GetClientSize();
    const CRect rcSeen = Intersect(rc, {0, 0, client.cx + 1, client.cy + 1});
    if (!rcSeen.IsEmpty())
        viewport()->update(ToViewport(rcSeen));
}

void CPaintView::RepaintAll()
{
    viewport()->update();
    RefreshOverlay();
}

/// What the tool has on the overlay may speak of a picture, zoom or place that has changed. Not during a drag: the tool does it then.
void CPaintView::RefreshOverlay()
{
    if (g_pActiveToolView != this || m_bCapture || !GetImage())
        return;
    if (CPaintTool* pTool = EventTool())
        pTool->OnDrawOverlay(*this);
}

/// Moves what is on the screen and repaints the strip that came into sight. What a tool has drawn on top stays where it was in
/// the client area, so its old and new places are repainted as well.
void CPaintView::scrollContentsBy(int dx, int dy)
{
    const double fScale = ClientScale();
    const int nScale = static_cast<int>(fScale);
    if (nScale == fScale && dx % nScale == 0 && dy % nScale == 0) {
        viewport()->scroll(dx / nScale, dy / nScale);
        const QRegion overlay = OverlayRegion();
        if (!overlay.isEmpty())
            viewport()->update(overlay | overlay.translated(dx / nScale, dy / nScale));
    } else {
        viewport()->update(); // the pixels do not fall on pixels
    }
    if (CPaintTool* pTool = EventTool())
        pTool->OnDrawOverlay(*this);
    m_host.RefreshRulers(*this);
}

} // namespace kestrune
