#include "doc/gui/ExportFormats.h"

#include "doc/files/ImageFile.h"
#include "doc/files/PngFile.h"
#include "doc/files/TiffFile.h"
#include "doc/gui/ToolkitImage.h"

#include <QBuffer>
#include <QImageWriter>

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

int BitsOfPalette(std::size_t nColors)
{
    return nColors <= 2 ? 1 : nColors <= 16 ? 4 : 8;
}

/// The picture with a palette: its own when it has one, else the best 256 colours.
LBitmapBase MakeIndexed(const CPaintImage& image, bool bDither)
{
    LBitmapBase bitmap;
    bitmap.Copy(image.m_Bitmap);
    if (image.m_pPalette && !image.m_pPalette->empty())
        bitmap.ColorRes(BitsOfPalette(image.m_pPalette->size()), CRF_USERPALETTE | CRF_NODITHER, *image.m_pPalette);
    else
        bitmap.ColorRes(8, CRF_OPTIMIZEDPALETTE | (bDither ? CRF_ERRORDIFFUSION : CRF_NODITHER));
    return bitmap;
}

/// The picture at the depth it is exported with.
LBitmapBase MakeBitmap(const CPaintImage& image, const ExportOptions& options)
{
    if (options.bPalette && image.m_pPalette && !image.m_pPalette->empty())
        return MakeIndexed(image, false);
    LBitmapBase bitmap;
    bitmap.Copy(image.m_Bitmap);
    return bitmap;
}

/// An indexed bitmap as BMP, which the format table writes with 24 bits only.
int WriteIndexedBmp(const LBitmapBase& bitmap, Bytes& out)
{
    const QImage image = ToToolkitImage(bitmap);
    if (image.isNull())
        return IMG_ERROR_MEMORY;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!QImageWriter(&buffer, "bmp").write(image))
        return IMG_ERROR_FILE_WRITE;
    out.assign(bytes.begin(), bytes.end());
    return IMG_SUCCESS;
}

int EncodePng(const CPaintImage& image, const ExportOptions& options, Bytes& out)
{
    constexpr int nPackHard = 2;
    return WritePng(MakeBitmap(image, options), nPackHard, out);
}

int EncodeWebP(const CPaintImage& image, const ExportOptions& options, Bytes& out)
{
    constexpr int nLossless = 100; // the writer's number for it; 99 is the best that may lose something
    const int nFactor = FactorOfQuality(options.bLossless ? nLossless : std::min(options.nQuality, nLossless - 1));
    return EncodeImage(ImageFormat::WebP, image.m_Bitmap, nFactor, out);
}

int EncodeTiff(const CPaintImage& image, const ExportOptions& options, Bytes& out)
{
    constexpr TiffPacking aPackings[] = {TiffPacking::None, TiffPacking::Lzw, TiffPacking::Deflate};
    LBitmapBase bitmap = MakeBitmap(image, options);
    if (bitmap.GetBitsPerPixel() < 8) // the writer has 8 and 24 bits
        bitmap.ColorRes(8, CRF_USERPALETTE | CRF_NODITHER, *image.m_pPalette);
    return WriteTiffPacked(bitmap, aPackings[std::clamp(options.nPacking, 0, 2)], out);
}

int EncodeGif(const CPaintImage& image, const ExportOptions& options, Bytes& out)
{
    return WriteGif(MakeIndexed(image, options.bDither), out);
}

int EncodeJpeg(const CPaintImage& image, const ExportOptions& options, Bytes& out)
{
    return EncodeImage(ImageFormat::Jpeg, image.m_Bitmap, FactorOfQuality(options.nQuality), out);
}

int EncodeBmp(const CPaintImage& image, const ExportOptions& options, Bytes& out)
{
    const LBitmapBase bitmap = MakeBitmap(image, options);
    if (bitmap.GetBitsPerPixel() == 24)
        return EncodeImage(ImageFormat::Bmp, bitmap, 0, out);
    return WriteIndexedBmp(bitmap, out);
}

constexpr ExportFormat c_aFormats[] = {
    {"PNG 이미지", "png", EXPORT_PALETTE, EncodePng},
    {"WebP 이미지", "webp", EXPORT_QUALITY | EXPORT_LOSSLESS, EncodeWebP},
    {"TIFF 이미지", "tif tiff", EXPORT_PALETTE | EXPORT_PACKING, EncodeTiff},
    {"GIF 이미지", "gif", EXPORT_DITHER, EncodeGif},
    {"JPEG 이미지", "jpg jpeg jpe jfif", EXPORT_QUALITY, EncodeJpeg},
    {"비트맵", "bmp", EXPORT_PALETTE, EncodeBmp},
};

bool HasWord(std::string_view words, std::string_view word)
{
    while (!words.empty()) {
        const std::size_t nEnd = std::min(words.find(' '), words.size());
        if (words.substr(0, nEnd) == word)
            return true;
        words.remove_prefix(std::min(nEnd + 1, words.size()));
    }
    return false;
}

} // namespace

std::span<const ExportFormat> ExportFormats()
{
    return c_aFormats;
}

int ExportFormatOfPath(const std::filesystem::path& path)
{
    const std::string strExtension = ExtensionOf(path);
    for (std::size_t i = 0; i < std::size(c_aFormats); i++)
        if (!strExtension.empty() && HasWord(c_aFormats[i].extensions, strExtension))
            return static_cast<int>(i);
    return -1;
}

} // namespace kestrune
