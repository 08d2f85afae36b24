#include "ui/Style.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QPalette>

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

} // namespace
} // namespace kestrune
