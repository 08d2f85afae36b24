// What the editor writes, read by other programs and by itself; and what happens when writing fails.

#include "ForeignTools.h"

#include "base/StringTable.h"
#include "doc/files/ImageFile.h"

#include <fstream>
#include <ostream>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace kestrune::tests {

namespace {

struct WrittenFile {
    int nSaveIndex;
    const char* pszRead; ///< makes ref.ppm from out.EXT
    double fTolerance;   ///< mean difference of a channel
    double fOwnTolerance;
    bool bResolution; ///< the format keeps it
};

constexpr WrittenFile c_aWritten[] = {
    {2, "djpeg out.jpg > ref.ppm", 4, 4, true},
    {3, "bmptopnm out.bmp > ref.ppm", 0, 0, true},
    {4, "convert 'out.psd[0]' -flatten ref.ppm", 0, 0, true},
    {5, "tifftopnm out.tif > ref.ppm", 0, 0, true},
    {6, "gm convert CUT:out.cut ref.ppm", 60, 60, false}, // grey: the file has no colours
    {7, "convert PICT:out.pct ref.ppm", 0, 0, false},
    {8, "sgitopnm out.sgi > ref.ppm", 0, 0, false},
    {9, "gm convert WPG:out.wpg ref.ppm", 12, 12, false}, // 256 colours, dithered
    {10, "pcxtoppm out.pcx > ref.ppm", 0, 0, true},
};

void PrintTo(const WrittenFile& row, std::ostream* pOut)
{
    *pOut << FindFormatBySaveIndex(row.nSaveIndex)->saveExtension;
}

class WrittenFiles : public testing::TestWithParam<WrittenFile> {};

TEST_P(WrittenFiles, AreReadByOthersAndByUs)
{
    const WrittenFile& row = GetParam();
    const ImageFormatRow& format = *FindFormatBySaveIndex(row.nSaveIndex);
    const CTestFolder folder;
    const Rgb24 picture = MakeTestPicture();
    LBitmapBase bitmap = BitmapOf(picture);
    bitmap.SetResolution(150, 150);
    const fs::path path = folder / ("out." + std::string(format.saveExtension));
    ASSERT_EQ(SaveIndexOfPath(path), row.nSaveIndex);
    ASSERT_EQ(bitmap.Save(path, format.nSaveCode, format.nSaveBits, format.nSaveQuality), IMG_SUCCESS);
    ASSERT_TRUE(folder.Run(row.pszRead));
    EXPECT_LE(MeanDifference(ReadPnm(folder / "ref.ppm"), picture), row.fTolerance);

    LBitmapBase again;
    again.SetFileName(path);
    ASSERT_EQ(again.Load(), IMG_SUCCESS);
    EXPECT_LE(MeanDifference(ColorsOf(again), picture), row.fOwnTolerance);
    EXPECT_EQ(again.GetBitsPerPixel(), format.nSaveBits);
    if (row.bResolution) {
        EXPECT_EQ(again.GetXResolution(), 150);
    }
    // No writer may depend on sides that suit it.
    for (const auto& [nWidth, nHeight] : {std::pair{1, 1}, {2, 3}, {63, 5}, {257, 2}}) {
        const Rgb24 small = MakeTestPicture(nWidth, nHeight);
        ASSERT_EQ(BitmapOf(small).Save(path, format.nSaveCode, format.nSaveBits, format.nSaveQuality), IMG_SUCCESS);
        ASSERT_EQ(again.Load(), IMG_SUCCESS) << nWidth << " x " << nHeight;
        EXPECT_EQ(again.GetWidth(), nWidth);
        EXPECT_EQ(again.GetHeight(), nHeight);
        if (row.fOwnTolerance == 0) {
            EXPECT_EQ(MeanDifference(ColorsOf(again), small), 0) << nWidth << " x " << nHeight;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, WrittenFiles, testing::ValuesIn(c_aWritten), [](const auto& test) {
    return std::string(FindFormatBySaveIndex(test.param.nSaveIndex)->saveExtension);
});

TEST(WrittenFile, ExportFormatsAreReadByOthers)
{
    const CTestFolder folder;
    const Rgb24 picture = MakeTestPicture();
    LBitmapBase bitmap = BitmapOf(picture);
    bitmap.SetResolution(150, 150);
    Bytes png, webp, webpLossless;
    ASSERT_EQ(EncodeImage(ImageFormat::Png, bitmap, 2, png), IMG_SUCCESS);
    ASSERT_EQ(EncodeImage(ImageFormat::WebP, bitmap, FactorOfQuality(90), webp), IMG_SUCCESS);
    ASSERT_EQ(EncodeImage(ImageFormat::WebP, bitmap, FactorOfQuality(100), webpLossless), IMG_SUCCESS);
    ASSERT_FALSE(WriteFileDurably(folder / "a.png", png));
    ASSERT_FALSE(WriteFileDurably(folder / "b.webp", webp));
    ASSERT_FALSE(WriteFileDurably(folder / "c.webp", webpLossless));
    ASSERT_TRUE(folder.Run("pngtopnm a.png > a.ppm; dwebp -quiet b.webp -ppm -o b.ppm; dwebp -quiet c.webp -ppm -o c.ppm"));
    EXPECT_EQ(MeanDifference(ReadPnm(folder / "a.ppm"), picture), 0);
    EXPECT_LT(MeanDifference(ReadPnm(folder / "b.ppm"), picture), 6);
    EXPECT_EQ(MeanDifference(ReadPnm(folder / "c.ppm"), picture), 0);
    LBitmapBase again;
    ASSERT_EQ(DecodeImage(png, "png", again), IMG_SUCCESS);
    EXPECT_EQ(again.GetXResolution(), 150);
}

TEST(WrittenFile, WidePicturesOutgrowOneStripOfPict)
{
    const CTestFolder folder;
    const Rgb24 picture = MakeTestPicture(9001, 3);
    const fs::path path = folder / "out.pct";
    ASSERT_EQ(BitmapOf(picture).Save(path, 56, 24, 0), IMG_SUCCESS);
    LBitmapBase again;
    again.SetFileName(path);
    ASSERT_EQ(again.Load(), IMG_SUCCESS);
    EXPECT_EQ(MeanDifference(ColorsOf(again), picture), 0);
    ASSERT_TRUE(folder.Run("convert PICT:out.pct ref.ppm"));
    EXPECT_EQ(MeanDifference(ReadPnm(folder / "ref.ppm"), picture), 0);
}

TEST(WrittenFile, PngKeepsEveryDepth)
{
    const CTestFolder folder;
    WritePpm(MakeTestPicture(), folder / "in.ppm");
    ASSERT_TRUE(folder.Run("ppmtopgm in.ppm > in.pgm; pgmtopbm in.pgm | pnmtopng > 1.png; pnmquant 16 in.ppm | pnmtopng > 4.png;"
                           "pnmquant 200 in.ppm | pnmtopng > 8.png; pnmtopng in.pgm > grey.png"));
    const ImageFormatRow& png = ImageFormats()[static_cast<std::size_t>(ImageFormat::Png)];
    for (const char* pszName : {"1.png", "4.png", "8.png", "grey.png"}) {
        LBitmapBase bitmap, again;
        ASSERT_EQ(DecodeImage(ReadBytes(folder / pszName), "png", bitmap), IMG_SUCCESS);
        Bytes bytes;
        ASSERT_EQ(png.writer(bitmap, 2, bytes), IMG_SUCCESS);
        ASSERT_EQ(DecodeImage(bytes, "png", again), IMG_SUCCESS);
        EXPECT_EQ(again.GetBitsPerPixel(), bitmap.GetBitsPerPixel()) << pszName;
        EXPECT_EQ(again.IsGrayScale(), bitmap.IsGrayScale()) << pszName;
        EXPECT_EQ(MeanDifference(ColorsOf(again), ColorsOf(bitmap)), 0) << pszName;
    }
}

TEST(WrittenFile, QualityFactorRunsFromBestToSmallest)
{
    EXPECT_EQ(QualityOfFactor(2), 100);
    EXPECT_EQ(QualityOfFactor(30), 92);
    EXPECT_EQ(QualityOfFactor(255), 1);
    EXPECT_EQ(QualityOfFactor(-5), 100);
    for (int nPercent = 1; nPercent <= 100; nPercent++)
        EXPECT_EQ(QualityOfFactor(FactorOfQuality(nPercent)), nPercent);
    const LBitmapBase bitmap = BitmapOf(MakeTestPicture());
    std::size_t nLast = SIZE_MAX;
    for (const int nFactor : {2, 30, 100, 255}) {
        Bytes bytes;
        ASSERT_EQ(EncodeImage(ImageFormat::Jpeg, bitmap, nFactor, bytes), IMG_SUCCESS);
        EXPECT_LT(bytes.size(), nLast) << nFactor;
        nLast = bytes.size();
    }
}

TEST(WrittenFile, FailureLeavesTheOldFile)
{
    const CTestFolder folder;
    const LBitmapBase bitmap = BitmapOf(MakeTestPicture(400, 300));
    const fs::path path = folder / "old.bmp";
    std::ofstream(path) << "old bytes";
    const auto oldStands = [&] { return ReadBytes(path).size() == 9 && std::distance(fs::directory_iterator(folder.Path()), {}) == 1; };

    ::chmod(path.c_str(), 0444);
    EXPECT_EQ(bitmap.Save(path, 6, 24, 0), IMG_ERROR_FILE_CREATE) << "nobody may write to it, not even the superuser";
    EXPECT_TRUE(oldStands());
    ::chmod(path.c_str(), 0640);

    EXPECT_EQ(bitmap.Save(path, 999, 24, 0), IMG_ERROR_BITS);
    EXPECT_EQ(bitmap.Save(path, 6, 8, 0), IMG_ERROR_BITS);
    EXPECT_TRUE(oldStands());
    EXPECT_EQ(bitmap.Save(folder / "no/such/folder.bmp", 6, 24, 0), IMG_ERROR_FILE_CREATE);
    EXPECT_EQ(bitmap.Save("/dev/full", 6, 24, 0), IMG_ERROR_FILE_WRITE);
    EXPECT_TRUE(fs::is_character_file("/dev/full")) << "a device is written to, never replaced";

    // A limit on the size of files stands for a disk that fills up on the way.
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    ::getrlimit(RLIMIT_FSIZE, &old);
    rlimit small = old;
    small.rlim_cur = 4096;
    ::setrlimit(RLIMIT_FSIZE, &small);
    const int nResult = bitmap.Save(path, 6, 24, 0);
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(nResult, IMG_ERROR_FILE_WRITE);
    EXPECT_TRUE(oldStands());

    ASSERT_EQ(bitmap.Save(path, 6, 24, 0), IMG_SUCCESS);
    struct stat info;
    ::stat(path.c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u) << "the new file has the rights of the old one";
}

TEST(WrittenFile, LinksAreFollowed)
{
    const CTestFolder folder;
    fs::create_directory(folder / "far");
    fs::create_symlink("far/real.bmp", folder / "link.bmp");
    const LBitmapBase bitmap = BitmapOf(MakeTestPicture());
    for (int i = 0; i < 2; i++) { // first the file is made where the link points, then it is replaced there
        ASSERT_EQ(bitmap.Save(folder / "link.bmp", 6, 24, 0), IMG_SUCCESS);
        EXPECT_TRUE(fs::is_symlink(folder / "link.bmp"));
        EXPECT_TRUE(fs::is_regular_file(folder / "far/real.bmp"));
    }
    fs::create_symlink("ring.bmp", folder / "ring.bmp");
    EXPECT_EQ(bitmap.Save(folder / "ring.bmp", 6, 24, 0), IMG_ERROR_FILE_CREATE);
}

TEST(WrittenFile, OldBytesAreKeptAside)
{
    const CTestFolder folder;
    SetRecoveryFolder(folder / "recovery");
    std::ofstream(folder / "사진.jpg") << "old bytes";
    std::ofstream(folder / "empty.jpg").close();
    std::string strError;
    EXPECT_EQ(KeepAside(folder / "missing.jpg"), fs::path());
    EXPECT_EQ(KeepAside(folder / "empty.jpg"), fs::path());
    const auto first = KeepAside(folder / "사진.jpg"), second = KeepAside(folder / "사진.jpg");
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    EXPECT_EQ(first->extension(), ".jpg");
    EXPECT_TRUE(first->filename().string().starts_with("사진"));
    EXPECT_EQ(ReadBytes(*first).size(), 9u);
    DropAside(*first);
    DropAside({});
    EXPECT_FALSE(fs::exists(*first));
    EXPECT_TRUE(fs::exists(*second));
    std::ofstream(folder / "blocked") << "a file where the folder should be";
    SetRecoveryFolder(folder / "blocked/recovery");
    EXPECT_FALSE(KeepAside(folder / "사진.jpg", &strError));
    EXPECT_TRUE(strError.starts_with(StringText(IDS_CANNOT_KEEP)));
    SetRecoveryFolder({});
}

TEST(WrittenFile, WhatCannotBeReadIsSaid)
{
    const CTestFolder folder;
    LBitmapBase bitmap;
    EXPECT_EQ(bitmap.Load(), IMG_ERROR_FILE_OPEN) << "no name";
    ASSERT_TRUE(folder.Run("mkfifo pipe.jpg; mkdir dir.jpg; : > empty.jpg; head -c 5000 /dev/zero > zeroes.jpg"));
    for (const char* pszName : {"missing.jpg", "pipe.jpg", "dir.jpg"}) {
        bitmap.SetFileName(folder / pszName);
        EXPECT_EQ(bitmap.Load(), IMG_ERROR_FILE_OPEN) << pszName;
    }
    for (const char* pszName : {"empty.jpg", "zeroes.jpg"}) {
        bitmap.SetFileName(folder / pszName);
        EXPECT_NE(bitmap.Load(), IMG_SUCCESS) << pszName;
    }
    bitmap.SetFileName(folder / "zeroes.jpg");
    Limits().nMaxFileBytes = 4999;
    EXPECT_EQ(bitmap.Load(), IMG_ERROR_FILE_OPEN) << "larger than the greatest size";
    Limits() = ReadLimits();
}

} // namespace

} // namespace kestrune::tests
