#include "ui/Theme.h"

#include "ui/Style.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>

namespace kestrune {

namespace {

constexpr char c_szService[] = "org.freedesktop.portal.Desktop";
constexpr char c_szPath[] = "/org/freedesktop/portal/desktop";
constexpr char c_szInterface[] = "org.freedesktop.portal.Settings";
constexpr char c_szGroup[] = "org.freedesktop.appearance";
constexpr char c_szKey[] = "color-scheme";

/// Every grey of the theme, by its one level.
struct Greys {
    int window, base, alternate, button, text, quiet, disabled, line, light, dark, workspace;
};
constexpr Greys c_light{240, 255, 246, 236, 26, 96, 150, 200, 255, 160, 171};
constexpr Greys c_dark{50, 36, 42, 60, 226, 160, 118, 28, 74, 22, 30};

ThemeKind g_kind = ThemeKind::Light;

const Greys& Current()
{
    return g_kind == ThemeKind::Dark ? c_dark : c_light;
}

QColor Grey(int nLevel)
{
    return QColor(nLevel, nLevel, nLevel);
}

} // namespace

ThemeKind DesktopTheme()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < 128 ? ThemeKind::Dark : ThemeKind::Light;
}

void ApplyTheme(QApplication& app, ThemeKind kind)
{
    g_kind = kind;
    const Greys& grey = Current();
    if (!qobject_cast<CStyle*>(app.style()))
        app.setStyle(new CStyle);

    QPalette palette;
    palette.setColor(QPalette::Window, Grey(grey.window));
    palette.setColor(QPalette::Base, Grey(grey.base));
    palette.setColor(QPalette::AlternateBase, Grey(grey.alternate));
    palette.setColor(QPalette::Button, Grey(grey.button));
    palette.setColor(QPalette::ToolTipBase, Grey(grey.base));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, Grey(grey.text));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, Grey(grey.disabled));
    palette.setColor(QPalette::PlaceholderText, Grey(grey.quiet));
    palette.setColor(QPalette::BrightText, Grey(255));
    palette.setColor(QPalette::Light, Grey(grey.light));
    palette.setColor(QPalette::Midlight, Grey((grey.light + grey.button) / 2));
    palette.setColor(QPalette::Mid, Grey(grey.line));
    palette.setColor(QPalette::Dark, Grey(grey.dark));
    palette.setColor(QPalette::Shadow, Grey(grey.dark / 2));
    palette.setColor(QPalette::Highlight, ThemeAccent());
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Grey(grey.line));
    palette.setColor(QPalette::HighlightedText, Grey(255));
    palette.setColor(QPalette::Link, ThemeAccent());
    palette.setColor(QPalette::LinkVisited, ThemeAccent());
    app.setPalette(palette);
}

ThemeKind CurrentTheme()
{
    return g_kind;
}

QColor ThemeAccent()
{
    return g_kind == ThemeKind::Dark ? QColor(64, 140, 230) : QColor(30, 110, 205);
}

QColor ThemeWorkspace()
{
    return Grey(Current().workspace);
}

QColor ThemeLine()
{
    return Grey(Current().line);
}

QColor ThemeQuietText()
{
    return Grey(Current().quiet);
}

CThemeWatcher::CThemeWatcher(QObject* pParent)
    : QObject(pParent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qDBusRegisterMetaType<QDBusVariant>(); // until the toolkit has met the type it refuses a slot that takes one
    bus.connect(c_szService, c_szPath, c_szInterface, QStringLiteral("SettingChanged"), this,
                SLOT(OnSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage ask = QDBusMessage::createMethodCall(c_szService, c_szPath, c_szInterface, QStringLiteral("Read"));
    ask << QString::fromLatin1(c_szGroup) << QString::fromLatin1(c_szKey);
    auto* pWatcher = new QDBusPendingCallWatcher(bus.asyncCall(ask), this);
    connect(pWatcher, &QDBusPendingCallWatcher::finished, this, [this, pWatcher] {
        const QDBusPendingReply<QDBusVariant> reply = *pWatcher;
        pWatcher->deleteLater();
        if (reply.isError())
            return;
        QVariant value = reply.value().variant();
        if (value.canConvert<QDBusVariant>()) // older portals wrap the value twice
            value = value.value<QDBusVariant>().variant();
        Follow(value.toUInt());
    });
}

void CThemeWatcher::OnSettingChanged(const QString& strGroup, const QString& strKey, const QDBusVariant& value)
{
    if (strGroup == QLatin1String(c_szGroup) && strKey == QLatin1String(c_szKey))
        Follow(value.variant().toUInt());
}

void CThemeWatcher::Follow(unsigned nScheme)
{
    // 1 prefers dark, 2 prefers light, 0 has no preference.
    const ThemeKind kind = nScheme == 1 ? ThemeKind::Dark : nScheme == 2 ? ThemeKind::Light : g_kind;
    if (kind != g_kind)
        ApplyTheme(*qApp, kind);
}

} // namespace kestrune
