#include "ui/Icons.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <gtest/gtest.h>

#include <functional>

namespace kestrune {
namespace {

QStringList DrawingsIn(const QString& strFolder)
{
    QStringList names;
    for (const QString& strFile : QDir(QStringLiteral(":/icons/") + strFolder).entryList({"*.svg"}, QDir::Files))
        names << strFolder + "/" + strFile.chopped(4);
    return names;
}

int CountPixels(const QImage& image, const std::function<bool(QRgb)>& matches)
{
    int nCount = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            nCount += matches(image.pixel(x, y)) ? 1 : 0;
    return nCount;
}

int CountColour(const QIcon& icon, QIcon::Mode mode, const QColor& cr)
{
    const QImage image = icon.pixmap(QSize(48, 48), 1.0, mode).toImage();
    return CountPixels(image, [&](QRgb rgb) { return rgb == cr.rgba(); });
}

class ThemeGuard {
public:
    ThemeGuard() : m_palette(QApplication::palette()) {}
    ~ThemeGuard() { QApplication::setPalette(m_palette); }
    static void Set(const QColor& crText, const QColor& crHighlight)
    {
        QPalette palette;
        palette.setColor(QPalette::WindowText, crText);
        palette.setColor(QPalette::Highlight, crHighlight);
        palette.setColor(QPalette::HighlightedText, QColor(1, 254, 3));
        QApplication::setPalette(palette);
    }

private:
    QPalette m_palette;
};

TEST(Icons, FollowTheThemeWhileTheyAreShown)
{
    ThemeGuard guard;
    const QColor crDark(20, 30, 40), crLight(230, 220, 210), crBlue(10, 20, 250), crRed(250, 20, 10);
    ThemeGuard::Set(crDark, crBlue);
    const QIcon icon = LoadIcon("commands/new");
    EXPECT_GT(CountColour(icon, QIcon::Normal, crDark), 50);
    EXPECT_GT(CountColour(icon, QIcon::Normal, crBlue), 20);

    ThemeGuard::Set(crLight, crRed);
    EXPECT_GT(CountColour(icon, QIcon::Normal, crLight), 50);
    EXPECT_GT(CountColour(icon, QIcon::Normal, crRed), 20);
    EXPECT_EQ(CountColour(icon, QIcon::Normal, crDark), 0);
    EXPECT_EQ(CountColour(icon, QIcon::Disabled, crLight), 0) << "disabled is fainter";
    EXPECT_EQ(CountColour(icon, QIcon::Disabled, crRed), 0) << "and has no accent";
    EXPECT_GT(CountColour(icon, QIcon::Selected, QColor(1, 254, 3)), 70);

    // An ink that is by chance the very accent of the files stays an ink.
    ThemeGuard::Set(QColor("#1a73e8"), crRed);
    EXPECT_GT(CountColour(LoadIcon("commands/save"), QIcon::Normal, QColor("#1a73e8")), 50);
    EXPECT_EQ(CountColour(LoadIcon("commands/save"), QIcon::Normal, crRed), 0);
}

TEST(Icons, AreSharpAtEveryScreenScale)
{
    for (const qreal fScale : {1.0, 1.25, 1.5, 2.0}) {
        const QPixmap pixmap = LoadIcon("tools/rect-select").pixmap(QSize(24, 24), fScale);
        EXPECT_EQ(pixmap.size(), (QSizeF(24, 24) * fScale).toSize()) << fScale;
        EXPECT_EQ(pixmap.devicePixelRatio(), fScale);
    }
    // At 16 pixels the lines lie on whole pixels: an upright square has no half tones.
    ThemeGuard guard;
    ThemeGuard::Set(Qt::black, Qt::black);
    const QImage image = LoadIcon("widgets/maximize").pixmap(QSize(16, 16), 1.0).toImage();
    EXPECT_GT(CountPixels(image, [](QRgb rgb) { return qAlpha(rgb) == 255; }), 27);
    EXPECT_LT(CountPixels(image, [](QRgb rgb) { return qAlpha(rgb) > 8 && qAlpha(rgb) < 200; }), 5) << "corners alone may be soft";
    // A history cell keeps its shape.
    EXPECT_EQ(LoadPixmapIcon("history/08", {23, 22}, 2).size(), QSize(46, 44));
}

TEST(Icons, UnknownNamesGiveNothing)
{
    EXPECT_TRUE(LoadIcon("commands/no-such-thing").isNull());
    EXPECT_TRUE(LoadPixmapIcon("", {16, 16}, 1).isNull());
    EXPECT_EQ(LoadCursor("no-such-thing").shape(), Qt::ArrowCursor);
    EXPECT_EQ(LoadCursor(0).shape(), Qt::ArrowCursor);
    EXPECT_TRUE(ToolIconName(57600).isEmpty());
}

// What leaves the drawing's frame is cut on screen, and an unreadable element vanishes without a word.
TEST(Icons, EveryDrawingShowsAndStaysInItsFrame)
{
    QStringList names = {"doc", "hint-open", "app/kestrune"};
    for (const char* pszFolder : {"commands", "tools", "widgets", "history", "cursors"})
        names += DrawingsIn(pszFolder);
    ASSERT_GT(names.size(), 200);
    for (const QString& strName : names) {
        QSvgRenderer renderer(":/icons/" + strName + ".svg");
        ASSERT_TRUE(renderer.isValid()) << strName.toStdString();
        const QSize size = renderer.defaultSize();
        const int nMargin = 4;
        QImage image(size + QSize(2 * nMargin, 2 * nMargin), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.setViewBox(QRect(-nMargin, -nMargin, image.width(), image.height()));
        renderer.render(&painter);
        painter.end();
        const auto isInk = [](QRgb rgb) { return qAlpha(rgb) > 24; };
        const int nInside = CountPixels(image.copy(QRect(QPoint(nMargin, nMargin), size)), isInk);
        EXPECT_GT(nInside, 8) << strName.toStdString();
        EXPECT_EQ(CountPixels(image, isInk), nInside) << strName.toStdString() << " leaves its frame";
    }
}

TEST(Icons, EveryToolGroupAndCursorHasItsDrawing)
{
    const int aCommands[] = {1001, 1122, 1124, 1123, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1009, 1013, 1014, 1015, 1016,
                             1017, 1011, 1012, 30051, 30052, 30053, 30054, 30055, 1094, 1050, 1067, 1071, 1063, 1068, 1055,
                             1053, 1062, 1070, 1066, 1051, 1057, 1024, 1026, 337, 1025};
    QStringList used;
    for (const int nCommand : aCommands) {
        const QString strName = ToolIconName(nCommand);
        EXPECT_FALSE(LoadIcon(strName).isNull()) << nCommand;
        EXPECT_FALSE(used.contains(strName)) << "two tools share a drawing: " << strName.toStdString();
        used << strName;
    }
    for (int nGroup = 0; nGroup < 24; ++nGroup)
        EXPECT_FALSE(LoadIcon(QStringLiteral("history/%1").arg(nGroup, 2, 10, QChar('0'))).isNull()) << nGroup;
    for (const int nCursor : {153, 15024, 154, 156, 155, 158, 157, 162, 147, 387, 150, 151, 392, 344, 343, 341, 342, 338, 906,
                              160, 390, 161, 902, 246, 818, 904, 334, 176, 163, 15023})
        EXPECT_EQ(LoadCursor(nCursor).shape(), Qt::BitmapCursor) << nCursor;
    for (const QString& strName : DrawingsIn("cursors"))
        EXPECT_EQ(LoadCursor(strName.mid(8)).shape(), Qt::BitmapCursor) << strName.toStdString() << " has no hot spot";
}

// Every cursor's working point lies on the drawing or, for those whose middle is left open, close to it.
TEST(Icons, HotSpotsLieOnTheDrawing)
{
    for (const QString& strName : DrawingsIn("cursors")) {
        const QCursor cursor = LoadCursor(strName.mid(8));
        const QImage image = cursor.pixmap().toImage();
        const int nReach = strName.contains("rotate") || strName.contains("skew") ? 9 : 3;
        const QRect rcNear(cursor.hotSpot() - QPoint(nReach, nReach), QSize(2 * nReach + 1, 2 * nReach + 1));
        EXPECT_GT(CountPixels(image.copy(rcNear & image.rect()), [](QRgb rgb) { return qAlpha(rgb) > 200 && qGray(rgb) < 100; }), 0)
            << strName.toStdString();
    }
}

} // namespace
} // namespace kestrune
