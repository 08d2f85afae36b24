#include "CodecTestKit.h"

#include "doc/files/BmpFile.h"
#include "doc/files/ByteWriter.h"

using namespace kestrune;
using namespace kestrune::codectest;

namespace {

struct BmpCase {
    const char* pszCommand;
    LBitmapBase (*picture)();
    int nBits; ///< depth that must come out
    int nTolerance;
};

LBitmapBase Colors24() { return ColorfulPicture(); }
LBitmapBase Colors200() { return FewColorsPicture(200); }
LBitmapBase Colors16() { return FewColorsPicture(16); }
LBitmapBase Colors2() { return FewColorsPicture(2); }
LBitmapBase Grey() { return GreyPicture(); }
LBitmapBase BlackWhite() { return BlackWhitePicture(); }

const BmpCase c_aCases[] = {
    {"ppmtobmp -windows -bpp=24 in.ppm > out", Colors24, 24, 0},
    {"ppmtobmp -windows -bpp=8 in.ppm > out", Colors200, 8, 0},
    {"ppmtobmp -windows -bpp=4 in.ppm > out", Colors16, 4, 0},
    {"ppmtobmp -windows -bpp=1 in.ppm > out", Colors2, 1, 0},
    {"ppmtobmp -os2 -bpp=24 in.ppm > out", Colors24, 24, 0},
    {"ppmtobmp -os2 -bpp=8 in.ppm > out", Colors200, 8, 0},
    {"ppmtobmp -os2 -bpp=4 in.ppm > out", Colors16, 4, 0},
    {"gm convert in.ppm -type Palette -compress RLE BMP3:out", Colors200, 8, 0},
    {"ppmtopgm in.ppm | ppmtobmp -windows -bpp=8 > out", Grey, 8, 0},
    {"gm convert in.ppm BMP2:out", Colors24, 24, 0},
    {"gm convert in.ppm -type Bilevel BMP3:out", BlackWhite, 1, 0},
    {"convert in.ppm BMP:out", Colors24, 24, 0},
    {"convert in.ppm -alpha set BMP:out", Colors24, 24, 0}, // 32 bits with masks
    {"convert in.ppm -define bmp:subtype=RGB565 BMP:out", Colors24, 24, 8},
    {"convert in.ppm -define bmp:subtype=RGB555 BMP:out", Colors24, 24, 8},
    {"convert in.ppm -type Palette -compress RLE BMP3:out", Colors200, 8, 0},
};

/// A bitmap file of the given header fields around pixel bytes that are written as they stand.
FileBytes HandMade(int nWidth, int nHeight, int nBits, int nCompression, const FileBytes& tail,
                   std::uint32_t nColorsUsed = 0)
{
    FileBytes bytes;
    CByteWriter w(bytes);
    w.Text("BM");
    w.Zeros(12);
    w.U32LE(40);
    w.U32LE(static_cast<std::uint32_t>(nWidth));
    w.U32LE(static_cast<std::uint32_t>(nHeight));
    w.U16LE(1);
    w.U16LE(static_cast<unsigned>(nBits));
    w.U32LE(static_cast<std::uint32_t>(nCompression));
    w.Zeros(12);
    w.U32LE(nColorsUsed);
    w.U32LE(0);
    w.Raw(tail);
    KeepSeed("bmp", bytes);
    return bytes;
}

FileBytes Ramp16()
{
    FileBytes palette;
    for (int i = 0; i < 16; i++)
        palette.insert(
            palette.end(),
            {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 2), static_cast<std::uint8_t>(i * 3), 0});
    return palette;
}

} // namespace

TEST(BmpFile, ReadsWhatOtherProgramsWrite)
{
    for (const BmpCase& row : c_aCases) {
        SCOPED_TRACE(row.pszCommand);
        const LBitmapBase picture = row.picture();
        const LBitmapBase bitmap = ReadOk(ReadBmp, MadeBy(row.pszCommand, picture, "bmp"));
        EXPECT_EQ(bitmap.GetBitsPerPixel(), row.nBits);
        EXPECT_TRUE(SamePicture(picture, bitmap, row.nTolerance));
    }
}

TEST(BmpFile, TellsGreyFromColour)
{
    EXPECT_TRUE(ReadOk(ReadBmp, MadeBy(PillowMakes("L", "BMP"), GreyPicture())).IsGrayScale());
    EXPECT_TRUE(ReadOk(ReadBmp, MadeBy("ppmtobmp -windows -bpp=1 in.ppm > out", BlackWhitePicture())).IsGrayScale());
    EXPECT_FALSE(ReadOk(ReadBmp, MadeBy("ppmtobmp -windows -bpp=1 in.ppm > out", FewColorsPicture(2))).IsGrayScale());
}

TEST(BmpFile, OtherProgramsReadOurs)
{
    LBitmapBase picture = ColorfulPicture();
    picture.SetResolution(300, 150);
    const FileBytes ours = WriteOk(WriteBmp, picture);
    for (const char* pszCommand :
         {"bmptoppm ours.bmp > back.pnm", "gm convert ours.bmp PPM:back.pnm", "convert ours.bmp PPM:back.pnm"}) {
        SCOPED_TRACE(pszCommand);
        EXPECT_TRUE(SamePicture(picture, SeenBy(pszCommand, ours, ".bmp")));
    }
    const LBitmapBase back = ReadOk(ReadBmp, ours);
    EXPECT_TRUE(SamePicture(picture, back));
    EXPECT_EQ(back.GetXResolution(), 300);
    EXPECT_EQ(back.GetYResolution(), 150);
}

TEST(BmpFile, AlphaCountsOnlyWhereTheHeaderNamesIt)
{
    const LBitmapBase picture = ColorfulPicture();
    const FileBytes named = MadeBy("convert in.ppm -alpha set -channel A -evaluate set 50% BMP:out", picture, "bmp");
    LBitmapBase faded = ColorfulPicture();
    for (int y = 0; y < faded.GetHeight(); y++)
        for (std::size_t i = 0; i < faded.GetRowBytes(); i++)
            faded.WriteRow(y)[i] = static_cast<std::uint8_t>(faded.Row(y)[i] / 2 + 127);
    EXPECT_TRUE(SamePicture(faded, ReadOk(ReadBmp, named), 2));

    // 32 bits without masks: the fourth byte is noise.
    const FileBytes pixels = {10, 20, 30, 0, 40, 50, 60, 128};
    const LBitmapBase plain = ReadOk(ReadBmp, HandMade(2, 1, 32, 0, pixels));
    EXPECT_EQ(plain.GetPixelColor(0, 0), Rgb(30, 20, 10));
    EXPECT_EQ(plain.GetPixelColor(1, 0), Rgb(60, 50, 40));
}

TEST(BmpFile, RunLengthsWithJumpsAndLiterals)
{
    FileBytes tail = Ramp16();
    // Bottom row: a run of 3 in turns, then 4 literals; a jump to the second last pixel of the row above; end.
    const FileBytes code = {3, 0x12, 0, 4, 0x34, 0x56, 0, 2, 0, 0, 0, 2, 5, 0, 2, 0x77, 0, 1};
    tail.insert(tail.end(), code.begin(), code.end());
    const LBitmapBase bitmap = ReadOk(ReadBmp, HandMade(7, 3, 4, 2, tail));
    const int aExpected[3][7] = {{0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0}, {1, 2, 1, 3, 4, 5, 6}};
    for (int y = 0; y < 3; y++)
        for (int x = 0; x < 7; x++)
            EXPECT_EQ(bitmap.Row(y)[x], aExpected[y][x]) << x << "," << y;

    FileBytes second = Ramp16();
    const FileBytes jump = {0, 2, 5, 1, 2, 0x77, 0, 1};
    second.insert(second.end(), jump.begin(), jump.end());
    const LBitmapBase jumped = ReadOk(ReadBmp, HandMade(7, 3, 4, 2, second));
    EXPECT_EQ(jumped.Row(1)[4], 0);
    EXPECT_EQ(jumped.Row(1)[5], 7);
    EXPECT_EQ(jumped.Row(1)[6], 7);
    EXPECT_EQ(jumped.Row(0)[5], 0);
}

TEST(BmpFile, TopDownHeaderlessAndShortPalettes)
{
    FileBytes tail = {1, 2, 3, 0, 4, 5, 6, 0, 0x80, 0, 0, 0, 0x40, 0, 0, 0}; // two colours; the rows 10 and 01
    const FileBytes file = HandMade(2, -2, 1, 0, tail, 2);
    const LBitmapBase bitmap = ReadOk(ReadBmp, file);
    EXPECT_EQ(bitmap.GetPixelColor(0, 0), Rgb(6, 5, 4));
    EXPECT_EQ(bitmap.GetPixelColor(1, 0), Rgb(3, 2, 1));
    EXPECT_EQ(bitmap.GetPixelColor(1, 1), Rgb(6, 5, 4));

    const FileBytes bare(file.begin() + 14, file.end());
    EXPECT_TRUE(SamePicture(bitmap, ReadOk(ReadBmp, bare)));

    // 8 bits with one colour only, whose pixels go beyond it: what the palette leaves out is black.
    const LBitmapBase beyond = ReadOk(ReadBmp, HandMade(2, 1, 8, 0, {9, 8, 7, 0, 0, 200, 0, 0}, 1));
    EXPECT_EQ(beyond.GetPixelColor(0, 0), Rgb(7, 8, 9));
    EXPECT_EQ(beyond.GetPixelColor(1, 0), Rgb(0, 0, 0));
}

TEST(BmpFile, RefusesWhatTheFileCannotHold)
{
    LBitmapBase bitmap;
    struct Case {
        int nWidth, nHeight, nBits, nCompression, nResult;
    };
    for (const Case& row :
         {Case{60000, 6000, 24, 0, IMG_ERROR_FILE_READ}, Case{60000, 6000, 8, 1, IMG_ERROR_FILE_READ},
          Case{60000, 60000, 1, 0, IMG_ERROR_MEMORY}, Case{0x7FFFFFFF, 0x7FFFFFFF, 24, 0, IMG_ERROR_MEMORY},
          Case{1, static_cast<int>(0x80000000), 24, 0, IMG_ERROR_MEMORY}, Case{-5, 4, 24, 0, IMG_ERROR_FILE_READ},
          Case{0, 0, 24, 0, IMG_ERROR_FILE_READ}, Case{4, 4, 7, 0, IMG_ERROR_BITS},
          Case{4, 4, 24, 5, IMG_ERROR_BITS}}) {
        EXPECT_EQ(ReadBmp(HandMade(row.nWidth, row.nHeight, row.nBits, row.nCompression, FileBytes(64)), bitmap),
                  row.nResult)
            << row.nWidth << "x" << row.nHeight << "x" << row.nBits;
        EXPECT_FALSE(bitmap.IsAllocated());
    }
}
