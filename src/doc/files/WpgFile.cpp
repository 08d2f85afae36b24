#include "doc/files/WpgFile.h"

#include "doc/files/ByteReader.h"
#include "doc/files/ByteWriter.h"
#include "doc/files/PixelRows.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr std::uint8_t c_aMark[] = {0xFF, 'W', 'P', 'C'};
constexpr unsigned c_nGraphicsProduct = 1;
constexpr unsigned c_nGraphicsFile = 0x16;
constexpr unsigned c_nHeader = 16;
constexpr unsigned c_nLongRecord = 0xFF; ///< in place of a record's length: a longer one follows
constexpr std::size_t c_nGreatestRun = 127;

enum Record { REC_BITMAP = 0x0B, REC_COLORS = 0x0E, REC_START = 0x0F, REC_END = 0x10, REC_PLACED_BITMAP = 0x14 };

/// The 256 colours that count until a file sets its own: those of the display mode of the format's day. 16 colours,
/// 16 greys, then three brightnesses of three saturations of 24 hues, in 6 bits a channel.
std::array<RGBQUAD, 256> StandardPalette()
{
    constexpr int c_aGreys[16] = {0, 5, 8, 11, 14, 17, 20, 24, 28, 32, 36, 40, 45, 50, 56, 63};
    constexpr int c_aLevels[9][5]
        = {{0, 16, 31, 47, 63},  {31, 39, 47, 55, 63}, {45, 49, 54, 58, 63}, {0, 7, 14, 21, 28},  {14, 17, 21, 24, 28},
           {20, 22, 24, 26, 28}, {0, 4, 8, 12, 16},    {8, 10, 12, 14, 16},  {11, 12, 13, 15, 16}};
    auto color = [](int red, int green, int blue) {
        auto wide = [](int v) { return static_cast<std::uint8_t>(v * 255 / 63); };
        return RGBQUAD{wide(blue), wide(green), wide(red), 0};
    };
    std::array<RGBQUAD, 256> palette{};
    for (int i = 0; i < 16; i++) {
        const int nLow = i & 8 ? 21 : 0;
        palette[i] = color(nLow + (i & 4 ? 42 : 0), nLow + (i == 6 ? 21 : i & 2 ? 42 : 0), nLow + (i & 1 ? 42 : 0));
        palette[16 + i] = color(c_aGreys[i], c_aGreys[i], c_aGreys[i]);
    }
    std::size_t n = 32;
    for (const auto& level : c_aLevels)
        for (int iHue = 0; iHue < 24; iHue++) {
            // A channel stands high for 8 hues, falls over 4, stays low for 8 and rises over 4.
            auto channel = [&](int iPhase) {
                const int h = (iHue + 24 - iPhase) % 24;
                return level[h <= 8 ? 4 : h < 12 ? 12 - h : h <= 20 ? 0 : h - 20];
            };
            palette[n++] = color(channel(4), channel(12), channel(20));
        }
    return palette;
}

/// The row coding: a count with the top bit repeats the next byte, 0x80 repeats 0xFF; without it the bytes stand as
/// they are, and 0 repeats the row before.
class RowDecoder {
public:
    RowDecoder(CByteReader& in, std::size_t nRowBytes)
        : m_in(in)
        , m_row(nRowBytes)
    {
    }
    const std::vector<std::uint8_t>& Row() const { return m_row; }

    /// Brings the next row; false when the file ends before.
    bool Next()
    {
        if (m_nRepeatRows > 0) {
            m_nRepeatRows--;
            return true;
        }
        std::size_t n = 0;
        while (n < m_row.size()) {
            if (m_nRun == 0 && !NextCode(n))
                return false;
            if (m_nRepeatRows > 0) {
                m_nRepeatRows--;
                return true;
            }
            const std::size_t nFit = std::min(m_nRun, m_row.size() - n);
            for (std::size_t i = 0; i < nFit; i++)
                m_row[n++] = m_bLiteral ? m_in.U8() : m_value;
            m_nRun -= nFit;
        }
        return m_in.Ok();
    }

private:
    bool NextCode(std::size_t n)
    {
        const unsigned nCode = m_in.U8();
        m_nRun = nCode & 0x7F;
        m_bLiteral = (nCode & 0x80) == 0;
        if (m_bLiteral && m_nRun == 0) {
            // Only between rows; inside one, the code has no meaning and the file is damaged.
            m_nRepeatRows = m_in.U8();
            return m_in.Ok() && n == 0 && m_nRepeatRows > 0;
        }
        if (!m_bLiteral && m_nRun == 0) {
            m_nRun = m_in.U8();
            m_value = 0xFF;
            return m_in.Ok() && m_nRun > 0;
        }
        if (!m_bLiteral)
            m_value = m_in.U8();
        return m_in.Ok();
    }

    CByteReader& m_in;
    std::vector<std::uint8_t> m_row;
    std::size_t m_nRun = 0; ///< bytes left of the code at hand; runs may cross the ends of rows
    std::size_t m_nRepeatRows = 0;
    bool m_bLiteral = false;
    std::uint8_t m_value = 0;
};

/// A file of few bytes cannot describe giant rows: a code of two bytes gives at most 255 bytes or 255 rows.
bool CouldHold(std::size_t nBytes, std::size_t nRowBytes, int nHeight)
{
    return nRowBytes <= nBytes * 128 && static_cast<std::size_t>(nHeight) <= 255 + nBytes * 128;
}

int ReadRaster(CByteReader in, bool bPlaced, std::span<const RGBQUAD> fileColors, LBitmapBase& bitmap)
{
    if (bPlaced)
        in.Skip(10); // rotation and the corners on the page
    const int nWidth = in.U16LE(), nHeight = in.U16LE(), nBits = in.U16LE();
    const int nXDpi = in.U16LE(), nYDpi = in.U16LE();
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    if (nBits != 1 && nBits != 2 && nBits != 4 && nBits != 8)
        return IMG_ERROR_BITS;
    if (const int nResult = CheckPictureSize(nWidth, nHeight); nResult != IMG_SUCCESS)
        return nResult;
    const std::size_t nRowBytes = (static_cast<std::size_t>(nWidth) * nBits + 7) / 8;
    if (!CouldHold(in.Remaining(), nRowBytes, nHeight))
        return IMG_ERROR_FILE_READ;
    std::array<RGBQUAD, 256> palette = StandardPalette();
    std::copy(fileColors.begin(), fileColors.end(), palette.begin());
    if (nBits == 1 && (fileColors.size() < 2 || palette[0] == palette[1])) {
        palette[0] = {0, 0, 0, 0};
        palette[1] = {255, 255, 255, 0};
    }
    if (!bitmap.Create(nWidth, nHeight, nBits == 2 ? 4 : nBits, ORDER_BGRORGRAY, std::span(palette).first(1U << nBits)))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(nXDpi, nYDpi);
    RowDecoder rows(in, nRowBytes);
    for (int y = 0; y < nHeight; y++) {
        if (!rows.Next())
            return IMG_ERROR_FILE_READ;
        UnpackIndices(rows.Row().data(), nWidth, nBits, bitmap.WriteRow(y));
    }
    NormalizeBilevel(bitmap);
    return IMG_SUCCESS;
}

/// Entries of a colour record into their places; gaps keep the standard colours.
void ReadColors(CByteReader in, std::vector<RGBQUAD>& colors)
{
    const std::size_t nFirst = in.U16LE();
    const std::size_t nCount = in.U16LE();
    const auto standard = StandardPalette();
    for (std::size_t i = nFirst; i < std::min<std::size_t>(nFirst + nCount, 256); i++) {
        RGBQUAD color;
        color.rgbRed = in.U8();
        color.rgbGreen = in.U8();
        color.rgbBlue = in.U8();
        if (!in.Ok())
            return;
        while (colors.size() <= i)
            colors.push_back(standard[colors.size()]);
        colors[i] = color;
    }
}

void EncodeRow(std::span<const std::uint8_t> row, CByteWriter& w)
{
    auto runAt = [&](std::size_t i) {
        std::size_t nRun = 1;
        while (i + nRun < row.size() && nRun < c_nGreatestRun && row[i + nRun] == row[i])
            nRun++;
        return nRun;
    };
    for (std::size_t i = 0; i < row.size();) {
        const std::size_t nRun = runAt(i);
        if (nRun >= 3) {
            w.U8(0x80U | static_cast<unsigned>(nRun));
            w.U8(row[i]);
            i += nRun;
            continue;
        }
        const std::size_t iStart = i;
        while (i < row.size() && i - iStart < c_nGreatestRun && runAt(i) < 3)
            i++;
        w.U8(static_cast<unsigned>(i - iStart));
        w.Raw(row.subspan(iStart, i - iStart));
    }
}

void WriteLongRecord(CByteWriter& w, Record record, std::span<const std::uint8_t> body)
{
    w.U8(record);
    w.U8(c_nLongRecord);
    if (body.size() <= 0x7FFF) {
        w.U16LE(static_cast<unsigned>(body.size()));
    } else {
        w.U16LE(0x8000U | static_cast<unsigned>(body.size() >> 16)); // the top bit says that the low half follows
        w.U16LE(static_cast<unsigned>(body.size() & 0xFFFF));
    }
    w.Raw(body);
}

} // namespace

int ReadWpg(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    CByteReader in(file);
    if (!in.StartsWith(c_aMark))
        return IMG_ERROR_FILE_FORMAT;
    in.Skip(4);
    const std::uint64_t nData = in.U32LE();
    const unsigned nProduct = in.U8(), nKind = in.U8(), nVersion = in.U8();
    in.Skip(1);
    const unsigned nKey = in.U16LE();
    in.Seek(std::max<std::uint64_t>(nData, c_nHeader));
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    if (nProduct != c_nGraphicsProduct || nKind != c_nGraphicsFile || nVersion != 1 || nKey != 0)
        return IMG_ERROR_BITS;
    std::vector<RGBQUAD> colors;
    while (in.Ok() && in.Remaining() > 0) {
        const unsigned nRecord = in.U8();
        std::uint64_t nBytes = in.U8();
        if (nBytes == c_nLongRecord) {
            nBytes = in.U16LE();
            if (nBytes & 0x8000)
                nBytes = (nBytes & 0x7FFF) << 16 | in.U16LE();
        }
        if (nRecord == REC_END)
            return IMG_ERROR_BITS;
        const auto body = in.Take(nBytes);
        if (!in.Ok())
            break;
        if (nRecord == REC_COLORS)
            ReadColors(CByteReader(body), colors);
        else if (nRecord == REC_BITMAP || nRecord == REC_PLACED_BITMAP)
            return ReadRaster(CByteReader(body), nRecord == REC_PLACED_BITMAP, colors, bitmap);
    }
    return IMG_ERROR_FILE_READ;
}

int WriteWpg(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24)
        return IMG_ERROR_BITS;
    LBitmapBase reduced;
    reduced.Copy(bitmap);
    if (!reduced.ColorRes(8, CRF_OPTIMIZEDPALETTE | CRF_ERRORDIFFUSION) || reduced.GetBitsPerPixel() != 8)
        return IMG_ERROR_BITS;
    constexpr int c_nUsualDpi = 96; // the page needs a size in inches even where the picture does not tell its own
    constexpr int c_nPageUnits = 1200;
    auto dpiOr = [](int nDpi) { return nDpi > 0 && nDpi <= 0xFFFF ? static_cast<unsigned>(nDpi) : c_nUsualDpi; };
    const unsigned nXDpi = dpiOr(bitmap.GetXResolution()), nYDpi = dpiOr(bitmap.GetYResolution());
    const auto nWidth = static_cast<unsigned>(bitmap.GetWidth()), nHeight = static_cast<unsigned>(bitmap.GetHeight());
    CByteWriter w(out);
    w.Raw(c_aMark);
    w.U32LE(c_nHeader);
    w.U8(c_nGraphicsProduct);
    w.U8(c_nGraphicsFile);
    w.U16LE(1); // version 1.0
    w.U32LE(0); // no password

    w.U8(REC_START);
    w.U8(6);
    w.U8(1);
    w.U8(0);
    w.U16LE(std::min(nWidth * c_nPageUnits / nXDpi, 0xFFFFU));
    w.U16LE(std::min(nHeight * c_nPageUnits / nYDpi, 0xFFFFU));

    std::vector<std::uint8_t> body;
    CByteWriter b(body);
    b.U16LE(0);
    b.U16LE(256);
    for (const RGBQUAD& color : reduced.Palette()) {
        b.U8(color.rgbRed);
        b.U8(color.rgbGreen);
        b.U8(color.rgbBlue);
    }
    WriteLongRecord(w, REC_COLORS, body);

    body.clear();
    for (unsigned v : {nWidth, nHeight, 8U, nXDpi, nYDpi})
        b.U16LE(v);
    for (int y = 0; y < bitmap.GetHeight(); y++)
        EncodeRow({reduced.Row(y), reduced.GetRowBytes()}, b);
    WriteLongRecord(w, REC_BITMAP, body);
    w.U8(REC_END);
    w.U8(0);
    return IMG_SUCCESS;
}

} // namespace kestrune
