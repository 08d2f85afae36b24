// The preview pane's rectangles: opening, zoom steps and their asymmetry, panning.

#include "filters/PreviewGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;

namespace {

constexpr CPoint c_ptMiddle{85, 85}; ///< of the pane, in the dialog

void ZoomTo(CPreviewGeometry& geometry, int nPercent)
{
    while (geometry.GetPercent() < nPercent && geometry.ZoomIn()) { }
    while (geometry.GetPercent() > nPercent && geometry.ZoomOut()) { }
    ASSERT_EQ(geometry.GetPercent(), nPercent);
}

} // namespace

TEST(PreviewGeometry, ALargePictureOpensAtItsMiddle)
{
    const CPreviewGeometry geometry({4001, 3000});
    EXPECT_EQ(geometry.SourceRect(), (CRect{1925, 1425, 2075, 1575}));
    EXPECT_EQ(geometry.DestRect(), (CRect{10, 10, 160, 160}));
    EXPECT_EQ(geometry.FilterRect(), geometry.SourceRect());
    EXPECT_EQ(geometry.GetPercent(), 100);
    EXPECT_FALSE(geometry.FitsPane());
}

TEST(PreviewGeometry, ASmallPictureStandsWholeInTheMiddle)
{
    const CPreviewGeometry geometry({61, 1});
    EXPECT_EQ(geometry.SourceRect(), (CRect{0, 0, 61, 1})) << "the last column of an odd width shows too";
    EXPECT_EQ(geometry.DestRect(), (CRect{10 + 44, 10 + 74, 10 + 44 + 61, 10 + 74 + 1}));
    EXPECT_EQ(geometry.FilterRect(), (CRect{0, 0, 61, 1}));
    EXPECT_TRUE(geometry.FitsPane());
}

TEST(PreviewGeometry, TheZoomRunsFromAFifthToTen)
{
    CPreviewGeometry geometry({2000, 2000});
    for (int nPercent = 80; nPercent >= 20; nPercent -= 20) {
        EXPECT_TRUE(geometry.ZoomOut());
        EXPECT_EQ(geometry.GetPercent(), nPercent);
    }
    EXPECT_FALSE(geometry.ZoomOut());
    for (int nPercent = 40; nPercent <= 1000; nPercent += 20) {
        EXPECT_TRUE(geometry.ZoomIn());
        EXPECT_EQ(geometry.GetPercent(), nPercent);
        EXPECT_EQ(geometry.GetZoom(), static_cast<float>(nPercent / 20) * 0.2f);
    }
    EXPECT_FALSE(geometry.ZoomIn());
    EXPECT_TRUE(geometry.ZoomActual());
    EXPECT_EQ(geometry.GetZoom(), 1.0f);
    EXPECT_FALSE(geometry.ZoomActual());
}

TEST(PreviewGeometry, TheViewIsThePaneDividedByTheZoom)
{
    CPreviewGeometry geometry({2000, 1000});
    ZoomTo(geometry, 200);
    EXPECT_EQ(geometry.SourceRect(), (CRect{963, 463, 1037, 537})) << "75 pixels, 37 each way";
    EXPECT_EQ(geometry.FilterRect(), (CRect{963, 463, 1038, 538}));
    EXPECT_NEAR(geometry.PaintScale(), 150.0 / 74, 1e-9);
    ZoomTo(geometry, 120); // 1.2 in single precision is a little more than 1.2
    EXPECT_EQ(geometry.FilterRect().Width(), 124);
}

TEST(PreviewGeometry, LargerAndSmallerStepsDiffer)
{
    // 250 pixels at 0.6 cover 150 pane pixels: coming from above they fill the pane, coming from below they fit it.
    CPreviewGeometry fromAbove({250, 250});
    ZoomTo(fromAbove, 60);
    EXPECT_EQ(fromAbove.FilterRect().Width(), 249);
    EXPECT_FALSE(fromAbove.FitsPane());
    CPreviewGeometry fromBelow({250, 250});
    ZoomTo(fromBelow, 40);
    EXPECT_TRUE(fromBelow.FitsPane());
    ZoomTo(fromBelow, 60);
    EXPECT_EQ(fromBelow.FilterRect(), (CRect{0, 0, 250, 250}));
    EXPECT_EQ(fromBelow.DestRect(), (CRect{10, 10, 160, 160}));
}

TEST(PreviewGeometry, ASmallerZoomBringsTheCentreBack)
{
    CPreviewGeometry geometry({1000, 100});
    ASSERT_TRUE(geometry.BeginDrag(c_ptMiddle));
    EXPECT_TRUE(geometry.Drag({c_ptMiddle.x + 5000, c_ptMiddle.y + 40}));
    EXPECT_EQ(geometry.SourceRect(), (CRect{0, 0, 150, 100}))
        << "the far left; along the height there is nothing to pan";
    EXPECT_TRUE(geometry.EndDrag());
    ZoomTo(geometry, 40);
    EXPECT_EQ(geometry.SourceRect().left, 0);
    EXPECT_EQ(geometry.DestRect(), (CRect{10, 10 + 55, 160, 10 + 95}));
    ZoomTo(geometry, 20);
    EXPECT_EQ(geometry.SourceRect(), (CRect{0, 0, 748, 100}));
}

TEST(PreviewGeometry, PanningFollowsThePointerAndStopsAtTheEdges)
{
    CPreviewGeometry geometry({1000, 800});
    ZoomTo(geometry, 200);
    const CRect rcBefore = geometry.SourceRect();
    EXPECT_FALSE(geometry.BeginDrag({9, 50})) << "beside the picture";
    EXPECT_FALSE(geometry.Drag({60, 60}));
    EXPECT_FALSE(geometry.EndDrag());
    ASSERT_TRUE(geometry.BeginDrag({80, 80}));
    EXPECT_TRUE(geometry.Drag({60, 70}));
    EXPECT_TRUE(geometry.Drag({40, 60}));
    EXPECT_EQ(geometry.SourceRect(),
              (CRect{rcBefore.left + 20, rcBefore.top + 10, rcBefore.right + 20, rcBefore.bottom + 10}));
    EXPECT_FALSE(geometry.Drag({41, 61})) << "half an image pixel";
    geometry.Drag({-20000, -20000});
    EXPECT_EQ(geometry.SourceRect().right, 1000);
    EXPECT_EQ(geometry.SourceRect().bottom, 800);
    EXPECT_EQ(geometry.FilterRect().right, 1000) << "the odd view's last pixel must not lie outside";
    geometry.Drag({20000, 20000});
    EXPECT_EQ(geometry.SourceRect().left, 0);
    EXPECT_EQ(geometry.SourceRect().top, 0);
}

TEST(PreviewGeometry, EveryPlaceStaysInsidePictureAndPane)
{
    for (const CSize size :
         {CSize{1, 1}, CSize{1, 900}, CSize{149, 150}, CSize{150, 151}, CSize{151, 749}, CSize{752, 3000}})
        for (const int nPane : {150, 180}) {
            CPreviewGeometry geometry(size, nPane);
            const auto check = [&] {
                const CRect picture{0, 0, size.cx, size.cy}, pane{10, 10, 10 + nPane, 10 + nPane};
                for (const CRect& rc : {geometry.FilterRect(), geometry.SourceRect()}) {
                    EXPECT_EQ(Intersect(rc, picture), rc)
                        << size.cx << " x " << size.cy << " at " << geometry.GetPercent();
                    EXPECT_FALSE(rc.IsEmpty());
                }
                if (!geometry.DestRect().IsEmpty()) { // a picture of a pixel's width is lost at a small zoom
                    EXPECT_EQ(Intersect(geometry.DestRect(), pane), geometry.DestRect());
                }
                EXPECT_TRUE(std::isfinite(geometry.PaintScale()));
            };
            const auto pan = [&](CPoint to) {
                if (geometry.BeginDrag({10 + nPane / 2, 10 + nPane / 2}))
                    geometry.Drag(to);
                geometry.EndDrag();
                check();
            };
            for (int i = 0; i < 120; i++) {
                i % 3 == 2 ? geometry.ZoomOut() : geometry.ZoomIn();
                check();
                pan({i * 97 % 400 - 200, i * 31 % 400 - 200});
            }
            while (geometry.ZoomOut())
                check();
            geometry.ZoomActual();
            check();
        }
}
