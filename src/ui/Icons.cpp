#include "ui/Icons.h"

#include "ui/SvgIconEngine.h"

#include <QFile>
#include <QGuiApplication>

#include <algorithm>
#include <iterator>

namespace kestrune {
namespace {

constexpr int c_nCursorSize = 32; // logical pixels, both ways

/// Number 0 marks a cursor that is asked for by name alone. The hot spot is the working point in logical pixels.
struct CursorRow {
    int nResource;
    const char* pszName;
    int nHotX;
    int nHotY;
};

// A number may share its drawing with another; the wand's cross and the rectangle's have the same middle.
constexpr CursorRow c_aCursors[] = {
    {153, "rect-select", 10, 10},
    {154, "ellipse-select", 10, 10},
    {156, "polygon-select", 10, 10},
    {155, "free-select", 10, 10},
    {157, "magic-wand", 10, 10},
    {158, "move", 16, 16},
    {162, "crop", 10, 10},
    {147, "pencil", 3, 27},
    {387, "brush", 3, 26},
    {150, "eraser", 6, 24},
    {151, "air-brush", 5, 24},
    {392, "stamp", 10, 10},
    {344, "blur", 10, 10},
    {343, "sharpen", 10, 10},
    {341, "dodge", 10, 10},
    {342, "burn", 10, 10},
    {338, "smudge", 10, 10},
    {906, "gradient", 10, 10},
    {160, "bucket", 10, 10},
    {390, "photo-brush", 3, 27},
    {161, "effect-brush", 3, 26},
    {902, "eyedropper", 3, 27},
    {246, "text", 16, 20},
    {818, "zoom-in", 12, 12},
    {0, "zoom-out", 12, 12},
    {904, "hand-open", 16, 16},
    {334, "hand-closed", 16, 16},
    {15024, "move-selection", 3, 2},
    {15023, "guide-drag", 16, 16},
    {176, "size-nwse", 16, 16},
    {163, "size-horz", 16, 16},
    {0, "cross", 10, 10},
    {0, "size-vert", 16, 16},
    {0, "size-nesw", 16, 16},
    {0, "rotate", 16, 16},
    {0, "skew-horz", 16, 16},
    {0, "skew-vert", 16, 16},
    {0, "drag-handle", 3, 2},
    {0, "guide-horz", 16, 16},
    {0, "guide-vert", 16, 16},
};

struct ToolRow {
    int nCommand;
    const char* pszName;
};

constexpr ToolRow c_aTools[] = {
    {1001, "rect-select"}, {1122, "ellipse-select"}, {1124, "polygon-select"}, {1123, "free-select"}, {1002, "move"},
    {1003, "magic-wand"}, {1004, "crop"}, {1005, "pencil"}, {1006, "brush"}, {1007, "eraser"}, {1008, "air-brush"},
    {1009, "stamp"}, {1094, "photo-brush"}, {1013, "blur"}, {1014, "sharpen"}, {1015, "dodge"}, {1016, "burn"},
    {1017, "smudge"}, {1011, "gradient"}, {1012, "bucket"}, {1024, "eyedropper"}, {1026, "text"}, {337, "zoom"},
    {1025, "hand"},
    {30051, "scale"}, {30052, "rotate"}, {30053, "skew-horz"}, {30054, "skew-vert"}, {30055, "free-transform"},
    // effect brushes: of colour, then of texture
    {1050, "effect-grey"}, {1067, "effect-tint"}, {1071, "effect-old-photo"}, {1063, "effect-noise"},
    {1068, "effect-nl-filter"},
    {1055, "effect-scatter"}, {1053, "effect-shift"}, {1062, "effect-canvas"}, {1070, "effect-fibre"},
    {1066, "effect-tile"}, {1051, "effect-glass"}, {1057, "effect-pixelate"},
};

template <typename Row, int Row::*pKey, std::size_t N>
constexpr bool HasUniqueKeys(const Row (&aRows)[N])
{
    for (std::size_t i = 0; i < N; ++i)
        for (std::size_t j = i + 1; j < N; ++j)
            if (aRows[i].*pKey != 0 && aRows[i].*pKey == aRows[j].*pKey)
                return false;
    return true;
}

constexpr bool HotSpotsInside()
{
    return std::all_of(std::begin(c_aCursors), std::end(c_aCursors), [](const CursorRow& row) {
        return row.nHotX >= 0 && row.nHotX < c_nCursorSize && row.nHotY >= 0 && row.nHotY < c_nCursorSize;
    });
}

static_assert(HasUniqueKeys<CursorRow, &CursorRow::nResource>(c_aCursors));
static_assert(HasUniqueKeys<ToolRow, &ToolRow::nCommand>(c_aTools));
static_assert(HotSpotsInside());

QString PathOf(const QString& strName)
{
    return QStringLiteral(":/icons/%1.svg").arg(strName);
}

/// What one logical pixel of a hot spot measures for the window system. The toolkit hands a cursor's hot spot to X11 as it
/// stands although the picture is in device pixels (measured: 64 x 64 at 10, 10 on a screen of scale 2); elsewhere it is logical.
qreal HotSpotScale(qreal fScale)
{
    return QGuiApplication::platformName() == QLatin1String("xcb") ? fScale : 1.0;
}

QCursor MakeCursor(const CursorRow& row)
{
    const qreal fScale = qGuiApp->devicePixelRatio();
    const QPixmap pixmap = LoadPixmapIcon(QStringLiteral("cursors/") + QLatin1String(row.pszName),
                                          {c_nCursorSize, c_nCursorSize}, fScale);
    // The middle of the pixel, so that a larger picture keeps the point.
    const qreal fHot = HotSpotScale(fScale);
    return pixmap.isNull() ? QCursor() : QCursor(pixmap, int((row.nHotX + 0.5) * fHot), int((row.nHotY + 0.5) * fHot));
}

template <typename Match>
QCursor FindCursor(Match match)
{
    const auto pRow = std::find_if(std::begin(c_aCursors), std::end(c_aCursors), match);
    return pRow == std::end(c_aCursors) ? QCursor() : MakeCursor(*pRow);
}

} // namespace

QIcon LoadIcon(const QString& strName)
{
    const QString strPath = PathOf(strName);
    return QFile::exists(strPath) ? QIcon(new CSvgIconEngine(strPath)) : QIcon();
}

QPixmap LoadPixmapIcon(const QString& strName, QSize size, qreal fScale)
{
    const QString strPath = PathOf(strName);
    if (!QFile::exists(strPath))
        return {};
    return CSvgIconEngine(strPath).scaledPixmap((QSizeF(size) * fScale).toSize(), QIcon::Normal, QIcon::Off, fScale);
}

QCursor LoadCursor(const QString& strName)
{
    return FindCursor([&](const CursorRow& row) { return strName == QLatin1String(row.pszName); });
}

QCursor LoadCursor(int nResource)
{
    return FindCursor([&](const CursorRow& row) { return nResource != 0 && row.nResource == nResource; });
}

QString ToolIconName(int nCommand)
{
    const auto pRow = std::find_if(std::begin(c_aTools), std::end(c_aTools),
                                   [&](const ToolRow& row) { return row.nCommand == nCommand; });
    return pRow == std::end(c_aTools) ? QString() : QStringLiteral("tools/") + QLatin1String(pRow->pszName);
}

} // namespace kestrune
