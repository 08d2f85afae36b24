// The colour picker's arithmetic, held against the doubles of the painting core.

#include "base/ColorConvert.h"
#include "resources/PickerConvert.h"
#include "resources/PickerField.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace kestrune;

namespace {

int Distance(COLORREF a, COLORREF b)
{
    return std::max({std::abs(RedOf(a) - RedOf(b)), std::abs(GreenOf(a) - GreenOf(b)), std::abs(BlueOf(a) - BlueOf(b))});
}

} // namespace

TEST(Picker, BothWaysAgreeWithTheConversionsOfThePaintingCore)
{
    for (int h = 0; h <= 360; h += 3)
        for (int s = 0; s <= 100; s += 5)
            for (int v = 0; v <= 100; v += 5) {
                ColorF color{h % 360 / 360.0, s / 100.0, v / 100.0};
                color = HsvToRgbF(color);
                const COLORREF cr = PickerHsvToColor(static_cast<float>(h), static_cast<float>(s), static_cast<float>(v));
                const COLORREF crExact = Rgb(static_cast<int>(color.a * 255), static_cast<int>(color.b * 255), static_cast<int>(color.c * 255));
                ASSERT_LE(Distance(cr, crExact), 1) << h << " " << s << " " << v; // single precision truncates elsewhere
            }
    for (int n = 0; n < 1 << 24; n += 4099) {
        const COLORREF cr = static_cast<COLORREF>(n);
        const PickerHsv hsv = ColorToPickerHsv(cr);
        ASSERT_TRUE(hsv.nHue >= 0 && hsv.nHue <= 360 && hsv.nSaturation >= 0 && hsv.nSaturation <= 100 && hsv.nValue <= 100) << n;
        const COLORREF crBack = PickerHsvToColor(static_cast<float>(hsv.nHue), static_cast<float>(hsv.nSaturation), static_cast<float>(hsv.nValue));
        ASSERT_LE(Distance(cr, crBack), 7) << n; // half a degree, half a percent twice, and the truncation
    }
}

TEST(Picker, TheEndOfTheCircleIsItsBeginning)
{
    for (int s = 0; s <= 100; s += 10)
        for (int v = 0; v <= 100; v += 10)
            EXPECT_EQ(PickerHsvToColor(360, static_cast<float>(s), static_cast<float>(v)),
                      PickerHsvToColor(0, static_cast<float>(s), static_cast<float>(v)));
    CPickerColor color(Rgb(12, 99, 200));
    color.Set(PICK_HUE, 360);
    EXPECT_EQ(color.Get(PICK_HUE), 360) << "the slider stays at its end";
    color.Set(PICK_HUE, 400);
    EXPECT_EQ(color.Get(PICK_HUE), 360);
}

TEST(Picker, EachViewShowsTheColourWhereItsMarkStands)
{
    CPickerColor color(Rgb(40, 160, 90));
    for (int i = 0; i < PICK_COUNT; i++) {
        const auto onStrip = static_cast<PickerComponent>(i);
        LBitmapBase field;
        RenderPickerField(field, onStrip, color);
        ASSERT_EQ(field.GetWidth(), c_nPickerFieldWidth);
        ASSERT_EQ(field.GetHeight(), c_nPickerFieldHeight);
        const PickerAxes axes = c_aPickerAxes[static_cast<std::size_t>(i)];
        const int x = color.Get(axes.x) * (c_nPickerFieldWidth - 1) / c_aPickerMax[axes.x];
        const int y = (c_nPickerFieldHeight - 1) - color.Get(axes.y) * (c_nPickerFieldHeight - 1) / c_aPickerMax[axes.y];
        EXPECT_LE(Distance(field.GetPixelColor(x, y), color.GetColor()), 6) << i;
    }
}

TEST(Picker, HexadecimalTextIsReadStrictly)
{
    COLORREF cr = 0;
    EXPECT_TRUE(ParseHexColor("#1a2B3c", cr));
    EXPECT_EQ(cr, Rgb(0x1A, 0x2B, 0x3C));
    EXPECT_EQ(FormatHexColor(cr), "1A2B3C");
    EXPECT_TRUE(ParseHexColor("f80", cr));
    EXPECT_EQ(cr, Rgb(0xFF, 0x88, 0x00));
    for (const char* pszBad : {"", "#", "12345", "1234567", "12345g", "##12345", "-12345", "0x1234", " 12345"})
        EXPECT_FALSE(ParseHexColor(pszBad, cr)) << pszBad;
}
