// What Export writes, read back by other programs and by our own loader.

#include "doc/files/ImageFile.h"
#include "doc/gui/ExportFormats.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace kestrune;

namespace {

void MakePicture(CPaintImage& image, int nWidth, int nHeight)
{
    image.m_Bitmap.Create(nWidth, nHeight, 24);
    for (int y = 0; y < nHeight; y++)
        for (int x = 0; x < nWidth; x++)
            image.m_Bitmap.PutPixelColor(x, y, Rgb(x * 5, y * 7, (x * y) & 255));
    image.m_nWidth = nWidth;
    image.m_nHeight = nHeight;
    image.m_nBitsPerPixel = 24;
    image.m_nColorMode = MODE_RGB;
}

/// The same size with 16 colours of which no even palette would think.
void MakePalettePicture(CPaintImage& image, int nWidth, int nHeight)
{
    MakePicture(image, nWidth, nHeight);
    image.m_pPalette = std::make_unique<std::vector<RGBQUAD>>();
    for (int i = 0; i < 16; i++)
        image.m_pPalette->push_back({static_cast<std::uint8_t>(i * 3), static_cast<std::uint8_t>(250 - i * 11),
                                     static_cast<std::uint8_t>(i * 15 + 1), 0});
    for (int y = 0; y < nHeight; y++)
        for (int x = 0; x < nWidth; x++) {
            const RGBQUAD& entry = (*image.m_pPalette)[static_cast<std::size_t>((x + y * 3) % 16)];
            image.m_Bitmap.PutPixelColor(x, y, Rgb(entry.rgbRed, entry.rgbGreen, entry.rgbBlue));
        }
    image.m_nBitsPerPixel = 4;
    image.m_nColorMode = MODE_16COLORS;
    image.m_bPaletteMode = true;
}

Bytes Encode(const char* strName, const CPaintImage& image, const ExportOptions& options)
{
    const int nRow = ExportFormatOfPath(strName);
    Bytes bytes;
    EXPECT_GE(nRow, 0) << strName;
    EXPECT_EQ(ExportFormats()[static_cast<std::size_t>(nRow)].encode(image, options, bytes), IMG_SUCCESS) << strName;
    return bytes;
}

/// Our own loader's view of it.
LBitmapBase Decode(const Bytes& bytes)
{
    LBitmapBase bitmap;
    EXPECT_EQ(DecodeImage(bytes, "", bitmap), IMG_SUCCESS);
    return bitmap;
}

/// Another program's view of it, as PPM.
QByteArray DecodeElsewhere(const Bytes& bytes, const QString& strProgram, const QStringList& words)
{
    QProcess process;
    process.start(strProgram, words);
    process.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(20000)) << strProgram.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

int GreatestDifference(const LBitmapBase& bitmap, const QByteArray& ppm)
{
    const qsizetype nBytes = qsizetype{3} * bitmap.GetWidth() * bitmap.GetHeight();
    if (!ppm.startsWith("P6") || ppm.size() < nBytes)
        return 1000;
    const auto* p = reinterpret_cast<const std::uint8_t*>(ppm.constData()) + ppm.size() - nBytes;
    int nGreatest = 0;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (int x = 0; x < bitmap.GetWidth(); x++, p += 3) {
            const COLORREF cr = bitmap.GetPixelColor(x, y);
            nGreatest = std::max({nGreatest, std::abs(RedOf(cr) - p[0]), std::abs(GreenOf(cr) - p[1]), std::abs(BlueOf(cr) - p[2])});
        }
    return nGreatest;
}

struct Reader {
    const char* strName;
    const char* strProgram;
    QStringList words;
};

} // namespace

TEST(Export, OtherProgramsReadTheLosslessFormats)
{
    CPaintImage image;
    MakePicture(image, 41, 29);
    ExportOptions options;
    options.bLossless = true;
    for (const Reader& reader : {Reader{"a.png", "pngtopnm", {"-"}}, Reader{"a.bmp", "bmptopnm", {"-"}},
                                 Reader{"a.webp", "dwebp", {"-ppm", "-o", "-", "--", "-"}}}) {
        const Bytes file = Encode(reader.strName, image, options);
        EXPECT_EQ(GreatestDifference(image.m_Bitmap, DecodeElsewhere(file, reader.strProgram, reader.words)), 0) << reader.strName;
    }
    std::size_t nUnpacked = 0;
    for (const int nPacking : {0, 1, 2}) {
        options.nPacking = nPacking;
        const Bytes tiff = Encode("a.tif", image, options);
        EXPECT_EQ(GreatestDifference(image.m_Bitmap, DecodeElsewhere(tiff, "gm", {"convert", "tiff:-", "ppm:-"})), 0) << nPacking;
        nUnpacked = nPacking == 0 ? tiff.size() : nUnpacked;
        EXPECT_TRUE(nPacking == 0 || tiff.size() < nUnpacked) << nPacking;
    }
}

TEST(Export, AGifKeepsThePaletteThatThePictureHas)
{
    CPaintImage image;
    MakePalettePicture(image, 50, 20);
    const Bytes gif = Encode("a.gif", image, {});
    EXPECT_EQ(GreatestDifference(image.m_Bitmap, DecodeElsewhere(gif, "giftopnm", {"-"})), 0);
    const LBitmapBase bitmap = Decode(gif);
    EXPECT_EQ(bitmap.GetBitsPerPixel(), 4);
    ASSERT_EQ(bitmap.Palette().size(), 16u);
    for (std::size_t i = 0; i < 16; i++) {
        EXPECT_EQ(bitmap.Palette()[i].rgbRed, (*image.m_pPalette)[i].rgbRed) << i;
        EXPECT_EQ(bitmap.Palette()[i].rgbGreen, (*image.m_pPalette)[i].rgbGreen) << i;
    }
}

TEST(Export, ATrueColourGifGetsThe256BestColours)
{
    CPaintImage image;
    MakePicture(image, 64, 64);
    ExportOptions options;
    options.bDither = false;
    const Bytes flat = Encode("a.gif", image, options);
    const LBitmapBase plain = Decode(flat);
    EXPECT_EQ(plain.GetBitsPerPixel(), 8);
    double fSum = 0;
    for (int y = 0; y < 64; y++)
        for (int x = 0; x < 64; x++)
            fSum += std::abs(RedOf(plain.GetPixelColor(x, y)) - RedOf(image.m_Bitmap.GetPixelColor(x, y)));
    EXPECT_LT(fSum / (64 * 64), 20) << "an even cube of 256 colours is further off";
    options.bDither = true;
    EXPECT_NE(flat, Encode("a.gif", image, options));
}

TEST(Export, KeepingThePaletteIsAChoice)
{
    CPaintImage image;
    MakePalettePicture(image, 32, 32);
    for (const char* strName : {"a.png", "a.tif", "a.bmp"}) {
        ExportOptions options;
        const LBitmapBase kept = Decode(Encode(strName, image, options));
        EXPECT_LE(kept.GetBitsPerPixel(), 8) << strName;
        options.bPalette = false;
        const LBitmapBase full = Decode(Encode(strName, image, options));
        EXPECT_EQ(full.GetBitsPerPixel(), 24) << strName;
        for (int i = 0; i < 32; i++) {
            EXPECT_EQ(kept.GetPixelColor(i, 31 - i), image.m_Bitmap.GetPixelColor(i, 31 - i)) << strName;
            EXPECT_EQ(full.GetPixelColor(i, 31 - i), image.m_Bitmap.GetPixelColor(i, 31 - i)) << strName;
        }
    }
}

TEST(Export, QualityTradesBytesForLikeness)
{
    CPaintImage image;
    MakePicture(image, 200, 150);
    const auto atQuality = [&](const char* strName, int nQuality) {
        ExportOptions options;
        options.nQuality = nQuality;
        return Encode(strName, image, options);
    };
    for (const char* strName : {"a.jpg", "a.webp"}) {
        EXPECT_LT(atQuality(strName, 10).size() * 2, atQuality(strName, 95).size()) << strName;
        EXPECT_EQ(Decode(atQuality(strName, 95)).GetWidth(), 200) << strName;
    }
    // Quality 100 of WebP is the best of its lossy coding: only the option promises more.
    const LBitmapBase best = Decode(atQuality("a.webp", 100));
    bool bSame = true;
    for (int y = 0; y < 150; y++)
        bSame = bSame && std::equal(best.Row(y), best.Row(y) + best.GetRowBytes(), image.m_Bitmap.Row(y));
    EXPECT_FALSE(bSame);
}

TEST(Export, TheExtensionFindsTheFormat)
{
    EXPECT_EQ(ExportFormatOfPath("/x/photo.JPEG"), ExportFormatOfPath("a.jpg"));
    EXPECT_EQ(ExportFormatOfPath("a.tiff"), ExportFormatOfPath("a.tif"));
    for (const char* strName : {"a", "a.", "a.png.", "a.psd", "png", "a.jp", "/x.png/a"})
        EXPECT_EQ(ExportFormatOfPath(strName), -1) << strName;
}

TEST(Export, AGifTooWideIsAnErrorNotAFault)
{
    LBitmapBase bitmap;
    ASSERT_TRUE(bitmap.Create(65536, 1, 8));
    Bytes bytes;
    EXPECT_EQ(WriteGif(bitmap, bytes), IMG_ERROR_BITS);
    EXPECT_TRUE(bytes.empty());
}
