// The marching outline against one that is drawn anew for each phase, and the dialogs of the Select menu.

#include "selection/gui/MaskDialog.h"
#include "selection/gui/SelectionOutline.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <random>

using namespace kestrune;

namespace {

constexpr QRgb c_ground = 0xFF3366CC;
constexpr int c_nSide = 40;

std::vector<MaskSegment> SomeBoundary(unsigned nSeed)
{
    std::mt19937 random(nSeed);
    std::vector<std::uint8_t> mask(c_nSide * c_nSide);
    for (std::uint8_t& n : mask)
        n = random() % 5 ? 0 : 255;
    std::vector<MaskSegment> segments;
    TraceBoundary({mask.data(), c_nSide, c_nSide}, {0, 0, c_nSide, c_nSide}, segments);
    return segments;
}

/// Each piece with both of its ends, in stripes that move one pixel a phase.
QImage Plain(const std::vector<MaskSegment>& segments, const OutlinePlace& place, int nPhase)
{
    QImage image(place.sizeClient.cx, place.sizeClient.cy, QImage::Format_RGB32);
    image.fill(c_ground);
    const auto X = [&](int x) {
        const int n = static_cast<int>(x * static_cast<double>(place.fZoom)) + place.ptOrigin.x;
        return x == place.sizePicture.cx && n == place.sizeClient.cx ? n - 1 : n;
    };
    const auto Y = [&](int y) {
        const int n = static_cast<int>(y * static_cast<double>(place.fZoom)) + place.ptOrigin.y;
        return y == place.sizePicture.cy && n == place.sizeClient.cy ? n - 1 : n;
    };
    for (const MaskSegment& s : segments)
        for (int y = Y(s.y1); y <= Y(s.y2); y++)
            for (int x = X(s.x1); x <= X(s.x2); x++)
                if (image.valid(x, y))
                    image.setPixel(x, y, ((x + y + nPhase) & 7) < 4 ? 0xFF000000 : 0xFFFFFFFF);
    return image;
}

QImage Drawn(const CSelectionOutline& outline, const OutlinePlace& place)
{
    QImage image(place.sizeClient.cx, place.sizeClient.cy, QImage::Format_RGB32);
    image.fill(c_ground);
    QPainter painter(&image);
    outline.Draw(painter, {0, 0, place.sizeClient.cx, place.sizeClient.cy});
    return image;
}

OutlinePlace Place(float fZoom, CPoint ptOrigin, CSize sizeClient, std::uint32_t nMask = 1)
{
    return {nMask, fZoom, ptOrigin, sizeClient, {c_nSide, c_nSide}};
}

} // namespace

TEST(SelectionOutline, MarchesAtAnyZoomAndPlace)
{
    const std::vector<MaskSegment> segments = SomeBoundary(1);
    for (const OutlinePlace& place : {Place(1, {0, 0}, {40, 40}), Place(1, {30, 17}, {200, 90}), Place(3, {-35, -50}, {70, 64}), Place(8, {-100, 5}, {150, 130}),
                                      Place(0.33f, {2, 3}, {20, 20}), Place(32, {-600, -700}, {333, 129}), Place(1, {500, 0}, {64, 64}), Place(2, {0, 0}, {1, 1})}) {
        CSelectionOutline outline;
        EXPECT_TRUE(outline.Follow(segments, place));
        for (int nTick = 0; nTick < 2 * CSelectionOutline::c_nPhases + 3; nTick++) {
            EXPECT_EQ(outline.Phase(), nTick % CSelectionOutline::c_nPhases);
            ASSERT_EQ(Drawn(outline, place), Plain(segments, place, outline.Phase())) << place.fZoom << ' ' << nTick;
            outline.Tick();
        }
    }
}

TEST(SelectionOutline, IsTakenAnewOnlyForAnotherPlaceOrMask)
{
    CSelectionOutline outline;
    const std::vector<MaskSegment> first = SomeBoundary(1), second = SomeBoundary(2);
    const OutlinePlace place = Place(2, {5, 5}, {100, 90});
    EXPECT_TRUE(outline.Follow(first, place));
    outline.Tick();
    EXPECT_FALSE(outline.Follow(first, place));
    EXPECT_TRUE(outline.Follow(second, Place(2, {5, 5}, {100, 90}, 2)));
    EXPECT_EQ(outline.Phase(), 1) << "it goes on where it was";
    EXPECT_EQ(Drawn(outline, place), Plain(second, place, 1));
    EXPECT_TRUE(outline.Follow(second, Place(2, {-5, 5}, {100, 90}, 2)));
    EXPECT_TRUE(outline.Follow({}, Place(2, {-5, 5}, {100, 90}, 3)));
    EXPECT_TRUE(outline.IsEmpty());
    outline.Tick();
    outline.Forget();
    EXPECT_TRUE(outline.Follow(first, place));
}

TEST(SelectionOutline, TilesHoldAllOfItAndDrawingStaysInside)
{
    CSelectionOutline outline;
    const std::vector<MaskSegment> box{{3, 3, 30, 3, 1}, {3, 3, 3, 30, 1}, {30, 3, 30, 30, 0}, {3, 30, 30, 30, 0}};
    const OutlinePlace place = Place(16, {0, 0}, {600, 600});
    outline.Follow(box, place);
    const QImage plain = Plain(box, place, 0);
    int nOutside = 0;
    for (int y = 0; y < 600; y++)
        for (int x = 0; x < 600; x++)
            nOutside += plain.pixel(x, y) != c_ground && std::ranges::none_of(outline.Tiles(), [&](const CRect& rc) { return rc.Contains(x, y); });
    EXPECT_EQ(nOutside, 0);
    std::int64_t nArea = 0;
    for (const CRect& rc : outline.Tiles())
        nArea += std::int64_t{rc.Width()} * rc.Height();
    EXPECT_LT(nArea, 600 * 600 / 2) << "the middle is left alone";

    QImage part(600, 600, QImage::Format_RGB32);
    part.fill(c_ground);
    QPainter painter(&part);
    outline.Draw(painter, {100, 40, 210, 60});
    painter.end();
    QImage expected(600, 600, QImage::Format_RGB32);
    expected.fill(c_ground);
    for (int y = 40; y < 60; y++)
        for (int x = 100; x < 210; x++)
            expected.setPixel(x, y, plain.pixel(x, y));
    EXPECT_EQ(part, expected);
}

TEST(SelectionOutline, PausesNestAndAResumeTooManyDoesNothing)
{
    CSelectionOutline outline;
    outline.Resume();
    EXPECT_FALSE(outline.IsPaused());
    outline.Pause();
    outline.Pause();
    outline.Resume();
    EXPECT_TRUE(outline.IsPaused());
    outline.Resume();
    EXPECT_FALSE(outline.IsPaused());
}

TEST(MaskDialog, KeepsItsNumberForTheNextTimeUnlessCancelled)
{
    const auto Ask = [](int nCommand, const char* pszValue, bool bOk) {
        CPaintDialog::SetDriver([=](CPaintDialog& dialog) {
            EXPECT_FALSE(dialog.SetKey(nCommand == 30134 ? "Width" : "Radius", QString::fromLatin1(pszValue)).has_value());
            if (bOk)
                dialog.accept();
            return dialog.result();
        });
        CMaskDialog dialog(*FindMaskDialog(nCommand));
        const std::optional<double> number = dialog.Ask();
        CPaintDialog::SetDriver({});
        return number;
    };
    const auto Shown = [](int nCommand) {
        double fShown = 0;
        CPaintDialog::SetDriver([&](CPaintDialog& dialog) {
            dialog.accept();
            return dialog.result();
        });
        CMaskDialog dialog(*FindMaskDialog(nCommand));
        fShown = dialog.Ask().value_or(-1);
        CPaintDialog::SetDriver({});
        return fShown;
    };
    for (const int nCommand : {30060, 30134, 30061, 30062}) {
        EXPECT_EQ(Ask(nCommand, "17", true), 17.0) << nCommand;
        EXPECT_EQ(Ask(nCommand, "40", false), std::nullopt) << nCommand;
        EXPECT_EQ(Shown(nCommand), 17.0) << nCommand;
    }
    EXPECT_NEAR(Ask(30060, "2.5", true).value_or(0), 2.5, 1e-6);
    EXPECT_EQ(FindMaskDialog(30056), nullptr);
}
