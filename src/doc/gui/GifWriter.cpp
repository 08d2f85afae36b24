#include "doc/gui/ExportFormats.h"

#include "doc/files/DecodedImage.h"

#include <gif_lib.h>

#include <algorithm>
#include <bit>
#include <memory>

namespace kestrune {

namespace {

constexpr int c_nMaxGifSide = 65535; ///< sides are 16 bits in the file

int AppendBytes(GifFileType* pFile, const GifByteType* pBytes, int nBytes)
{
    static_cast<Bytes*>(pFile->UserData)->insert(static_cast<Bytes*>(pFile->UserData)->end(), pBytes, pBytes + nBytes);
    return nBytes;
}

struct CloseGif {
    void operator()(GifFileType* pFile) const { EGifCloseFile(pFile, nullptr); }
};
struct FreeMap {
    void operator()(ColorMapObject* pMap) const { GifFreeMapObject(pMap); }
};

/// The palette, filled up with black to the power of two that the file asks for.
std::unique_ptr<ColorMapObject, FreeMap> MakeColorMap(std::span<const RGBQUAD> palette)
{
    const int nColors = std::max(2, static_cast<int>(std::bit_ceil(palette.size())));
    std::unique_ptr<ColorMapObject, FreeMap> pMap(GifMakeMapObject(nColors, nullptr));
    for (int i = 0; pMap && i < nColors; i++) {
        const RGBQUAD entry = static_cast<std::size_t>(i) < palette.size() ? palette[static_cast<std::size_t>(i)] : RGBQUAD{};
        pMap->Colors[i] = {entry.rgbRed, entry.rgbGreen, entry.rgbBlue};
    }
    return pMap;
}

} // namespace

int WriteGif(const LBitmapBase& bitmap, Bytes& out)
{
    const int nWidth = bitmap.GetWidth();
    const int nHeight = bitmap.GetHeight();
    if (bitmap.GetBitsPerPixel() > 8 || nWidth > c_nMaxGifSide || nHeight > c_nMaxGifSide)
        return IMG_ERROR_BITS;
    const auto pMap = MakeColorMap(bitmap.Palette());
    if (!pMap)
        return IMG_ERROR_MEMORY;
    Bytes bytes;
    std::unique_ptr<GifFileType, CloseGif> pFile(EGifOpen(&bytes, AppendBytes, nullptr));
    if (!pFile)
        return IMG_ERROR_MEMORY;
    if (EGifPutScreenDesc(pFile.get(), nWidth, nHeight, 8, 0, pMap.get()) == GIF_ERROR
        || EGifPutImageDesc(pFile.get(), 0, 0, nWidth, nHeight, false, nullptr) == GIF_ERROR)
        return IMG_ERROR_FILE_WRITE;
    Bytes row(bitmap.GetRowBytes());
    for (int y = 0; y < nHeight; y++) {
        std::copy_n(bitmap.Row(y), row.size(), row.begin()); // the library masks the row that it is given
        if (EGifPutLine(pFile.get(), row.data(), nWidth) == GIF_ERROR)
            return IMG_ERROR_FILE_WRITE;
    }
    // The end of the file is written on closing.
    if (EGifCloseFile(pFile.release(), nullptr) == GIF_ERROR)
        return IMG_ERROR_FILE_WRITE;
    out = std::move(bytes);
    return IMG_SUCCESS;
}

} // namespace kestrune
