#include "doc/MetaFile.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kestrune;

namespace {

/// A header with this frame and these units an inch.
std::vector<std::uint8_t> Header(std::uint32_t dwKey, std::vector<int> aFrame, unsigned nInch)
{
    std::vector<std::uint8_t> file;
    for (int i = 0; i < 4; i++)
        file.push_back(static_cast<std::uint8_t>(dwKey >> 8 * i));
    aFrame.insert(aFrame.begin(), 7); // the handle
    aFrame.push_back(static_cast<int>(nInch));
    for (int v : aFrame) {
        file.push_back(static_cast<std::uint8_t>(v));
        file.push_back(static_cast<std::uint8_t>(v >> 8));
    }
    file.insert(file.end(), 6, 9);
    return file;
}

} // namespace

TEST(MetaFile, SizeComesFromTheFrame)
{
    CPaintMetaFile metafile;
    metafile.ReadHeader(Header(CPaintMetaFile::c_dwKey, {-100, -50, 300, 150}, 60000));
    EXPECT_EQ(metafile.m_nWidth, 400);
    EXPECT_EQ(metafile.m_nHeight, 200);
    EXPECT_EQ(metafile.m_nInch, 60000); // without a sign
    EXPECT_EQ(metafile.m_Header.wHandle, 7);
    EXPECT_EQ(metafile.m_Header.aReserved[5], 9);
    EXPECT_TRUE(metafile.IsUsable());
    metafile.ReadHeader(Header(CPaintMetaFile::c_dwKey, {-32768, 0, 32767, 0}, 96));
    EXPECT_EQ(metafile.m_nWidth, 65535);
    EXPECT_FALSE(metafile.IsUsable()); // no height
}

TEST(MetaFile, NoHeaderClearsEverything)
{
    CPaintMetaFile metafile;
    const auto good = Header(CPaintMetaFile::c_dwKey, {0, 0, 10, 20}, 96);
    for (const auto& file : {Header(0x9AC6CDD8, {0, 0, 10, 20}, 96),
                             std::vector<std::uint8_t>(good.begin(), good.end() - 1), std::vector<std::uint8_t>()}) {
        metafile.ReadHeader(good);
        ASSERT_TRUE(metafile.IsUsable());
        metafile.ReadHeader(file);
        EXPECT_EQ(metafile.m_nWidth, 0);
        EXPECT_EQ(metafile.m_nHeight, 0);
        EXPECT_EQ(metafile.m_nInch, 0);
        EXPECT_EQ(metafile.m_Header.dwKey, 0U);
        EXPECT_EQ(metafile.m_Header.nRight, 0);
    }
}
