#include "ui/Style.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

namespace kestrune {
namespace {

double Contrast(const QColor& a, const QColor& b)
{
    const auto light = [](const QColor& color) {
        const auto linear = [](double f) { return f <= 0.04045 ? f / 12.92 : std::pow((f + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF()) + 0.05;
    };
    return std::max(light(a), light(b)) / std::min(light(a), light(b));
}

TEST(Theme, GreysAreNeutralAndTextsCanBeRead)
{
    for (const ThemeKind kind : {ThemeKind::Dark, ThemeKind::Light}) {
        ApplyTheme(*qApp, kind);
        EXPECT_TRUE(qobject_cast<CStyle*>(qApp->style()));
        const QPalette palette = qApp->palette();
        for (int nRole = 0; nRole < QPalette::NColorRoles; nRole++) {
            const auto role = static_cast<QPalette::ColorRole>(nRole);
            if (role == QPalette::Highlight || role == QPalette::Link || role == QPalette::LinkVisited)
                continue;
            for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                const QColor color = palette.color(group, role);
                EXPECT_TRUE(color.red() == color.green() && color.green() == color.blue()) << nRole;
            }
        }
        EXPECT_GT(Contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)), 7);
        EXPECT_GT(Contrast(palette.color(QPalette::Text), palette.color(QPalette::Base)), 7);
        EXPECT_GT(Contrast(ThemeQuietText(), palette.color(QPalette::Window)), 4.5);
        EXPECT_GT(Contrast(palette.color(QPalette::HighlightedText), ThemeAccent()), 3);
        EXPECT_GT(Contrast(ThemeAccent(), palette.color(QPalette::Window)), 3);
    }
}

/// Says on a bus of its own what a desktop says when its user chooses another look.
void SayScheme(QDBusConnection& portal, unsigned nScheme)
{
    QDBusMessage signal = QDBusMessage::createSignal("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
    signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
           << QVariant::fromValue(QDBusVariant(QVariant(nScheme)));
    ASSERT_TRUE(portal.send(signal));
}

// In a program of its own: the toolkit's first act on the bus must be the watcher's.
TEST(Theme, FollowsTheDesktopWhileTheProgramRuns)
{
    if (!qEnvironmentVariableIsSet("KESTRUNE_TEST_BUS")) {
        const QString strRun = QStandardPaths::findExecutable(QStringLiteral("dbus-run-session"));
        if (strRun.isEmpty())
            GTEST_SKIP() << "no bus here";
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KESTRUNE_TEST_BUS", "1");
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(strRun, {"--", QCoreApplication::applicationFilePath(), "--gtest_filter=Theme.FollowsTheDesktopWhileTheProgramRuns"});
        ASSERT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
        return;
    }
    ApplyTheme(*qApp, ThemeKind::Light);
    CThemeWatcher watcher;
    QDBusConnection portal = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
    ASSERT_TRUE(portal.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    QTest::qWait(100);
    SayScheme(portal, 1);
    EXPECT_TRUE(QTest::qWaitFor([] { return CurrentTheme() == ThemeKind::Dark; }, 5000));
    SayScheme(portal, 0); // no preference: as it is
    SayScheme(portal, 2);
    EXPECT_TRUE(QTest::qWaitFor([] { return CurrentTheme() == ThemeKind::Light; }, 5000));
}

} // namespace
} // namespace kestrune
