// The selection tools and the Select menu, through the real program; what comes out is held against shapes made here.

#include "ScriptHarness.h"

#include "selection/FloodFill.h"
#include "selection/MaskDisc.h"
#include "selection/MaskFeather.h"
#include "selection/MaskFill.h"
#include "selection/PolygonRaster.h"
#include "selection/Shapes.h"

#include <QImage>

#include <functional>

using namespace kestrune;

namespace {

constexpr int c_nWidth = 61, c_nHeight = 47; ///< not square, so that what is turned shows
constexpr CRect c_rcFirst{10, 5, 40, 30}, c_rcSecond{30, 20, 55, 40};

/// A mask of that size.
struct Mask {
    Mask() = default;
    explicit Mask(const std::function<void(const MaskPlane&)>& draw) { draw(Plane()); }

    MaskPlane Plane() { return {bytes.data(), c_nWidth, c_nHeight}; }
    int At(int x, int y) const { return bytes[static_cast<std::size_t>(y) * c_nWidth + x]; }
    Mask With(const std::function<void(const MaskPlane&)>& change) const
    {
        Mask mask = *this;
        change(mask.Plane());
        return mask;
    }
    Mask Feathered(double fRadius) const
    {
        return With([=](const MaskPlane& plane) { PlainFeatherMask(plane, fRadius, FeatherTaps::WithoutLast); });
    }
    Mask Combined(const Mask& shape, SelectMode mode) const
    {
        return With([&](const MaskPlane& plane) { CombineMask(plane, shape.bytes.data(), mode); });
    }
    bool operator==(const Mask&) const = default;

    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(static_cast<std::size_t>(c_nWidth) * c_nHeight);
};

void PrintTo(const Mask& mask, std::ostream* pStream)
{
    int nFirst = 0, nSum = 0;
    for (std::size_t i = mask.bytes.size(); i-- > 0;) {
        nSum += mask.bytes[i];
        nFirst = mask.bytes[i] ? static_cast<int>(i) : nFirst;
    }
    *pStream << "a mask of sum " << nSum << " from (" << nFirst % c_nWidth << ", " << nFirst / c_nWidth << ")";
}

Mask Rectangle(const CRect& rc)
{
    return Mask([&](const MaskPlane& plane) { DrawRectangle(plane, rc); });
}
Mask Ellipse(const CRect& rc)
{
    return Mask([&](const MaskPlane& plane) { DrawEllipse(plane, rc); });
}
Mask Polygon(const std::vector<PointF>& points, int nFactor)
{
    return Mask([&](const MaskPlane& plane) {
        PolygonRaster raster(c_nWidth, c_nHeight, nFactor);
        raster.AddPolyline(points);
        raster.Render({0, 0, c_nWidth, c_nHeight}, plane);
    });
}

class CSelectionScriptTest : public CScriptTest {
protected:
    /// A soft picture with some steps of colour.
    CSelectionScriptTest()
        : m_picture(c_nWidth, c_nHeight, QImage::Format_RGB888)
    {
        for (int y = 0; y < c_nHeight; y++)
            for (int x = 0; x < c_nWidth; x++)
                m_picture.setPixel(x, y, qRgb(x * 2, 100 + y, (x / 20 + y / 15) * 40));
        m_picture.save(Path("a.png"));
    }

    /// What the script prints; before it the picture is opened, after it the mask is dumped, which `Dumped` reads.
    QStringList Do(const QString& strScript) { return Output("open a.png\n" + strScript + "dump mask mask.pgm\n"); }
    Mask Dumped(const char* strName = "mask.pgm") const
    {
        const QImage image = QImage(Path(QString::fromLatin1(strName))).convertToFormat(QImage::Format_Grayscale8);
        EXPECT_EQ(image.size(), QSize(c_nWidth, c_nHeight));
        Mask mask;
        for (int y = 0; y < image.height(); y++)
            std::copy_n(image.constScanLine(y), std::min(image.width(), c_nWidth), mask.Plane().Row(y));
        return mask;
    }
    Mask MaskAfter(const QString& strScript)
    {
        Do(strScript);
        return Dumped();
    }

    QImage m_picture;
};

QString Feather(int n)
{
    return QStringLiteral("option Floater Feather %1\n").arg(n);
}
QString Drag(const CRect& rc)
{
    return QStringLiteral("press %1 %2\nmove %5 %6\nrelease %3 %4\n").arg(rc.left).arg(rc.top).arg(rc.right).arg(rc.bottom)
        .arg((rc.left + rc.right) / 2).arg((rc.top + rc.bottom) / 2 + 1);
}
const QString c_strRectangle = "command 1001\n", c_strEllipse = "command 1122\n", c_strFree = "command 1123\n", c_strPolygon = "command 1124\n",
              c_strWand = "command 1003\n";

} // namespace

TEST_F(CSelectionScriptTest, RectanglesAndEllipsesWithAFeather)
{
    for (const int nFeather : {1, 2, 9, 250}) {
        const QStringList out = Do(c_strRectangle + Feather(nFeather) + Drag(c_rcFirst) + "print history\n");
        EXPECT_EQ(Dumped(), Rectangle(c_rcFirst).Feathered(nFeather)) << nFeather;
        EXPECT_EQ(out.last(), "* [영역선택] 사각형");
        EXPECT_EQ(MaskAfter(c_strEllipse + Feather(nFeather) + Drag(c_rcFirst)), Ellipse(c_rcFirst).Feathered(nFeather)) << nFeather;
    }
    // From any corner; what is dragged out of the picture ends at its edge.
    EXPECT_EQ(MaskAfter(c_strRectangle + Feather(2) + "press 40 5\nrelease 10 30\n"), Rectangle(c_rcFirst).Feathered(2));
    EXPECT_EQ(MaskAfter(c_strRectangle + Feather(2) + "press 50 -20\nmove 70 70\nrelease 900 20\n"), Rectangle({50, 0, 61, 20}).Feathered(2));
    EXPECT_EQ(MaskAfter(c_strEllipse + Feather(2) + "press -30 -30\nrelease 900 900\nprint history\n"), Ellipse({0, 0, 61, 47}).Feathered(2));
}

TEST_F(CSelectionScriptTest, WithoutAFeatherTheyAreMirroredOnTheDiagonal)
{
    for (const bool bEllipse : {false, true}) {
        Mask shape = bEllipse ? Ellipse(c_rcFirst) : Rectangle(c_rcFirst), mirrored;
        for (std::size_t i = 0; i < mirrored.bytes.size(); i++) // where column x begins at x times the height
            mirrored.bytes[i] = shape.Plane().Row(static_cast<int>(i % c_nHeight))[i / c_nHeight];
        EXPECT_EQ(MaskAfter((bEllipse ? c_strEllipse : c_strRectangle) + Feather(0) + Drag(c_rcFirst)), mirrored);
    }
    // On a square picture it is the plain mirror image.
    const QStringList out = Output("new 40 40 white rgb\n" + c_strRectangle + Feather(0) + "press 3 20\nrelease 13 24\nprint bounds\nprint float\n");
    EXPECT_EQ(out, (QStringList{"20 3 24 13", "20 3 4 10 20 3 24 13 1 0 1"}));
}

TEST_F(CSelectionScriptTest, FourModesAndTheKeysThatStandForThem)
{
    const Mask first = Ellipse(c_rcFirst).Feathered(2), second = Rectangle(c_rcSecond).Feathered(2);
    const QString strFirst = c_strEllipse + Feather(2) + Drag(c_rcFirst) + c_strRectangle;
    EXPECT_EQ(MaskAfter(strFirst + Drag({41, 31, 55, 40})), Rectangle({41, 31, 55, 40}).Feathered(2));
    const Mask added = first.Combined(second, SelectMode::Add), cut = first.Combined(second, SelectMode::Subtract);
    EXPECT_EQ(MaskAfter(strFirst + "option Floater Mode 2\n" + Drag(c_rcSecond)), added);
    EXPECT_EQ(MaskAfter(strFirst + "option Floater Mode 3\n" + Drag(c_rcSecond)), cut);
    EXPECT_EQ(MaskAfter(strFirst + "option Floater Mode 4\n" + Drag(c_rcSecond)), first.Combined(second, SelectMode::Intersect));
    // Held keys, and the modifiers that a press brings along; after them the bar is at "new" again.
    EXPECT_EQ(MaskAfter(strFirst + "keydown 16\n" + Drag(c_rcSecond) + "keyup 16\n"), added);
    EXPECT_EQ(MaskAfter(strFirst + "keydown 17\n" + Drag(c_rcSecond) + "keyup 17\n"), cut);
    EXPECT_EQ(MaskAfter(strFirst + "press 30 20 shift\nmove 44 33 shift\nrelease 55 40\n"), added);
    EXPECT_EQ(MaskAfter(strFirst + "press 30 20 ctrl\nmove 44 33 ctrl\nrelease 55 40\n"), cut);
    EXPECT_EQ(MaskAfter(strFirst + "keydown 17\n" + Drag(c_rcSecond) + "keyup 17\n" + Drag({45, 32, 50, 40})), Rectangle({45, 32, 50, 40}).Feathered(2));
    // To add to nothing is to select.
    EXPECT_EQ(MaskAfter(c_strRectangle + Feather(2) + "option Floater Mode 2\n" + Drag(c_rcFirst)), Rectangle(c_rcFirst).Feathered(2));
    EXPECT_EQ(MaskAfter(c_strRectangle + Feather(2) + "option Floater Mode 3\n" + Drag(c_rcFirst)), Mask());
}

TEST_F(CSelectionScriptTest, WhatIsTakenAwayWhollyLeavesASelectionOfNothing)
{
    const QStringList out = Do(c_strRectangle + Feather(1) + Drag(c_rcFirst) + "keydown 17\n" + Drag({0, 0, 61, 47}) + "keyup 17\nprint bounds\nprint float\nprint boundary\nprint command 30059\n");
    EXPECT_EQ(out, (QStringList{"empty", "0 0 61 47 0 0 61 47 1 0 1", "enabled unchecked"}));
    EXPECT_EQ(Dumped(), Mask());
}

TEST_F(CSelectionScriptTest, FixedSizesFollowTheMouseAndStayInside)
{
    const QString strStyle = c_strRectangle + Feather(1) + "option Floater Style 1\noption Floater Width 20\noption Floater Height 12\n";
    EXPECT_EQ(MaskAfter(strStyle + "press 5 6\nrelease 5 6\n"), Rectangle({5, 6, 25, 18}).Feathered(1)) << "a press alone";
    EXPECT_EQ(MaskAfter(strStyle + "press 5 6\nmove 10 30\nrelease 30 20\n"), Rectangle({30, 20, 50, 32}).Feathered(1));
    EXPECT_EQ(MaskAfter(strStyle + "press 55 44\nrelease 55 44\n"), Rectangle({41, 35, 61, 47}).Feathered(1));
    EXPECT_EQ(MaskAfter(strStyle + c_strEllipse + "press 5 6\nrelease 5 6\n"), Ellipse({5, 6, 25, 18}).Feathered(1));
    EXPECT_EQ(MaskAfter(strStyle + "option Floater Width 300\nzoom 3\npress 5 6\nrelease 5 6\n"), Rectangle({0, 6, 61, 18}).Feathered(1));
}

TEST_F(CSelectionScriptTest, FreePathsAreClosedByTheirLastEdge)
{
    const std::vector<PointF> path{{10, 8}, {45, 12}, {52, 40}, {20, 33}};
    const QString strPath = "press 10 8\nmove 45 12\nmove 52 40\nrelease 20 33\n";
    QStringList out = Do(c_strFree + Feather(0) + strPath + "print history\n");
    EXPECT_EQ(Dumped(), Polygon(path, 3));
    EXPECT_EQ(out.last(), "* [영역선택] 자유곡선");
    EXPECT_EQ(MaskAfter(c_strFree + Feather(0) + "option Floater AntiAlias 0\n" + strPath), Polygon(path, 1));
    EXPECT_EQ(MaskAfter(c_strFree + Feather(3) + strPath), Polygon(path, 3).Feathered(3)) << "feathered in place";
    EXPECT_EQ(MaskAfter(c_strFree + Feather(0) + "press 10 10\nmove 30 10\nrelease 10 30\n"), Polygon({{10, 10}, {30, 10}, {10, 30}}, 3));

    // As many points as a hand makes: a star of some thousand.
    std::vector<PointF> star;
    QString strStar;
    for (int i = 0; i < 4000; i++) {
        star.push_back({static_cast<double>(i * 37 % 61), static_cast<double>(i * 23 % 47)});
        strStar += QStringLiteral("%1 %2 %3\n").arg(i == 0 ? "press" : i == 3999 ? "release" : "move").arg(star.back().x).arg(star.back().y);
    }
    EXPECT_EQ(MaskAfter(c_strFree + Feather(0) + strStar), Polygon(star, 3));
}

TEST_F(CSelectionScriptTest, PathsAreFinerThanThePictureWhenItIsSeenLarge)
{
    // At zoom 4 the corner of a pixel stands at a fourth of it.
    EXPECT_EQ(MaskAfter(c_strFree + Feather(0) + "zoom 4\npress 10 8\nmove 45 12\nmove 52 40\nrelease 20 33\n"),
              Polygon({{10, 8}, {45, 12}, {52, 40}, {20, 33}}, 3));
    EXPECT_EQ(MaskAfter(c_strRectangle + Feather(2) + "zoom 0.5\n" + Drag({10, 6, 40, 30})), Rectangle({10, 6, 40, 30}).Feathered(2));
}

TEST_F(CSelectionScriptTest, PolygonsGrowByClicksAndEndByTwo)
{
    const std::vector<PointF> corners{{10, 8}, {45, 12}, {52, 40}, {20, 33}};
    const QString strClicks = "press 10 8\nrelease 10 8\nmove 30 30\npress 45 12\nrelease 45 12\npress 52 40\nrelease 52 40\n";
    const QString strStart = c_strPolygon + Feather(0);
    QStringList out = Do(strStart + strClicks + "print bounds\ndoubleclick 20 33\nprint history\n");
    EXPECT_EQ(Dumped(), Polygon(corners, 3));
    EXPECT_EQ(out.first(), "empty");
    EXPECT_EQ(out.last(), "* [영역선택] 다각형");
    // Enter ends it too, Backspace takes a corner back, Escape all of them.
    EXPECT_EQ(MaskAfter(strStart + strClicks + "press 20 33\nrelease 20 33\nkeydown 13\nkeyup 13\n"), Polygon(corners, 3));
    EXPECT_EQ(MaskAfter(strStart + strClicks + "press 1 1\nrelease 1 1\nkeydown 8\nkeyup 8\ndoubleclick 20 33\n"), Polygon(corners, 3));
    out = Do(strStart + strClicks + "keydown 27\nkeyup 27\nprint history\n");
    EXPECT_EQ(Dumped(), Mask());
    EXPECT_FALSE(out.last().contains("다각형"));
    EXPECT_EQ(MaskAfter(strStart + strClicks + "keydown 27\nkeyup 27\n" + strClicks + "doubleclick 20 33\n"), Polygon(corners, 3));
    EXPECT_EQ(MaskAfter(strStart + Feather(4) + strClicks + "doubleclick 20 33\n"), Polygon(corners, 3).Feathered(4));
    EXPECT_EQ(MaskAfter(strStart + "option Floater AntiAlias 0\n" + strClicks + "doubleclick 20 33\n"), Polygon(corners, 1));
    // Another tool in the middle drops it.
    EXPECT_EQ(MaskAfter(strStart + strClicks + c_strRectangle + Feather(1) + Drag(c_rcFirst)), Rectangle(c_rcFirst).Feathered(1));
}

TEST_F(CSelectionScriptTest, TheWandTakesWhatHangsTogether)
{
    const QImage rgb = m_picture;
    const auto Wand = [&](int x, int y, int nTolerance) {
        return Mask([&](const MaskPlane& plane) {
            FloodParams params{{x, y}, {}, nTolerance, true};
            std::copy_n(rgb.constScanLine(y) + x * 3, 3, params.aSeed);
            FloodFill({c_nWidth, c_nHeight, [&](int row) { return rgb.constScanLine(row); }}, params, plane);
        });
    };
    const auto Click = [](int x, int y, int nTolerance) {
        return QStringLiteral("option Floater Tolerance %3\npress %1 %2\nrelease %1 %2\n").arg(x).arg(y).arg(nTolerance);
    };
    const QString strStart = c_strWand + Feather(0);
    for (const int nTolerance : {0, 1, 6, 13, 60, 255})
        EXPECT_EQ(MaskAfter(strStart + Click(30, 20, nTolerance)), Wand(30, 20, nTolerance)) << nTolerance;
    EXPECT_EQ(MaskAfter(strStart + Click(30, 20, 0)), MaskAfter(strStart + Click(30, 20, 1)));
    EXPECT_EQ(MaskAfter(strStart + Feather(3) + Click(30, 20, 6)), Wand(30, 20, 6).Feathered(3)) << "feathered in place";
    EXPECT_EQ(MaskAfter(strStart + Click(900, 900, 6)), Wand(60, 46, 6)) << "beyond the corner is the corner";
    EXPECT_EQ(Do(strStart + Click(30, 20, 6) + "print history\n").last(), "* [영역선택] 마술봉");

    const Mask first = Wand(30, 20, 10), second = Wand(50, 40, 10), within = Wand(32, 20, 2);
    EXPECT_EQ(MaskAfter(strStart + Click(30, 20, 10) + "option Floater Mode 2\n" + Click(50, 40, 10)), first.Combined(second, SelectMode::Add));
    EXPECT_EQ(MaskAfter(strStart + Click(30, 20, 10) + "keydown 17\n" + Click(32, 20, 2) + "keyup 17\n"), first.Combined(within, SelectMode::Subtract)) << "inside the selection";
    EXPECT_EQ(MaskAfter(strStart + Click(30, 20, 10) + "option Floater Mode 4\n" + Click(32, 20, 2)), first.Combined(within, SelectMode::Intersect));
}

TEST_F(CSelectionScriptTest, OutlinesAreDraggedWithoutTheirPixels)
{
    const Mask first = Rectangle(c_rcFirst).Feathered(2);
    const auto Moved = [&](int dx, int dy) {
        Mask mask;
        for (int y = 0; y < c_nHeight; y++)
            for (int x = 0; x < c_nWidth; x++)
                if (x - dx >= 0 && x - dx < c_nWidth && y - dy >= 0 && y - dy < c_nHeight)
                    mask.Plane().Row(y)[x] = static_cast<std::uint8_t>(first.At(x - dx, y - dy));
        return mask;
    };
    const QString strFirst = c_strRectangle + Feather(2) + Drag(c_rcFirst);
    QStringList out = Do(strFirst + "dump image before.ppm\nprint bounds\npress 20 20\nmove 22 21\nrelease 28 23\nprint bounds\nprint float\nprint history\ndump image after.ppm\n");
    EXPECT_EQ(Dumped(), Moved(8, 3));
    EXPECT_EQ(QImage(Path("before.ppm")), QImage(Path("after.ppm")));
    // The float is larger than the mask by the feather.
    EXPECT_EQ(out.mid(0, 3), (QStringList{"9 4 41 31", "17 7 49 34", "15 5 36 31 15 5 51 36 1 0 1"}));
    EXPECT_EQ(out.last(), "* 선택영역 이동");
    // Straight drags move too; every tool of the family does it; what leaves the picture is lost, wholly if it must.
    EXPECT_EQ(MaskAfter(strFirst + "press 20 20\nrelease 28 20\n"), Moved(8, 0));
    EXPECT_EQ(MaskAfter(strFirst + "press 20 20\nrelease 20 9\n"), Moved(0, -11));
    for (const QString& strTool : {c_strEllipse, c_strFree, c_strPolygon, c_strWand})
        EXPECT_EQ(MaskAfter(strFirst + strTool + "press 20 20\nmove 22 21\nrelease 28 23\n"), Moved(8, 3)) << strTool.toStdString();
    EXPECT_EQ(MaskAfter(strFirst + "press 20 20\nrelease -5 -5\nundo\nredo\n"), Moved(-25, -25));
    out = Do(strFirst + "press 20 20\nrelease 500 20\nprint bounds\nprint float\n");
    EXPECT_EQ(out, (QStringList{"empty", "0 0 61 47 0 0 61 47 1 0 1"}));
    EXPECT_EQ(MaskAfter(strFirst + "press 20 20\nrelease 28 23\nundo\n"), first);
    EXPECT_EQ(MaskAfter(strFirst + "press 20 20\nmove 28 23\nkeydown 27\nkeyup 27\nrelease 30 30\n"), first) << "Escape";
    EXPECT_EQ(MaskAfter(strFirst + "zoom 2\npress 20 20\nrelease 28 23\n"), Moved(8, 3));
    // With another mode the press begins a shape.
    EXPECT_EQ(MaskAfter(strFirst + "keydown 17\npress 20 20\nrelease 28 23\nkeyup 17\n"), first.Combined(Rectangle({20, 20, 28, 23}).Feathered(2), SelectMode::Subtract));
}

TEST_F(CSelectionScriptTest, AClickDeselects)
{
    for (const QString& strTool : {c_strRectangle, c_strEllipse, c_strFree}) {
        const QStringList out = Do(c_strRectangle + Feather(1) + Drag(c_rcFirst) + strTool + "press 50 40\nrelease 50 40\nprint bounds\nprint float\nprint history\nprint command 30057\nundo\nprint bounds\n");
        EXPECT_EQ(out.mid(0, 2), (QStringList{"empty", "none"}));
        EXPECT_EQ(out[out.size() - 3], "* 선택영역 해제");
        EXPECT_EQ(out.last(2), (QStringList{"disabled unchecked", "10 5 40 30"}));
    }
    // Also inside the selection.
    EXPECT_EQ(Do(c_strRectangle + Feather(1) + Drag(c_rcFirst) + "press 20 20\nrelease 20 20\nprint float\n"), QStringList{"none"});
}

TEST_F(CSelectionScriptTest, EscapeDropsADrag)
{
    const QStringList out = Do(c_strRectangle + Feather(1) + "press 10 5\nmove 30 20\nkeydown 27\nkeyup 27\nmove 40 30\nrelease 40 30\nprint bounds\nprint float\nprint history\n");
    EXPECT_EQ(out.mid(0, 2), (QStringList{"empty", "none"}));
    EXPECT_EQ(out.size(), 3) << "no record";
}

TEST_F(CSelectionScriptTest, NewSelectionsPutDownWhatFloats)
{
    // A moved float is part of the picture as soon as another selection begins.
    const QStringList out = Do(c_strRectangle + Feather(1) + Drag(c_rcFirst) + "command 1002\npress 20 20\nrelease 30 22\nprint float\n" + c_strRectangle +
                               "dump image before.ppm\n" + Drag({2, 2, 8, 9}) + "print float\ndump image after.ppm\ndump base base.ppm\n");
    EXPECT_EQ(out, (QStringList{"20 7 30 25 20 7 50 32 1 1 1", "2 2 6 7 2 2 8 9 1 0 1"}));
    EXPECT_EQ(QImage(Path("before.ppm")), QImage(Path("after.ppm")));
    EXPECT_EQ(QImage(Path("base.ppm")), QImage(Path("after.ppm")));
}

TEST_F(CSelectionScriptTest, MenuCommandsAndTheirRecords)
{
    const Mask first = Ellipse(c_rcFirst).Feathered(2);
    const QString strFirst = c_strEllipse + Feather(2) + Drag(c_rcFirst);
    struct Row {
        const char* strCommand;
        const char* strRecord;
        std::function<void(const MaskPlane&)> change;
    };
    const std::vector<Row> aRows{
        {"command 30056", "전체영역 선택", [](const MaskPlane& plane) { FillMask(plane, 255); }},
        {"command 30057", "선택영역 해제", [](const MaskPlane& plane) { FillMask(plane, 0); }},
        {"command 30059", "선택영역 반전", [](const MaskPlane& plane) { InvertMask(plane); }},
        {"command 30060 Radius=0.2", "선택영역 후림", [](const MaskPlane&) {}},
        {"command 30060 Radius=3.5", "선택영역 후림", [](const MaskPlane& plane) { PlainFeatherMask(plane, 3.5, FeatherTaps::All); }},
        {"command 30060 Radius=250", "선택영역 후림", [](const MaskPlane& plane) { PlainFeatherMask(plane, 250, FeatherTaps::All); }},
        {"command 30134 Width=1", "선택영역 경계 두께 조정", [](const MaskPlane& plane) { PlainBorderMask(plane, 1, 1); }},
        {"command 30134 Width=200", "선택영역 경계 두께 조정", [](const MaskPlane& plane) { PlainBorderMask(plane, 200, 200); }},
        {"command 30061 Radius=4", "선택영역 확장", [](const MaskPlane& plane) { PlainGrowMask(plane, 4); }},
        {"command 30061 Radius=100", "선택영역 확장", [](const MaskPlane& plane) { PlainGrowMask(plane, 100); }},
        {"command 30062 Radius=4", "선택영역 축소", [](const MaskPlane& plane) { PlainShrinkMask(plane, 4); }},
        {"command 30062 Radius=100", "선택영역 축소", [](const MaskPlane& plane) { PlainShrinkMask(plane, 100); }},
    };
    for (const Row& row : aRows) {
        const QStringList out = Do(strFirst + QString::fromLatin1(row.strCommand) + "\nprint float\nprint history\ndump mask done.pgm\nundo\n");
        EXPECT_EQ(Dumped("done.pgm"), first.With(row.change)) << row.strCommand;
        EXPECT_EQ(Dumped(), first) << row.strCommand;
        EXPECT_EQ(out.last(), "* " + QString::fromUtf8(row.strRecord)) << row.strCommand;
        EXPECT_TRUE(out.first() == "none" ? row.strCommand == std::string("command 30057") : out.first().endsWith(" 1 0 1")) << row.strCommand;
    }
    // Cancel does nothing at all.
    for (const char* pszCommand : {"30060 Radius=9", "30134 Width=9", "30061 Radius=9", "30062 Radius=9"}) {
        const QStringList out = Do(strFirst + "command " + pszCommand + " cancel\nprint history\n");
        EXPECT_EQ(Dumped(), first) << pszCommand;
        EXPECT_EQ(out.last(), "* [영역선택] 타원") << pszCommand;
    }
}

TEST_F(CSelectionScriptTest, TheFloatIsWhatIsSelected)
{
    const QStringList out = Do(c_strRectangle + Feather(3) + Drag(c_rcFirst) + "command 30061 Radius=2\nprint bounds\nprint float\ndump floatmask float.pgm\ndump float float.ppm\n");
    ASSERT_EQ(out.size(), 2);
    const QStringList bounds = out[0].split(u' ');
    const CRect rc{bounds[0].toInt(), bounds[1].toInt(), bounds[2].toInt(), bounds[3].toInt()};
    EXPECT_EQ(out[1], QStringLiteral("%1 %2 %3 %4 %5 1 0 1").arg(rc.left).arg(rc.top).arg(rc.Width()).arg(rc.Height()).arg(out[0]));
    const QRect qrc(rc.left, rc.top, rc.Width(), rc.Height());
    EXPECT_EQ(QImage(Path("float.pgm")), QImage(Path("mask.pgm")).copy(qrc));
    EXPECT_EQ(QImage(Path("float.ppm")).convertToFormat(QImage::Format_RGB888), m_picture.copy(qrc));
}

TEST_F(CSelectionScriptTest, InvertingEverythingDeselects)
{
    const QStringList out = Do("command 30056\nprint bounds\nprint boundary\ncommand 30059\nprint bounds\nprint float\nprint command 30059\nprint history\n");
    EXPECT_EQ(out.mid(0, 5), (QStringList{"0 0 61 47", "0 0 61 0 1", "0 0 0 47 1", "61 0 61 47 0", "0 47 61 47 0"}));
    EXPECT_EQ(out.mid(5, 3), (QStringList{"empty", "none", "disabled unchecked"}));
    EXPECT_EQ(out.last(), "* 선택영역 반전");
    // Nothing at all that is selected still is a selection, whose inverse is everything.
    EXPECT_EQ(Do("command 30056\ncommand 30062 Radius=100\nprint bounds\ncommand 30061 Radius=5\nprint bounds\nprint command 30059\ncommand 30059\nprint bounds\n"),
              (QStringList{"empty", "empty", "enabled unchecked", "0 0 61 47"}));
}

TEST_F(CSelectionScriptTest, WhatNeedsASelectionOrAPictureIsGreyWithout)
{
    for (const int nId : {30057, 30059, 30060, 30134, 30061, 30062}) {
        const QString strId = QString::number(nId);
        EXPECT_EQ(Do("print command " + strId + "\n"), QStringList{"disabled unchecked"}) << nId;
        EXPECT_EQ(Do("command 30056\nprint command " + strId + "\n"), QStringList{"enabled unchecked"}) << nId;
    }
    EXPECT_EQ(Do("print command 30056\n"), QStringList{"enabled unchecked"});
    EXPECT_EQ(Output("print command 30056\nprint command 30059\n"), (QStringList{"disabled unchecked", "disabled unchecked"}));
    // Tools that need one say so.
    EXPECT_EQ(Do("command 30056\ncommand 30051\ncommand 30057\npress 10 10\nrelease 20 20\n"), QStringList{"message: 영역 선택 도구를 이용하여 적용할 이미지 영역을 \\n먼저 선택하십시오."});
    EXPECT_EQ(Do("command 30009\ncommand 30010\n"), (QStringList{"message: 선택된 영역이 없습니다.", "message: 선택된 영역이 없습니다."}));
}

TEST_F(CSelectionScriptTest, NumbersOutOfRangeAreRefused)
{
    for (const char* pszCommand : {"30060 Radius=0.1", "30060 Radius=250.1", "30134 Width=0", "30134 Width=201", "30061 Radius=0", "30061 Radius=101", "30062 Radius=0",
                                   "30062 Radius=101", "30062 Radius=wide", "30062 Width=4"})
        EXPECT_FALSE(Reason("open a.png\ncommand 30056\ncommand " + QString::fromLatin1(pszCommand) + "\n", 3).isEmpty()) << pszCommand;
}

TEST_F(CSelectionScriptTest, ThroughTheHistoryAndBack)
{
    const QString strSteps = c_strRectangle + Feather(2) + Drag(c_rcFirst) + "keydown 16\n" + Drag(c_rcSecond) + "keyup 16\ncommand 30059\ncommand 30061 Radius=3\ncommand 30057\n";
    const QStringList out = Do(strSteps + "history 2\nprint bounds\ndump mask second.pgm\nprint history\nredo\nredo\n");
    const Mask second = Rectangle(c_rcFirst).Feathered(2).Combined(Rectangle(c_rcSecond).Feathered(2), SelectMode::Add);
    EXPECT_EQ(Dumped("second.pgm"), second);
    EXPECT_EQ(Dumped(), second.With([](const MaskPlane& plane) {
        InvertMask(plane);
        PlainGrowMask(plane, 3);
    }));
    EXPECT_EQ(out.mid(1), (QStringList{"  << 원본 이미지 >>", "  [영역선택] 사각형", "* [영역선택] 사각형", "- 선택영역 반전", "- 선택영역 확장", "- 선택영역 해제"}));
}

TEST_F(CSelectionScriptTest, TheSmallestPictures)
{
    for (const char* pszSize : {"1 1", "1 9", "9 1", "2 2"}) {
        QString strScript;
        for (const QString& strTool : {c_strRectangle, c_strEllipse, c_strFree, c_strPolygon, c_strWand})
            for (const int nFeather : {0, 7})
                strScript += "new " + QString::fromLatin1(pszSize) + " white rgb\n" + strTool + Feather(nFeather) +
                    "press -3 -3\nmove 30 0\nmove 9 9\nrelease 0 30\ndoubleclick 0 9\n"
                    "command 30056\ncommand 30060 Radius=250\ncommand 30134 Width=200\ncommand 30059\ncommand 30061 Radius=100\n";
        EXPECT_EQ(Output(strScript + "print size\n"), QStringList{QString::fromLatin1(pszSize)});
    }
    // A document of which no picture is left: the tools do nothing.
    EXPECT_EQ(Run("press 3 3\n").nStatus, 1);
}
