#include "doc/files/GifFile.h"

#include "base/Geometry.h"
#include "doc/files/ByteReader.h"
#include "doc/files/PixelRows.h"

#include <gif_lib.h>

#include <cstring>
#include <memory>

namespace kestrune {

namespace {

int ReadFromMemory(GifFileType* pGif, GifByteType* pOut, int nBytes)
{
    auto* pIn = static_cast<CByteReader*>(pGif->UserData);
    const auto bytes = pIn->TakeUpTo(static_cast<std::uint64_t>(std::max(nBytes, 0)));
    if (!bytes.empty())
        std::memcpy(pOut, bytes.data(), bytes.size());
    return static_cast<int>(bytes.size());
}

struct CloseGif {
    void operator()(GifFileType* pGif) const { DGifCloseFile(pGif, nullptr); }
};
using GifHandle = std::unique_ptr<GifFileType, CloseGif>;

/// Walks to the first picture. Its transparent index comes out in `iTransparent`, or -1.
bool FindFirstFrame(GifFileType* pGif, int& iTransparent)
{
    iTransparent = NO_TRANSPARENT_COLOR;
    for (;;) {
        GifRecordType record = UNDEFINED_RECORD_TYPE;
        if (DGifGetRecordType(pGif, &record) == GIF_ERROR || record == TERMINATE_RECORD_TYPE)
            return false;
        if (record == IMAGE_DESC_RECORD_TYPE)
            return DGifGetImageDesc(pGif) != GIF_ERROR;
        if (record != EXTENSION_RECORD_TYPE)
            continue;
        int nCode = 0;
        GifByteType* pBlock = nullptr; // the first byte is the block's length
        if (DGifGetExtension(pGif, &nCode, &pBlock) == GIF_ERROR)
            return false;
        while (pBlock != nullptr) {
            GraphicsControlBlock control;
            if (nCode == GRAPHICS_EXT_FUNC_CODE && DGifExtensionToGCB(pBlock[0], pBlock + 1, &control) == GIF_OK)
                iTransparent = control.TransparentColor;
            if (DGifGetExtensionNext(pGif, &pBlock) == GIF_ERROR)
                return false;
        }
    }
}

/// The frame's indices, one byte a pixel, with the interlacing undone.
bool ReadFrame(GifFileType* pGif, std::vector<std::uint8_t>& aPixels)
{
    struct Pass {
        int nFirst, nStep;
    };
    constexpr Pass c_aInterlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
    constexpr Pass c_aPlain[] = {{0, 1}};
    const GifImageDesc& frame = pGif->Image;
    const auto passes = frame.Interlace ? std::span<const Pass>(c_aInterlaced) : std::span<const Pass>(c_aPlain);
    aPixels.resize(static_cast<std::size_t>(frame.Width) * frame.Height);
    for (const Pass& pass : passes)
        for (int y = pass.nFirst; y < frame.Height; y += pass.nStep)
            if (DGifGetLine(pGif, &aPixels[static_cast<std::size_t>(y) * frame.Width], frame.Width) == GIF_ERROR)
                return false;
    return true;
}

/// The picture's area: the logical screen. One that is empty, or giant around a small frame, is not believed; then
/// it is the frame itself.
CRect PictureArea(const GifFileType& gif)
{
    constexpr std::int64_t c_nAlwaysBelieved = 4 << 20;
    constexpr std::int64_t c_nBelievedShare = 16;
    const GifImageDesc& frame = gif.Image;
    const std::int64_t nScreen = std::int64_t{gif.SWidth} * gif.SHeight;
    const std::int64_t nFrame = std::int64_t{frame.Width} * frame.Height;
    if (nScreen > 0 && nScreen <= std::max(c_nAlwaysBelieved, nFrame * c_nBelievedShare))
        return {0, 0, gif.SWidth, gif.SHeight};
    return {frame.Left, frame.Top, frame.Left + frame.Width, frame.Top + frame.Height};
}

std::vector<RGBQUAD> PaletteOf(const GifFileType& gif)
{
    const ColorMapObject* pMap = gif.Image.ColorMap ? gif.Image.ColorMap : gif.SColorMap;
    std::vector<RGBQUAD> palette;
    for (int i = 0; pMap && i < pMap->ColorCount && i < 256; i++)
        palette.push_back({pMap->Colors[i].Blue, pMap->Colors[i].Green, pMap->Colors[i].Red, 0});
    return palette;
}

} // namespace

int ReadGif(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    CByteReader in(file);
    int nError = 0;
    const GifHandle gif(DGifOpen(&in, ReadFromMemory, &nError));
    int iTransparent = -1;
    if (!gif || !FindFirstFrame(gif.get(), iTransparent))
        return IMG_ERROR_FILE_READ;
    const CRect frame{gif->Image.Left, gif->Image.Top, gif->Image.Left + gif->Image.Width,
                      gif->Image.Top + gif->Image.Height};
    const CRect area = PictureArea(*gif);
    for (const CRect& rect : {frame, area})
        if (const int nResult = CheckPictureSize(rect.Width(), rect.Height()); nResult != IMG_SUCCESS)
            return nResult;
    constexpr std::uint64_t c_nPixelsPerByte = 4096; // the longest string that a code of the coding stands for
    if (std::uint64_t(frame.Width()) * std::uint64_t(frame.Height()) > file.size() * c_nPixelsPerByte)
        return IMG_ERROR_FILE_READ;

    std::vector<std::uint8_t> aFrame;
    if (!ReadFrame(gif.get(), aFrame))
        return IMG_ERROR_FILE_READ;
    const auto palette = PaletteOf(*gif);
    const int nBits = palette.empty() ? 8 : DepthForColors(static_cast<int>(palette.size()));
    if (!bitmap.Create(area.Width(), area.Height(), nBits, ORDER_BGRORGRAY, palette))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(0, 0);

    // An index past the palette shows nothing, just as the transparent one does.
    const auto nWidth = static_cast<std::size_t>(area.Width());
    std::vector<std::uint8_t> aTransparent(nWidth * static_cast<std::size_t>(area.Height()), 1);
    for (int y = 0; y < area.Height(); y++) {
        std::uint8_t* pRow = bitmap.WriteRow(y);
        std::memset(pRow, 0, nWidth);
        const int yFrame = y + area.top - frame.top;
        if (yFrame < 0 || yFrame >= frame.Height())
            continue;
        const CRect row = Intersect(area, frame);
        for (int x = row.left; x < row.right; x++) {
            const std::uint8_t index = aFrame[static_cast<std::size_t>(yFrame) * frame.Width() + (x - frame.left)];
            if (index == iTransparent || index >= 1 << nBits)
                continue;
            pRow[x - area.left] = index;
            aTransparent[y * nWidth + (x - area.left)] = 0;
        }
    }
    PaintTransparentWhite(bitmap, aTransparent);
    NormalizeBilevel(bitmap);
    return IMG_SUCCESS;
}

} // namespace kestrune
