#include "DocTestTools.h"

#include "doc/ScreenScale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace kestrune;
using namespace kestrune::test;

namespace {

constexpr std::uint32_t c_nUntouched = 0x11223344;

/// The rectangle, drawn into rows of an odd length from an odd place.
std::vector<std::uint32_t> Drawn(const LBitmapBase& bitmap, double fZoom, const CRect& rc, ScreenForm form = ScreenForm::Vector, int nShift = 0)
{
    const int nStride = rc.Width() + 3;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(nStride) * rc.Height() + 8, c_nUntouched);
    ScaleToScreen(bitmap, fZoom, rc, pixels.data() + nShift, nStride * 4, form);
    std::vector<std::uint32_t> out;
    for (int y = 0; y < rc.Height(); y++) {
        const auto row = pixels.begin() + nShift + static_cast<std::ptrdiff_t>(y) * nStride;
        out.insert(out.end(), row, row + rc.Width());
        for (int i = 0; i < 3; i++)
            EXPECT_EQ(row[rc.Width() + i], c_nUntouched) << "written past the row";
    }
    return out;
}

CRect ScaledRect(const LBitmapBase& bitmap, double fZoom)
{
    return {0, 0, static_cast<int>(bitmap.GetWidth() * fZoom), static_cast<int>(bitmap.GetHeight() * fZoom)};
}

std::uint32_t Shown(const LBitmapBase& bitmap, int x, int y)
{
    const COLORREF cr = bitmap.GetPixelColor(x, y);
    return 0xff000000u | RedOf(cr) << 16 | GreenOf(cr) << 8 | BlueOf(cr);
}

} // namespace

TEST(ScreenScaleTest, AtOneAndAboveEachPixelIsAHardBlock)
{
    const LBitmapBase bitmap = RandomBitmap(29, 17, 24, 1);
    for (const double fZoom : {1.0, 2.0, 3.0, 4.0, 5.0, 7.0, 32.0, 1.5, 2.3}) {
        const CRect rc = ScaledRect(bitmap, fZoom);
        const auto pixels = Drawn(bitmap, fZoom, rc);
        for (int y = 0; y < rc.bottom; y++)
            for (int x = 0; x < rc.right; x++)
                ASSERT_EQ(pixels[static_cast<std::size_t>(y) * rc.Width() + x], Shown(bitmap, int(x / fZoom), int(y / fZoom))) << fZoom;
    }
}

TEST(ScreenScaleTest, BelowOneAPixelIsTheMeanOfItsArea)
{
    const LBitmapBase bitmap = RandomBitmap(160, 120, 24, 2);
    for (const double fZoom : {0.75, 0.5, static_cast<double>(0.33f), 0.25, 0.125, 0.0131}) {
        const CRect rc = ScaledRect(bitmap, fZoom);
        const auto pixels = Drawn(bitmap, fZoom, rc);
        for (int y = 0; y < rc.bottom; y++)
            for (int x = 0; x < rc.right; x++) {
                double sum[3] = {}, fArea = 0;
                for (int j = int(y / fZoom); j < std::min(120.0, (y + 1) / fZoom); j++)
                    for (int i = int(x / fZoom); i < std::min(160.0, (x + 1) / fZoom); i++) {
                        const double w = (std::min(i + 1.0, (x + 1) / fZoom) - std::max<double>(i, x / fZoom))
                            * (std::min(j + 1.0, (y + 1) / fZoom) - std::max<double>(j, y / fZoom));
                        fArea += w;
                        for (int c = 0; c < 3; c++)
                            sum[c] += w * bitmap.Row(j)[i * 3 + c];
                    }
                const std::uint32_t n = pixels[static_cast<std::size_t>(y) * rc.Width() + x];
                for (int c = 0; c < 3; c++) // the weights are rounded to 1/256, which tells most when many pixels share them
                    ASSERT_NEAR(n >> (8 * c) & 255, sum[c] / fArea, fZoom < 0.1 ? 16 : 2.5) << fZoom << ' ' << x << ' ' << y;
            }
    }
    LBitmapBase half;
    half.Create(2, 2, 24);
    half.PutPixelColor(0, 0, Rgb(10, 0, 255));
    half.PutPixelColor(1, 0, Rgb(20, 0, 255));
    half.PutPixelColor(0, 1, Rgb(30, 1, 255));
    half.PutPixelColor(1, 1, Rgb(41, 1, 255));
    EXPECT_EQ(Drawn(half, 0.5, {0, 0, 1, 1})[0], 0xff1901ffu);
}

TEST(ScreenScaleTest, PartsFitWithoutASeamAndFormsAgree)
{
    std::mt19937 random(3);
    const LBitmapBase bitmap = RandomBitmap(331, 203, 24, 4);
    for (const double fZoom : {1.0, 3.0, 2.5, 0.75, static_cast<double>(0.33f), 0.5, 0.125}) {
        const CRect rcAll = ScaledRect(bitmap, fZoom);
        const auto all = Drawn(bitmap, fZoom, rcAll);
        for (int i = 0; i < 60; i++) {
            CRect rc;
            rc.left = random() % rcAll.right;
            rc.top = random() % rcAll.bottom;
            rc.right = std::min<int>(rcAll.right, rc.left + 1 + random() % (i % 2 ? 70 : 9));
            rc.bottom = std::min<int>(rcAll.bottom, rc.top + 1 + random() % 40);
            const auto part = Drawn(bitmap, fZoom, rc, ScreenForm::Vector, i % 4);
            ASSERT_EQ(part, Drawn(bitmap, fZoom, rc, ScreenForm::Plain)) << fZoom;
            for (int y = 0; y < rc.Height(); y++)
                for (int x = 0; x < rc.Width(); x++)
                    ASSERT_EQ(part[static_cast<std::size_t>(y) * rc.Width() + x],
                              all[static_cast<std::size_t>(rc.top + y) * rcAll.Width() + rc.left + x]) << fZoom;
        }
    }
}

TEST(ScreenScaleTest, OutsideThePictureNothingIsTouched)
{
    const LBitmapBase bitmap = RandomBitmap(10, 10, 24, 5);
    const auto pixels = Drawn(bitmap, 2, {-3, -2, 24, 23});
    for (int y = -2; y < 23; y++)
        for (int x = -3; x < 24; x++) {
            const bool bIn = CRect{0, 0, 20, 20}.Contains(x, y);
            ASSERT_EQ(pixels[static_cast<std::size_t>(y + 2) * 27 + x + 3], bIn ? Shown(bitmap, x / 2, y / 2) : c_nUntouched);
        }
    for (const double fZoom : {0.0, -1.0, 0.01}) // nothing of the picture is left
        EXPECT_EQ(Drawn(bitmap, fZoom, {0, 0, 2, 2}), std::vector<std::uint32_t>(4, c_nUntouched));
    EXPECT_EQ(Drawn(LBitmapBase(), 1, {0, 0, 2, 2}), std::vector<std::uint32_t>(4, c_nUntouched));
}
