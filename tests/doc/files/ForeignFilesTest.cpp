// Files that other programs write, opened by the editor's own path and compared by pixels.

#include "ForeignTools.h"

#include "doc/files/ImageFile.h"

#include <algorithm>
#include <ostream>

namespace kestrune::tests {

namespace {

struct ForeignFile {
    const char* pszName;
    /// Makes "out.EXT" from in.ppm (colour), in.pgm (grey), in.pbm (black and white), p4.ppm, p16.ppm and p200.ppm (so many colours).
    const char* pszCommand;
    const char* pszFile;
    const char* pszReference; ///< what it must look like
    int nBits;                ///< depth of the file
    double fTolerance;        ///< mean difference of a channel
    int nDpi = 0;
};

constexpr double c_fExact = 0, c_fRounded = 0.6, c_fLossy = 4;

constexpr ForeignFile c_aFiles[] = {
    {"jpeg", "cjpeg -quality 95 -sample 1x1 in.ppm > out.jpg", "out.jpg", "in.ppm", 24, c_fLossy},
    {"jpeg_progressive", "cjpeg -quality 95 -progressive in.ppm > out.jpg; djpeg out.jpg > ref.ppm", "out.jpg", "ref.ppm", 24, c_fExact},
    {"jpeg_restarts", "cjpeg -quality 95 -restart 1 in.ppm > out.jpg; djpeg out.jpg > ref.ppm", "out.jpg", "ref.ppm", 24, c_fExact},
    {"jpeg_grey", "cjpeg -quality 95 in.pgm > out.jpg", "out.jpg", "in.pgm", 8, c_fLossy},
    {"jpeg_rgb", "cjpeg -rgb -quality 100 in.ppm > out.jpg", "out.jpg", "in.ppm", 24, c_fLossy},
    {"jpeg_cmyk", "gm convert in.ppm -colorspace CMYK -quality 98 out.jpg; gm convert out.jpg -colorspace RGB ref.ppm", "out.jpg",
     "ref.ppm", 24, c_fRounded},
    {"jpeg_dpi", "gm convert in.ppm -density 120x120 -units PixelsPerInch -quality 95 out.jpg", "out.jpg", "in.ppm", 24, 6, 120},
    {"jpeg_cm", "gm convert in.ppm -density 100x100 -units PixelsPerCentimeter -quality 95 out.jpg", "out.jpg", "in.ppm", 24, 6, 254},

    {"png", "pnmtopng in.ppm > out.png", "out.png", "in.ppm", 24, c_fExact},
    {"png_interlaced", "pnmtopng -interlace in.ppm > out.png", "out.png", "in.ppm", 24, c_fExact},
    {"png_16_bit", "pamdepth 65535 in.ppm | pnmtopng > out.png", "out.png", "in.ppm", 24, c_fExact},
    {"png_alpha", "pnmtopng -alpha=in.pgm in.ppm > out.png; pngtopnm -mix -background=white out.png > ref.ppm", "out.png",
     "ref.ppm", 24, c_fRounded},
    {"png_grey", "pnmtopng in.pgm > out.png", "out.png", "in.pgm", 8, c_fExact},
    {"png_grey_16_bit", "pamdepth 65535 in.pgm | pnmtopng > out.png", "out.png", "in.pgm", 8, c_fExact},
    {"png_grey_alpha", "pnmtopng -force -alpha=in.pgm in.pgm > out.png; pngtopnm -mix -background=white out.png > ref.pgm", "out.png",
     "ref.pgm", 8, c_fRounded},
    {"png_grey_4_bit", "pamdepth 15 in.pgm > ref.pgm; pnmtopng ref.pgm > out.png", "out.png", "ref.pgm", 4, c_fExact},
    {"png_grey_2_bit", "pamdepth 3 in.pgm > ref.pgm; pnmtopng ref.pgm > out.png", "out.png", "ref.pgm", 4, c_fExact},
    {"png_bilevel", "pnmtopng in.pbm > out.png", "out.png", "in.pbm", 1, c_fExact},
    {"png_200_colours", "pnmtopng p200.ppm > out.png", "out.png", "p200.ppm", 8, c_fExact},
    {"png_16_colours", "pnmtopng -interlace p16.ppm > out.png", "out.png", "p16.ppm", 4, c_fExact},
    {"png_4_colours", "pnmtopng p4.ppm > out.png", "out.png", "p4.ppm", 4, c_fExact},
    {"png_dpi", "pnmtopng -size=\"5906 5906 1\" in.ppm > out.png", "out.png", "in.ppm", 24, c_fExact, 150},

    {"tiff", "pnmtotiff -none in.ppm > out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_lzw", "pnmtotiff -lzw -predictor 2 in.ppm > out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_deflate", "pnmtotiff -flate in.ppm > out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_packbits_big_endian", "pnmtotiff -packbits in.ppm > t.tif; tiffcp -B t.tif out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_tiles", "pnmtotiff in.ppm > t.tif; tiffcp -t -w 32 -l 16 t.tif out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_planes", "pnmtotiff in.ppm > t.tif; tiffcp -p separate t.tif out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_large_offsets", "pnmtotiff in.ppm > t.tif; tiffcp -8 t.tif out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_jpeg", "pnmtotiff in.ppm > t.tif; tiffcp -c jpeg:98 -r 16 t.tif out.tif", "out.tif", "in.ppm", 24, c_fLossy},
    {"tiff_16_bit", "pamdepth 65535 in.ppm | pnmtotiff > out.tif", "out.tif", "in.ppm", 24, c_fExact},
    {"tiff_grey", "pnmtotiff in.pgm > out.tif", "out.tif", "in.pgm", 8, c_fExact},
    {"tiff_grey_white_first", "pnmtotiff -miniswhite in.pgm > out.tif", "out.tif", "in.pgm", 8, c_fExact},
    {"tiff_grey_tiles", "pnmtotiff in.pgm > t.tif; tiffcp -t -w 16 -l 16 t.tif out.tif", "out.tif", "in.pgm", 8, c_fExact},
    {"tiff_grey_16_bit", "pamdepth 65535 in.pgm | pnmtotiff > out.tif", "out.tif", "in.pgm", 8, c_fRounded},
    {"tiff_grey_4_bit", "pamdepth 15 in.pgm > ref.pgm; pnmtotiff ref.pgm > out.tif", "out.tif", "ref.pgm", 4, c_fExact},
    {"tiff_grey_2_bit", "pamdepth 3 in.pgm > ref.pgm; pnmtotiff ref.pgm > out.tif", "out.tif", "ref.pgm", 4, c_fExact},
    {"tiff_fax", "pnmtotiff -g4 in.pbm > out.tif", "out.tif", "in.pbm", 1, c_fExact},
    {"tiff_200_colours", "pnmtotiff p200.ppm > out.tif", "out.tif", "p200.ppm", 8, c_fExact},
    {"tiff_16_colours", "pnmtotiff -indexbits=4 p16.ppm > out.tif", "out.tif", "p16.ppm", 4, c_fExact},
    {"tiff_cmyk", "gm convert in.ppm -colorspace CMYK out.tif; gm convert out.tif -colorspace RGB ref.ppm", "out.tif", "ref.ppm", 24,
     c_fRounded},
    {"tiff_cmyk_16_bit", "gm convert in.ppm -colorspace CMYK -depth 16 out.tif; gm convert out.tif -colorspace RGB -depth 8 ref.ppm",
     "out.tif", "ref.ppm", 24, 1},
    {"tiff_alpha", "pnmtopng -alpha=in.pgm in.ppm > t.png; convert t.png out.tif; pngtopnm -mix -background=white t.png > ref.ppm",
     "out.tif", "ref.ppm", 24, 1},
    {"tiff_dpi", "pnmtotiff -xresolution=120 -yresolution=120 in.ppm > out.tif", "out.tif", "in.ppm", 24, c_fExact, 120},

    {"webp_lossless", "pnmtopng in.ppm > t.png; cwebp -quiet -lossless t.png -o out.webp", "out.webp", "in.ppm", 24, c_fExact},
    {"webp_lossy", "pnmtopng in.ppm > t.png; cwebp -quiet -q 90 t.png -o out.webp; dwebp -quiet -ppm out.webp -o ref.ppm", "out.webp",
     "ref.ppm", 24, c_fExact},
    {"webp_alpha", "pnmtopng -alpha=in.pgm in.ppm > t.png; cwebp -quiet -exact -lossless t.png -o out.webp;"
     "pngtopnm -mix -background=white t.png > ref.ppm", "out.webp", "ref.ppm", 24, c_fRounded},
    {"webp_animation", "pnmtopng in.ppm > t.png; cwebp -quiet -lossless t.png -o a.webp; pnmtopng in.pgm > u.png;"
     "cwebp -quiet -lossless u.png -o b.webp; webpmux -frame a.webp +100 -frame b.webp +100 -o out.webp", "out.webp", "in.ppm", 24,
     c_fExact},

    {"bmp", "ppmtobmp in.ppm > out.bmp", "out.bmp", "in.ppm", 24, c_fExact},
    {"bmp_200_colours", "ppmtobmp p200.ppm > out.bmp", "out.bmp", "p200.ppm", 8, c_fExact},
    {"gif", "ppmtogif p200.ppm > out.gif", "out.gif", "p200.ppm", 8, c_fExact},
    {"ico", "pnmscale -xsize 32 -ysize 32 p16.ppm | pnmquant 16 > ref.ppm; ppmtowinicon ref.ppm > out.ico", "out.ico", "ref.ppm", 4,
     c_fExact},
    {"psd", "convert in.ppm out.psd", "out.psd", "in.ppm", 24, c_fExact},

    {"tga", "ppmtotga -rgb -norle in.ppm > out.tga", "out.tga", "in.ppm", 24, c_fExact},
    {"tga_rle", "ppmtotga -rgb p16.ppm > out.tga", "out.tga", "p16.ppm", 24, c_fExact},
    {"tga_palette", "ppmtotga -cmap p200.ppm > out.tga", "out.tga", "p200.ppm", 8, c_fExact},
    {"tga_grey", "ppmtotga -mono in.pgm > out.tga", "out.tga", "in.pgm", 8, c_fExact},
    {"tga_mark_alone", "ppmtotga -rgb in.ppm > out.unknown; printf '\\0\\0\\0\\0\\0\\0\\0\\0TRUEVISION-XFILE.\\0' >> out.unknown", "out.unknown", "in.ppm", 24, c_fExact},
    {"sgi", "pnmtosgi -verbatim in.ppm > out.sgi", "out.sgi", "in.ppm", 24, c_fExact},
    {"sgi_rle", "pnmtosgi -rle in.ppm > out.sgi", "out.sgi", "in.ppm", 24, c_fExact},
    {"sgi_grey", "pnmtosgi -rle in.pgm > out.sgi", "out.sgi", "in.pgm", 8, c_fExact},
    {"pcx", "ppmtopcx in.ppm > out.pcx", "out.pcx", "in.ppm", 24, c_fExact},
    {"pcx_200_colours", "ppmtopcx p200.ppm > out.pcx", "out.pcx", "p200.ppm", 8, c_fExact},
    {"pcx_16_colours", "ppmtopcx p16.ppm > out.pcx", "out.pcx", "p16.ppm", 4, c_fExact},
    {"dcx", "gm convert in.ppm p200.ppm out.dcx", "out.dcx", "in.ppm", 24, c_fExact},
    {"pict", "gm convert in.ppm PICT:out.pict", "out.pict", "in.ppm", 24, c_fExact},
    {"pict_palette", "ppmtopict p200.ppm > out.pict", "out.pict", "p200.ppm", 8, c_fExact},
    {"pntg", "pbmtomacp in.pbm > out.pntg; macptopbm out.pntg > ref.pbm", "out.pntg", "ref.pbm", 1, c_fExact},
    {"eps", "gm convert in.ppm -density 72x72 -units PixelsPerInch EPS:out.eps", "out.eps", "in.ppm", 24, c_fExact, 72},
    {"pcd", "gm convert in.ppm -resize 768x512! in768.ppm; gm convert in768.ppm PCD:out.pcd", "out.pcd", "in768.ppm", 24, 20},
    {"avif", "pnmtopng in.ppm > t.png; avifenc -l t.png out.avif", "out.avif", "in.ppm", 24, c_fExact},
    {"heic", "pnmscale -xsize 96 -ysize 64 in.ppm | pnmtopng > t.png; pngtopnm t.png > ref.ppm; heif-enc -q 98 t.png -o out.heic",
     "out.heic", "ref.ppm", 24, c_fLossy},
    {"jpeg_xl", "pnmtopng in.ppm > t.png; cjxl t.png out.jxl -d 0", "out.jxl", "in.ppm", 24, c_fExact},
};

void PrintTo(const ForeignFile& row, std::ostream* pOut)
{
    *pOut << row.pszName;
}

class ForeignFiles : public testing::TestWithParam<ForeignFile> {};

TEST_P(ForeignFiles, OpenAsTheirWriterMeantThem)
{
    const ForeignFile& row = GetParam();
    const CTestFolder folder;
    WritePpm(MakeTestPicture(), folder / "in.ppm");
    ASSERT_TRUE(folder.Run("ppmtopgm in.ppm > in.pgm; pgmtopbm -threshold in.pgm > in.pbm;"
                           "for n in 4 16 200; do pnmquant $n in.ppm > p$n.ppm; done"));
    ASSERT_TRUE(folder.Run(row.pszCommand));
    LBitmapBase bitmap;
    bitmap.SetFileName(folder / row.pszFile);
    ASSERT_EQ(bitmap.Load(), IMG_SUCCESS);
    EXPECT_EQ(bitmap.GetBitsPerPixel(), row.nBits);
    EXPECT_EQ(bitmap.GetFileName(), folder / row.pszFile);
    EXPECT_LE(MeanDifference(ColorsOf(bitmap), ReadPnm(folder / row.pszReference)), row.fTolerance);
    if (row.nDpi != 0) {
        EXPECT_EQ(bitmap.GetXResolution(), row.nDpi);
        EXPECT_EQ(bitmap.GetYResolution(), row.nDpi);
    }
    const std::string strReference = row.pszReference;
    if (strReference.ends_with(".pgm") || strReference.ends_with(".pbm")) {
        EXPECT_TRUE(bitmap.IsGrayScale());
    }
}

INSTANTIATE_TEST_SUITE_P(All, ForeignFiles, testing::ValuesIn(c_aFiles),
                         [](const auto& test) { return std::string(test.param.pszName); });

// A placeable metafile of 1 x 1 inch with a filled rectangle over its left half, laid out by hand: nothing here writes them.
Bytes MakeMetafile()
{
    Bytes file;
    const auto word = [&](unsigned n) {
        file.push_back(static_cast<std::uint8_t>(n));
        file.push_back(static_cast<std::uint8_t>(n >> 8));
    };
    const auto record = [&](unsigned nFunction, std::initializer_list<int> parameters) {
        const auto nWords = static_cast<unsigned>(3 + parameters.size());
        word(nWords);
        word(0);
        word(nFunction);
        for (const int n : parameters)
            word(static_cast<unsigned>(n));
    };
    const std::uint16_t aHeader[] = {0xCDD7, 0x9AC6, 0, 0, 0, 1440, 1440, 1440, 0, 0};
    unsigned nSum = 0;
    for (const std::uint16_t n : aHeader) {
        word(n);
        nSum ^= n;
    }
    word(nSum);
    constexpr unsigned c_nTotalWords = 9 + 5 + 5 + 7 + 4 + 7 + 3;
    for (const unsigned n : {1u, 9u, 0x300u, c_nTotalWords, 0u, 1u, 7u, 0u, 0u})
        word(n);
    record(0x020B, {0, 0});          // origin of the window
    record(0x020C, {1440, 1440});    // its size
    record(0x02FC, {0, 0x00FF, 0, 0}); // a brush: solid, red
    record(0x012D, {0});             // taken up
    record(0x041B, {1440, 720, 0, 0}); // a rectangle: bottom, right, top, left
    record(0, {});
    return file;
}

TEST(ForeignFile, MetafileIsDrawnAt96DotsAnInch)
{
    const CTestFolder folder;
    ASSERT_FALSE(WriteFileDurably(folder / "out.wmf", MakeMetafile()));
    LBitmapBase bitmap;
    bitmap.SetFileName(folder / "out.wmf");
    ASSERT_EQ(bitmap.Load(), IMG_SUCCESS);
    EXPECT_NEAR(bitmap.GetWidth(), 96, 1);
    EXPECT_NEAR(bitmap.GetHeight(), 96, 1);
    EXPECT_EQ(bitmap.GetXResolution(), 96);
    EXPECT_EQ(bitmap.GetPixelColor(20, 48), Rgb(255, 0, 0));
    EXPECT_EQ(bitmap.GetPixelColor(80, 48), Rgb(255, 255, 255));
}

/// An EXIF block that says only how to turn the picture, as a segment of a JPEG file.
Bytes ExifSegment(int nOrientation)
{
    Bytes segment = {0xFF, 0xE1, 0, 34, 'E', 'x', 'i', 'f', 0, 0, 'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1,
                     0x01, 0x12, 0, 3, 0, 0, 0, 1, 0, static_cast<std::uint8_t>(nOrientation), 0, 0, 0, 0, 0, 0};
    return segment;
}

TEST(ForeignFile, CameraOrientationIsApplied)
{
    const CTestFolder folder;
    WritePpm(MakeTestPicture(), folder / "in.ppm");
    // What the camera stores so that the turn named by the number gives the upright picture back.
    const char* aStored[] = {"cat", "pamflip -lr", "pamflip -r180", "pamflip -tb", "pamflip -xy", "pamflip -ccw",
                             "pamflip -xy | pamflip -r180", "pamflip -cw"};
    for (int nOrientation = 1; nOrientation <= 8; nOrientation++) {
        ASSERT_TRUE(folder.Run(std::string("cat in.ppm | ") + aStored[nOrientation - 1] + " | cjpeg -quality 98 -sample 1x1 > t.jpg;"
                               "jpegtopnm t.jpg > /dev/null"));
        Bytes file = ReadBytes(folder / "t.jpg");
        const Bytes segment = ExifSegment(nOrientation);
        file.insert(file.begin() + 2, segment.begin(), segment.end());
        LBitmapBase bitmap;
        ASSERT_EQ(DecodeImage(file, "jpg", bitmap), IMG_SUCCESS);
        EXPECT_LT(MeanDifference(ColorsOf(bitmap), MakeTestPicture()), 3) << nOrientation;

        ASSERT_TRUE(folder.Run(std::string("cat in.ppm | ") + aStored[nOrientation - 1] + " | pnmtotiff > t.tif;"
                               "tiffset -s 274 " + std::to_string(nOrientation) + " t.tif"));
        ASSERT_EQ(DecodeImage(ReadBytes(folder / "t.tif"), "tif", bitmap), IMG_SUCCESS);
        EXPECT_EQ(MeanDifference(ColorsOf(bitmap), MakeTestPicture()), 0) << nOrientation;
    }
}

TEST(ForeignFile, CutTakesItsColoursFromTheFileBeside)
{
    const CTestFolder folder;
    // One row of two pixels, index 1 and 2; then a palette whose entries run to 255.
    const Bytes cut = {2, 0, 1, 0, 0, 0, 4, 0, 2, 1, 2, 0};
    Bytes palette = {'A', 'H', 0xE3, 0, 0, 0, 40, 0, 10, 0, 0, 0, 2, 0, 255, 0, 255, 0, 255, 0};
    palette.resize(40, 0);
    for (const int n : {0, 0, 0, 255, 0, 0, 0, 0, 255})
        palette.insert(palette.end(), {static_cast<std::uint8_t>(n), 0});
    ASSERT_FALSE(WriteFileDurably(folder / "a.cut", cut));
    LBitmapBase bitmap;
    bitmap.SetFileName(folder / "a.cut");
    ASSERT_EQ(bitmap.Load(), IMG_SUCCESS);
    EXPECT_TRUE(bitmap.IsGrayScale());
    ASSERT_FALSE(WriteFileDurably(folder / "a.PAL", palette));
    ASSERT_EQ(bitmap.Load(), IMG_SUCCESS);
    EXPECT_EQ(bitmap.GetPixelColor(0, 0), Rgb(255, 0, 0));
    EXPECT_EQ(bitmap.GetPixelColor(1, 0), Rgb(0, 0, 255));
}

TEST(ForeignFile, ContentTellsTheFormatBeforeTheName)
{
    const CTestFolder folder;
    WritePpm(MakeTestPicture(), folder / "in.ppm");
    ASSERT_TRUE(folder.Run("pnmtopng in.ppm > a.jpg; cjpeg in.ppm > b.tga; ppmtotga -rgb in.ppm > c.tga; cp c.tga d.xyz; echo text > e.png"));
    LBitmapBase bitmap;
    const ImageFormatRow* pUsed = nullptr;
    EXPECT_EQ(DecodeImage(ReadBytes(folder / "a.jpg"), "jpg", bitmap, &pUsed), IMG_SUCCESS);
    EXPECT_EQ(pUsed->format, ImageFormat::Png);
    EXPECT_EQ(DecodeImage(ReadBytes(folder / "b.tga"), "tga", bitmap, &pUsed), IMG_SUCCESS);
    EXPECT_EQ(pUsed->format, ImageFormat::Jpeg);
    // The old kind of this format has no mark: the name alone tells it.
    EXPECT_EQ(DecodeImage(ReadBytes(folder / "c.tga"), "TGA", bitmap, &pUsed), IMG_SUCCESS);
    EXPECT_EQ(pUsed->format, ImageFormat::Tga);
    EXPECT_EQ(DecodeImage(ReadBytes(folder / "d.xyz"), "xyz", bitmap, &pUsed), IMG_ERROR_FILE_FORMAT);
    EXPECT_EQ(pUsed, nullptr);
    EXPECT_EQ(DecodeImage(ReadBytes(folder / "e.png"), "png", bitmap), IMG_ERROR_FILE_FORMAT);
    EXPECT_EQ(MeanDifference(ColorsOf(bitmap), MakeTestPicture()), 0) << "a failed load leaves the bitmap";
}

} // namespace

} // namespace kestrune::tests
