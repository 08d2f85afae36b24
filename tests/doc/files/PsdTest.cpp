#include "CodecTestKit.h"

#include "doc/files/ByteWriter.h"
#include "doc/files/PackBits.h"
#include "doc/files/PsdReader.h"
#include "doc/files/PsdWriter.h"

#include <random>

using namespace kestrune;
using namespace kestrune::codectest;

TEST(PackBits, RoundTripsAndStaysBounded)
{
    std::minstd_rand random(7);
    for (int n = 1; n < 600; n++) {
        FileBytes row(static_cast<std::size_t>(n));
        for (auto& b : row)
            b = static_cast<std::uint8_t>((random() >> 8) % (n % 3 + 1)); // flat, runs, nearly noise
        FileBytes coded, back(row.size());
        AppendPackBits(row, coded);
        EXPECT_LE(coded.size(), row.size() + (row.size() + 127) / 128);
        ASSERT_TRUE(UnpackBits(coded, back)) << n;
        ASSERT_EQ(row, back) << n;
        coded.pop_back();
        EXPECT_FALSE(UnpackBits(coded, back)) << n;
    }
}

TEST(Psd, ReadsWhatOtherProgramsWrite)
{
    struct Case {
        const char* pszCommand;
        LBitmapBase picture;
        int nBits;
        int nTolerance;
    };
    for (const Case& row : {Case{"convert in.ppm -compress RLE PSD:out", ColorfulPicture(), 24, 0},
                            Case{"convert in.ppm -compress None PSD:out", ColorfulPicture(), 24, 0},
                            Case{"convert in.ppm -depth 16 -compress RLE PSD:out", ColorfulPicture(), 24, 0},
                            Case{"convert in.ppm -depth 16 -compress None PSD:out", ColorfulPicture(), 24, 0},
                            Case{"convert in.ppm PSB:out", ColorfulPicture(), 24, 0},
                            Case{"convert in.ppm -colorspace Gray PSD:out", GreyPicture(), 8, 0},
                            Case{"convert in.ppm -colorspace Gray -depth 16 PSD:out", GreyPicture(), 8, 0},
                            Case{"convert in.ppm -colorspace CMYK PSD:out", ColorfulPicture(), 24, 1},
                            Case{"convert in.ppm -colorspace CMYK -compress None PSD:out", ColorfulPicture(), 24, 1}}) {
        SCOPED_TRACE(row.pszCommand);
        const LBitmapBase bitmap = ReadOk(ReadPsd, MadeBy(row.pszCommand, row.picture, "psd"));
        EXPECT_EQ(bitmap.GetBitsPerPixel(), row.nBits);
        EXPECT_EQ(bitmap.IsGrayScale(), row.nBits == 8);
        EXPECT_TRUE(SamePicture(row.picture, bitmap, row.nTolerance));
    }
}

TEST(Psd, OtherProgramsReadOurs)
{
    LBitmapBase picture = ColorfulPicture();
    picture.SetResolution(300, 150);
    const FileBytes ours = WriteOk(WritePsd, picture);
    KeepSeed("psd", ours);
    for (const std::string& strCommand : {std::string("convert ours.psd PPM:back.pnm"), PillowToPpm("ours.psd")}) {
        SCOPED_TRACE(strCommand);
        EXPECT_TRUE(SamePicture(picture, SeenBy(strCommand, ours, ".psd")));
    }
    EXPECT_TRUE(Runs("test \"$(identify -units PixelsPerInch -format '%x %y' ours.psd)\" = '300 150'"));
    const LBitmapBase back = ReadOk(ReadPsd, ours);
    EXPECT_TRUE(SamePicture(picture, back));
    EXPECT_EQ(back.GetXResolution(), 300);
    EXPECT_EQ(back.GetYResolution(), 150);
}

TEST(Psd, GiantSidesGoToTheBigVariant)
{
    const LBitmapBase picture = ColorfulPicture(30001, 3);
    const FileBytes ours = WriteOk(WritePsd, picture);
    EXPECT_EQ(ours[5], 2);
    EXPECT_TRUE(SamePicture(picture, ReadOk(ReadPsd, ours)));
}

namespace {

/// A plain file of one row of planes, without resources; `layers` is the body of the layer section.
FileBytes HandMade(int nMode, int nDepth, int nWidth, const std::vector<FileBytes>& planes,
                   const FileBytes& resources = {}, const FileBytes& layers = {})
{
    FileBytes bytes;
    CByteWriter w(bytes);
    w.Text("8BPS");
    w.U16BE(1);
    w.Zeros(6);
    w.U16BE(static_cast<unsigned>(planes.size()));
    w.U32BE(1);
    w.U32BE(static_cast<std::uint32_t>(nWidth));
    w.U16BE(static_cast<unsigned>(nDepth));
    w.U16BE(static_cast<unsigned>(nMode));
    FileBytes palette(nMode == 2 ? 768 : 0);
    for (std::size_t i = 0; i < palette.size(); i++)
        palette[i] = static_cast<std::uint8_t>(i % 256 + i / 256 * 10);
    w.U32BE(static_cast<std::uint32_t>(palette.size()));
    w.Raw(palette);
    w.U32BE(static_cast<std::uint32_t>(resources.size()));
    w.Raw(resources);
    w.U32BE(static_cast<std::uint32_t>(layers.size()));
    w.Raw(layers);
    w.U16BE(0);
    for (const FileBytes& plane : planes)
        w.Raw(plane);
    KeepSeed("psd", bytes);
    return bytes;
}

FileBytes Resource(unsigned nId, const FileBytes& body)
{
    FileBytes bytes;
    CByteWriter w(bytes);
    w.Text("8BIM");
    w.U16BE(nId);
    w.U16BE(0);
    w.U32BE(static_cast<std::uint32_t>(body.size()));
    w.Raw(body);
    w.Zeros(body.size() & 1);
    return bytes;
}

constexpr COLORREF c_crWhite = 0xFFFFFF;

} // namespace

TEST(Psd, OtherModes)
{
    const LBitmapBase bits = ReadOk(ReadPsd, HandMade(0, 1, 3, {{0x40}}));
    EXPECT_EQ(bits.GetBitsPerPixel(), 1);
    EXPECT_TRUE(bits.IsGrayScale());
    EXPECT_EQ(bits.GetPixelColor(0, 0), c_crWhite);
    EXPECT_EQ(bits.GetPixelColor(1, 0), 0U); // a set bit is black

    const LBitmapBase indexed = ReadOk(ReadPsd, HandMade(2, 8, 2, {{5, 6}}, Resource(1047, {0, 6})));
    EXPECT_EQ(indexed.GetBitsPerPixel(), 8);
    EXPECT_EQ(indexed.GetPixelColor(0, 0), Rgb(5, 15, 25));
    EXPECT_EQ(indexed.GetPixelColor(1, 0), c_crWhite);

    const LBitmapBase duotone = ReadOk(ReadPsd, HandMade(8, 8, 2, {{77, 200}}));
    EXPECT_EQ(duotone.GetPixelColor(0, 0), Rgb(77, 77, 77));

    // White, mid grey and pure red as lightness and two colour axes.
    const LBitmapBase lab = ReadOk(ReadPsd, HandMade(9, 8, 3, {{255, 137, 138}, {128, 128, 209}, {128, 128, 198}}));
    const COLORREF aExpected[] = {c_crWhite, Rgb(128, 128, 128), Rgb(255, 0, 0)};
    for (int x = 0; x < 3; x++) {
        const COLORREF cr = lab.GetPixelColor(x, 0);
        EXPECT_NEAR(RedOf(cr), RedOf(aExpected[x]), 4);
        EXPECT_NEAR(GreenOf(cr), GreenOf(aExpected[x]), 6);
        EXPECT_NEAR(BlueOf(cr), BlueOf(aExpected[x]), 6);
    }
    LBitmapBase bitmap;
    EXPECT_EQ(ReadPsd(HandMade(3, 32, 1, {{0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}), bitmap), IMG_ERROR_BITS);
}

TEST(Psd, AlphaIsShownOverWhite)
{
    // Bare colours: black at half strength.
    EXPECT_EQ(ReadOk(ReadPsd, HandMade(3, 8, 2, {{0, 10}, {0, 20}, {0, 30}, {128, 255}})).GetPixelColor(0, 0),
              Rgb(127, 127, 127));
    // Colours that an editor has blended with white already stay: the same black, stored as 127.
    const FileBytes onWhite
        = HandMade(3, 8, 2, {{127, 10}, {127, 20}, {127, 30}, {128, 255}}, {}, {0, 0, 0, 2, 0xFF, 0xFF});
    EXPECT_EQ(ReadOk(ReadPsd, onWhite).GetPixelColor(0, 0), Rgb(127, 127, 127));
    // A named selection is no transparency.
    const FileBytes stored
        = HandMade(3, 8, 2, {{0, 10}, {0, 20}, {0, 30}, {128, 255}}, Resource(1006, {3, 'S', 'e', 'l'}));
    EXPECT_EQ(ReadOk(ReadPsd, stored).GetPixelColor(0, 0), 0U);
    // Grey with alpha stays grey.
    const LBitmapBase grey = ReadOk(ReadPsd, HandMade(1, 8, 1, {{0}, {0}}));
    EXPECT_EQ(grey.GetPixelColor(0, 0), c_crWhite);
    EXPECT_TRUE(grey.IsGrayScale());

    const LBitmapBase picture = ColorfulPicture();
    const FileBytes file = MadeBy("convert in.ppm -alpha set -channel A -evaluate set 40% +channel out.psd && "
                                  "convert in.ppm -alpha set -channel A -evaluate set 40% +channel -background white "
                                  "-flatten back.ppm && mv out.psd out",
                                  picture, "psd");
    EXPECT_TRUE(SamePicture(ReadPnm(TestFolder() / "back.ppm"), ReadOk(ReadPsd, file), 2));
}

TEST(Psd, InksGoThroughTheEmbeddedProfile)
{
    const LBitmapBase picture = ColorfulPicture();
    const FileBytes damaged = HandMade(4, 8, 1, {{255}, {0}, {0}, {255}}, Resource(1039, FileBytes(200, 1)));
    EXPECT_EQ(ReadOk(ReadPsd, damaged).GetPixelColor(0, 0), Rgb(255, 0, 0)); // no ink lets red through; the plain rule
    const char* pszProfile = "/usr/share/color/icc/ghostscript/default_cmyk.icc";
    if (!std::filesystem::exists(pszProfile))
        GTEST_SKIP() << "no ink profile on this system";
    const LBitmapBase bitmap = ReadOk(
        ReadPsd,
        HandMade(4, 8, 2, {{255, 0}, {255, 255}, {255, 255}, {255, 255}}, Resource(1039, FileContent(pszProfile))));
    const COLORREF white = bitmap.GetPixelColor(0, 0), cyan = bitmap.GetPixelColor(1, 0);
    EXPECT_GT(RedOf(white), 250);
    EXPECT_NE(cyan, Rgb(0, 255, 255)); // real cyan ink is darker than the screen's
    EXPECT_GT(BlueOf(cyan), 180);
    EXPECT_LT(RedOf(cyan), 80);
}
