#include "CodecTestKit.h"

#include "doc/files/ByteWriter.h"
#include "doc/files/GifFile.h"
#include "doc/files/IcoFile.h"

using namespace kestrune;
using namespace kestrune::codectest;

namespace {

/// The picture with every pixel of one colour made white.
LBitmapBase WithWhiteFor(const LBitmapBase& picture, COLORREF cr)
{
    LBitmapBase white;
    white.Copy(picture);
    for (int y = 0; y < white.GetHeight(); y++)
        for (int x = 0; x < white.GetWidth(); x++)
            if (white.GetPixelColor(x, y) == cr)
                white.PutPixelColor(x, y, Rgb(255, 255, 255));
    return white;
}

std::string HexOf(COLORREF cr)
{
    char aText[16];
    std::snprintf(aText, sizeof aText, "#%02x%02x%02x", RedOf(cr), GreenOf(cr), BlueOf(cr));
    return aText;
}

} // namespace

TEST(IcoFile, ReadsWhatOtherProgramsWrite)
{
    struct Case {
        const char* pszCommand;
        LBitmapBase picture;
        int nBits;
    };
    for (const Case& row : {Case{"ppmtowinicon in.ppm > out", FewColorsPicture(2, 32, 32), 1},
                            Case{"ppmtowinicon in.ppm > out", FewColorsPicture(16, 32, 32), 4},
                            Case{"ppmtowinicon in.ppm > out", FewColorsPicture(200, 48, 48), 8},
                            Case{"pamtowinicon in.ppm > out", ColorfulPicture(48, 48), 24},
                            Case{"convert in.ppm ICO:out", ColorfulPicture(31, 17), 24},
                            Case{"convert in.ppm CUR:out", ColorfulPicture(33, 9), 24}}) {
        SCOPED_TRACE(row.pszCommand);
        const LBitmapBase bitmap = ReadOk(ReadIco, MadeBy(row.pszCommand, row.picture, "ico"));
        EXPECT_EQ(bitmap.GetBitsPerPixel(), row.nBits);
        EXPECT_TRUE(SamePicture(row.picture, bitmap));
    }
}

TEST(IcoFile, TransparentPixelsAreWhite)
{
    // Four and 16 colours, none of them white: the palette gives a free entry, or grows.
    for (int nColors : {4, 16, 256}) {
        SCOPED_TRACE(nColors);
        const LBitmapBase picture = FewColorsPicture(nColors, 32, 32);
        const COLORREF cr = picture.GetPixelColor(2, 0);
        const FileBytes file = MadeBy("pamtowinicon -truetransparent in.ppm > /dev/null; convert in.ppm -transparent '"
                                          + HexOf(cr) + "' -define icon:format=bmp ICO:out",
                                      picture, "ico");
        EXPECT_TRUE(SamePicture(WithWhiteFor(picture, cr), ReadOk(ReadIco, file)));
    }
    // A mask of one bit beside 4-bit pixels, as old icons have it.
    const LBitmapBase picture = FewColorsPicture(16, 32, 32);
    const FileBytes file
        = MadeBy("ppmtopgm in.ppm | pgmtopgm | pamthreshold -threshold=0.5 | pamtopnm > mask.pbm && ppmtowinicon "
                 "-andpgms in.ppm mask.pbm > out",
                 picture, "ico");
    const LBitmapBase bitmap = ReadOk(ReadIco, file);
    const LBitmapBase mask = ReadPnm(TestFolder() / "mask.pbm");
    ASSERT_EQ(mask.GetWidth(), 32);
    int nTransparent = 0;
    for (int y = 0; y < 32; y++)
        for (int x = 0; x < 32; x++) {
            const bool bOpaque = mask.GetPixelColor(x, y) != 0;
            nTransparent += !bOpaque;
            EXPECT_EQ(bitmap.GetPixelColor(x, y), bOpaque ? picture.GetPixelColor(x, y) : Rgb(255, 255, 255))
                << x << "," << y;
        }
    EXPECT_GT(nTransparent, 0);
}

TEST(IcoFile, TakesTheLargestAndReadsPngEntries)
{
    const LBitmapBase picture = ColorfulPicture(64, 64);
    const FileBytes file
        = MadeBy("convert in.ppm \\( in.ppm -crop 16x16+0+0 +repage \\) \\( in.ppm -crop 32x32+0+0 +repage \\) "
                 "-insert 0 ICO:out",
                 picture, "ico");
    EXPECT_TRUE(SamePicture(picture, ReadOk(ReadIco, file)));

    const FileBytes png = MadeBy("convert in.ppm PNG:out", picture);
    FileBytes icon;
    CByteWriter w(icon);
    for (unsigned v : {0, 1, 1}) // reserved, icon, one entry
        w.U16LE(v);
    w.Zeros(8);
    w.U32LE(static_cast<std::uint32_t>(png.size()));
    w.U32LE(22);
    w.Raw(png);
    KeepSeed("ico", icon);
    EXPECT_TRUE(SamePicture(picture, ReadOk(ReadIco, icon)));
}

TEST(GifFile, ReadsWhatOtherProgramsWrite)
{
    struct Case {
        std::string strCommand;
        LBitmapBase picture;
        int nBits;
        bool bGrey;
    };
    for (const Case& row : {Case{"pamtogif in.ppm > out", FewColorsPicture(256), 8, false},
                            Case{"pamtogif in.ppm > out", FewColorsPicture(16), 4, false},
                            Case{"pamtogif in.ppm > out", FewColorsPicture(5), 4, false},
                            Case{"pamtogif in.ppm > out", FewColorsPicture(2), 1, false},
                            Case{"pamtogif in.ppm > out", BlackWhitePicture(), 1, true},
                            Case{"pamtogif -interlace in.ppm > out", FewColorsPicture(256, 41, 29), 8, false},
                            Case{"gm convert in.ppm GIF:out", FewColorsPicture(100), 8, false},
                            Case{"convert in.ppm GIF87:out", FewColorsPicture(16), 4, false},
                            Case{PillowMakes("L", "GIF"), GreyPicture(64, 4), 8, true}}) {
        SCOPED_TRACE(row.strCommand);
        const LBitmapBase bitmap = ReadOk(ReadGif, MadeBy(row.strCommand, row.picture, "gif"));
        EXPECT_EQ(bitmap.GetBitsPerPixel(), row.nBits);
        EXPECT_EQ(bitmap.IsGrayScale(), row.bGrey);
        EXPECT_TRUE(SamePicture(row.picture, bitmap));
    }
}

TEST(GifFile, TransparencyAndTheFreeScreenAreWhite)
{
    for (int nColors : {2, 16, 256}) {
        SCOPED_TRACE(nColors);
        const LBitmapBase picture = FewColorsPicture(nColors);
        const COLORREF cr = picture.GetPixelColor(1, 0);
        const FileBytes file = MadeBy("pamtogif -transparent='" + HexOf(cr) + "' in.ppm > out", picture, "gif");
        EXPECT_TRUE(SamePicture(WithWhiteFor(picture, cr), ReadOk(ReadGif, file)));
    }
    const LBitmapBase picture = FewColorsPicture(256);
    const FileBytes file = MadeBy("convert in.ppm -repage 50x40+8+9 GIF:out", picture, "gif");
    const LBitmapBase bitmap = ReadOk(ReadGif, file);
    ASSERT_EQ(bitmap.GetWidth(), 50);
    ASSERT_EQ(bitmap.GetHeight(), 40);
    EXPECT_EQ(bitmap.GetPixelColor(0, 0), Rgb(255, 255, 255));
    EXPECT_EQ(bitmap.GetPixelColor(49, 39), Rgb(255, 255, 255));
    EXPECT_EQ(bitmap.GetPixelColor(8, 9), picture.GetPixelColor(0, 0));
    EXPECT_EQ(bitmap.GetPixelColor(44, 31), picture.GetPixelColor(36, 22));
}

TEST(GifFile, FirstFrameOnly)
{
    const LBitmapBase picture = FewColorsPicture(16);
    const FileBytes file = MadeBy("convert in.ppm \\( in.ppm -negate \\) -loop 0 GIF:out", picture, "gif");
    EXPECT_TRUE(SamePicture(picture, ReadOk(ReadGif, file)));
}

TEST(GifFile, AGiantScreenIsNotBelieved)
{
    FileBytes file = MadeBy("pamtogif in.ppm > out", FewColorsPicture(16));
    file[6] = file[7] = file[8] = file[9] = 0xFF;
    const LBitmapBase bitmap = ReadOk(ReadGif, file);
    EXPECT_TRUE(SamePicture(FewColorsPicture(16), bitmap));
}
