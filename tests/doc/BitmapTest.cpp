#include "DocTestTools.h"

#include "doc/Palettes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <thread>

using namespace kestrune;
using namespace kestrune::test;

TEST(BitmapTest, CopiesStayIndependentUnderRandomWrites)
{
    // Each bitmap is shadowed by plain bytes; bands are small against the picture, so that sharing is broken up bit by bit.
    std::mt19937 random(7);
    const int nWidth = 900, nHeight = 700;
    struct Shadowed {
        LBitmapBase bitmap;
        std::vector<std::uint8_t> bytes;
    };
    std::vector<Shadowed> all(4);
    for (Shadowed& s : all) {
        s.bitmap = RandomBitmap(nWidth, nHeight, 24, random());
        s.bytes = BytesOf(s.bitmap);
    }
    LBuffer buffer;
    for (int i = 0; i < 2000; i++) {
        Shadowed& s = all[random() % all.size()];
        const int y = random() % nHeight, x = random() % nWidth;
        switch (random() % 8) {
        case 0: {
            const Shadowed& from = all[random() % all.size()];
            random() % 2 ? s.bitmap.Copy(from.bitmap) : s.bitmap.CopyData(from.bitmap);
            s.bytes = from.bytes;
            break;
        }
        case 1: {
            const COLORREF cr = random() & 0xffffff;
            s.bitmap.Fill(cr);
            for (std::size_t b = 0; b < s.bytes.size(); b += 3) {
                s.bytes[b] = BlueOf(cr);
                s.bytes[b + 1] = GreenOf(cr);
                s.bytes[b + 2] = RedOf(cr);
            }
            break;
        }
        default: {
            buffer.Reallocate(1 + random() % (nWidth * 3));
            std::generate_n(buffer.Lock(), buffer.GetSize(), [&] { return static_cast<std::uint8_t>(random()); });
            const std::size_t nMoved = s.bitmap.PutRowCol(buffer, y, x);
            EXPECT_EQ(nMoved, std::min<std::size_t>(buffer.GetSize(), (nWidth - x) * 3));
            std::copy_n(buffer.Data(), nMoved, s.bytes.begin() + (std::size_t(y) * nWidth + x) * 3);
        }
        }
        for (const Shadowed& check : all) {
            if (i % 200 == 199) {
                ASSERT_EQ(BytesOf(check.bitmap), check.bytes) << i;
            }
        }
    }
}

TEST(BitmapTest, AWriteToACopyCostsOneBand)
{
    LBitmapBase a = RandomBitmap(2000, 1000, 24, 1), b;
    b.Copy(a);
    EXPECT_EQ(b.Bands().PrivateBytes(), 0u);
    b.WriteRow(500)[0] ^= 1;
    EXPECT_EQ(b.Bands().PrivateBytes(), b.Bands().BandRows() * b.GetRowBytes());
    EXPECT_LE(b.Bands().PrivateBytes(), 256u * 1024);
    EXPECT_TRUE(b.Bands().SharesBand(a.Bands(), 0));
    EXPECT_FALSE(b.Bands().SharesBand(a.Bands(), 500));
    // A plain picture of any size holds one band.
    a.Fill(Rgb(1, 2, 3));
    EXPECT_TRUE(a.Bands().SharesBand(a.Bands(), 999));
    EXPECT_EQ(a.GetPixelColor(1999, 999), Rgb(1, 2, 3));
}

TEST(BitmapTest, ThreadsMayWriteToCopiesThatShareBands)
{
    const LBitmapBase source = RandomBitmap(700, 600, 24, 3);
    const auto before = BytesOf(source);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; t++)
        threads.emplace_back([own = source, t]() mutable {
            for (int nRound = 0; nRound < 20; nRound++) {
                LBitmapBase copy = own;
                for (int y = 0; y < 600; y += 7)
                    std::fill_n(copy.WriteRow(y), copy.GetRowBytes(), static_cast<std::uint8_t>(t * 16 + nRound));
                for (int y = 0; y < 600; y += 7)
                    ASSERT_EQ(copy.Row(y)[2099], t * 16 + nRound);
                if (nRound % 3 == 0)
                    own = copy;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(BytesOf(source), before);
}

TEST(BitmapTest, RowsAndPixelsOutsideAreLeftAlone)
{
    LBitmapBase bitmap = RandomBitmap(5, 4, 24, 4);
    const auto before = BytesOf(bitmap);
    LBuffer buffer(15);
    std::fill_n(buffer.Lock(), 15, std::uint8_t{77});
    for (const auto& [y, x] : {std::pair{-1, 0}, {4, 0}, {0, -1}, {0, 5}}) {
        EXPECT_EQ(bitmap.GetRowCol(buffer, y, x), 0u);
        EXPECT_EQ(bitmap.PutRowCol(buffer, y, x), 0u);
        bitmap.PutPixelColor(x, y, 0x123456);
        EXPECT_EQ(bitmap.GetPixelColor(x, y), 0u);
    }
    EXPECT_EQ(buffer.Data()[0], 77);
    EXPECT_EQ(BytesOf(bitmap), before);
    EXPECT_FALSE(bitmap.Create(0, 5, 24));
    EXPECT_FALSE(bitmap.Create(5, 5, 16));
    EXPECT_EQ(BytesOf(bitmap), before);
    bitmap.Free();
    bitmap.Free();
    EXPECT_FALSE(bitmap.IsAllocated());
    bitmap.Fill(1);
    bitmap.Size(5, 5, SIZE_AREA);
    EXPECT_FALSE(bitmap.ColorRes(24, CRF_TRUECOLOR));
    EXPECT_FALSE(bitmap.IsAllocated());
}

TEST(BitmapTest, PalettesReadAndWriteWithinTheirSize)
{
    LBitmapBase bitmap;
    const std::vector<RGBQUAD> red{{0, 0, 255, 0}, {0, 0, 100, 0}};
    bitmap.Create(3, 1, 4, ORDER_BGRORGRAY, red);
    std::vector<RGBQUAD> got(20);
    EXPECT_EQ(bitmap.GetColors(14, got), 2);
    EXPECT_EQ(bitmap.GetColors(16, got), 0);
    EXPECT_EQ(bitmap.GetColors(-1, got), 0);
    EXPECT_EQ(bitmap.PutColors(15, red), 1);
    EXPECT_EQ(bitmap.GetColors(0, got), 16);
    EXPECT_EQ(got[1], red[1]);
    EXPECT_EQ(got[2], RGBQUAD{});
    EXPECT_EQ(got[15], red[0]);
    bitmap.PutPixelColor(0, 0, Rgb(90, 3, 3));
    EXPECT_EQ(bitmap.Row(0)[0], 1);
    EXPECT_EQ(bitmap.GetPixelColor(0, 0), Rgb(100, 0, 0));
    bitmap.Fill(Rgb(255, 10, 10)); // two entries are alike: the lower one
    EXPECT_EQ(bitmap.Row(0)[2], 0);

    LBitmapBase grey;
    for (const int nBits : {1, 4, 8}) {
        grey.Create(1, 1, nBits);
        EXPECT_TRUE(grey.IsGrayScale()) << nBits;
        std::vector<RGBQUAD> down(grey.Palette().rbegin(), grey.Palette().rend());
        grey.PutColors(0, down);
        EXPECT_TRUE(grey.IsGrayScale()) << "scanned pages count from white to black";
        grey.PutColors(0, red);
        EXPECT_FALSE(grey.IsGrayScale());
    }
    grey.Create(1, 1, 24);
    EXPECT_FALSE(grey.IsGrayScale());
}

TEST(BitmapTest, TrimTakesThePartInside)
{
    const LBitmapBase source = RandomBitmap(40, 30, 24, 5);
    struct {
        CRect rcAsked, rcGot;
    } const rows[] = {{{3, 4, 13, 9}, {3, 4, 13, 9}}, {{-5, -5, 10, 10}, {0, 0, 10, 10}}, {{30, 20, 90, 90}, {30, 20, 40, 30}},
                      {{40, 0, 50, 5}, {0, 0, 40, 30}}, {{5, 5, 5, 9}, {0, 0, 40, 30}}};
    for (const auto& row : rows) {
        LBitmapBase bitmap = source;
        bitmap.Trim(row.rcAsked.left, row.rcAsked.top, row.rcAsked.Width(), row.rcAsked.Height());
        ASSERT_EQ(bitmap.GetWidth(), row.rcGot.Width());
        ASSERT_EQ(bitmap.GetHeight(), row.rcGot.Height());
        for (int y = 0; y < bitmap.GetHeight(); y++)
            for (int x = 0; x < bitmap.GetWidth(); x++)
                ASSERT_EQ(bitmap.GetPixelColor(x, y), source.GetPixelColor(x + row.rcGot.left, y + row.rcGot.top));
    }
}

TEST(BitmapTest, CombineAgreesWithAPlainReference)
{
    std::mt19937 random(6);
    const auto Op = [](int nOperation, int d, int s) {
        const int results[] = {s, d & s, d | s, d ^ s, std::min(d + s, 255), std::max(d - s, 0), (d + s + 1) / 2,
                               static_cast<int>(d * s / 255.0 + 0.5)};
        return results[nOperation];
    };
    for (int i = 0; i < 400; i++) {
        LBitmapBase target = RandomBitmap(23, 17, 24, random());
        const LBitmapBase source = i % 5 ? RandomBitmap(19, 21, 24, random()) : target;
        const auto Any = [&] { return static_cast<int>(random() % 50) - 20; };
        const int x = Any(), y = Any(), w = Any(), h = Any(), xs = Any(), ys = Any(), nOperation = i % 8;
        LBitmapBase expected = target;
        for (int dy = 0; dy < h; dy++)
            for (int dx = 0; dx < w; dx++)
                if (CRect{0, 0, 23, 17}.Contains(x + dx, y + dy) && CRect{0, 0, source.GetWidth(), source.GetHeight()}.Contains(xs + dx, ys + dy))
                    for (int c = 0; c < 3; c++) {
                        std::uint8_t& d = expected.WriteRow(y + dy)[(x + dx) * 3 + c];
                        d = static_cast<std::uint8_t>(Op(nOperation, d, source.Row(ys + dy)[(xs + dx) * 3 + c]));
                    }
        if (i % 5)
            target.Combine(x, y, w, h, source, xs, ys, nOperation);
        else
            target.Combine(x, y, w, h, target, xs, ys, nOperation); // over itself
        ASSERT_EQ(BytesOf(target), BytesOf(expected)) << i;
    }
}

TEST(BitmapTest, ExhaustedMemoryLeavesTheBitmapAsItWas)
{
    LBitmapBase bitmap = RandomBitmap(50, 40, 24, 8);
    bitmap.SetResolution(300, 200);
    const auto before = BytesOf(bitmap);
    EXPECT_THROW(bitmap.Size(2'000'000'000, 1'000'000, SIZE_AREA), std::bad_alloc);
    EXPECT_THROW(bitmap.Size(2'000'000'000, 1'000'000, SIZE_NEAREST), std::bad_alloc);
    EXPECT_THROW(bitmap.Create(2'000'000'000, 2'000'000'000, 24), std::bad_alloc);
    EXPECT_EQ(bitmap.GetWidth(), 50);
    EXPECT_EQ(bitmap.GetHeight(), 40);
    EXPECT_EQ(bitmap.GetXResolution(), 300);
    EXPECT_EQ(BytesOf(bitmap), before);
}
