#include "ui/SliderSkin.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace kestrune {

namespace {

constexpr int c_nTrackHeight = 4;

QColor Blend(const QColor& a, const QColor& b, double f)
{
    return QColor::fromRgbF(float(a.redF() * (1 - f) + b.redF() * f), float(a.greenF() * (1 - f) + b.greenF() * f),
                            float(a.blueF() * (1 - f) + b.blueF() * f));
}

QPen RimPen(const QPalette& palette, HandleState state)
{
    const QColor ink = palette.color(state == HandleState::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::WindowText);
    const bool bAccent = state == HandleState::Active || state == HandleState::Hot;
    return {bAccent ? palette.color(QPalette::Highlight) : Blend(palette.color(QPalette::Window), ink, 0.6), 1.2};
}

} // namespace

void DrawSliderTrack(QPainter& painter, const QPalette& palette, const QRect& rc, int x0, int x1)
{
    const QRectF track(rc.left(), rc.center().y() - c_nTrackHeight / 2.0 + 0.5, rc.width(), c_nTrackHeight);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.25));
    painter.drawRoundedRect(track, 2, 2);
    if (x1 > x0) {
        painter.setBrush(palette.color(QPalette::Highlight));
        painter.drawRoundedRect(QRectF(x0, track.top(), x1 - x0, track.height()), 2, 2);
    }
    painter.restore();
}

void DrawSliderHandle(QPainter& painter, const QPalette& palette, QPoint tip, const QColor& fill, HandleState state)
{
    QPainterPath path;
    path.moveTo(0, 0);
    path.lineTo(4.5, 5);
    path.lineTo(4.5, 11);
    path.lineTo(-4.5, 11);
    path.lineTo(-4.5, 5);
    path.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(tip.x() + 0.5, tip.y() + 0.5);
    QPen pen = RimPen(palette, state);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawPath(path);
    painter.restore();
}

void DrawSliderThumb(QPainter& painter, const QPalette& palette, QPoint centre, HandleState state)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(RimPen(palette, state));
    painter.setBrush(palette.color(QPalette::Button));
    painter.drawEllipse(QPointF(centre.x() + 0.5, centre.y() + 0.5), 6, 6);
    painter.restore();
}

void DrawSliderFocus(QPainter& painter, const QPalette& palette, const QRect& rc)
{
    painter.save();
    painter.setPen(QPen(palette.color(QPalette::Highlight), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rc.adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace kestrune
