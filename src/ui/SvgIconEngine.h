#pragma once

#include <QIconEngine>
#include <QString>

namespace kestrune {

/// Draws one of the program's SVG drawings at any size and screen scale. The drawing's ink becomes the theme's text colour,
/// its accent the theme's highlight; both are asked for at each paint, so a change of theme needs no new icon.
class CSvgIconEngine : public QIconEngine {
public:
    /// `strPath` is a resource path; the drawing is read when first painted.
    explicit CSvgIconEngine(QString strPath);

    void paint(QPainter* pPainter, const QRect& rc, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    /// `size` is in device pixels; the result carries `fScale`.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal fScale) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QString key() const override;
    QIconEngine* clone() const override;
    bool isNull() override;

private:
    QString m_strPath;
};

} // namespace kestrune
