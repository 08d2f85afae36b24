#include "DocTestTools.h"

#include "doc/NearestColor.h"
#include "doc/Palettes.h"
#include "doc/Quantise.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include <cmath>
#include <set>

using namespace kestrune;
using namespace kestrune::test;

namespace {

LBitmapBase Reduced(const LBitmapBase& source, int nBits, std::uint32_t dwFlags, std::span<const RGBQUAD> palette = {})
{
    LBitmapBase bitmap = source;
    EXPECT_TRUE(bitmap.ColorRes(nBits, dwFlags, palette));
    EXPECT_EQ(bitmap.GetBitsPerPixel(), nBits);
    EXPECT_EQ(bitmap.Palette().size(), std::size_t{1} << nBits);
    return bitmap;
}
LBitmapBase Expanded(const LBitmapBase& source)
{
    LBitmapBase bitmap = source;
    EXPECT_TRUE(bitmap.ColorRes(24, CRF_TRUECOLOR));
    return bitmap;
}

double MeanSquare(const LBitmapBase& a, const LBitmapBase& b)
{
    const auto p = BytesOf(a), q = BytesOf(b);
    double fSum = 0;
    for (std::size_t i = 0; i < p.size(); i++)
        fSum += (p[i] - q[i]) * (p[i] - q[i]);
    return fSum / static_cast<double>(p.size());
}

/// Mean levels of a rectangle: blue, green, red.
std::array<double, 3> MeanOf(const LBitmapBase& bitmap, const CRect& rc)
{
    std::array<double, 3> mean{};
    for (int y = rc.top; y < rc.bottom; y++)
        for (int x = rc.left * 3; x < rc.right * 3; x++)
            mean[x % 3] += bitmap.Row(y)[x];
    for (double& v : mean)
        v /= rc.Width() * rc.Height();
    return mean;
}

} // namespace

TEST(ColorResTest, PicturesWithFewColoursAreReproducedExactly)
{
    std::mt19937 random(1);
    for (const auto& [nBits, nColors] : {std::pair{1, 1}, {1, 2}, {4, 3}, {4, 16}, {8, 17}, {8, 255}, {8, 256}}) {
        std::set<COLORREF> colors;
        while (static_cast<int>(colors.size()) < nColors)
            colors.insert(random() & 0xffffff);
        const std::vector<COLORREF> list(colors.begin(), colors.end());
        LBitmapBase source;
        source.Create(60, 50, 24);
        for (int i = 0; i < 3000; i++)
            source.PutPixelColor(i % 60, i / 60, list[i < nColors ? i : random() % nColors]);
        for (const std::uint32_t dwDither : {CRF_NODITHER, CRF_ERRORDIFFUSION}) {
            const LBitmapBase reduced = Reduced(source, nBits, CRF_OPTIMIZEDPALETTE | dwDither);
            ASSERT_EQ(BytesOf(Expanded(reduced)), BytesOf(source)) << nBits << ' ' << nColors;
        }
        // Up to more bits: its own palette, the same pixels.
        const LBitmapBase few = Reduced(source, nBits, CRF_OPTIMIZEDPALETTE | CRF_NODITHER);
        EXPECT_EQ(BytesOf(Reduced(few, 8, CRF_OPTIMIZEDPALETTE)), BytesOf(few));
    }
}

TEST(ColorResTest, TheNearestEntryIsFoundWithTheLowestIndexOnATie)
{
    std::mt19937 random(2);
    for (const int nColors : {1, 2, 16, 256}) {
        std::vector<RGBQUAD> palette(nColors);
        for (RGBQUAD& q : palette) // coarse levels, so that ties are common
            q = {static_cast<std::uint8_t>(random() % 9 * 31), static_cast<std::uint8_t>(random() % 9 * 31), static_cast<std::uint8_t>(random() % 9 * 31), 0};
        const CNearestColor nearest(palette);
        for (int i = 0; i < 60000; i++) {
            const int r = random() % 256, g = random() % 256, b = random() % 256;
            ASSERT_EQ(nearest.Find(r, g, b), NearestIndex(palette, r, g, b));
        }
    }
    EXPECT_EQ(NearestIndex(std::vector<RGBQUAD>{{10, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}, 0, 0, 5), 0);
}

TEST(ColorResTest, TheFittedPaletteIsGoodAndTheSameEverywhere)
{
    const LBitmapBase photo = PhotoLike(300, 200, 3);
    const double fFitted = MeanSquare(Expanded(Reduced(photo, 8, CRF_OPTIMIZEDPALETTE | CRF_NODITHER)), photo);
    const double fFixed = MeanSquare(Expanded(Reduced(photo, 8, CRF_FIXEDPALETTE | CRF_NODITHER)), photo);
    EXPECT_LT(fFitted, 20) << "mean squared error a channel";
    EXPECT_LT(fFitted * 5, fFixed);
    EXPECT_LT(MeanSquare(Expanded(Reduced(photo, 4, CRF_OPTIMIZEDPALETTE | CRF_NODITHER)), photo), 220);

    // A picture of a narrow range of levels is cut as finely as a bright one: 4096 colours, each within a step of an entry.
    LBitmapBase dark;
    dark.Create(64, 64, 24);
    for (int i = 0; i < 4096; i++)
        dark.PutPixelColor(i % 64, i / 64, Rgb(i & 15, i >> 4 & 15, i >> 8 & 15));
    EXPECT_LT(MeanSquare(Expanded(Reduced(dark, 8, CRF_OPTIMIZEDPALETTE | CRF_NODITHER)), dark), 1.5);

    const auto palette = OptimisedPalette(photo, 64);
    EXPECT_EQ(palette.size(), 64u);
    tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
    EXPECT_EQ(OptimisedPalette(photo, 64), palette);
}

TEST(ColorResTest, DithersConserveTheMean)
{
    // Areas of one colour each, reduced by every palette that can mix it.
    struct {
        int nBits;
        std::uint32_t dwPalette;
        bool bGrey; ///< only greys can be mixed
    } const rows[] = {{1, CRF_FIXEDPALETTE, true}, {4, CRF_GRAYPALETTE, true}, {8, CRF_FIXEDPALETTE, false}, {8, CRF_NETSCAPEPALETTE, false}};
    std::mt19937 random(4);
    for (const auto& row : rows) {
        for (const std::uint32_t dwDither : {CRF_ERRORDIFFUSION, CRF_ORDEREDDITHER}) {
            for (int i = 0; i < 12; i++) {
                LBitmapBase area;
                area.Create(128, 128, 24);
                const int v = random() % 256;
                area.Fill(row.bGrey ? Rgb(v, v, v) : random() & 0xffffff);
                const auto wanted = MeanOf(area, {0, 0, 1, 1});
                const auto got = MeanOf(Expanded(Reduced(area, row.nBits, row.dwPalette | dwDither)), {0, 0, 128, 128});
                for (int c = 0; c < 3; c++)
                    EXPECT_NEAR(got[c], wanted[c], dwDither == CRF_ERRORDIFFUSION ? 1.5 : 4.5) << row.nBits << ' ' << row.dwPalette << ' ' << dwDither;
            }
        }
    }
    // A photograph at 1 bit keeps the brightness of each part.
    const LBitmapBase photo = PhotoLike(256, 256, 5);
    const LBitmapBase bits = Expanded(Reduced(photo, 1, 0x10001));
    LBitmapBase grey = photo;
    grey.GrayScale(8);
    grey = Expanded(grey);
    for (int y = 0; y < 256; y += 64)
        for (int x = 0; x < 256; x += 64)
            EXPECT_NEAR(MeanOf(bits, {x, y, x + 64, y + 64})[0], MeanOf(grey, {x, y, x + 64, y + 64})[0], 4);
}

TEST(ColorResTest, ErrorDiffusionBeatsTheNearestColourSeenFromAfar)
{
    const LBitmapBase photo = PhotoLike(256, 192, 6);
    const auto FromAfar = [&](std::uint32_t dwFlags) {
        LBitmapBase small = Expanded(Reduced(photo, 4, dwFlags)), wanted = photo;
        small.Size(32, 24, SIZE_AREA);
        wanted.Size(32, 24, SIZE_AREA);
        return MeanSquare(small, wanted);
    };
    EXPECT_LT(FromAfar(CRF_OPTIMIZEDPALETTE | CRF_ERRORDIFFUSION) * 1.5, FromAfar(CRF_OPTIMIZEDPALETTE | CRF_NODITHER));
    EXPECT_LT(FromAfar(CRF_OPTIMIZEDPALETTE | CRF_ORDEREDDITHER), FromAfar(CRF_OPTIMIZEDPALETTE | CRF_NODITHER));
}

TEST(ColorResTest, PalettesAreThoseOfTheFlags)
{
    const LBitmapBase photo = PhotoLike(40, 30, 7);
    const std::vector<RGBQUAD> user{{1, 2, 3, 0}, {200, 100, 50, 0}};
    EXPECT_EQ(Reduced(photo, 8, CRF_USERPALETTE, user).Palette()[1], user[1]);
    const LBitmapBase two = Reduced(photo, 8, CRF_USERPALETTE | CRF_ERRORDIFFUSION, user);
    for (const std::uint8_t i : BytesOf(two))
        ASSERT_LT(i, 2) << "the black entries behind the palette are not part of it";
    EXPECT_TRUE(Reduced(photo, 8, CRF_GRAYPALETTE).IsGrayScale());
    EXPECT_TRUE(Reduced(photo, 1, 0x10001).IsGrayScale());
    EXPECT_EQ(Reduced(photo, 4, CRF_FIXEDPALETTE).Palette()[9], (RGBQUAD{0, 0, 255, 0}));
    EXPECT_EQ(Reduced(photo, 8, CRF_NETSCAPEPALETTE).Palette()[215], (RGBQUAD{255, 255, 255, 0}));
    EXPECT_EQ(Reduced(photo, 8, CRF_FIXEDPALETTE).Palette()[251], (RGBQUAD{255, 255, 255, 0}));
    LBitmapBase bitmap = photo;
    EXPECT_FALSE(bitmap.ColorRes(16, CRF_TRUECOLOR));
    EXPECT_TRUE(bitmap.ColorRes(24, CRF_TRUECOLOR));
    EXPECT_EQ(BytesOf(bitmap), BytesOf(photo));
}

TEST(ColorResTest, GreyScaleWeighsAndKeepsGreys)
{
    LBitmapBase bitmap;
    bitmap.Create(260, 1, 24);
    for (int v = 0; v < 256; v++)
        bitmap.PutPixelColor(v, 0, Rgb(v, v, v));
    bitmap.PutPixelColor(256, 0, Rgb(255, 0, 0));
    bitmap.PutPixelColor(257, 0, Rgb(0, 255, 0));
    bitmap.PutPixelColor(258, 0, Rgb(0, 0, 255));
    bitmap.PutPixelColor(259, 0, Rgb(10, 200, 90));
    LBitmapBase indexed = Reduced(bitmap, 8, CRF_NETSCAPEPALETTE);
    const LBitmapBase cube = Expanded(indexed);
    bitmap.GrayScale(8);
    ASSERT_EQ(bitmap.GetBitsPerPixel(), 8);
    for (int v = 0; v < 256; v++)
        ASSERT_EQ(bitmap.Row(0)[v], v);
    EXPECT_EQ(bitmap.Row(0)[256], 77);
    EXPECT_EQ(bitmap.Row(0)[257], 149);
    EXPECT_EQ(bitmap.Row(0)[258], 29);
    EXPECT_EQ(bitmap.Row(0)[259], 130);
    EXPECT_TRUE(bitmap.IsGrayScale());
    indexed.GrayScale(8); // through a palette the same weights
    for (int x = 0; x < 260; x++) {
        const COLORREF cr = cube.GetPixelColor(x, 0);
        ASSERT_EQ(indexed.Row(0)[x], Luminance(RedOf(cr), GreenOf(cr), BlueOf(cr)));
    }
}
