#include "doc/Bitmap.h"
#include "resources/Textures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

using namespace kestrune;
using testing::ElementsAre;

TEST(Textures, FolderIsSiftedByTheEndingAlone)
{
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "textures-sift";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "folder.bmp");
    for (const char* pszName : {"b.bmp", "A.JPG", "c.tif", "d.tiff", "e.jpeg", "f.png", "jpg", "g.tif.bak", "한글.Tif"})
        std::ofstream(folder / pszName) << "x";
    std::vector<std::string> names;
    for (const std::filesystem::path& path : ScanTextureFolder(folder))
        names.push_back(path.filename().string());
    EXPECT_THAT(names, ElementsAre("A.JPG", "b.bmp", "c.tif", "한글.Tif"));
    LBitmapBase bitmap;
    EXPECT_FALSE(LoadTextureBitmap(folder / "b.bmp", bitmap)); // an ending makes no image
    EXPECT_FALSE(LoadTextureBitmap(folder / "folder.bmp", bitmap));
    std::filesystem::remove_all(folder);
    EXPECT_TRUE(ScanTextureFolder(folder).empty());
}

TEST(Textures, BytesAreRedAndPixelsAreRedGreenBlueRowByRow)
{
    LBitmapBase bitmap;
    ASSERT_TRUE(bitmap.Create(2, 3, 24));
    for (int y = 0; y < 3; y++)
        for (int x = 0; x < 2; x++)
            bitmap.PutPixelColor(x, y, Rgb(static_cast<std::uint8_t>(10 * y + x), static_cast<std::uint8_t>(100 + 10 * y + x), 200));
    const BrushTexture texture = MakeBrushTexture(bitmap);
    EXPECT_EQ(texture.nWidth, 2);
    EXPECT_EQ(texture.nHeight, 3);
    EXPECT_THAT(texture.aBytes, ElementsAre(0, 1, 10, 11, 20, 21));
    const PaintPattern pattern = MakePattern(bitmap, 30);
    EXPECT_EQ(pattern.nPercent, 30);
    ASSERT_EQ(pattern.aPixels.size(), 18u);
    EXPECT_THAT(std::vector(pattern.aPixels.begin() + 6, pattern.aPixels.begin() + 12), ElementsAre(10, 110, 200, 11, 111, 200));
}

TEST(Textures, EveryShippedOneOpensAndMeetsItselfAtItsEdges)
{
    const std::filesystem::path install = KESTRUNE_SOURCE_DIR "/install";
    EXPECT_GE(ScanTextureFolder(BrushTextureFolder(install)).size(), 12u);
    EXPECT_GE(ScanTextureFolder(PatternFolder(install)).size(), 12u);
    for (const auto& folder : {BrushTextureFolder(install), PatternFolder(install)})
        for (const std::filesystem::path& path : ScanTextureFolder(folder)) {
            LBitmapBase bitmap;
            ASSERT_TRUE(LoadTextureBitmap(path, bitmap)) << path;
            const PaintPattern p = MakePattern(bitmap, 100);
            // Across the seam a row changes no more than the columns inside differ at most from their neighbours.
            const auto difference = [&](int x0, int x1) {
                long n = 0;
                for (int y = 0; y < p.nHeight; y++)
                    n += std::abs(p.aPixels[3 * (std::size_t(y) * p.nWidth + x0)] - p.aPixels[3 * (std::size_t(y) * p.nWidth + x1)]);
                return n;
            };
            long nInside = 0;
            for (int x = 1; x < p.nWidth; x++)
                nInside = std::max(nInside, difference(x - 1, x));
            EXPECT_LE(difference(p.nWidth - 1, 0), nInside + nInside / 4) << path;
            int nRange = 0;
            for (int c = 0; c < 3; c++) {
                int nLow = 255, nHigh = 0;
                for (std::size_t i = c; i < p.aPixels.size(); i += 3) {
                    nLow = std::min<int>(nLow, p.aPixels[i]);
                    nHigh = std::max<int>(nHigh, p.aPixels[i]);
                }
                nRange = std::max(nRange, nHigh - nLow);
            }
            EXPECT_GT(nRange, 40) << path << " is flat";
        }
}
