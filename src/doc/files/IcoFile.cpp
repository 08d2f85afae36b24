#include "doc/files/IcoFile.h"

#include "doc/files/ByteReader.h"
#include "doc/files/DibDecoder.h"
#include "doc/files/PixelRows.h"
#include "doc/files/PngFile.h"

#include <cstring>

namespace kestrune {

namespace {

constexpr std::uint8_t c_aPngMark[] = {0x89, 'P', 'N', 'G'};

struct Entry {
    std::span<const std::uint8_t> bytes;
    std::int64_t nPixels = 0;
    int nBits = 0;
};

/// Size and depth as the entry's own header says them: the directory counts 256 as 0 and often leaves the depth out.
Entry MeasureEntry(std::span<const std::uint8_t> bytes)
{
    Entry entry{bytes};
    CByteReader in(bytes);
    if (in.StartsWith(c_aPngMark)) {
        in.Skip(16);
        const std::int64_t nWidth = in.U32BE(), nHeight = in.U32BE();
        in.Skip(1);
        const int nKind = in.U8();
        entry.nPixels = IsSaneSize(nWidth, nHeight, Limits()) ? nWidth * nHeight : 0;
        entry.nBits = nKind == 3 ? 8 : 32;
        return entry;
    }
    DibInfo info;
    if (ReadDibInfo({bytes, 0, true}, info) != IMG_SUCCESS)
        return entry;
    entry.nPixels = std::int64_t{info.nWidth} * info.nHeight;
    entry.nBits = info.nFileBits;
    return entry;
}

/// Where the mask that follows the colour rows says transparent, one byte a pixel; all 0 when the file leaves the mask
/// out.
std::vector<std::uint8_t> ReadMask(std::span<const std::uint8_t> bytes, const DibInfo& info)
{
    const auto nWidth = static_cast<std::size_t>(info.nWidth);
    const auto nHeight = static_cast<std::size_t>(info.nHeight);
    std::vector<std::uint8_t> aMask(nWidth * nHeight, 0);
    const std::size_t nStride = (nWidth + 31) / 32 * 4;
    CByteReader in(bytes);
    in.Seek(std::uint64_t{info.nPixels} + std::uint64_t{info.nStride} * nHeight);
    const auto rows = in.Take(std::uint64_t{nStride} * nHeight);
    for (std::size_t y = 0; y < nHeight && !rows.empty(); y++) {
        const std::size_t iStored = info.bTopDown ? y : nHeight - 1 - y;
        UnpackIndices(&rows[iStored * nStride], info.nWidth, 1, &aMask[y * nWidth]);
    }
    return aMask;
}

int ReadIconDib(std::span<const std::uint8_t> bytes, LBitmapBase& bitmap)
{
    const DibSource source{bytes, 0, true};
    DibInfo info;
    if (const int nResult = ReadDibInfo(source, info); nResult != IMG_SUCCESS)
        return nResult;
    if (info.nCompression != DIB_RGB && info.nCompression != DIB_BITFIELDS)
        return IMG_ERROR_BITS;
    if (info.nFileBits == 32)
        info.aMasks[3] = 0xFF000000; // in an icon the fourth byte is alpha, whatever the header says
    const bool bAlpha = info.nFileBits == 32 && DibHasAlpha(source, info);
    const int nResult = DecodeDibPixels(source, info, bitmap);
    if (nResult != IMG_SUCCESS || bAlpha)
        return nResult;

    const auto aMask = ReadMask(bytes, info);
    if (info.nBits <= 8) {
        PaintTransparentWhite(bitmap, aMask);
        NormalizeBilevel(bitmap);
        return IMG_SUCCESS;
    }
    const auto nWidth = static_cast<std::size_t>(info.nWidth);
    for (int y = 0; y < info.nHeight; y++) {
        std::uint8_t* pRow = bitmap.WriteRow(y);
        for (std::size_t x = 0; x < nWidth; x++)
            if (aMask[y * nWidth + x])
                std::memset(pRow + x * 3, 255, 3);
    }
    return IMG_SUCCESS;
}

} // namespace

std::span<const std::uint8_t> ChooseIcoEntry(std::span<const std::uint8_t> file)
{
    constexpr unsigned c_nIcon = 1, c_nCursor = 2;
    CByteReader in(file);
    const unsigned nReserved = in.U16LE(), nKind = in.U16LE(), nEntries = in.U16LE();
    if (!in.Ok() || nReserved != 0 || (nKind != c_nIcon && nKind != c_nCursor))
        return {};
    Entry best;
    for (unsigned i = 0; i < nEntries && in.Ok(); i++) {
        in.Skip(8);
        const std::uint64_t nBytes = in.U32LE();
        const std::uint64_t nOffset = in.U32LE();
        CByteReader data(file);
        data.Seek(nOffset);
        const Entry entry = MeasureEntry(data.TakeUpTo(nBytes)); // writers exist that count the size wrongly
        if (in.Ok() && entry.nPixels > 0
            && (entry.nPixels > best.nPixels || (entry.nPixels == best.nPixels && entry.nBits > best.nBits)))
            best = entry;
    }
    return best.bytes;
}

int ReadIco(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    const auto entry = ChooseIcoEntry(file);
    if (entry.empty())
        return IMG_ERROR_FILE_READ;
    return CByteReader(entry).StartsWith(c_aPngMark) ? ReadPng(entry, bitmap) : ReadIconDib(entry, bitmap);
}

} // namespace kestrune
