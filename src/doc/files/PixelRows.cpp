#include "doc/files/PixelRows.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr int c_nMaxDpi = 100'000;
constexpr RGBQUAD c_black{0, 0, 0, 0};
constexpr RGBQUAD c_white{255, 255, 255, 0};

/// The same picture at a greater depth, up to 24 bits, which is spelled out through the palette.
LBitmapBase Deepened(const LBitmapBase& source, int nBits)
{
    LBitmapBase deep;
    deep.Create(source.GetWidth(), source.GetHeight(), nBits, ORDER_BGRORGRAY, source.Palette());
    deep.SetResolution(source.GetXResolution(), source.GetYResolution());
    const auto palette = source.Palette();
    for (int y = 0; y < source.GetHeight(); y++) {
        const std::uint8_t* pIn = source.Row(y);
        std::uint8_t* pOut = deep.WriteRow(y);
        if (nBits < 24) {
            std::memcpy(pOut, pIn, source.GetRowBytes());
            continue;
        }
        for (int x = 0; x < source.GetWidth(); x++, pOut += 3) {
            pOut[0] = palette[pIn[x]].rgbBlue;
            pOut[1] = palette[pIn[x]].rgbGreen;
            pOut[2] = palette[pIn[x]].rgbRed;
        }
    }
    return deep;
}

} // namespace

int CheckPictureSize(std::int64_t nWidth, std::int64_t nHeight)
{
    if (nWidth <= 0 || nHeight <= 0)
        return IMG_ERROR_FILE_READ;
    return IsSaneSize(nWidth, nHeight, Limits()) ? IMG_SUCCESS : IMG_ERROR_MEMORY;
}

void UnpackIndices(const std::uint8_t* pSource, int nWidth, int nBits, std::uint8_t* pOut)
{
    if (nBits == 8) {
        std::memcpy(pOut, pSource, static_cast<std::size_t>(nWidth));
        return;
    }
    const int nPerByte = 8 / nBits;
    const int nMask = (1 << nBits) - 1;
    for (int x = 0; x < nWidth; x++)
        pOut[x] = static_cast<std::uint8_t>(pSource[x / nPerByte] >> (8 - nBits - x % nPerByte * nBits) & nMask);
}

int DepthForColors(int nColors) { return nColors <= 2 ? 1 : nColors <= 16 ? 4 : 8; }

void NormalizeBilevel(LBitmapBase& bitmap)
{
    if (bitmap.GetBitsPerPixel() != 1)
        return;
    const auto palette = bitmap.Palette();
    auto sameColor = [](RGBQUAD a, RGBQUAD b) {
        return a.rgbBlue == b.rgbBlue && a.rgbGreen == b.rgbGreen && a.rgbRed == b.rgbRed;
    };
    if (!sameColor(palette[0], c_white) || !sameColor(palette[1], c_black))
        return;
    const RGBQUAD aUsual[] = {c_black, c_white};
    bitmap.PutColors(0, aUsual);
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        std::uint8_t* pRow = bitmap.WriteRow(y);
        for (int x = 0; x < bitmap.GetWidth(); x++)
            pRow[x] ^= 1;
    }
}

int DpiOfPelsPerMeter(std::int64_t nPelsPerMeter)
{
    if (nPelsPerMeter <= 0 || nPelsPerMeter > std::int64_t{c_nMaxDpi} * 40)
        return 0;
    return static_cast<int>((nPelsPerMeter * 254 + 5000) / 10000);
}

int PelsPerMeterOfDpi(int nDpi)
{
    if (nDpi <= 0 || nDpi > c_nMaxDpi)
        return 0;
    return static_cast<int>((std::int64_t{nDpi} * 10000 + 127) / 254);
}

int WhiteIndex(std::span<RGBQUAD> palette, const std::array<bool, 256>& aUsed)
{
    for (std::size_t i = 0; i < palette.size(); i++)
        if (palette[i].rgbBlue == 255 && palette[i].rgbGreen == 255 && palette[i].rgbRed == 255)
            return static_cast<int>(i);
    for (std::size_t i = palette.size(); i-- > 0;)
        if (!aUsed[i]) {
            palette[i] = c_white;
            return static_cast<int>(i);
        }
    return -1;
}

void PaintTransparentWhite(LBitmapBase& bitmap, std::span<const std::uint8_t> aTransparent)
{
    const auto nWidth = static_cast<std::size_t>(bitmap.GetWidth());
    std::array<bool, 256> aUsed{};
    bool bAny = false;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (std::size_t x = 0; x < nWidth; x++) {
            if (aTransparent[y * nWidth + x])
                bAny = true;
            else
                aUsed[bitmap.Row(y)[x]] = true;
        }
    if (!bAny)
        return;
    int iWhite = -1;
    for (int nBits : {1, 4, 8, 24}) {
        if (nBits < bitmap.GetBitsPerPixel())
            continue;
        if (nBits > bitmap.GetBitsPerPixel())
            bitmap = Deepened(bitmap, nBits);
        std::vector<RGBQUAD> palette(bitmap.Palette().begin(), bitmap.Palette().end());
        iWhite = WhiteIndex(palette, aUsed);
        bitmap.PutColors(0, palette);
        if (iWhite >= 0)
            break;
    }
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        std::uint8_t* pRow = bitmap.WriteRow(y);
        for (std::size_t x = 0; x < nWidth; x++) {
            if (!aTransparent[y * nWidth + x])
                continue;
            if (iWhite >= 0)
                pRow[x] = static_cast<std::uint8_t>(iWhite);
            else
                std::memset(pRow + x * 3, 255, 3);
        }
    }
}

} // namespace kestrune
