#include "doc/files/DibDecoder.h"

#include "doc/files/ByteReader.h"
#include "doc/files/DibRle.h"
#include "doc/files/PixelRows.h"

#include <bit>
#include <cstring>

namespace kestrune {

namespace {

constexpr std::uint32_t c_nCoreHeader = 12;
constexpr std::uint32_t c_nOs2Header = 64;
constexpr std::uint32_t c_nOs2ShortHeader = 16;
constexpr std::uint32_t c_nInfoHeader = 40;
constexpr std::uint32_t c_nV3Header = 56; ///< from here on the alpha mask stands in the header, behind the colour masks
constexpr std::uint32_t c_nGreatestHeader = 1024;

struct RawHeader {
    std::uint32_t nSize = 0;
    std::int64_t nWidth = 0;
    std::int64_t nHeight = 0;
    unsigned nBits = 0;
    std::uint32_t nCompression = 0;
    std::uint32_t nXPels = 0;
    std::uint32_t nYPels = 0;
    std::uint32_t nColorsUsed = 0;
    std::size_t nMasksEnd = 0; ///< where header and masks end
    int nMasks = 0; ///< colour masks that the file gives: 0, 3 or 4 (red, green, blue, alpha)
    std::array<std::uint32_t, 4> aMasks{};
};

bool ReadRawHeader(std::span<const std::uint8_t> bytes, RawHeader& raw)
{
    CByteReader in(bytes);
    raw.nSize = in.U32LE();
    if (!in.Ok() || raw.nSize < c_nCoreHeader || raw.nSize > c_nGreatestHeader || raw.nSize > bytes.size())
        return false;
    raw.nMasksEnd = raw.nSize;
    if (raw.nSize == c_nCoreHeader) {
        raw.nWidth = in.U16LE();
        raw.nHeight = in.U16LE();
        in.Skip(2);
        raw.nBits = in.U16LE();
        return true;
    }
    if (raw.nSize < c_nOs2ShortHeader)
        return false;
    CByteReader header(bytes.first(raw.nSize)); // a short header leaves its last fields 0
    header.Skip(4);
    raw.nWidth = header.I32LE();
    raw.nHeight = header.I32LE();
    header.Skip(2);
    raw.nBits = header.U16LE();
    raw.nCompression = header.U32LE();
    header.Skip(4);
    raw.nXPels = header.U32LE();
    raw.nYPels = header.U32LE();
    raw.nColorsUsed = header.U32LE();
    return true;
}

/// Turns the file's compression code into ours; false for one that is not supported (JPEG, PNG and fax inside a DIB).
bool ReadCompression(std::span<const std::uint8_t> bytes, RawHeader& raw)
{
    const bool bOs2 = raw.nSize == c_nOs2Header || (raw.nSize > c_nCoreHeader && raw.nSize < c_nInfoHeader);
    switch (raw.nCompression) {
    case DIB_RGB:
        return true;
    case DIB_RLE8:
        return raw.nBits == 8;
    case DIB_RLE4:
        return raw.nBits == 4;
    case 4: // in the other system's header this is the 24-bit run-length coding
        return bOs2 && raw.nBits == 24;
    case 3:
    case 6: { // with an alpha mask
        if (bOs2 || (raw.nBits != 16 && raw.nBits != 32))
            return false;
        raw.nMasks = raw.nSize >= c_nV3Header || raw.nCompression == 6 ? 4 : 3;
        raw.nCompression = DIB_BITFIELDS;
        CByteReader in(bytes);
        in.Seek(c_nInfoHeader);
        for (int i = 0; i < raw.nMasks; i++)
            raw.aMasks[i] = in.U32LE();
        raw.nMasksEnd = std::max<std::size_t>(raw.nMasksEnd, in.Pos());
        return in.Ok();
    }
    default:
        return false;
    }
}

void ChooseMasks(const RawHeader& raw, DibInfo& info)
{
    if (raw.nMasks != 0)
        info.aMasks = {raw.aMasks[2], raw.aMasks[1], raw.aMasks[0], raw.aMasks[3]};
    else if (raw.nBits == 16)
        info.aMasks = {0x001F, 0x03E0, 0x7C00, 0};
    else if (raw.nBits == 32)
        info.aMasks = {0x0000FF, 0x00FF00, 0xFF0000, 0};
}

/// The palette and the place of the pixels behind it.
void ReadPalette(const DibSource& source, const RawHeader& raw, DibInfo& info)
{
    const std::size_t nEntry = raw.nSize == c_nCoreHeader ? 3 : 4;
    const bool bOffsetSane = source.nBitsOffset >= raw.nMasksEnd && source.nBitsOffset < source.bytes.size();
    std::uint64_t nColors = raw.nColorsUsed;
    if (raw.nBits <= 8 && (nColors == 0 || nColors > (1U << raw.nBits)))
        nColors = 1U << raw.nBits;
    if (bOffsetSane)
        nColors = std::min<std::uint64_t>(nColors, (source.nBitsOffset - raw.nMasksEnd) / nEntry);
    nColors = std::min<std::uint64_t>(nColors, (source.bytes.size() - raw.nMasksEnd) / nEntry);
    info.nPixels = bOffsetSane ? source.nBitsOffset : raw.nMasksEnd + static_cast<std::size_t>(nColors * nEntry);
    if (raw.nBits > 8)
        return;
    info.palette.assign(std::size_t{1} << info.nBits, RGBQUAD{});
    CByteReader in(source.bytes);
    in.Seek(raw.nMasksEnd);
    for (std::uint64_t i = 0; i < nColors; i++) {
        info.palette[i].rgbBlue = in.U8();
        info.palette[i].rgbGreen = in.U8();
        info.palette[i].rgbRed = in.U8();
        in.Skip(nEntry - 3);
    }
}

/// One channel of a packed pixel: at most its 8 highest bits, stretched to the whole range.
struct Channel {
    std::uint32_t nMask = 0;
    int nShift = 0;
    std::array<std::uint8_t, 256> aValue{};

    explicit Channel(std::uint32_t mask)
    {
        if (mask == 0)
            return;
        const int nHigh = 31 - std::countl_zero(mask);
        nShift = std::max(std::countr_zero(mask), nHigh - 7);
        nMask = mask;
        const int nMax = (2 << (nHigh - nShift)) - 1;
        for (int i = 0; i <= nMax; i++)
            aValue[i] = static_cast<std::uint8_t>((i * 255 + nMax / 2) / nMax);
    }
    std::uint8_t operator()(std::uint32_t nPixel) const { return aValue[(nPixel & nMask) >> nShift]; }
};

std::uint32_t PackedPixel(const std::uint8_t* p, int nBytes)
{
    std::uint32_t v = p[0] | p[1] << 8;
    if (nBytes == 4)
        v |= p[2] << 16 | static_cast<std::uint32_t>(p[3]) << 24;
    return v;
}

/// The bytes of a stored row; the last row of the file may lack its padding.
const std::uint8_t* StoredRow(const DibSource& source, const DibInfo& info, int y)
{
    const int iStored = info.bTopDown ? y : info.nHeight - 1 - y;
    return source.bytes.data() + info.nPixels + info.nStride * static_cast<std::size_t>(iStored);
}

void DecodePacked(const DibSource& source, const DibInfo& info, LBitmapBase& bitmap)
{
    const Channel blue(info.aMasks[0]), green(info.aMasks[1]), red(info.aMasks[2]), alpha(info.aMasks[3]);
    const bool bAlpha = DibHasAlpha(source, info);
    const int nBytes = info.nFileBits / 8;
    for (int y = 0; y < info.nHeight; y++) {
        const std::uint8_t* p = StoredRow(source, info, y);
        std::uint8_t* pOut = bitmap.WriteRow(y);
        for (int x = 0; x < info.nWidth; x++, p += nBytes, pOut += 3) {
            const std::uint32_t v = PackedPixel(p, nBytes);
            const std::uint8_t a = bAlpha ? alpha(v) : 255;
            pOut[0] = OverWhite(blue(v), a);
            pOut[1] = OverWhite(green(v), a);
            pOut[2] = OverWhite(red(v), a);
        }
    }
}

} // namespace

int ReadDibInfo(const DibSource& source, DibInfo& info)
{
    RawHeader raw;
    if (!ReadRawHeader(source.bytes, raw))
        return IMG_ERROR_FILE_READ;
    constexpr unsigned c_aBits[] = {1, 2, 4, 8, 16, 24, 32};
    if (std::find(std::begin(c_aBits), std::end(c_aBits), raw.nBits) == std::end(c_aBits))
        return IMG_ERROR_BITS;
    if (!ReadCompression(source.bytes, raw))
        return IMG_ERROR_BITS;

    info = DibInfo();
    info.bTopDown = raw.nHeight < 0;
    std::int64_t nHeight = info.bTopDown ? -raw.nHeight : raw.nHeight;
    if (source.bIcon)
        nHeight /= 2;
    if (const int nResult = CheckPictureSize(raw.nWidth, nHeight); nResult != IMG_SUCCESS)
        return nResult;
    info.nWidth = static_cast<int>(raw.nWidth);
    info.nHeight = static_cast<int>(nHeight);
    info.nFileBits = static_cast<int>(raw.nBits);
    info.nBits = info.nFileBits > 8 ? 24 : info.nFileBits == 2 ? 4 : info.nFileBits;
    info.nCompression = static_cast<int>(raw.nCompression);
    info.nStride = (static_cast<std::size_t>(info.nWidth) * raw.nBits + 31) / 32 * 4;
    info.nXDpi = DpiOfPelsPerMeter(raw.nXPels);
    info.nYDpi = DpiOfPelsPerMeter(raw.nYPels);
    ChooseMasks(raw, info);
    ReadPalette(source, raw, info);

    const std::size_t nHeld = source.bytes.size() - info.nPixels;
    if (info.nCompression == DIB_RGB || info.nCompression == DIB_BITFIELDS) {
        const std::size_t nLastRow = (static_cast<std::size_t>(info.nWidth) * raw.nBits + 7) / 8;
        if (nHeld < info.nStride * static_cast<std::size_t>(info.nHeight - 1) + nLastRow)
            return IMG_ERROR_FILE_READ;
    } else if (!RleCouldHold(nHeld, info.nWidth, info.nHeight)) {
        return IMG_ERROR_FILE_READ;
    }
    return IMG_SUCCESS;
}

bool DibHasAlpha(const DibSource& source, const DibInfo& info)
{
    const std::uint32_t nMask = info.aMasks[3];
    if (nMask == 0)
        return false;
    const int nBytes = info.nFileBits / 8;
    for (int y = 0; y < info.nHeight; y++) {
        const std::uint8_t* p = StoredRow(source, info, y);
        for (int x = 0; x < info.nWidth; x++, p += nBytes)
            if ((PackedPixel(p, nBytes) & nMask) != 0)
                return true;
    }
    return false;
}

int DecodeDibPixels(const DibSource& source, const DibInfo& info, LBitmapBase& bitmap)
{
    if (!bitmap.Create(info.nWidth, info.nHeight, info.nBits, ORDER_BGRORGRAY, info.palette))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(info.nXDpi, info.nYDpi);
    if (info.nCompression == DIB_RLE4 || info.nCompression == DIB_RLE8 || info.nCompression == DIB_RLE24) {
        if (!DecodeRle(source.bytes.subspan(info.nPixels), info.nFileBits, info.bTopDown, bitmap))
            return IMG_ERROR_FILE_READ;
    } else if (info.nFileBits == 16 || info.nFileBits == 32) {
        DecodePacked(source, info, bitmap);
    } else {
        for (int y = 0; y < info.nHeight; y++) {
            const std::uint8_t* pStored = StoredRow(source, info, y);
            if (info.nFileBits == 24)
                std::memcpy(bitmap.WriteRow(y), pStored, bitmap.GetRowBytes());
            else
                UnpackIndices(pStored, info.nWidth, info.nFileBits, bitmap.WriteRow(y));
        }
    }
    NormalizeBilevel(bitmap);
    return IMG_SUCCESS;
}

int DecodeDib(const DibSource& source, LBitmapBase& bitmap)
{
    DibInfo info;
    const int nResult = ReadDibInfo(source, info);
    return nResult == IMG_SUCCESS ? DecodeDibPixels(source, info, bitmap) : nResult;
}

} // namespace kestrune
