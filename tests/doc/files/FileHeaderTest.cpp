#include "CodecTestKit.h"

#include "doc/files/ByteWriter.h"
#include "doc/files/FileHeader.h"

using namespace kestrune;
using namespace kestrune::codectest;

namespace {

FileHeader HeaderOf(ImageFormat format, const FileBytes& file)
{
    FileHeader header;
    EXPECT_TRUE(ReadFileHeader(format, file, header));
    FileBytes seed;
    CByteWriter w(seed);
    w.U8(static_cast<unsigned>(format));
    w.Raw(file);
    KeepSeed("fileheader", seed);
    return header;
}

} // namespace

TEST(FileHeader, TellsTheDepthOfTheFile)
{
    struct Case {
        ImageFormat format;
        const char* pszCommand;
        LBitmapBase picture;
        int nBits;
        bool bGrey; ///< the palette is an even ramp
    };
    using enum ImageFormat;
    for (const Case& row :
         {Case{Pcx, "ppmtopcx in.ppm > out", FewColorsPicture(200), 8, false},
          Case{Pcx, "ppmtopcx in.ppm > out", FewColorsPicture(16), 4, false},
          Case{Pcx, "ppmtopcx in.ppm > out", FewColorsPicture(2), 1, false},
          Case{Pcx, "ppmtopcx -24bit in.ppm > out", ColorfulPicture(), 24, false},
          Case{Pcx, "gm convert in.ppm -type Bilevel -compress RLE PCX:out", BlackWhitePicture(), 1, true},
          Case{Dcx, "gm convert in.ppm -type Palette -compress RLE DCX:out", FewColorsPicture(200), 8, false},
          Case{Tga, "ppmtotga -cmap in.ppm > out", FewColorsPicture(200), 8, false},
          Case{Tga, "ppmtopgm in.ppm | ppmtotga -mono > out", GreyPicture(), 8, true},
          Case{Tga, "ppmtotga -rgb in.ppm > out", ColorfulPicture(), 24, false},
          Case{Sgi, "ppmtopgm in.ppm | pamtopnm | pnmtosgi > out", GreyPicture(), 8, true},
          Case{Sgi, "pnmtosgi in.ppm > out", ColorfulPicture(), 24, false},
          Case{Pict, "ppmtopict in.ppm > out", FewColorsPicture(200), 8, false},
          Case{Pict, "gm convert in.ppm -type TrueColor PICT:out", ColorfulPicture(), 24, false},
          Case{Pntg, "ppmtopgm in.ppm | pamditherbw | pamtopnm | pbmtomacp > out", BlackWhitePicture(576, 720), 1,
               true}}) {
        SCOPED_TRACE(row.pszCommand);
        const FileHeader header = HeaderOf(row.format, MadeBy(row.pszCommand, row.picture));
        EXPECT_EQ(header.nBits, row.nBits);
        if (row.nBits == 24)
            continue;
        ASSERT_EQ(header.palette.size(), std::size_t{1} << row.nBits);
        // A decoder that expanded the file to 24 bits is brought back to the file's own colours, each of which must be
        // found.
        LBitmapBase bitmap;
        bitmap.Copy(row.picture);
        MatchFileHeader(header, bitmap);
        EXPECT_EQ(bitmap.GetBitsPerPixel(), row.nBits);
        EXPECT_EQ(bitmap.IsGrayScale(), row.bGrey);
        EXPECT_TRUE(SamePicture(row.picture, bitmap));
    }
}

TEST(FileHeader, TellsTheResolution)
{
    const FileHeader pcx = HeaderOf(
        ImageFormat::Pcx, MadeBy("gm convert in.ppm -density 300x150 -units PixelsPerInch PCX:out", ColorfulPicture()));
    EXPECT_EQ(pcx.nXDpi, 300);
    EXPECT_EQ(pcx.nYDpi, 150);
    const FileHeader pict
        = HeaderOf(ImageFormat::Pict,
                   MadeBy("gm convert in.ppm -density 300x150 -units PixelsPerInch PICT:out", ColorfulPicture()));
    EXPECT_EQ(pict.nXDpi, 300);
    EXPECT_EQ(pict.nYDpi, 150);
    LBitmapBase bitmap = ColorfulPicture();
    MatchFileHeader(pict, bitmap);
    EXPECT_EQ(bitmap.GetXResolution(), 300);
    bitmap.SetResolution(72, 72);
    MatchFileHeader(pict, bitmap);
    EXPECT_EQ(bitmap.GetXResolution(), 72);
}

TEST(FileHeader, ColoursOutsideThePaletteKeepThePicture)
{
    const FileHeader header = HeaderOf(ImageFormat::Pcx, MadeBy("ppmtopcx in.ppm > out", FewColorsPicture(16)));
    LBitmapBase bitmap = ColorfulPicture();
    MatchFileHeader(header, bitmap);
    EXPECT_EQ(bitmap.GetBitsPerPixel(), 24);
    EXPECT_TRUE(SamePicture(ColorfulPicture(), bitmap));
}
