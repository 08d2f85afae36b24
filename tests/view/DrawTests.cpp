#include "ViewTestKit.h"

#include "doc/ScreenScale.h"

#include <QPaintEvent>
#include <QScrollBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;
using namespace kestrune::test;

namespace {

constexpr QRgb c_back = 0xFFC0C0C0, c_stripe = 0xFFB4B4B4;

/// Counts the pixels that the view was asked to repaint.
class CCountingView : public CPaintView {
public:
    using CPaintView::CPaintView;
    QRegion m_region;

protected:
    void paintEvent(QPaintEvent* pEvent) override
    {
        m_region += pEvent->region();
        CPaintView::paintEvent(pEvent);
    }
};

int AreaOf(const QRegion& region)
{
    int n = 0;
    for (const QRect& rc : region)
        n += rc.width() * rc.height();
    return n;
}

/// What the screen must show, pixel by pixel from the plain rules: at 100 % and above the picture's pixel under the client
/// pixel, below it what the scaler gives for the whole picture at once, and stripes around.
QImage Reference(const CPaintView& view, const Picture& picture)
{
    const CSize client = view.GetClientSize();
    const double z = view.GetZoom();
    const int w = static_cast<int>(picture.doc.m_pImage->m_nWidth * z), h = static_cast<int>(picture.doc.m_pImage->m_nHeight * z);
    std::vector<std::uint32_t> scaled(static_cast<std::size_t>(w) * h);
    if (z < 1)
        ScaleToScreen(picture.doc.m_pImage->m_Bitmap, z, {0, 0, w, h}, scaled.data(), w * 4);
    const CPoint scroll = view.GetScrollPosition();
    const int ox = client.cx >= w ? (client.cx - w) / 2 : 0, oy = client.cy >= h ? (client.cy - h) / 2 : 0;
    QImage image(client.cx, client.cy, QImage::Format_RGB32);
    for (int y = 0; y < client.cy; y++) {
        for (int x = 0; x < client.cx; x++) {
            const int sx = x + scroll.x - ox, sy = y + scroll.y - oy;
            if (sx < 0 || sy < 0 || sx >= w || sy >= h)
                image.setPixel(x, y, (x + scroll.x + y + scroll.y) % 8 < 2 ? c_stripe : c_back);
            else if (z < 1)
                image.setPixel(x, y, scaled[static_cast<std::size_t>(sy) * w + sx]);
            else
                image.setPixel(x, y, picture.Pixel(static_cast<int>(sx / z), static_cast<int>(sy / z)));
        }
    }
    return image;
}

} // namespace

TEST(Draw, EveryPixelAtSeveralZoomsAndPlaces)
{
    Picture picture(233, 171);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 200, 160);
    for (float fZoom : {1.0f, 2.0f, 3.0f, 13.0f, 32.0f, 0.75f, 0.5f, 0.33f, 0.125f}) {
        view.SetZoom(fZoom);
        const CPoint end{view.horizontalScrollBar()->maximum(), view.verticalScrollBar()->maximum()};
        for (CPoint scroll : {CPoint{0, 0}, CPoint{end.x / 3, end.y / 2 + 1}, end}) {
            view.ScrollToPosition(scroll);
            EXPECT_EQ(Grab(view), Reference(view, picture)) << fZoom << " at " << scroll.x << "," << scroll.y;
        }
    }
}

TEST(Draw, SmallPictureIsCentredOnBothAxesAlone)
{
    Picture picture(60, 500);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 201, 160);
    const CSize client = view.GetClientSize();
    EXPECT_LT(client.cx, 201); // the vertical bar
    EXPECT_EQ(view.GetImageOrigin(), (CPoint{(client.cx - 60) / 2, 0}));
    EXPECT_EQ(Grab(view), Reference(view, picture));
    view.SetZoom(0.25f);
    EXPECT_EQ(view.GetClientSize().cx, 201);
    EXPECT_EQ(view.GetImageOrigin(), (CPoint{(201 - 15) / 2, (160 - 125) / 2}));
    EXPECT_EQ(Grab(view), Reference(view, picture));
}

TEST(Draw, OnlyWhatChangedIsRepaintedAndItIsRight)
{
    Picture picture(400, 300);
    CNotingHost host;
    CCountingView view(picture.doc, host);
    ShowView(view, 300, 200);
    for (float fZoom : {1.0f, 3.0f, 0.33f}) {
        view.SetZoom(fZoom);
        view.ScrollToPosition({31, 17});
        QApplication::processEvents();
        view.m_region = {};
        const CRect rc{40, 30, 52, 41};
        LBitmapBase& bitmap = picture.doc.m_pImage->m_Bitmap;
        for (int y = rc.top; y < rc.bottom; y++)
            std::fill_n(bitmap.WriteRow(y) + rc.left * 3, rc.Width() * 3, static_cast<std::uint8_t>(fZoom * 60));
        picture.doc.m_pImage->Site().RepaintRect(rc);
        QApplication::processEvents();
        EXPECT_LE(AreaOf(view.m_region), (12 * fZoom + 4) * (11 * fZoom + 4)) << fZoom;
        EXPECT_GE(AreaOf(view.m_region), 12 * fZoom * 11 * fZoom) << fZoom;
        EXPECT_EQ(view.grab(view.viewport()->geometry()).toImage().convertToFormat(QImage::Format_RGB32), Reference(view, picture));
    }
}

TEST(Draw, ScrollingRepaintsTheStrip)
{
    Picture picture(900, 700);
    CNotingHost host;
    CCountingView view(picture.doc, host);
    ShowView(view, 300, 200);
    view.SetZoom(2);
    QApplication::processEvents();
    const CSize client = view.GetClientSize();
    view.m_region = {};
    view.verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QApplication::processEvents();
    EXPECT_EQ(AreaOf(view.m_region), client.cx * 16);

    ToolOverlay overlay;
    overlay.aHandles.push_back({50, 60, 61, 71});
    view.SetOverlay(overlay);
    QApplication::processEvents();
    view.m_region = {};
    view.horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QApplication::processEvents();
    EXPECT_LE(AreaOf(view.m_region), client.cy * 16 + 2 * 15 * 15); // the handle's old and new place beside the strip
    EXPECT_GT(AreaOf(view.m_region), client.cy * 16);
}

TEST(Draw, CoordinatesTruncate)
{
    Picture picture(100, 80);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 201, 161);
    EXPECT_EQ(view.GetImageOrigin(), (CPoint{50, 40}));
    EXPECT_EQ(view.ClientToImage(CPoint{50, 40}), (CPoint{0, 0}));
    EXPECT_EQ(view.ClientToImage(CPoint{49, 38}), (CPoint{-1, -2}));
    EXPECT_EQ(view.ImageToClient(CPoint{99, 79}), (CPoint{149, 119}));
    view.SetZoom(4);
    view.ScrollToPosition({101, 50});
    EXPECT_EQ(view.ClientToImage(CPoint{0, 0}), (CPoint{25, 12}));
    EXPECT_EQ(view.ClientToImage(CPoint{3, 2}), (CPoint{26, 13}));
    EXPECT_EQ(view.ImageToClient(CRect{25, 12, 27, 14}), (CRect{-1, -2, 7, 6}));
    view.SetZoom(0.5f);
    EXPECT_EQ(view.GetImageOrigin(), (CPoint{75, 60}));
    EXPECT_EQ(view.ClientToImage(CPoint{74, 59}), (CPoint{-2, -2}));
    EXPECT_EQ(view.ImageToClient(CPoint{3, 5}), (CPoint{76, 62}));
    for (CPoint pt : {CPoint{0, 0}, CPoint{17, 99}})
        EXPECT_EQ(view.PointFromViewport(view.PointToViewport(pt)), pt);
}

TEST(Draw, OverlayIsSeenAndRemovedAgain)
{
    Picture picture(400, 300);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 300, 200);
    const QImage before = Grab(view);
    ToolOverlay overlay;
    overlay.AddRect({20, 30, 120, 90});
    overlay.aEllipses.push_back({30, 40, 80, 70});
    overlay.aHandles.push_back({15, 25, 25, 35});
    view.SetOverlay(overlay);
    const QImage with = Grab(view);
    int nChanged = 0;
    for (int y = 0; y < with.height(); y++) {
        for (int x = 0; x < with.width(); x++) {
            if (with.pixel(x, y) == before.pixel(x, y))
                continue;
            nChanged++;
            EXPECT_TRUE(with.pixel(x, y) == 0xFFFFFFFF || with.pixel(x, y) == 0xFF000000);
            EXPECT_TRUE(x >= 15 && x < 120 && y >= 25 && y < 90) << x << "," << y;
        }
    }
    EXPECT_GE(nChanged, 2 * (100 + 60) - 30);
    view.SetOverlay({});
    EXPECT_EQ(Grab(view), before);
}

TEST(Draw, TheMarchOfTheOutlineLeavesTheShadeBelowIt)
{
    Picture picture(120, 100);
    CPaintImage& image = *picture.doc.m_pImage;
    std::fill_n(image.m_pMask.get(), 120 * 100, std::uint8_t{0});
    for (int y = 20; y < 80; y++)
        std::fill_n(image.m_pMask.get() + y * 120 + 20 + y / 4, 60, std::uint8_t{255}); // steps: lines of the outline stand beside each other
    image.InvalidateMaskBounds();
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 120, 100);
    ToolOverlay overlay;
    overlay.ShadeAround({50, 40, 60, 50}, {0, 0, 120, 100});
    view.SetOverlay(overlay);
    QApplication::processEvents();
    const auto onScreen = [&] { return view.screen()->grabWindow(view.winId()).toImage().convertToFormat(QImage::Format_RGB32); };
    const QImage before = onScreen();
    QTest::qWait(450); // four steps
    const QImage after = onScreen();
    ASSERT_EQ(before.size(), after.size());
    int nChanged = 0;
    for (int y = 0; y < after.height(); y++)
        for (int x = 0; x < after.width(); x++) {
            const QRgb a = before.pixel(x, y), b = after.pixel(x, y);
            nChanged += a != b;
            if (a != b) { // black and white change places, nothing else
                EXPECT_TRUE(b == qRgb(0, 0, 0) || b == qRgb(255, 255, 255)) << x << ' ' << y;
            }
        }
    EXPECT_GT(nChanged, 20);
}
