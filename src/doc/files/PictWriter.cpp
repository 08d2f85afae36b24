#include "doc/files/PictWriter.h"

#include "doc/files/ByteWriter.h"
#include "doc/files/PackBits.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nMostSide = 32767;
/// A row's byte count has 14 bits, at four bytes a pixel.
constexpr int c_nStripWidth = 4000;
/// How many columns are stored; those beyond the picture are not shown. A row of less than 8 bytes would have to lie
/// unpacked, and readers do not agree on the form of that, nor on 8 itself. From 251 bytes on the count before a row has
/// two bytes, but common readers take three bytes a pixel and 200 for the border, so the widths between are avoided.
constexpr int StoredWidth(int nWidth)
{
    return nWidth < 3 ? 3 : nWidth >= 63 && nWidth <= 66 ? 67 : nWidth;
}

enum Opcode : unsigned { OP_CLIP = 0x0001, OP_VERSION = 0x0011, OP_DIRECT_BITS = 0x009A, OP_END = 0x00FF, OP_HEADER = 0x0C00 };

/// What the format is made of besides numbers.
class CPictBytes : public CByteWriter {
public:
    explicit CPictBytes(std::vector<std::uint8_t>& out) : CByteWriter(out), m_nStart(out.size()) {}
    void Rect(int nLeft, int nTop, int nRight, int nBottom)
    {
        for (const int n : {nTop, nLeft, nBottom, nRight})
            U16BE(static_cast<unsigned>(n));
    }
    /// Opcodes stand at even places.
    void Align()
    {
        if ((Size() - m_nStart) % 2 != 0)
            U8(0);
    }

private:
    std::size_t m_nStart;
};

void WriteHeader(CPictBytes& out, int nWidth, int nHeight, std::uint32_t nXFixed, std::uint32_t nYFixed)
{
    out.Zeros(512); // belongs to nobody
    out.U16BE(0);   // the size, which no reader needs from this version on
    out.Rect(0, 0, nWidth, nHeight);
    out.U16BE(OP_VERSION);
    out.U16BE(0x02FF);
    out.U16BE(OP_HEADER);
    out.U16BE(0xFFFE); // the kind with a resolution
    out.U16BE(0);
    out.U32BE(nXFixed);
    out.U32BE(nYFixed);
    out.Rect(0, 0, nWidth, nHeight);
    out.U32BE(0);
    out.U16BE(OP_CLIP);
    out.U16BE(10); // a region that is a rectangle
    out.Rect(0, 0, nWidth, nHeight);
}

void WriteStripHead(CPictBytes& out, int x0, int x1, int nHeight, std::uint32_t nXFixed, std::uint32_t nYFixed)
{
    const int nStored = StoredWidth(x1 - x0);
    out.U16BE(OP_DIRECT_BITS);
    out.U32BE(0xFF);
    out.U16BE(static_cast<unsigned>(nStored * 4) | 0x8000);
    out.Rect(x0, 0, x0 + nStored, nHeight);
    out.U16BE(0);
    out.U16BE(4); // packed by planes
    out.U32BE(0);
    out.U32BE(nXFixed);
    out.U32BE(nYFixed);
    for (const unsigned n : {16u, 32u, 3u, 8u}) // direct colours; bits a pixel, planes, bits a plane
        out.U16BE(n);
    for (int i = 0; i < 3; i++)
        out.U32BE(0);
    out.Rect(x0, 0, x1, nHeight);
    out.Rect(x0, 0, x1, nHeight);
    out.U16BE(0); // copy
}

void WriteStrip(CPictBytes& out, const LBitmapBase& bitmap, int x0, int x1)
{
    const int nWidth = x1 - x0, nStored = StoredWidth(nWidth);
    std::vector<std::uint8_t> planes(static_cast<std::size_t>(nStored) * 3), packed;
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        const std::uint8_t* p = bitmap.Row(y) + static_cast<std::ptrdiff_t>(x0) * 3;
        for (int x = 0; x < nWidth; x++, p += 3)
            for (int c = 0; c < 3; c++)
                planes[static_cast<std::size_t>(c * nStored + x)] = p[2 - c];
        packed.clear();
        AppendPackBits(planes, packed);
        if (nStored * 4 > 250)
            out.U16BE(static_cast<unsigned>(packed.size()));
        else
            out.U8(static_cast<unsigned>(packed.size()));
        out.Raw(packed);
    }
    out.Align();
}

} // namespace

int WritePict(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    const int nWidth = bitmap.GetWidth(), nHeight = bitmap.GetHeight();
    if (bitmap.GetBitsPerPixel() != 24 || nWidth > c_nMostSide || nHeight > c_nMostSide)
        return IMG_ERROR_BITS;
    const auto fixed = [](int nDpi) { return static_cast<std::uint32_t>(std::clamp(nDpi > 0 ? nDpi : 72, 1, 32767)) << 16; };
    const std::uint32_t nXFixed = fixed(bitmap.GetXResolution()), nYFixed = fixed(bitmap.GetYResolution());
    CPictBytes bytes(out);
    WriteHeader(bytes, nWidth, nHeight, nXFixed, nYFixed);
    for (int x0 = 0; x0 < nWidth; x0 += c_nStripWidth) {
        const int x1 = std::min(x0 + c_nStripWidth, nWidth);
        WriteStripHead(bytes, x0, x1, nHeight, nXFixed, nYFixed);
        WriteStrip(bytes, bitmap, x0, x1);
    }
    bytes.U16BE(OP_END);
    return IMG_SUCCESS;
}

} // namespace kestrune
