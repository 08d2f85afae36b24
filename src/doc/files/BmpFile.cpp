#include "doc/files/BmpFile.h"

#include "doc/files/ByteReader.h"
#include "doc/files/ByteWriter.h"
#include "doc/files/DibDecoder.h"
#include "doc/files/PixelRows.h"

namespace kestrune {

namespace {

constexpr std::uint16_t c_wBitmap = 0x4D42; // "BM"
constexpr std::uint16_t c_wBitmapArray = 0x4142; // "BA", several bitmaps for several devices: the first is read
constexpr std::uint32_t c_nFileHeader = 14;
constexpr std::uint32_t c_nInfoHeader = 40;

} // namespace

int ReadBmp(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    CByteReader in(file);
    if (file.size() < c_nFileHeader)
        return IMG_ERROR_FILE_READ;
    std::uint16_t wMark = in.U16LE();
    if (wMark == c_wBitmapArray) {
        in.Skip(c_nFileHeader - 2);
        wMark = in.U16LE();
        if (wMark != c_wBitmap)
            return IMG_ERROR_FILE_READ;
    }
    if (wMark != c_wBitmap)
        return DecodeDib({file}, bitmap);
    in.Skip(8);
    const std::uint64_t nBits = in.U32LE();
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    DibSource source{in.Rest()};
    if (nBits > in.Pos())
        source.nBitsOffset = static_cast<std::size_t>(nBits - in.Pos());
    return DecodeDib(source, bitmap);
}

int WriteBmp(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24)
        return IMG_ERROR_BITS;
    const std::size_t nStride = (bitmap.GetRowBytes() + 3) / 4 * 4;
    const std::uint64_t nPixels = std::uint64_t{nStride} * static_cast<std::uint64_t>(bitmap.GetHeight());
    const std::uint64_t nFile = c_nFileHeader + c_nInfoHeader + nPixels;
    if (nFile > 0xFFFFFFFF)
        return IMG_ERROR_BITS; // the format counts its size in 32 bits
    out.reserve(out.size() + nFile);
    CByteWriter w(out);
    w.U16LE(c_wBitmap);
    w.U32LE(static_cast<std::uint32_t>(nFile));
    w.U32LE(0);
    w.U32LE(c_nFileHeader + c_nInfoHeader);
    w.U32LE(c_nInfoHeader);
    w.U32LE(static_cast<std::uint32_t>(bitmap.GetWidth()));
    w.U32LE(static_cast<std::uint32_t>(bitmap.GetHeight()));
    w.U16LE(1);
    w.U16LE(24);
    w.U32LE(DIB_RGB);
    w.U32LE(static_cast<std::uint32_t>(nPixels));
    w.U32LE(static_cast<std::uint32_t>(PelsPerMeterOfDpi(bitmap.GetXResolution())));
    w.U32LE(static_cast<std::uint32_t>(PelsPerMeterOfDpi(bitmap.GetYResolution())));
    w.U32LE(0);
    w.U32LE(0);
    for (int y = bitmap.GetHeight() - 1; y >= 0; y--) {
        w.Raw({bitmap.Row(y), bitmap.GetRowBytes()});
        w.Zeros(nStride - bitmap.GetRowBytes());
    }
    return IMG_SUCCESS;
}

} // namespace kestrune
