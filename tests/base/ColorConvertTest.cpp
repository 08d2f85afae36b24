#include "base/ColorConvert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using namespace kestrune;

TEST(ColorConvert, KnownColours)
{
    EXPECT_EQ(RgbToHsv({255, 0, 0}), (HsvBytes{0, 255, 255}));
    EXPECT_EQ(RgbToHsv({0, 255, 0}), (HsvBytes{85, 255, 255}));
    EXPECT_EQ(RgbToHsv({0, 0, 255}), (HsvBytes{170, 255, 255}));
    EXPECT_EQ(RgbToHsv({255, 0, 1}), (HsvBytes{254, 255, 255})); // just below the circle's end
    EXPECT_EQ(RgbToHsv({0, 0, 0}), (HsvBytes{0, 0, 0}));
    EXPECT_EQ(RgbToHsv({200, 200, 0}),
              (HsvBytes{42, 255, 200})); // 42.5 truncated; of equal ones red counts as the largest
    EXPECT_EQ(RgbToHls({255, 0, 0}), (HlsBytes{0, 127, 255}));
    EXPECT_EQ(RgbToHls({255, 254, 255}), (HlsBytes{212, 254, 127})); // 255 / 2: the divisor counts from 511, not 510
    EXPECT_EQ(RgbToHls({10, 11, 10}), (HlsBytes{85, 10, 12}));
    EXPECT_EQ(HlsToRgb(0, 127.9, 0), (RgbBytes{127, 127, 127}));
    EXPECT_EQ(HsvToRgb({255, 255, 255}, {7, 8, 9}), (RgbBytes{7, 8, 9})); // past the circle nothing is written
}

// A whole number in exact arithmetic may come out one lower; it must then be so on every road. This pins the order of
// the operations: 2/5 of a sixth is 17 steps exactly, and 255ths do not all survive division and multiplication.
TEST(ColorConvert, DoublesAreNotMended)
{
    int nLow = 0;
    for (int v = 0; v < 256; v++)
        nLow += HsvToRgb({0, 255, v}).r != v;
    int nExpected = 0;
    for (int v = 0; v < 256; v++)
        nExpected += static_cast<int>(v / 255.0 * 255) != v;
    EXPECT_EQ(nLow, nExpected);
    for (int r = 0; r < 256; r += 5)
        for (int g = 0; g <= r; g++) { // red is the largest, blue the smallest
            const HsvBytes hsv = RgbToHsv({r, g, 0});
            ASSERT_EQ(hsv.h, r ? static_cast<int>(g / static_cast<double>(r) * 42.5) : 0);
        }
}

TEST(ColorConvert, RoundTripsStayClose)
{
    for (int r = 0; r < 256; r += 15)
        for (int g = 0; g < 256; g += 15)
            for (int b = 0; b < 256; b += 15) {
                const RgbBytes hsv = HsvToRgb(RgbToHsv({r, g, b}));
                ASSERT_LE(std::abs(hsv.r - r) + std::abs(hsv.g - g) + std::abs(hsv.b - b), 14)
                    << r << ' ' << g << ' ' << b;
                const HlsBytes hls = RgbToHls({r, g, b});
                const RgbBytes back = HlsToRgb(hls.h, hls.l, hls.s);
                ASSERT_LE(std::abs(back.r - r) + std::abs(back.g - g) + std::abs(back.b - b), 20)
                    << r << ' ' << g << ' ' << b;
                for (auto [to, from] : {std::pair{&RgbToHsvF, &HsvToRgbF}, std::pair{&RgbToHslF, &HslToRgbF}}) {
                    const ColorF f{r / 255.0, g / 255.0, b / 255.0};
                    const ColorF turned = to(f), again = from(turned);
                    ASSERT_TRUE(turned.a >= 0 && turned.a < 1 && turned.b >= 0 && turned.b <= 1 + 1e-12);
                    ASSERT_NEAR(again.a, f.a, 1e-12);
                    ASSERT_NEAR(again.b, f.b, 1e-12);
                    ASSERT_NEAR(again.c, f.c, 1e-12);
                }
            }
    EXPECT_EQ(HsvToRgbF({1, 1, 1}).a, HsvToRgbF({0, 1, 1}).a); // a full turn is none
    EXPECT_EQ(HsvToRgbF({1, 1, 1}).b, HsvToRgbF({0, 1, 1}).b);
}
