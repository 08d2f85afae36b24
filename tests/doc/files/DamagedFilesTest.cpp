// Files that are cut short, have flipped bits, or lie: every format through the same door as a good one.

#include "ForeignTools.h"

#include "base/Log.h"
#include "doc/files/ImageFile.h"

#include <cstring>

#include <sys/resource.h>

namespace kestrune::tests {

namespace {

/// A good file of each format: the command that makes it, and its extension.
struct GoodFile {
    const char* pszExtension;
    const char* pszCommand;
    bool bHelper; ///< decoded by the process: slower, so fewer rounds
};

constexpr GoodFile c_aGood[] = {
    {"jpg", "cjpeg in.ppm > out.jpg", false},
    {"jpg", "cjpeg -progressive in.ppm > out.jpg", false},
    {"jpg", "gm convert in.ppm -colorspace CMYK out.jpg", false},
    {"png", "pnmtopng in.ppm > out.png", false},
    {"png", "pnmquant 16 in.ppm | pnmtopng -interlace > out.png", false},
    {"tif", "pnmtotiff -lzw in.ppm > out.tif", false},
    {"tif", "pnmtotiff in.ppm > t.tif; tiffcp -t -w 16 -l 16 t.tif out.tif", false},
    {"tif", "ppmtopgm in.ppm | pgmtopbm | pnmtotiff -g4 > out.tif", false},
    {"tif", "gm convert in.ppm -colorspace CMYK out.tif", false},
    {"tif", "pamdepth 65535 in.ppm | pnmtotiff > out.tif", false},
    {"webp", "pnmtopng in.ppm > t.png; cwebp -quiet t.png -o out.webp", false},
    {"bmp", "ppmtobmp in.ppm > out.bmp", false},
    {"gif", "pnmquant 64 in.ppm | ppmtogif > out.gif", false},
    {"ico", "pnmscale -xsize 32 -ysize 32 in.ppm | pnmquant 16 | ppmtowinicon > out.ico", false},
    {"psd", "convert in.ppm out.psd", false},
    {"tga", "ppmtotga -rgb in.ppm > out.tga", true},
    {"sgi", "pnmtosgi -rle in.ppm > out.sgi", true},
    {"pcx", "ppmtopcx in.ppm > out.pcx", true},
    {"dcx", "gm convert in.ppm out.dcx", true},
    {"pict", "gm convert in.ppm PICT:out.pict", true},
    {"pntg", "ppmtopgm in.ppm | pgmtopbm | pbmtomacp > out.pntg", true},
    {"eps", "gm convert in.ppm EPS:out.eps", true},
    {"avif", "pnmtopng in.ppm > t.png; avifenc t.png out.avif", true},
    {"heic", "pnmtopng in.ppm > t.png; heif-enc t.png -o out.heic", true},
    {"jxl", "pnmtopng in.ppm > t.png; cjxl t.png out.jxl -d 1", true},
};

void PrintTo(const GoodFile& row, std::ostream* pOut)
{
    *pOut << row.pszCommand;
}

bool IsKnownResult(int nResult)
{
    switch (nResult) {
    case IMG_SUCCESS:
    case IMG_ERROR_MEMORY:
    case IMG_ERROR_FILE_FORMAT:
    case IMG_ERROR_FILE_READ:
    case IMG_ERROR_BITS:
    case IMG_ERROR_HELPER:
        return true;
    default:
        return false;
    }
}

long PeakKilobytes()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

class DamagedFiles : public testing::TestWithParam<GoodFile> {
protected:
    void SetUp() override
    {
        SetLogSink([](const std::string&) {});
        Limits().nMaxPixels = 4'000'000; // what a lie may cost: 12 MB of pixels
        Limits().nHelperSeconds = 20;
        WritePpm(MakeTestPicture(), m_folder / "in.ppm");
        ASSERT_TRUE(m_folder.Run(GetParam().pszCommand));
        m_file = ReadBytes(m_folder / ("out." + std::string(GetParam().pszExtension)));
        ASSERT_FALSE(m_file.empty());
        LBitmapBase bitmap;
        ASSERT_EQ(DecodeImage(m_file, GetParam().pszExtension, bitmap), IMG_SUCCESS);
    }
    void TearDown() override
    {
        SetLogSink({});
        Limits() = ReadLimits();
    }
    void Try(const Bytes& file)
    {
        LBitmapBase bitmap;
        const int nResult = DecodeImage(file, GetParam().pszExtension, bitmap);
        EXPECT_TRUE(IsKnownResult(nResult)) << nResult;
        EXPECT_EQ(bitmap.IsAllocated(), nResult == IMG_SUCCESS);
        EXPECT_LE(static_cast<std::int64_t>(bitmap.GetWidth()) * bitmap.GetHeight(), Limits().nMaxPixels);
        if (nResult == IMG_SUCCESS && bitmap.GetBitsPerPixel() < 8) {
            for (int y = 0; y < bitmap.GetHeight(); y++)
                for (int x = 0; x < bitmap.GetWidth(); x++)
                    ASSERT_LT(bitmap.Row(y)[x], 1 << bitmap.GetBitsPerPixel());
        }
    }

    CTestFolder m_folder;
    Bytes m_file;
};

TEST_P(DamagedFiles, EndInAnErrorNumber)
{
    const long nPeak = PeakKilobytes();
    const std::size_t nCuts = GetParam().bHelper ? 4 : 60;
    for (std::size_t i = 0; i < nCuts; i++)
        Try(Bytes(m_file.begin(), m_file.begin() + static_cast<std::ptrdiff_t>(m_file.size() * i / nCuts)));
    unsigned nState = 1;
    const auto random = [&](std::size_t nBelow) {
        nState = nState * 214013 + 2531011;
        const std::size_t n = (nState >> 8) % nBelow;
        return n;
    };
    const int nRounds = GetParam().bHelper ? 6 : 300;
    for (int i = 0; i < nRounds; i++) {
        Bytes file = m_file;
        // Mostly in the head, where the sizes stand; some anywhere.
        const std::size_t nWithin = i % 3 == 0 ? file.size() : std::min<std::size_t>(file.size(), 200);
        for (std::size_t n = 1 + random(4); n > 0; n--)
            file[random(nWithin)] = i % 2 ? static_cast<std::uint8_t>(random(256)) : (i % 4 ? 0xFF : 0x7F);
        Try(file);
    }
#ifndef __SANITIZE_ADDRESS__ // which keeps what was freed for a while
    EXPECT_LT(PeakKilobytes() - nPeak, 400 * 1024) << "memory is bounded by the greatest size, not by what a file says";
#endif
}

INSTANTIATE_TEST_SUITE_P(All, DamagedFiles, testing::ValuesIn(c_aGood), [](const auto& test) {
    return std::string(test.param.pszExtension) + std::to_string(test.index);
});

/// A file cut short is damaged, and says so with the same number everywhere.
TEST(DamagedFile, HalfAFileIsDamaged)
{
    SetLogSink([](const std::string&) {});
    const CTestFolder folder;
    WritePpm(MakeTestPicture(), folder / "in.ppm");
    ASSERT_TRUE(folder.Run("cjpeg -quality 95 in.ppm > a.jpg; cjpeg -progressive -quality 95 in.ppm > b.jpg; pnmtopng in.ppm > c.png;"
                           "pnmtotiff -none in.ppm > d.tif; cwebp -quiet c.png -o e.webp; ppmtobmp in.ppm > f.bmp;"
                           "gm convert in.ppm g.tga; pnmtosgi in.ppm > h.sgi; avifenc c.png i.avif; cjxl c.png j.jxl"));
    for (const char* pszName : {"a.jpg", "c.png", "d.tif", "e.webp", "f.bmp", "g.tga", "h.sgi", "i.avif", "j.jxl"}) {
        Bytes file = ReadBytes(folder / pszName);
        file.resize(file.size() / 2);
        LBitmapBase bitmap;
        EXPECT_EQ(DecodeImage(file, ExtensionOf(pszName), bitmap), IMG_ERROR_FILE_READ) << pszName;
    }
    // Without its end mark alone a photograph has lost nothing.
    Bytes file = ReadBytes(folder / "a.jpg");
    file.resize(file.size() - 2);
    LBitmapBase bitmap;
    EXPECT_EQ(DecodeImage(file, "jpg", bitmap), IMG_SUCCESS);
    SetLogSink({});
}

TEST(DamagedFile, GiantSizesAreRefusedBeforeMemoryIsTaken)
{
    SetLogSink([](const std::string&) {});
    const CTestFolder folder;
    WritePpm(MakeTestPicture(), folder / "in.ppm");
    ASSERT_TRUE(folder.Run("cjpeg in.ppm > a.jpg"));
    const long nPeak = PeakKilobytes();
    LBitmapBase bitmap;
    Bytes jpeg = ReadBytes(folder / "a.jpg");
    for (std::size_t i = 0; i + 9 < jpeg.size(); i++)
        if (jpeg[i] == 0xFF && jpeg[i + 1] == 0xC0)
            std::memset(&jpeg[i + 5], 0xFF, 4);
    EXPECT_NE(DecodeImage(jpeg, "jpg", bitmap), IMG_SUCCESS);
    EXPECT_LT(PeakKilobytes() - nPeak, 200 * 1024);
    SetLogSink({});
}

} // namespace

} // namespace kestrune::tests
