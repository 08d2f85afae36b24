#include "app/FramePlacement.h"
#include "app/Preferences.h"
#include "app/SettingsProfile.h"
#include "base/Files.h"
#include "doc/ColorState.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

namespace kestrune {
namespace {

namespace fs = std::filesystem;

class SettingsFile : public testing::Test {
protected:
    fs::path Path() const { return fs::path(m_folder.path().toStdString()) / "deep" / "settings.ini"; }
    std::string Text() const
    {
        const auto bytes = ReadWholeFile(Path(), 1 << 20);
        return bytes ? std::string(bytes->begin(), bytes->end()) : "";
    }
    void Put(const std::string& strText) const
    {
        fs::create_directories(Path().parent_path());
        std::ofstream(Path(), std::ios::binary) << strText;
    }
    QTemporaryDir m_folder;
};

TEST_F(SettingsFile, KeepsWhatWasWritten)
{
    const std::string strOdd = "  \"a\\b\"\n= ; [한글] ";
    const std::vector<std::uint8_t> bytes{0, 1, 127, 128, 255};
    {
        CSettingsProfile profile(Path());
        profile.WriteInt("RGB Shift", "RedX", -500);
        profile.WriteString("Browser", "Path", strOdd);
        profile.WriteString("Empty", "Text", "");
        profile.WriteBinary("Frame", "FrameWndState", bytes);
        EXPECT_TRUE(profile.Flush());
    }
    CSettingsProfile profile(Path());
    EXPECT_FALSE(profile.WasCorrupt());
    EXPECT_EQ(profile.GetInt("RGB Shift", "RedX", 0), -500);
    EXPECT_EQ(profile.GetString("Browser", "Path", "?"), strOdd);
    EXPECT_EQ(profile.GetString("Empty", "Text", "?"), "");
    EXPECT_EQ(profile.GetBinary("Frame", "FrameWndState"), bytes);
    EXPECT_EQ(profile.GetInt("RGB Shift", "RedY", 7), 7);
}

TEST_F(SettingsFile, CorruptFileIsPutAsideAndDefaultsHold)
{
    const std::string aBad[] = {"garbage\n", "[A]\nB=1\nno equals sign\n", "[A]\nB=12x\n", "[A]\nB=\"open\n", "[A]\nB=hex:0g\n",
                                "B=1\n", "[A\nB=1\n", "[A]\nB=1", std::string("[A]\nB=\"x\0y\"\n", 12), "[A]\nB=99999999999\n"};
    for (const std::string& strBad : aBad) {
        Put(strBad);
        CSettingsProfile profile(Path());
        EXPECT_TRUE(profile.WasCorrupt()) << strBad;
        EXPECT_EQ(profile.GetInt("A", "B", 5), 5) << strBad;
        EXPECT_FALSE(fs::exists(Path()));
        std::ifstream kept(Path().string() + ".corrupt", std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), strBad);
        profile.WriteInt("A", "B", 6);
        EXPECT_TRUE(profile.Flush());
        EXPECT_EQ(Text(), "[A]\nB=6\n");
    }
}

TEST_F(SettingsFile, TwoRunningProgramsKeepEachOthersKeys)
{
    Put("[A]\nOne=1\nTwo=2\n");
    CSettingsProfile first(Path()), second(Path());
    first.WriteInt("A", "One", 10);
    second.WriteInt("A", "Two", 20);
    EXPECT_TRUE(first.Flush());
    EXPECT_TRUE(second.Flush());
    EXPECT_EQ(Text(), "[A]\nOne=10\nTwo=20\n");
}

TEST_F(SettingsFile, AFailedWriteIsSeen)
{
    // A file where the folder should be.
    std::ofstream(fs::path(m_folder.path().toStdString()) / "deep") << "x";
    CSettingsProfile profile(Path());
    profile.WriteInt("A", "B", 1);
    EXPECT_FALSE(profile.Flush());
    EXPECT_EQ(profile.GetInt("A", "B", 0), 1);
}

TEST(Preferences, DefaultsAndMisspeltKeys)
{
    const CMemoryProfile empty;
    CPreferences preferences;
    preferences.LoadAll(empty);
    EXPECT_EQ(preferences.Int("General", "History"), 20);
    EXPECT_EQ(preferences.Int("Capture", "Hot Key"), 122);
    EXPECT_EQ(preferences.Text("Preference", "Guide Color"), "  0 128 255");
    EXPECT_EQ(preferences.Color("Preference", "Guide Color"), Rgb(0, 128, 255));
    EXPECT_EQ(preferences.Color("Preference", "Grid Color"), Rgb(255, 0, 0));
    EXPECT_EQ(ReadSetting(empty, "DeNoiserr", "Max"), 50);
    EXPECT_FALSE(FindSetting("DeNoiser", "Max"));
    EXPECT_EQ(ReadSetting(empty, "Texture Fill", "Azimuth"), 13500);
    EXPECT_THROW(preferences.Int("General", "Histroy"), std::out_of_range);
}

TEST(Preferences, SaversWriteTheirSectionsAlone)
{
    CMemoryProfile profile;
    profile.WriteInt("General", "History", 12);
    profile.WriteInt("Capture", "Delay", 3);
    CPreferences preferences;
    preferences.LoadAll(profile);
    EXPECT_EQ(preferences.Int("Capture", "Delay"), 3);
    preferences.SetInt("General", "Unit", 2);
    preferences.SetInt("Capture", "Delay", 4);
    preferences.SetColor("Preference", "Grid Color", Rgb(1, 22, 255));
    CMemoryProfile written;
    preferences.SaveAll(written);
    EXPECT_EQ(written.GetInt("General", "History", 0), 12);
    EXPECT_EQ(written.GetInt("General", "Unit", 0), 2);
    EXPECT_EQ(written.GetInt("Image", "Kind", 0), 2);
    EXPECT_EQ(written.GetString("Preference", "Grid Color", ""), "001 022 255");
    EXPECT_FALSE(written.FindInt("Capture", "Delay")); // its dialog saves it
}

TEST(Preferences, TheTwoColoursStandUnderEachOthersWords)
{
    CMemoryProfile profile;
    LoadColors(profile);
    EXPECT_EQ(g_crBackground, Rgb(0, 0, 0));
    EXPECT_EQ(g_crForeground, Rgb(255, 255, 255));
    g_crBackground = Rgb(1, 2, 3);
    g_crForeground = Rgb(4, 5, 6);
    SaveColors(profile);
    EXPECT_EQ(profile.GetInt("Color Value", "RedPen", -1), 1);
    EXPECT_EQ(profile.GetInt("Color Value", "BlueBr", -1), 6);
    g_crBackground = g_crForeground = 0;
    LoadColors(profile);
    EXPECT_EQ(g_crBackground, Rgb(1, 2, 3));
    EXPECT_EQ(g_crForeground, Rgb(4, 5, 6));
}

TEST(FramePlacement, FortyFourBytesThatReadBack)
{
    const FramePlacement placement{QRect(-20, 30, 900, 700), true};
    const auto bytes = EncodePlacement(placement);
    EXPECT_EQ(bytes.size(), 44u);
    EXPECT_EQ(DecodePlacement(bytes), placement);
    auto other = bytes;
    other[36] = 0xFF; // right and bottom far off
    other[39] = 0x7F;
    EXPECT_FALSE(DecodePlacement(other));
    EXPECT_FALSE(DecodePlacement(std::span(bytes).first(40)));
    EXPECT_FALSE(DecodePlacement(EncodePlacement({QRect(0, 0, 0, 0), false})));
}

} // namespace
} // namespace kestrune
