// Rectangle, ellipse and closed paths against forms that look at one pixel, or one sample, at a time.
#include "MaskTestKit.h"

#include "selection/PolygonRaster.h"
#include "selection/Shapes.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;
using namespace kestrune::test;

namespace {

/// The distance to the ellipse along the line to its middle, pixel by pixel.
OwnMask PlainEllipse(int nWidth, int nHeight, const CRect& rc)
{
    OwnMask mask(nWidth, nHeight);
    const int w = rc.Width(), h = rc.Height();
    for (int j = std::max(rc.top, 0); w > 0 && h > 0 && j < std::min(rc.bottom, nHeight); j++)
        for (int i = std::max(rc.left, 0); i < std::min(rc.right, nWidth); i++) {
            const double dx = i + 0.5 - (rc.left + w / 2.0), dy = j + 0.5 - (rc.top + h / 2.0);
            const double r2 = (w * w / 4.0) / (dx * dx / (dy * dy) + (w * w / 4.0) / (h * h / 4.0));
            const double e = std::sqrt(dx * dx / (dy * dy) * r2 + r2);
            const double d = dy == 0 ? -1 : std::sqrt(dx * dx + dy * dy) - e;
            mask.At(i, j) = static_cast<std::uint8_t>(d < -0.5 ? 255 : d >= 0.5 ? 0 : static_cast<int>((1 - (d + 0.5)) * 255));
        }
    return mask;
}

/// Each sample asks how many crossings lie at or left of it.
OwnMask PlainPolygon(int nWidth, int nHeight, const std::vector<PointF>& points, int nFactor)
{
    std::vector<CPoint> corners;
    for (const PointF& pt : points)
        corners.push_back({static_cast<int>(pt.x * nFactor), static_cast<int>(pt.y * nFactor)});
    const auto IsInside = [&](int sx, int sy) {
        bool bIn = false;
        for (std::size_t i = 0; i < corners.size(); i++) {
            CPoint a = corners[i], b = corners[(i + 1) % corners.size()];
            if (a.y > b.y)
                std::swap(a, b);
            if (sy >= a.y && sy < b.y && static_cast<int>(a.x + (sy + 0.5 - a.y) * (b.x - a.x) / (b.y - a.y)) <= sx)
                bIn = !bIn;
        }
        return bIn;
    };
    OwnMask mask(nWidth, nHeight);
    for (int y = 0; y < nHeight; y++)
        for (int x = 0; x < nWidth; x++) {
            int nSum = 0;
            for (int i = 0; i < nFactor * nFactor; i++)
                nSum += IsInside(x * nFactor + i % nFactor, y * nFactor + i / nFactor) ? 255 : 0;
            mask.At(x, y) = static_cast<std::uint8_t>(nSum / (nFactor * nFactor));
        }
    return mask;
}

OwnMask Polygon(int nWidth, int nHeight, const std::vector<PointF>& points, int nFactor)
{
    OwnMask mask(nWidth, nHeight);
    PolygonRaster raster(nWidth, nHeight, nFactor);
    raster.AddPolyline(points);
    raster.Render({0, 0, nWidth, nHeight}, mask.Plane());
    return mask;
}

} // namespace

TEST(Shapes, EllipsesOfEverySizeAndPlace)
{
    for (const CRect& rc : {CRect{0, 0, 1, 1}, {0, 0, 2, 1}, {0, 0, 1, 2}, {3, 4, 5, 30}, {3, 4, 40, 6}, {10, 5, 40, 30}, {10, 5, 41, 31}, {-20, -9, 30, 41},
                            {-100, 10, 300, 20}, {20, -50, 23, 90}, {30, 30, 31, 47}, {60, 40, 90, 70}, {5, 5, 5, 9}, {5, 5, 9, 5}, {-50, -50, -10, -10}, {0, 0, 61, 47}}) {
        OwnMask mask(61, 47);
        DrawEllipse(mask.Plane(), rc);
        EXPECT_EQ(mask, PlainEllipse(61, 47, rc)) << rc.left << ' ' << rc.top << ' ' << rc.right << ' ' << rc.bottom;
    }
    std::mt19937 random(4);
    for (int i = 0; i < 200; i++) {
        const int x = static_cast<int>(random() % 60) - 20, y = static_cast<int>(random() % 60) - 20;
        const CRect rc{x, y, x + static_cast<int>(random() % 70), y + static_cast<int>(random() % 70)};
        OwnMask mask(40, 33);
        DrawEllipse(mask.Plane(), rc);
        ASSERT_EQ(mask, PlainEllipse(40, 33, rc)) << rc.left << ' ' << rc.top << ' ' << rc.right << ' ' << rc.bottom;
    }
}

TEST(Shapes, RectanglesLeaveOutTheirRightAndLowerEdge)
{
    OwnMask mask(6, 5), expected(6, 5);
    DrawRectangle(mask.Plane(), {2, 1, 5, 3});
    for (int y = 1; y < 3; y++)
        for (int x = 2; x < 5; x++)
            expected.At(x, y) = 255;
    EXPECT_EQ(mask, expected);
    DrawRectangle(mask.Plane(), {-5, 4, 50, 90});
    EXPECT_EQ(std::count(mask.bytes.begin(), mask.bytes.end(), 255), 6 + 6);
    DrawRectangle(mask.Plane(), {7, 0, 9, 9});
    EXPECT_EQ(std::count(mask.bytes.begin(), mask.bytes.end(), 255), 6 + 6);
}

TEST(PolygonRaster, IsWhatEachSampleSays)
{
    std::mt19937 random(7);
    for (const int nFactor : {1, 3})
        for (const auto& size : c_aSizes)
            for (const int nPoints : {1, 2, 3, 4, 7, 40}) {
                std::vector<PointF> points;
                for (int i = 0; i < nPoints; i++)
                    points.push_back({size[0] * (random() % 1001 / 1000.0), size[1] * (random() % 1001 / 1000.0)});
                EXPECT_EQ(Polygon(size[0], size[1], points, nFactor), PlainPolygon(size[0], size[1], points, nFactor)) << nFactor << ' ' << nPoints;
            }
}

TEST(PolygonRaster, CornersOnWholePixelsFillThemWithoutSoftEdges)
{
    for (const int nFactor : {1, 3}) {
        OwnMask expected(12, 9);
        DrawRectangle(expected.Plane(), {2, 3, 9, 7});
        EXPECT_EQ(Polygon(12, 9, {{2, 3}, {9, 3}, {9, 7}, {2, 7}}, nFactor), expected);
        EXPECT_EQ(Polygon(12, 9, {{2, 3}, {2, 7}, {9, 7}, {9, 3}, {2, 3}}, nFactor), expected) << "the other way round, closed by hand";
    }
    // A third of a pixel is a third of the samples.
    const OwnMask soft = Polygon(4, 4, {{1, 1}, {2.34, 1}, {2.34, 2}, {1, 2}}, 3);
    EXPECT_EQ(soft.At(1, 1), 255);
    EXPECT_EQ(soft.At(2, 1), 85);
}

TEST(PolygonRaster, OverlapsAreHolesAndCallsGoOnFromEachOther)
{
    // The inner square is crossed twice.
    const std::vector<PointF> rings{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {3, 3}, {7, 3}, {7, 7}, {3, 7}, {3, 3}};
    const OwnMask mask = Polygon(10, 10, rings, 1);
    EXPECT_EQ(mask.At(1, 5), 255);
    EXPECT_EQ(mask.At(5, 5), 0);

    OwnMask pieces(10, 10);
    PolygonRaster raster(10, 10, 1);
    for (const PointF& pt : rings)
        raster.AddPolyline({&pt, 1});
    raster.Render({0, 0, 10, 10}, pieces.Plane());
    EXPECT_EQ(pieces, mask);
}

TEST(PolygonRaster, APartIsCutOutOfTheWhole)
{
    const std::vector<PointF> points{{1.5, 2.2}, {50.1, 9.7}, {30.4, 44.4}, {60.9, 20}, {4, 39.5}};
    const OwnMask whole = Polygon(61, 47, points, 3);
    const CRect rc{11, 7, 43, 40};
    OwnMask part(rc.Width(), rc.Height()), expected = part;
    PolygonRaster raster(61, 47, 3);
    raster.AddPolyline(points);
    raster.Render(rc, part.Plane());
    for (int y = 0; y < rc.Height(); y++)
        for (int x = 0; x < rc.Width(); x++)
            expected.At(x, y) = whole.At(rc.left + x, rc.top + y);
    EXPECT_EQ(part, expected);
}
