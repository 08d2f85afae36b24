#include "doc/files/ClpFile.h"

#include "doc/files/ByteReader.h"
#include "doc/files/DibDecoder.h"
#include "doc/files/PixelRows.h"

#include <cstring>
#include <optional>

namespace kestrune {

namespace {

constexpr std::uint16_t c_wMark = 0xC350; ///< the 16-bit clipboard viewer
constexpr std::uint16_t c_wMarkWide = 0xC351; ///< its 32-bit successor: wider numbers, names of wide characters
constexpr std::size_t c_nName = 79;

enum ClipboardFormat : std::uint32_t { CLIP_BITMAP = 2, CLIP_DIB = 8, CLIP_PALETTE = 9, CLIP_DIBV5 = 17 };

/// The bytes of the formats that matter; empty where the clipboard had none.
struct Clipboard {
    bool bWide = false;
    std::span<const std::uint8_t> dib, dibV5, ddb, palette;
};

bool ReadDirectory(std::span<const std::uint8_t> file, Clipboard& clipboard)
{
    CByteReader in(file);
    const std::uint16_t wMark = in.U16LE();
    clipboard.bWide = wMark == c_wMarkWide;
    if (wMark != c_wMark && wMark != c_wMarkWide)
        return false;
    const unsigned nFormats = in.U16LE();
    for (unsigned i = 0; i < nFormats && in.Ok(); i++) {
        const std::uint32_t nFormat = clipboard.bWide ? in.U32LE() : in.U16LE();
        const std::uint64_t nBytes = in.U32LE();
        CByteReader data(file);
        data.Seek(in.U32LE());
        in.Skip(clipboard.bWide ? c_nName * 2 : c_nName);
        const auto bytes = data.TakeUpTo(nBytes);
        switch (nFormat) {
        case CLIP_DIB:
            clipboard.dib = bytes;
            break;
        case CLIP_DIBV5:
            clipboard.dibV5 = bytes;
            break;
        case CLIP_BITMAP:
            clipboard.ddb = bytes;
            break;
        case CLIP_PALETTE:
            clipboard.palette = bytes;
            break;
        default:
            break;
        }
    }
    return in.Ok();
}

struct DdbInfo {
    int nWidth = 0;
    int nHeight = 0;
    std::size_t nRowBytes = 0; ///< bytes a row of one plane
    int nPlanes = 0;
    int nPixelBits = 0; ///< bits a pixel of one plane
    std::span<const std::uint8_t> bits;
    int Depth() const { return nPlanes * nPixelBits; }
};

/// The bitmap structure before the pixels, with numbers of 16 or 32 bits; nothing when it does not fit what follows it.
std::optional<DdbInfo> ReadDdbInfo(std::span<const std::uint8_t> bytes, bool bWide)
{
    CByteReader in(bytes);
    auto number = [&] { return bWide ? in.I32LE() : in.I16LE(); };
    DdbInfo info;
    number(); // the kind, always 0
    info.nWidth = number();
    info.nHeight = number();
    const int nRowBytes = number();
    info.nPlanes = bWide ? in.U16LE() : in.U8();
    info.nPixelBits = bWide ? in.U16LE() : in.U8();
    in.Skip(4);
    if (!in.Ok() || info.nWidth <= 0 || info.nHeight <= 0 || nRowBytes <= 0)
        return {};
    const bool bPacked = info.nPlanes == 1
        && (info.nPixelBits == 1 || info.nPixelBits == 4
            || (info.nPixelBits % 8 == 0 && info.nPixelBits >= 8 && info.nPixelBits <= 32));
    const bool bPlanes = info.nPlanes == 4 && info.nPixelBits == 1;
    info.nRowBytes = static_cast<std::size_t>(nRowBytes);
    info.bits = in.Rest();
    if ((!bPacked && !bPlanes)
        || info.nRowBytes < (std::uint64_t(info.nWidth) * std::uint64_t(info.nPixelBits) + 7) / 8)
        return {};
    if (info.bits.size() / info.nRowBytes / static_cast<unsigned>(info.nPlanes) < static_cast<unsigned>(info.nHeight))
        return {};
    return info;
}

std::vector<RGBQUAD> ReadPalette(std::span<const std::uint8_t> bytes)
{
    CByteReader in(bytes);
    in.Skip(2); // version
    const unsigned nColors = std::min<unsigned>(in.U16LE(), 256);
    std::vector<RGBQUAD> palette;
    for (unsigned i = 0; i < nColors; i++) {
        RGBQUAD color;
        color.rgbRed = in.U8();
        color.rgbGreen = in.U8();
        color.rgbBlue = in.U8();
        in.Skip(1);
        if (!in.Ok())
            break;
        palette.push_back(color);
    }
    return palette;
}

/// The 16 colours of a display of four planes: blue, green, red and intensity, from the lowest bit.
std::vector<RGBQUAD> DisplayColors()
{
    std::vector<RGBQUAD> colors(16);
    for (int i = 0; i < 16; i++) {
        const int nLevel = i & 8 ? 255 : 128;
        auto channel = [&](int nBit) { return static_cast<std::uint8_t>(i & nBit ? nLevel : 0); };
        colors[i] = {channel(1), channel(2), channel(4), 0};
    }
    colors[7] = {192, 192, 192, 0};
    colors[8] = {128, 128, 128, 0};
    return colors;
}

void DecodeDdbRow(const DdbInfo& info, int y, std::vector<std::uint8_t>& aPlane, std::uint8_t* pOut)
{
    const std::uint8_t* p
        = info.bits.data() + info.nRowBytes * static_cast<std::size_t>(info.nPlanes) * static_cast<std::size_t>(y);
    if (info.nPlanes == 4) {
        std::memset(pOut, 0, static_cast<std::size_t>(info.nWidth));
        for (int i = 0; i < 4; i++, p += info.nRowBytes) {
            UnpackIndices(p, info.nWidth, 1, aPlane.data());
            for (int x = 0; x < info.nWidth; x++)
                pOut[x] = static_cast<std::uint8_t>(pOut[x] | aPlane[x] << i);
        }
    } else if (info.nPixelBits <= 8) {
        UnpackIndices(p, info.nWidth, info.nPixelBits, pOut);
    } else if (info.nPixelBits == 16) {
        for (int x = 0; x < info.nWidth; x++, p += 2, pOut += 3) {
            const int v = p[0] | p[1] << 8; // 5, 6 and 5 bits
            pOut[0] = static_cast<std::uint8_t>((v & 31) * 255 / 31);
            pOut[1] = static_cast<std::uint8_t>((v >> 5 & 63) * 255 / 63);
            pOut[2] = static_cast<std::uint8_t>((v >> 11) * 255 / 31);
        }
    } else {
        for (int x = 0; x < info.nWidth; x++, p += info.nPixelBits / 8, pOut += 3)
            std::memcpy(pOut, p, 3);
    }
}

int DecodeDdb(const Clipboard& clipboard, LBitmapBase& bitmap)
{
    auto info = ReadDdbInfo(clipboard.ddb, clipboard.bWide);
    if (!info)
        info = ReadDdbInfo(clipboard.ddb, !clipboard.bWide);
    if (!info)
        return IMG_ERROR_FILE_READ;
    if (const int nResult = CheckPictureSize(info->nWidth, info->nHeight); nResult != IMG_SUCCESS)
        return nResult;
    const int nBits = info->Depth() > 8 ? 24 : info->Depth();
    std::vector<RGBQUAD> palette;
    if (nBits > 1 && nBits <= 8)
        palette = ReadPalette(clipboard.palette);
    if (palette.empty() && nBits == 4)
        palette = DisplayColors();
    if (!bitmap.Create(info->nWidth, info->nHeight, nBits, ORDER_BGRORGRAY, palette))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(0, 0);
    std::vector<std::uint8_t> aPlane(static_cast<std::size_t>(info->nWidth));
    for (int y = 0; y < info->nHeight; y++)
        DecodeDdbRow(*info, y, aPlane, bitmap.WriteRow(y));
    return IMG_SUCCESS;
}

} // namespace

int ReadClp(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    Clipboard clipboard;
    if (!ReadDirectory(file, clipboard))
        return IMG_ERROR_FILE_READ;
    int nResult = IMG_ERROR_BITS; // a clipboard of text, say
    for (const auto dib : {clipboard.dib, clipboard.dibV5})
        if (!dib.empty() && (nResult = DecodeDib({dib}, bitmap)) == IMG_SUCCESS)
            return nResult;
    return clipboard.ddb.empty() ? nResult : DecodeDdb(clipboard, bitmap);
}

} // namespace kestrune
