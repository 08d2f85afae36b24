#include "ui/SvgIconEngine.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <utility>

namespace kestrune {
namespace {

// The two colours that every drawing is written in.
constexpr char c_szInk[] = "#3a3a3a";
constexpr char c_szAccent[] = "#1a73e8";

// How much of the ink is left in a disabled drawing, in percent.
constexpr int c_nDisabledInk = 38;

struct Inks {
    QColor crInk;
    QColor crAccent;
};

QColor Mix(const QColor& cr, const QColor& crGround, int nPercent)
{
    const auto channel = [&](int a, int b) { return (a * nPercent + b * (100 - nPercent)) / 100; };
    return {channel(cr.red(), crGround.red()), channel(cr.green(), crGround.green()), channel(cr.blue(), crGround.blue())};
}

Inks InksOf(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    const QColor crText = palette.color(QPalette::Active, QPalette::WindowText);
    switch (mode) {
    case QIcon::Disabled: {
        const QColor crFaint = Mix(crText, palette.color(QPalette::Active, QPalette::Window), c_nDisabledInk);
        return {crFaint, crFaint};
    }
    case QIcon::Selected: {
        const QColor cr = palette.color(QPalette::Active, QPalette::HighlightedText);
        return {cr, cr};
    }
    default:
        return {crText, palette.color(QPalette::Active, QPalette::Highlight)};
    }
}

/// The drawing in these colours, as large as fits into `size` device pixels and centred there.
QPixmap Render(const QString& strPath, const QSize& size, const Inks& inks)
{
    QFile file(strPath);
    if (size.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray svg = file.readAll();
    // Through marks no colour contains, so that an ink equal to the accent's literal is not replaced twice.
    svg.replace(c_szInk, "@1").replace(c_szAccent, "@2");
    svg.replace("@1", inks.crInk.name().toLatin1()).replace("@2", inks.crAccent.name().toLatin1());
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return {};
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    const QSizeF fit = QSizeF(renderer.defaultSize()).scaled(size, Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(QPointF(qRound((size.width() - fit.width()) / 2), qRound((size.height() - fit.height()) / 2)), fit));
    return pixmap;
}

} // namespace

CSvgIconEngine::CSvgIconEngine(QString strPath)
    : m_strPath(std::move(strPath))
{
}

void CSvgIconEngine::paint(QPainter* pPainter, const QRect& rc, QIcon::Mode mode, QIcon::State state)
{
    const qreal fScale = pPainter->device()->devicePixelRatio();
    pPainter->drawPixmap(rc, scaledPixmap((QSizeF(rc.size()) * fScale).toSize(), mode, state, fScale));
}

QPixmap CSvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1.0);
}

QPixmap CSvgIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal fScale)
{
    const Inks inks = InksOf(mode);
    const QString strKey = QStringLiteral("kestrune%1|%2x%3|%4%5|%6")
                               .arg(m_strPath)
                               .arg(size.width())
                               .arg(size.height())
                               .arg(inks.crInk.name(), inks.crAccent.name())
                               .arg(fScale);
    QPixmap pixmap;
    if (QPixmapCache::find(strKey, &pixmap))
        return pixmap;
    pixmap = Render(m_strPath, size, inks);
    pixmap.setDevicePixelRatio(fScale);
    QPixmapCache::insert(strKey, pixmap);
    return pixmap;
}

QSize CSvgIconEngine::actualSize(const QSize& size, QIcon::Mode, QIcon::State)
{
    return size;
}

QString CSvgIconEngine::key() const
{
    return QStringLiteral("kestrune-svg");
}

QIconEngine* CSvgIconEngine::clone() const
{
    return new CSvgIconEngine(m_strPath);
}

bool CSvgIconEngine::isNull()
{
    return !QFile::exists(m_strPath);
}

} // namespace kestrune
