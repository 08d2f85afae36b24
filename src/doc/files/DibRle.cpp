#include "doc/files/DibRle.h"

#include "doc/files/ByteReader.h"

#include <cstring>

namespace kestrune {

namespace {

enum RleEscape { RLE_END_OF_LINE = 0, RLE_END_OF_BITMAP = 1, RLE_DELTA = 2 };

/// Where the next pixel goes. Pixels right of the picture are dropped; rows count in the order of the coding.
class RleTarget {
public:
    RleTarget(LBitmapBase& bitmap, int nPixelBytes, bool bTopDown)
        : m_bitmap(bitmap)
        , m_nPixelBytes(nPixelBytes)
        , m_bTopDown(bTopDown)
    {
        for (int y = 0; y < bitmap.GetHeight(); y++)
            std::memset(bitmap.WriteRow(y), 0, bitmap.GetRowBytes());
        OpenRow();
    }
    bool Done() const { return m_y >= m_bitmap.GetHeight(); }
    bool RowFull() const { return m_x >= m_bitmap.GetWidth(); }
    bool OnLastRow() const { return m_y >= m_bitmap.GetHeight() - 1; }

    void Put(const std::uint8_t* pPixel)
    {
        if (m_pRow && m_x < m_bitmap.GetWidth())
            std::memcpy(m_pRow + static_cast<std::size_t>(m_x++) * m_nPixelBytes, pPixel, m_nPixelBytes);
    }
    void NextLine() { Move(-m_x, 1); }
    void Move(int dx, int dy)
    {
        m_x = std::min(m_x + dx, m_bitmap.GetWidth());
        if (dy != 0) {
            m_y = std::min(m_y + dy, m_bitmap.GetHeight());
            OpenRow();
        }
    }

private:
    void OpenRow() { m_pRow = Done() ? nullptr : m_bitmap.WriteRow(m_bTopDown ? m_y : m_bitmap.GetHeight() - 1 - m_y); }

    LBitmapBase& m_bitmap;
    const int m_nPixelBytes;
    const bool m_bTopDown;
    int m_x = 0;
    int m_y = 0;
    std::uint8_t* m_pRow = nullptr;
};

/// A run of one pixel value; at 4 bits the two halves of the byte take turns.
void PutRun(CByteReader& in, int nBits, int nCount, RleTarget& target)
{
    std::uint8_t aPixel[3] = {in.U8(), 0, 0};
    if (nBits == 24) {
        aPixel[1] = in.U8();
        aPixel[2] = in.U8();
    }
    const std::uint8_t aHalves[2]
        = {static_cast<std::uint8_t>(aPixel[0] >> 4), static_cast<std::uint8_t>(aPixel[0] & 15)};
    for (int i = 0; i < nCount; i++)
        target.Put(nBits == 4 ? &aHalves[i & 1] : aPixel);
}

/// Pixels as they stand, padded to whole words.
void PutLiterals(CByteReader& in, int nBits, int nCount, RleTarget& target)
{
    const std::size_t nBytes = (static_cast<std::size_t>(nCount) * nBits + 7) / 8;
    const auto bytes = in.Take(nBytes);
    if (!in.Ok())
        return;
    in.TakeUpTo(nBytes & 1);
    for (int i = 0; i < nCount; i++) {
        if (nBits == 4) {
            const std::uint8_t pixel = i & 1 ? bytes[i / 2] & 15 : bytes[i / 2] >> 4;
            target.Put(&pixel);
        } else {
            target.Put(&bytes[static_cast<std::size_t>(i) * (nBits / 8)]);
        }
    }
}

} // namespace

bool RleCouldHold(std::size_t nBytes, int nWidth, int nHeight)
{
    constexpr std::uint64_t c_nSlack = 1 << 16;
    constexpr std::uint64_t c_nPixelsPerByte = 1 << 14; // a jump of 4 bytes passes over 255 x 255 pixels
    return std::uint64_t(nWidth) * std::uint64_t(nHeight) <= c_nSlack + nBytes * c_nPixelsPerByte;
}

bool DecodeRle(std::span<const std::uint8_t> coded, int nBits, bool bTopDown, LBitmapBase& bitmap)
{
    CByteReader in(coded);
    RleTarget target(bitmap, nBits == 24 ? 3 : 1, bTopDown);
    while (!target.Done()) {
        const int nCount = in.U8();
        if (nCount != 0 && in.Ok()) {
            PutRun(in, nBits, nCount, target);
        } else {
            const int nEscape = in.U8();
            if (!in.Ok())
                return target.OnLastRow() && target.RowFull(); // some writers leave the end mark out
            if (nEscape == RLE_END_OF_BITMAP)
                return true;
            if (nEscape == RLE_END_OF_LINE) {
                target.NextLine();
            } else if (nEscape == RLE_DELTA) {
                const int dx = in.U8();
                target.Move(dx, in.U8());
            } else {
                PutLiterals(in, nBits, nEscape, target);
            }
        }
        if (!in.Ok())
            return false;
    }
    return true;
}

} // namespace kestrune
