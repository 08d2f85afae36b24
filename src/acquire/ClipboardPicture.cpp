#include "acquire/ClipboardPicture.h"

#include "doc/PaintImage.h"
#include "doc/files/BmpFile.h"
#include "doc/files/PngFile.h"

#include <new>

namespace kestrune {

namespace {

constexpr int c_nFast = 200; ///< PNG's quality factor for packing quickly: what the clipboard holds is not kept

constexpr ClipboardFormat c_aFormats[] = {
    {"image/bmp", ReadBmp, WriteBmp, 0},
    {"image/png", ReadPng, WritePng, c_nFast},
    {"image/x-bmp", ReadBmp, nullptr, 0},
    {"image/x-MS-bmp", ReadBmp, nullptr, 0},
};

} // namespace

std::span<const ClipboardFormat> ClipboardFormats()
{
    return c_aFormats;
}

const ClipboardFormat* FindClipboardFormat(std::string_view mimeType)
{
    for (const ClipboardFormat& row : c_aFormats)
        if (row.mimeType == mimeType)
            return &row;
    return nullptr;
}

std::vector<std::uint8_t> EncodeClipboard(const LBitmapBase& bitmap, const ClipboardFormat& format)
{
    std::vector<std::uint8_t> bytes;
    if (!format.write || !bitmap.IsAllocated() || format.write(bitmap, format.nQuality, bytes) != IMG_SUCCESS)
        bytes.clear();
    return bytes;
}

ClipboardPicture ClassifyPicture(LBitmapBase bitmap)
{
    ClipboardPicture picture;
    picture.nBitsPerPixel = bitmap.GetBitsPerPixel();
    const bool bGrey = bitmap.IsGrayScale();
    picture.nColorMode = picture.nBitsPerPixel > 8 ? MODE_RGB
        : bGrey && picture.nBitsPerPixel == 1      ? MODE_BITMAP
        : bGrey && picture.nBitsPerPixel == 8      ? MODE_GRAY
        : picture.nBitsPerPixel <= 4               ? MODE_16COLORS
                                                   : MODE_256COLORS;
    picture.bitmap = std::move(bitmap);
    return picture;
}

bool DecodeClipboard(std::span<const std::uint8_t> bytes, const ClipboardFormat& format, ClipboardPicture& picture)
{
    LBitmapBase bitmap;
    try {
        if (format.read(bytes, bitmap) != IMG_SUCCESS || !bitmap.IsAllocated())
            return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    picture = ClassifyPicture(std::move(bitmap));
    return true;
}

} // namespace kestrune
