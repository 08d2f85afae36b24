#include "resources/Swatches.h"

#include "base/Files.h"
#include "base/Messages.h"
#include "resources/PaletteColors.h"
#include "resources/PaletteFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

using namespace kestrune;
namespace fs = std::filesystem;

namespace {

class CHeard final : public CMessageSink {
public:
    CHeard() { SetMessageSink(this); }
    ~CHeard() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_texts.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string&) override { }
    std::vector<std::string> Take() { return std::exchange(m_texts, {}); }

private:
    std::vector<std::string> m_texts;
};

using Texts = std::vector<std::string>;

class PaletteFiles : public testing::Test {
protected:
    void SetUp() override
    {
        char szName[] = "/tmp/palettesXXXXXX";
        ASSERT_TRUE(::mkdtemp(szName));
        m_dir = szName;
    }
    void TearDown() override { fs::remove_all(m_dir); }
    fs::path Write(const std::string& strName, const Bytes& bytes)
    {
        std::ofstream(m_dir / strName, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return m_dir / strName;
    }
    static Bytes Counting(std::size_t n)
    {
        Bytes bytes(n);
        for (std::size_t i = 0; i < n; i++)
            bytes[i] = static_cast<std::uint8_t>(i * 7 + 1);
        return bytes;
    }

    fs::path m_dir;
    CHeard m_heard;
};

} // namespace

TEST(Swatches, TheFileThatShipsIsTheBuiltInTable)
{
    CHeard heard;
    SwatchColors colors{};
    LoadSwatches(DefaultSwatchPath(fs::path(KESTRUNE_SOURCE_DIR) / "install"), colors);
    EXPECT_EQ(heard.Take(), Texts{});
    EXPECT_EQ(colors, c_aBuiltInSwatches);
    const COLORREF aFirst[]
        = {0xFFFFFF,        0, Rgb(0, 0, 128), Rgb(0, 128, 0), Rgb(0, 128, 128), Rgb(128, 0, 0), Rgb(128, 0, 128),
           Rgb(128, 128, 0)};
    EXPECT_TRUE(std::equal(std::begin(aFirst), std::end(aFirst), colors.begin()));
    EXPECT_EQ(fs::file_size(DefaultSwatchPath(fs::path(KESTRUNE_SOURCE_DIR) / "install")), 1028u);

    SwatchColors sorted = colors; // useful: hardly a colour stands twice
    std::sort(sorted.begin(), sorted.end());
    EXPECT_GE(std::unique(sorted.begin(), sorted.end()) - sorted.begin(), 240);
}

TEST_F(PaletteFiles, SwatchesOfEveryLengthAndEveryFailure)
{
    SwatchColors colors = c_aBuiltInSwatches;
    LoadSwatches(Write("full", Counting(1028)), colors);
    EXPECT_EQ(colors[0], Rgb(1, 8, 15)); // the fourth byte is dropped
    EXPECT_EQ(colors[256], Rgb(1 + 1024 * 7, 8 + 1024 * 7, 15 + 1024 * 7));
    SwatchColors longer = c_aBuiltInSwatches;
    LoadSwatches(Write("long", Counting(5000)), longer);
    EXPECT_EQ(longer, colors);
    SwatchColors shorter = c_aBuiltInSwatches;
    LoadSwatches(Write("short", Counting(10)), shorter);
    EXPECT_EQ(shorter[1], colors[1]);
    EXPECT_EQ(shorter[2], c_aBuiltInSwatches[2]); // half a colour is none
    LoadSwatches(Write("empty", {}), shorter);
    EXPECT_EQ(shorter[1], colors[1]);
    EXPECT_EQ(m_heard.Take(), Texts{});

    LoadSwatches(m_dir / "missing", colors);
    EXPECT_EQ(m_heard.Take(), Texts{"Default.pal not found"});
    EXPECT_EQ(colors, longer); // as it was
    LoadSwatches(m_dir, colors); // a folder: any other failure
    EXPECT_EQ(m_heard.Take(), Texts{});
    EXPECT_EQ(colors, c_aBuiltInSwatches);
}

TEST_F(PaletteFiles, SwatchesWithoutAFileHandle)
{
    const fs::path path = Write("full", Counting(1028));
    SwatchColors colors{};
    std::vector<int> handles;
    rlimit limit{}, low{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    low = {64, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &low), 0);
    for (int fd; (fd = ::open("/dev/null", O_RDONLY)) >= 0;)
        handles.push_back(fd);
    LoadSwatches(path, colors);
    for (int fd : handles)
        ::close(fd);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_EQ(m_heard.Take(), Texts{"No more file handles available"});
    EXPECT_EQ(colors, SwatchColors{});
}

TEST_F(PaletteFiles, TheTableOfSixteenGoesOutAndComesBack)
{
    EXPECT_EQ(g_aPaletteTable, c_aStartPalette);
    const fs::path path = m_dir / "sixteen.PAL";
    ASSERT_TRUE(WritePaletteFile(path, c_aStartPalette));
    const auto bytes = ReadWholeFile(path, 1000);
    ASSERT_TRUE(bytes);
    ASSERT_EQ(bytes->size(), 48u);
    EXPECT_EQ(Bytes(bytes->begin(), bytes->begin() + 9), (Bytes{0, 0, 0xFE, 0x56, 0xFE, 0x56, 0xFE, 0xA8, 0x56}));
    PaletteTable table{};
    EXPECT_TRUE(ReadPaletteFile(path, table));
    EXPECT_EQ(table, c_aStartPalette);
    EXPECT_TRUE(ReadPaletteFile(Write("long.PAL", Counting(1028)), table)); // nothing else is checked
    EXPECT_EQ(table[15],
              (PaletteEntry{static_cast<std::uint8_t>(45 * 7 + 1), static_cast<std::uint8_t>(46 * 7 + 1),
                            static_cast<std::uint8_t>(47 * 7 + 1)}));
    EXPECT_EQ(m_heard.Take(), Texts{});

    const PaletteTable before = table;
    EXPECT_FALSE(ReadPaletteFile(Write("short.PAL", Counting(47)), table));
    EXPECT_EQ(m_heard.Take(), Texts{"Error during reading"});
    EXPECT_FALSE(ReadPaletteFile(m_dir / "missing.PAL", table));
    EXPECT_EQ(m_heard.Take(), Texts{"Unable to open file for reading"});
    EXPECT_EQ(table, before);
    EXPECT_FALSE(WritePaletteFile(m_dir / "no such folder" / "x.PAL", table));
    EXPECT_EQ(m_heard.Take(), Texts{"Unable to open file for writing"});
}

TEST(PaletteFile, BandsOfTheEditor)
{
    EXPECT_EQ(PaletteBandWidth(16), 16);
    EXPECT_EQ(PaletteBandAt(0, 16), 0);
    EXPECT_EQ(PaletteBandAt(255, 16), 15);
    EXPECT_EQ(PaletteBandAt(254, 3), 2);
    EXPECT_EQ(PaletteBandAt(255, 3), -1); // 3 x 85 levels are in bands
    EXPECT_EQ(PaletteBandAt(200, 0), 0);
    EXPECT_EQ(PaletteBandAt(-1, 16), -1);
}

TEST(PaletteColors, MappedWithAtMost256Colours)
{
    const std::vector<RGBQUAD> palette = {{0, 0, 250, 0}, {10, 10, 10, 0}, {30, 30, 30, 0}};
    SetForeground(0xFF000000 | Rgb(20, 20, 20));
    SetBackground(Rgb(200, 90, 90));
    EXPECT_EQ(g_crForeground, Rgb(20, 20, 20)); // the top byte is always 0
    EXPECT_EQ(ForegroundInUse(), Rgb(20, 20, 20));
    g_nColors = 256;
    g_pPalette = &palette;
    MapColors();
    EXPECT_EQ(g_crForegroundMapped, Rgb(10, 10, 10)); // equally far: the lowest index
    EXPECT_EQ(ForegroundInUse(), Rgb(10, 10, 10));
    EXPECT_EQ(BackgroundInUse(), Rgb(250, 0, 0));
    SwapForegroundAndBackground();
    EXPECT_EQ(ForegroundInUse(), Rgb(250, 0, 0));
    EXPECT_EQ(g_crForeground, Rgb(200, 90, 90)); // what was chosen stays known
    g_bPaletteMappingOff = true;
    EXPECT_EQ(ForegroundInUse(), Rgb(200, 90, 90));
    g_bPaletteMappingOff = false;
    g_nColors = 257;
    EXPECT_EQ(ForegroundInUse(), Rgb(200, 90, 90));
    g_nColors = c_nColorsUnlimited;
    g_pPalette = nullptr;
    ResetForegroundAndBackground();
    EXPECT_EQ(ForegroundInUse(), 0u);
    EXPECT_EQ(BackgroundInUse(), 0xFFFFFFu);
}
