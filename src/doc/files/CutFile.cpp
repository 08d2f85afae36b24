#include "doc/files/CutFile.h"

#include "doc/files/ByteReader.h"
#include "doc/files/ByteWriter.h"
#include "doc/files/PixelRows.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr std::size_t c_nGreatestRun = 127;

/// A byte with the top bit is a run of the next byte, any other counts bytes as they stand, 0 ends the row.
bool DecodeCutRow(std::span<const std::uint8_t> coded, std::span<std::uint8_t> row)
{
    std::fill(row.begin(), row.end(), 0);
    CByteReader in(coded);
    std::size_t n = 0;
    while (in.Remaining() > 0) {
        const unsigned nCode = in.U8();
        if (nCode == 0)
            break;
        const std::size_t nCount = nCode & 0x7F;
        const std::size_t nFit = std::min(nCount, row.size() - n);
        const auto to = row.begin() + static_cast<std::ptrdiff_t>(n);
        if (nCode & 0x80) {
            std::fill_n(to, nFit, in.U8());
        } else if (const auto bytes = in.Take(nCount); in.Ok()) {
            std::copy_n(bytes.begin(), nFit, to);
        }
        if (!in.Ok())
            return false;
        n += nFit;
    }
    return true;
}

/// The colours of a palette file: words of red, green and blue up to the greatest value that the header names. No
/// triple crosses the border of a 512-byte block.
std::vector<RGBQUAD> ReadPaletteFile(std::span<const std::uint8_t> file)
{
    constexpr std::uint8_t c_aMark[] = {'A', 'H'};
    constexpr std::size_t c_nEntries = 40, c_nBlock = 512, c_nTriple = 6;
    CByteReader in(file);
    if (!in.StartsWith(c_aMark))
        return {};
    in.Seek(12);
    const unsigned nColors = std::min(in.U16LE() + 1U, 256U);
    const unsigned aMax[3] = {in.U16LE(), in.U16LE(), in.U16LE()};
    in.Seek(c_nEntries);
    std::vector<RGBQUAD> palette;
    auto channel = [&](unsigned nMax) {
        const unsigned v = in.U16LE();
        return static_cast<std::uint8_t>(nMax == 0 ? std::min(v, 255U) : std::min(v, nMax) * 255 / nMax);
    };
    for (unsigned i = 0; i < nColors; i++) {
        if (in.Pos() % c_nBlock > c_nBlock - c_nTriple)
            in.Skip(c_nBlock - in.Pos() % c_nBlock);
        RGBQUAD color;
        color.rgbRed = channel(aMax[0]);
        color.rgbGreen = channel(aMax[1]);
        color.rgbBlue = channel(aMax[2]);
        if (!in.Ok())
            break;
        palette.push_back(color);
    }
    return palette;
}

void EncodeCutRow(std::span<const std::uint8_t> row, std::vector<std::uint8_t>& out)
{
    std::size_t n = 0;
    auto runAt = [&](std::size_t i) {
        std::size_t nRun = 1;
        while (i + nRun < row.size() && nRun < c_nGreatestRun && row[i + nRun] == row[i])
            nRun++;
        return nRun;
    };
    while (n < row.size()) {
        std::size_t nRun = runAt(n);
        if (nRun >= 3) {
            out.push_back(static_cast<std::uint8_t>(0x80 | nRun));
            out.push_back(row[n]);
            n += nRun;
            continue;
        }
        const std::size_t nStart = n;
        while (n < row.size() && n - nStart < c_nGreatestRun && runAt(n) < 3)
            n++;
        out.push_back(static_cast<std::uint8_t>(n - nStart));
        out.insert(out.end(), row.begin() + static_cast<std::ptrdiff_t>(nStart),
                   row.begin() + static_cast<std::ptrdiff_t>(n));
    }
    out.push_back(0);
}

} // namespace

int ReadCutWithPalette(std::span<const std::uint8_t> file, std::span<const std::uint8_t> paletteFile,
                       LBitmapBase& bitmap)
{
    CByteReader in(file);
    const int nWidth = in.U16LE();
    const int nHeight = in.U16LE();
    in.Skip(2);
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    if (const int nResult = CheckPictureSize(nWidth, nHeight); nResult != IMG_SUCCESS)
        return nResult;
    constexpr std::uint64_t c_nSlack = 1 << 16, c_nPixelsPerByte = 64;
    if (in.Remaining() < static_cast<std::size_t>(nHeight) * 2
        || std::uint64_t(nWidth) * std::uint64_t(nHeight) > c_nSlack + in.Remaining() * c_nPixelsPerByte)
        return IMG_ERROR_FILE_READ;
    if (!bitmap.Create(nWidth, nHeight, 8, ORDER_BGRORGRAY, ReadPaletteFile(paletteFile)))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(0, 0);
    for (int y = 0; y < nHeight; y++) {
        const auto coded = in.Take(in.U16LE());
        if (!in.Ok() || !DecodeCutRow(coded, {bitmap.WriteRow(y), bitmap.GetRowBytes()}))
            return IMG_ERROR_FILE_READ;
    }
    return IMG_SUCCESS;
}

int ReadCut(std::span<const std::uint8_t> file, LBitmapBase& bitmap) { return ReadCutWithPalette(file, {}, bitmap); }

int WriteCut(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24)
        return IMG_ERROR_BITS;
    CByteWriter w(out);
    w.U16LE(static_cast<unsigned>(bitmap.GetWidth()));
    w.U16LE(static_cast<unsigned>(bitmap.GetHeight()));
    w.U16LE(0);
    std::vector<std::uint8_t> aGrey(static_cast<std::size_t>(bitmap.GetWidth())), aCoded;
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        const std::uint8_t* p = bitmap.Row(y);
        for (auto& grey : aGrey) {
            grey = static_cast<std::uint8_t>((p[0] * 114 + p[1] * 587 + p[2] * 299 + 500) / 1000);
            p += 3;
        }
        aCoded.clear();
        EncodeCutRow(aGrey, aCoded);
        if (aCoded.size() > 0xFFFF)
            return IMG_ERROR_BITS; // the format counts a row's bytes in 16 bits
        w.U16LE(static_cast<unsigned>(aCoded.size()));
        w.Raw(aCoded);
    }
    return IMG_SUCCESS;
}

} // namespace kestrune
