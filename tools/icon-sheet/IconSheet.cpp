// Contact sheets of the icon family: each folder at screen scale 1 and 2, light and dark, with names, in the states an icon
// can have; and the cursors over light, dark and busy ground, a red pixel on each hot spot.
#include "ui/Icons.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPalette>
#include <QTextStream>

#include <functional>

using namespace kestrune;

namespace {

constexpr int c_nColumns = 12;
constexpr int c_nCellWidth = 94;
constexpr int c_nCellHeight = 62;

void ApplyTheme(bool bDark)
{
    QPalette palette;
    palette.setColor(QPalette::Window, bDark ? QColor(48, 48, 48) : QColor(243, 243, 243));
    palette.setColor(QPalette::WindowText, bDark ? QColor(224, 224, 224) : QColor(51, 51, 51));
    palette.setColor(QPalette::Highlight, bDark ? QColor(90, 160, 250) : QColor(26, 115, 232));
    palette.setColor(QPalette::HighlightedText, bDark ? Qt::black : Qt::white);
    QApplication::setPalette(palette);
}

QStringList NamesOf(const QString& strFolder)
{
    QStringList names;
    for (const QString& strFile : QDir(QStringLiteral(":/icons/") + strFolder).entryList({"*.svg"}, QDir::Files, QDir::Name))
        names << strFile.chopped(4);
    return names;
}

using PaintCell = std::function<void(QPainter&, const QRect&, const QString&)>;

bool SaveSheet(const QStringList& names, const QString& strFile, qreal fScale, const PaintCell& paintCell)
{
    const int nRows = int(names.size() + c_nColumns - 1) / c_nColumns;
    QImage sheet(QSize(c_nColumns * c_nCellWidth, nRows * c_nCellHeight) * fScale, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(fScale);
    sheet.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(9);
    painter.setFont(font);
    painter.setPen(QApplication::palette().color(QPalette::WindowText));
    for (int i = 0; i < names.size(); ++i) {
        const QRect rc((i % c_nColumns) * c_nCellWidth, (i / c_nColumns) * c_nCellHeight, c_nCellWidth, c_nCellHeight);
        paintCell(painter, rc, names[i]);
        painter.drawText(rc.adjusted(1, 0, -1, -2), Qt::AlignBottom | Qt::AlignHCenter, names[i]);
    }
    painter.end();
    return sheet.save(strFile);
}

void PaintIcon(QPainter& painter, const QRect& rc, const QString& strName)
{
    const QIcon icon = LoadIcon(strName);
    if (strName.startsWith("history/")) {
        icon.paint(&painter, rc.x() + 8, rc.y() + 12, 23, 22);
        icon.paint(&painter, rc.x() + 48, rc.y() + 12, 23, 22, Qt::AlignCenter, QIcon::Disabled);
        return;
    }
    icon.paint(&painter, rc.x() + 4, rc.y() + 10, 24, 24);
    icon.paint(&painter, rc.x() + 34, rc.y() + 14, 16, 16);
    icon.paint(&painter, rc.x() + 58, rc.y() + 10, 24, 24, Qt::AlignCenter, QIcon::Disabled);
}

void PaintCursor(QPainter& painter, const QRect& rc, const QString& strName)
{
    const QCursor cursor = LoadCursor(strName);
    for (int n = 0; n < 2; ++n) {
        const QRect rcGround(rc.x() + 8 + n * 38, rc.y() + 8, 36, 36);
        painter.fillRect(rcGround, n == 0 ? Qt::white : Qt::black);
        if (n == 0)
            painter.fillRect(rcGround.adjusted(18, 0, 0, 0), QBrush(QColor(90, 140, 60), Qt::Dense3Pattern));
        painter.drawPixmap(rcGround.topLeft() + QPoint(2, 2), cursor.pixmap());
        painter.fillRect(QRect(rcGround.topLeft() + QPoint(2, 2) + cursor.hotSpot(), QSize(1, 1)), Qt::red);
    }
}

bool SaveArtwork(const QString& strFile)
{
    QImage sheet(900, 320, QImage::Format_RGB32);
    sheet.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&sheet);
    int x = 10;
    for (const int nSize : {256, 128, 64, 48, 32, 24, 22, 16}) {
        LoadIcon("app/kestrune").paint(&painter, x, 20, nSize, nSize);
        x += nSize + 12;
    }
    painter.drawPixmap(690, 150, LoadPixmapIcon("hint-open", {192, 160}, 1));
    LoadIcon("doc").paint(&painter, 300, 180, 64, 64);
    LoadIcon("doc").paint(&painter, 380, 200, 24, 24);
    LoadIcon("doc").paint(&painter, 420, 204, 16, 16);
    painter.end();
    return sheet.save(strFile);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc != 2 || !QDir().mkpath(argv[1])) {
        err << "usage: icon-sheet FOLDER\n";
        return 2;
    }
    const QDir dir(argv[1]);
    bool bSaved = true;
    for (const bool bDark : {false, true}) {
        ApplyTheme(bDark);
        const QString strTheme = bDark ? "dark" : "light";
        bSaved &= SaveArtwork(dir.filePath("artwork-" + strTheme + ".png"));
        for (const int nScale : {1, 2}) {
            const QString strEnd = "-" + strTheme + "-" + QString::number(nScale) + "x.png";
            for (const QString strFolder : {"commands", "tools", "widgets", "history"})
                bSaved &= SaveSheet(NamesOf(strFolder), dir.filePath(strFolder + strEnd), nScale,
                                    [&](QPainter& painter, const QRect& rc, const QString& strName) {
                                        PaintIcon(painter, rc, strFolder + "/" + strName);
                                    });
            if (!bDark)
                bSaved &= SaveSheet(NamesOf("cursors"), dir.filePath("cursors" + strEnd), nScale, PaintCursor);
        }
    }
    if (!bSaved)
        err << "a sheet could not be written to " << dir.path() << "\n";
    return bSaved ? 0 : 1;
}
