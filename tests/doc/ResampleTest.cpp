#include "DocTestTools.h"

#include "doc/Resample.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include <cmath>

using namespace kestrune;
using namespace kestrune::test;

namespace {

LBitmapBase Sized(const LBitmapBase& source, int nWidth, int nHeight, int nFlags)
{
    LBitmapBase bitmap = source;
    bitmap.Size(nWidth, nHeight, nFlags);
    return bitmap;
}

/// One row of greys as a picture, and back.
LBitmapBase Greys(std::initializer_list<int> levels)
{
    LBitmapBase bitmap;
    bitmap.Create(static_cast<int>(levels.size()), 1, 24);
    int x = 0;
    for (const int v : levels)
        bitmap.PutPixelColor(x++, 0, Rgb(v, v, v));
    return bitmap;
}
std::vector<int> LevelsOf(const LBitmapBase& bitmap)
{
    std::vector<int> levels;
    for (int x = 0; x < bitmap.GetWidth(); x++)
        levels.push_back(RedOf(bitmap.GetPixelColor(x, 0)));
    return levels;
}

/// Root of the mean squared difference of two pictures of one size.
double Difference(const LBitmapBase& a, const LBitmapBase& b)
{
    const auto p = BytesOf(a), q = BytesOf(b);
    double fSum = 0;
    for (std::size_t i = 0; i < p.size(); i++)
        fSum += (p[i] - q[i]) * (p[i] - q[i]);
    return std::sqrt(fSum / static_cast<double>(p.size()));
}

} // namespace

TEST(ResampleTest, SmallRowsAreKnown)
{
    using V = std::vector<int>;
    EXPECT_EQ(LevelsOf(Sized(Greys({10, 20, 30, 41}), 2, 1, SIZE_AREA)), (V{15, 36}));      // 35.5 goes up
    EXPECT_EQ(LevelsOf(Sized(Greys({0, 90, 30}), 2, 1, SIZE_AREA)), (V{30, 50}));           // a pixel and a half each
    EXPECT_EQ(LevelsOf(Sized(Greys({0, 100}), 4, 1, SIZE_AREA)), (V{0, 0, 100, 100}));
    EXPECT_EQ(LevelsOf(Sized(Greys({0, 100}), 4, 1, SIZE_BILINEAR)), (V{0, 25, 75, 100}));
    EXPECT_EQ(LevelsOf(Sized(Greys({0, 0, 80, 80}), 8, 1, SIZE_BILINEAR)), (V{0, 0, 0, 20, 60, 80, 80, 80}));
    // Weights -9 111 29 -3 of 128: beside an edge it overshoots, which 0 and 255 cut off.
    EXPECT_EQ(LevelsOf(Sized(Greys({100, 100, 180, 180}), 8, 1, SIZE_BICUBIC)), (V{100, 98, 95, 116, 164, 185, 182, 180}));
    EXPECT_EQ(LevelsOf(Sized(Greys({0, 0, 255, 255}), 8, 1, SIZE_BICUBIC)), (V{0, 0, 0, 52, 203, 255, 255, 255}));
    EXPECT_EQ(LevelsOf(Sized(Greys({1, 2, 3, 4, 5}), 3, 1, SIZE_NEAREST)), (V{1, 3, 5}));
    EXPECT_EQ(LevelsOf(Sized(Greys({1, 2}), 5, 1, SIZE_NEAREST)), (V{1, 1, 2, 2, 2}));
}

TEST(ResampleTest, AreaByTwoIsTheMeanOfFour)
{
    const LBitmapBase source = RandomBitmap(62, 38, 24, 1);
    const LBitmapBase half = Sized(source, 31, 19, SIZE_AREA);
    for (int y = 0; y < 19; y++)
        for (int i = 0; i < 31 * 3; i++) {
            const int x = i / 3 * 6 + i % 3;
            const int nSum = source.Row(2 * y)[x] + source.Row(2 * y)[x + 3] + source.Row(2 * y + 1)[x] + source.Row(2 * y + 1)[x + 3];
            ASSERT_EQ(half.Row(y)[i], (nSum + 2) / 4);
        }
}

TEST(ResampleTest, AConstantStaysConstantAndAStepBackIsClose)
{
    LBitmapBase plain;
    plain.Create(37, 29, 24);
    plain.Fill(Rgb(3, 128, 254));
    const LBitmapBase photo = PhotoLike(160, 120, 2);
    for (const int nFlags : {SIZE_NEAREST, SIZE_BILINEAR, SIZE_BICUBIC, SIZE_AREA}) {
        for (const auto& [w, h] : {std::pair{1, 1}, {5, 90}, {111, 2}, {36, 30}, {400, 301}}) {
            const LBitmapBase sized = Sized(plain, w, h, nFlags);
            ASSERT_EQ(sized.GetWidth(), w);
            ASSERT_EQ(sized.GetHeight(), h);
            for (const std::uint8_t* p = sized.Row(h / 2), *pEnd = p + sized.GetRowBytes(); p < pEnd; p += 3)
                ASSERT_TRUE(p[0] == 254 && p[1] == 128 && p[2] == 3) << nFlags << ' ' << w << 'x' << h;
        }
        // Up by three and back: each kernel finds the picture again, within the noise that it smooths away.
        const LBitmapBase back = Sized(Sized(photo, 480, 360, nFlags), 160, 120, nFlags == SIZE_NEAREST ? SIZE_NEAREST : SIZE_AREA);
        EXPECT_LT(Difference(back, photo), nFlags == SIZE_NEAREST || nFlags == SIZE_AREA ? 0.01 : 3.0) << nFlags;
    }
}

TEST(ResampleTest, ReducingCountsEveryPixel)
{
    // Black and white columns by turns must come out as an even grey at an odd ratio, not as stripes.
    LBitmapBase stripes;
    stripes.Create(1000, 40, 24);
    for (int y = 0; y < 40; y++)
        for (int i = 0; i < 3000; i++)
            stripes.WriteRow(y)[i] = i / 3 % 2 ? 255 : 0;
    for (const int nFlags : {SIZE_BILINEAR, SIZE_BICUBIC, SIZE_AREA}) {
        const LBitmapBase small = Sized(stripes, 133, 7, nFlags);
        for (int x = 3; x < 130; x++)
            ASSERT_NEAR(small.Row(3)[x * 3], 127.5, nFlags == SIZE_AREA ? 18 : 4) << nFlags << ' ' << x;
    }
}

TEST(ResampleTest, NearestIsExactAtEveryDepth)
{
    for (const int nBits : {1, 4, 8, 24}) {
        const LBitmapBase source = RandomBitmap(33, 21, nBits, nBits);
        for (const int nFlags : {int{SIZE_NEAREST}, nBits == 24 ? 99 : int{SIZE_BICUBIC}}) { // indices are never mixed
            const LBitmapBase sized = Sized(source, 50, 9, nFlags);
            for (int y = 0; y < 9; y++)
                for (int x = 0; x < 50; x++)
                    ASSERT_EQ(sized.GetPixelColor(x, y), source.GetPixelColor(int((x + 0.5) * 33 / 50), int((y + 0.5) * 21 / 9)));
        }
    }
}

TEST(ResampleTest, VectorAndPlainFormsGiveTheSameBytesOnAnyNumberOfThreads)
{
    std::mt19937 random(3);
    for (int i = 0; i < 120; i++) {
        const auto Side = [&] { return 1 + static_cast<int>(random() % (i % 10 == 0 ? 300 : 40)); };
        const LBitmapBase source = RandomBitmap(Side(), Side(), 24, random());
        const int nWidth = Side(), nHeight = Side(), nFlags = 1 + i % 3;
        CBandStore vector(nHeight, nWidth * 3), plain(nHeight, nWidth * 3), single(nHeight, nWidth * 3);
        ResampleSmooth(source, vector, nFlags);
        ResampleSmooth(source, plain, nFlags, KernelForm::Plain);
        {
            tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
            ResampleSmooth(source, single, nFlags);
        }
        for (int y = 0; y < nHeight; y++) {
            ASSERT_TRUE(std::equal(vector.Row(y), vector.Row(y) + nWidth * 3, plain.Row(y))) << i;
            ASSERT_TRUE(std::equal(vector.Row(y), vector.Row(y) + nWidth * 3, single.Row(y))) << i;
        }
    }
}
