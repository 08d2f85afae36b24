// *.pbr files, good and bad, and those that ship.

#include "base/Files.h"
#include "base/Log.h"
#include "resources/BrushFile.h"
#include "resources/BrushGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace kestrune;
namespace fs = std::filesystem;

namespace {

using Plane = std::vector<std::uint8_t>;

class BrushFiles : public testing::Test {
protected:
    void SetUp() override
    {
        m_folder = fs::temp_directory_path() / ("brushes-" + std::to_string(::getpid()));
        fs::create_directories(m_folder / "Brushes");
        SetLogSink([](const std::string&) {});
    }
    void TearDown() override
    {
        SetLogSink({});
        fs::remove_all(m_folder);
    }
    fs::path Write(const std::string& strName, const Plane& bytes)
    {
        const fs::path path = m_folder / "Brushes" / strName;
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        return path;
    }
    fs::path m_folder;
};

void Put(Plane& bytes, std::uint32_t n)
{
    for (int i = 0; i < 4; i++)
        bytes.push_back(std::uint8_t(n >> (8 * i)));
}

Plane Record(std::uint32_t nWidth, std::uint32_t nHeight, std::size_t nMask, std::uint8_t nFill)
{
    Plane bytes;
    Put(bytes, 33);
    Put(bytes, 7);
    Put(bytes, nWidth);
    Put(bytes, nHeight);
    bytes.insert(bytes.end(), nMask, nFill);
    return bytes;
}

Plane File(std::uint32_t nCount, std::initializer_list<Plane> records)
{
    Plane bytes;
    Put(bytes, nCount);
    for (const Plane& record : records)
        bytes.insert(bytes.end(), record.begin(), record.end());
    return bytes;
}

} // namespace

TEST_F(BrushFiles, KeepMaskAndNumbersAndForgetTheShape)
{
    BrushEntry made = GenerateBrush({9, 70, 30, 3});
    made.m_nSpacing = -4;
    made.m_nSecondValue = 0x12345678;
    const BrushEntry other = GenerateBrush({2, 0, 0, 1});
    const fs::path path = m_folder / "made.pbr";
    ASSERT_TRUE(WriteBrushFile(path, std::vector{made, other}));
    EXPECT_EQ(fs::file_size(path), 4 + 16 + made.m_pMask.size() + 16 + 25);
    const std::vector<BrushEntry> read = ReadBrushFile(path);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].m_pMask, made.m_pMask);
    EXPECT_EQ(read[0].m_nSpacing, -4);
    EXPECT_EQ(read[0].m_nSecondValue, 0x12345678);
    EXPECT_FALSE(read[0].m_bGenerated);
    EXPECT_EQ(read[0].m_dRadius, 1.0);
    EXPECT_EQ(read[0].m_dRoundness, 1.0);
    EXPECT_EQ(read[0].m_xAxis[0], made.m_nWidth / 2.0) << "upright again";
    EXPECT_EQ(read[0].m_xAxis[1], 0);
    EXPECT_EQ(read[0].m_yAxis[1], made.m_nHeight / 2.0);
    EXPECT_EQ(ParseBrushes(EncodeBrushes(read)), read);
    EXPECT_FALSE(WriteBrushFile(m_folder / "no such folder" / "x.pbr", read));
}

TEST_F(BrushFiles, ReadAsFarAsTheyCanBeFollowed)
{
    const auto sizes = [](const Plane& bytes) {
        std::vector<std::size_t> aSizes;
        for (const BrushEntry& entry : ParseBrushes(bytes)) {
            EXPECT_EQ(entry.m_pMask.size(), std::size_t(entry.m_nWidth) * std::size_t(entry.m_nHeight));
            aSizes.push_back(entry.m_pMask.size());
        }
        return aSizes;
    };
    using Sizes = std::vector<std::size_t>;
    const Plane good = File(2, {Record(2, 3, 6, 1), Record(4, 1, 4, 2)});
    for (std::size_t n = 0; n <= good.size(); n++) // cut short everywhere
        EXPECT_EQ(sizes(Plane(good.begin(), good.begin() + std::ptrdiff_t(n))), n < 26 ? Sizes{} : n < good.size() ? Sizes{6} : (Sizes{6, 4})) << n;
    EXPECT_EQ(sizes(File(1, {Record(2, 3, 6, 1), Record(4, 1, 4, 2)})), Sizes{6}) << "no more than it counts";
    EXPECT_EQ(sizes(File(0x7fffffff, {Record(2, 3, 6, 1)})), Sizes{6}) << "a count is only believed as far as bytes follow";
    EXPECT_EQ(sizes(File(0x80000001, {Record(2, 3, 6, 1)})), Sizes{}) << "below zero";
    EXPECT_EQ(sizes(File(3, {Record(2, 3, 6, 1), Record(0, 7, 0, 0), Record(4, 1, 4, 2)})), (Sizes{6, 4})) << "one without pixels is passed over";
    for (const std::uint32_t nBad : {0x10000u, 0x7fffffffu, 0x80000000u, 0xffffffffu}) {
        EXPECT_EQ(sizes(File(3, {Record(2, 3, 6, 1), Record(nBad, 1, 50, 0), Record(4, 1, 4, 2)})), Sizes{6}) << nBad;
        EXPECT_EQ(sizes(File(3, {Record(2, 3, 6, 1), Record(nBad, nBad, 50, 0)})), Sizes{6}) << nBad;
    }
    Plane many = File(1u << 20, {});
    for (int i = 0; i < c_nMaxBrushes + 5; i++) {
        const Plane record = Record(1, 1, 1, 9);
        many.insert(many.end(), record.begin(), record.end());
    }
    EXPECT_EQ(ParseBrushes(many).size(), std::size_t(c_nMaxBrushes));
}

TEST_F(BrushFiles, AreFoundInTheOrderOfTheirNames)
{
    for (const char* pszName : {"b.pbr", "a.PBR", "c.pbr", "pbr", "d.pbr.bak"})
        Write(pszName, File(0, {}));
    fs::create_directory(m_folder / "Brushes" / "folder.pbr");
    std::vector<std::string> names;
    for (const fs::path& path : FindBrushFiles(m_folder))
        names.push_back(path.filename().string());
    EXPECT_EQ(names, (std::vector<std::string>{"a.PBR", "b.pbr", "c.pbr"}));
    EXPECT_TRUE(FindBrushFiles(m_folder / "nowhere").empty());
    EXPECT_TRUE(ReadBrushFile(m_folder / "nowhere.pbr").empty());
    EXPECT_TRUE(ReadBrushFile(m_folder / "Brushes").empty()) << "a folder";
    EXPECT_TRUE(ReadBrushFile("/dev/zero").empty()) << "a device would never end";
}

TEST(BrushesThatShip, ArePleasantToBeginWith)
{
    const std::vector<fs::path> files = FindBrushFiles(fs::path(KESTRUNE_SOURCE_DIR) / "install");
    ASSERT_GE(files.size(), 3u);
    int nLeast = 1000, nMost = 0;
    for (const fs::path& path : files) {
        const std::vector<BrushEntry> brushes = ReadBrushFile(path);
        EXPECT_GE(brushes.size(), 8u) << path;
        EXPECT_EQ(EncodeBrushes(brushes).size(), fs::file_size(path)) << path << ": every byte is a brush's";
        for (const BrushEntry& brush : brushes) {
            EXPECT_GT(*std::max_element(brush.m_pMask.begin(), brush.m_pMask.end()), 190) << path << " " << brush.m_nWidth << ": too faint to see";
            EXPECT_TRUE(brush.m_nSpacing >= 1 && brush.m_nSpacing <= 200) << path;
            nLeast = std::min(nLeast, brush.m_nWidth);
            nMost = std::max(nMost, brush.m_nWidth);
        }
    }
    EXPECT_EQ(nLeast, 1);
    EXPECT_GE(nMost, 200);
    const BrushEntry first = ReadBrushFile(files.front()).at(3);
    EXPECT_TRUE(first.m_nWidth >= 9 && first.m_nWidth <= 25) << "the brush of the first stroke";
    EXPECT_EQ(first.m_pMask[first.m_pMask.size() / 2], 255);
}
