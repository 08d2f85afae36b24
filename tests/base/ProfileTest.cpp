#include "base/Color.h"
#include "base/Profile.h"

#include <gtest/gtest.h>

using namespace kestrune;

TEST(Profile, MissingKeysYieldTheDefaultAndTypesConvert)
{
    CMemoryProfile profile;
    EXPECT_EQ(profile.GetInt("General", "History", 20), 20);
    profile.WriteInt("General", "History", 7);
    EXPECT_EQ(profile.GetInt("General", "History", 20), 7);
    EXPECT_EQ(profile.GetString("General", "History", ""), "7");
    profile.WriteString("General", "History", "12 rows");
    EXPECT_EQ(profile.GetInt("General", "History", 20), 12);
    EXPECT_FALSE(profile.FindInt("general", "History")) << "names are told apart by case";
    const std::vector<std::uint8_t> bytes{1, 0, 255};
    profile.WriteBinary("", "FrameWndState", bytes);
    EXPECT_EQ(profile.GetBinary("", "FrameWndState"), bytes);
}

TEST(Profile, ColoursAreThreeFieldsOfThreeDigits)
{
    EXPECT_EQ(FormatColorText(Rgb(1, 22, 255)), "001 022 255");
    EXPECT_EQ(ParseColorText("128 128 255"), Rgb(128, 128, 255));
    EXPECT_EQ(ParseColorText("  0 128 255"), Rgb(0, 128, 255)) << "blanks stand for leading digits";
    EXPECT_EQ(ParseColorText("255   0   0"), Rgb(255, 0, 0));
    EXPECT_EQ(ParseColorText("12"), Rgb(12, 0, 0)) << "a short text gives 0 for what is missing";
    EXPECT_EQ(ParseColorText("abc def 009"), Rgb(0, 0, 9));
}
