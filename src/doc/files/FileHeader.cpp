#include "doc/files/FileHeader.h"

#include "doc/files/ByteReader.h"
#include "doc/files/PixelRows.h"

#include <unordered_map>

namespace kestrune {

namespace {

using Span = std::span<const std::uint8_t>;

std::vector<RGBQUAD> EvenRamp(int nBits)
{
    std::vector<RGBQUAD> ramp(std::size_t{1} << nBits);
    for (std::size_t i = 0; i < ramp.size(); i++) {
        const auto v = static_cast<std::uint8_t>(i * 255 / (ramp.size() - 1));
        ramp[i] = {v, v, v, 0};
    }
    return ramp;
}

RGBQUAD TakeRgb(CByteReader& in)
{
    RGBQUAD color;
    color.rgbRed = in.U8();
    color.rgbGreen = in.U8();
    color.rgbBlue = in.U8();
    return color;
}

/// The 16 colours in the header of a PCX file; without any they are the usual ones of black and white.
void ReadPcxHeaderColors(Span file, FileHeader& header)
{
    constexpr std::size_t c_nColorsAt = 16;
    CByteReader in(file);
    in.Seek(c_nColorsAt);
    header.palette.assign(std::size_t{1} << header.nBits, RGBQUAD{});
    for (std::size_t i = 0; i < std::min<std::size_t>(header.palette.size(), 16); i++)
        header.palette[i] = TakeRgb(in);
    if (header.nBits == 1 && header.palette[0] == header.palette[1])
        header.palette = EvenRamp(1);
}

/// The 256 colours at the end of a PCX file, behind a mark; without them the pixels are grey levels.
void ReadPcxTailColors(Span file, FileHeader& header)
{
    constexpr std::size_t c_nTail = 769;
    constexpr std::uint8_t c_mark = 12;
    header.palette = EvenRamp(8);
    if (file.size() < c_nTail || file[file.size() - c_nTail] != c_mark)
        return;
    CByteReader in(file.last(c_nTail - 1));
    for (RGBQUAD& color : header.palette)
        color = TakeRgb(in);
}

bool ReadPcxHeader(Span file, FileHeader& header)
{
    constexpr std::size_t c_nHeader = 128;
    CByteReader in(file);
    if (file.size() < c_nHeader || in.U8() != 10)
        return false;
    in.Skip(2);
    const int nPlaneBits = in.U8();
    const int nLeft = in.U16LE(), nTop = in.U16LE();
    const int nWidth = in.U16LE() - nLeft + 1, nHeight = in.U16LE() - nTop + 1;
    const int nXDpi = in.U16LE(), nYDpi = in.U16LE();
    in.Seek(65);
    const int nBits = nPlaneBits * in.U8();
    if (nBits <= 0)
        return false;
    header.nBits = nBits == 1 ? 1 : nBits <= 4 ? 4 : nBits <= 8 ? 8 : 24;
    if (nBits == 8 && nPlaneBits == 8)
        ReadPcxTailColors(file, header);
    else if (nBits == 2 && nPlaneBits == 2)
        header.nBits = 0; // the four colours of an early display; their coding differs between writers
    else if (nBits <= 8)
        ReadPcxHeaderColors(file, header);
    // Early writers put the size of the picture or of the display there.
    const bool bSize
        = (nXDpi == nWidth && nYDpi == nHeight) || (nXDpi == 640 && nYDpi != 640) || (nXDpi == 320 && nYDpi == 200);
    if (!bSize) {
        header.nXDpi = nXDpi;
        header.nYDpi = nYDpi;
    }
    return true;
}

/// A set of PCX pages: the first one.
bool ReadDcxHeader(Span file, FileHeader& header)
{
    CByteReader in(file);
    in.Skip(4);
    in.Seek(in.U32LE());
    return in.Ok() && ReadPcxHeader(in.Rest(), header);
}

void ReadTgaColors(CByteReader in, int nFirst, int nColors, int nEntryBits, FileHeader& header)
{
    header.palette.assign(256, RGBQUAD{});
    for (int i = nFirst; i < std::min(nFirst + nColors, 256); i++) {
        RGBQUAD& color = header.palette[static_cast<std::size_t>(i)];
        if (nEntryBits == 15 || nEntryBits == 16) {
            const int v = in.U16LE();
            auto wide = [](int n) { return static_cast<std::uint8_t>((n & 31) * 255 / 31); };
            color = {wide(v), wide(v >> 5), wide(v >> 10), 0};
        } else {
            color.rgbBlue = in.U8();
            color.rgbGreen = in.U8();
            color.rgbRed = in.U8();
            in.Skip(nEntryBits == 32 ? 1 : 0);
        }
    }
}

bool ReadTgaHeader(Span file, FileHeader& header)
{
    enum { TGA_MAPPED = 1, TGA_COLOR = 2, TGA_GREY = 3, TGA_CODED = 8 };
    CByteReader in(file);
    const unsigned nNote = in.U8();
    in.Skip(1);
    const int nKind = in.U8() & ~TGA_CODED;
    const int nFirst = in.U16LE(), nColors = in.U16LE(), nEntryBits = in.U8();
    in.Skip(8);
    const int nBits = in.U8();
    in.Skip(1 + nNote);
    if (!in.Ok() || nKind < TGA_MAPPED || nKind > TGA_GREY)
        return false;
    header.nBits = nKind == TGA_COLOR ? 24 : nKind == TGA_GREY && nBits == 1 ? 1 : 8;
    if (nKind == TGA_MAPPED)
        ReadTgaColors(in, nFirst, nColors, nEntryBits, header);
    else if (nKind == TGA_GREY)
        header.palette = EvenRamp(header.nBits);
    return nKind != TGA_MAPPED || nBits <= 8;
}

bool ReadSgiHeader(Span file, FileHeader& header)
{
    constexpr unsigned c_wMark = 474, c_nColorKindAt = 104;
    CByteReader in(file);
    if (in.U16BE() != c_wMark)
        return false;
    in.Skip(2);
    const int nDimension = in.U16BE();
    in.Skip(4);
    const int nChannels = in.U16BE();
    in.Seek(c_nColorKindAt);
    const std::uint32_t nColorKind = in.U32BE();
    if (!in.Ok())
        return false;
    header.nBits = nDimension <= 2 || nChannels <= 2 ? 8 : 24;
    if (nColorKind != 0)
        header.nBits = 0; // outdated kinds of colour
    else if (header.nBits == 8)
        header.palette = EvenRamp(8);
    return true;
}

int DpiOfFixed(std::uint32_t nFixed)
{
    const std::uint32_t nDpi = nFixed >> 16;
    return nDpi > 0 && nDpi < 32768 ? static_cast<int>(nDpi) : 0;
}

/// The pixel map of a picture opcode, from its row count on.
void ReadPictPixels(CByteReader& in, bool bDirect, FileHeader& header)
{
    constexpr unsigned c_wPixMap = 0x8000;
    if (bDirect)
        in.Skip(4);
    const bool bPixMap = (in.U16BE() & c_wPixMap) != 0;
    if (!bPixMap) {
        header.nBits = 1;
        header.palette = EvenRamp(1);
        return;
    }
    in.Skip(8 + 2 + 2 + 4);
    const int nXDpi = DpiOfFixed(in.U32BE()), nYDpi = DpiOfFixed(in.U32BE());
    in.Skip(2);
    const int nBits = in.U16BE();
    in.Skip(2 + 2 + 4 + 4 + 4);
    if (!in.Ok())
        return;
    header.nXDpi = header.nXDpi ? header.nXDpi : nXDpi;
    header.nYDpi = header.nYDpi ? header.nYDpi : nYDpi;
    header.nBits = bDirect || nBits > 8 ? 24 : nBits == 1 ? 1 : nBits <= 4 ? 4 : 8;
    if (header.nBits == 24)
        return;
    in.Skip(4 + 2);
    const unsigned nColors = in.U16BE() + 1U;
    header.palette.assign(std::size_t{1} << header.nBits, RGBQUAD{});
    for (unsigned i = 0; i < nColors && in.Ok(); i++) {
        const unsigned nIndex = in.U16BE();
        const unsigned red = in.U16BE(), green = in.U16BE(), blue = in.U16BE();
        const unsigned nAt = nIndex < header.palette.size() ? nIndex : i; // device tables leave the index 0 or odd
        if (nAt < header.palette.size())
            header.palette[nAt] = {static_cast<std::uint8_t>(blue >> 8), static_cast<std::uint8_t>(green >> 8),
                                   static_cast<std::uint8_t>(red >> 8), 0};
    }
}

enum PictOp : unsigned {
    OP_CLIP = 0x01,
    OP_VERSION = 0x11,
    OP_BITS = 0x90,
    OP_BITS_REGION = 0x91,
    OP_PACKED = 0x98,
    OP_PACKED_REGION = 0x99,
    OP_DIRECT = 0x9A,
    OP_DIRECT_REGION = 0x9B,
    OP_SHORT_COMMENT = 0xA0,
    OP_LONG_COMMENT = 0xA1,
    OP_HEADER = 0x0C00
};

/// The opcodes whose data has a length of its own, in bytes.
struct PictOpLength {
    unsigned nOp;
    int nBytes;
};
// clang-format off
constexpr PictOpLength c_aPictLengths[] = {
    {0x00, 0}, {0x1E, 0}, {0x1C, 0}, {0x03, 2}, {0x04, 2}, {0x05, 2}, {0x07, 4}, {0x08, 2}, {0x09, 8}, {0x0A, 8}, {0x0D, 2},
    {0x1A, 6}, {0x1B, 6}, {0x1D, 6}, {0x1F, 6}, {OP_VERSION, 2}, {OP_SHORT_COMMENT, 2},
};
// clang-format on

/// Walks over what usually stands before the first picture opcode; anything else leaves the depth unknown.
bool ReadPictHeader(Span file, FileHeader& header)
{
    constexpr std::size_t c_nNobodys = 512, c_nFrame = 10, c_nMostOps = 1000;
    CByteReader in(file);
    in.Seek(c_nNobodys + c_nFrame);
    if (in.U16BE() != OP_VERSION || in.U16BE() != 0x02FF)
        return in.Ok(); // the first version: depth unknown
    for (std::size_t i = 0; i < c_nMostOps && in.Ok(); i++) {
        const unsigned nOp = in.U16BE();
        if (nOp == OP_BITS || nOp == OP_BITS_REGION || nOp == OP_PACKED || nOp == OP_PACKED_REGION || nOp == OP_DIRECT
            || nOp == OP_DIRECT_REGION) {
            ReadPictPixels(in, nOp == OP_DIRECT || nOp == OP_DIRECT_REGION, header);
            return in.Ok();
        }
        const auto it = std::find_if(std::begin(c_aPictLengths), std::end(c_aPictLengths), [&](const PictOpLength& f) { return f.nOp == nOp; });
        if (it != std::end(c_aPictLengths)) {
            in.Skip(static_cast<std::uint64_t>(it->nBytes));
        } else if (nOp == OP_CLIP) {
            const unsigned nBytes = in.U16BE();
            in.Skip(nBytes < 2 ? 0 : nBytes - 2);
        } else if (nOp == OP_LONG_COMMENT) {
            in.Skip(2);
            const unsigned nBytes = in.U16BE();
            in.Skip(nBytes + (nBytes & 1));
        } else if (nOp == OP_HEADER) {
            const bool bResolution = in.U16BE() == 0xFFFE;
            in.Skip(2);
            const std::uint32_t nX = in.U32BE(), nY = in.U32BE();
            header.nXDpi = bResolution ? DpiOfFixed(nX) : 0;
            header.nYDpi = bResolution ? DpiOfFixed(nY) : 0;
            in.Skip(12);
        } else {
            return in.Ok();
        }
    }
    return in.Ok();
}

bool ReadPntgHeader(Span file, FileHeader& header)
{
    constexpr std::size_t c_nPatterns = 512; // stand before the rows
    if (file.size() < c_nPatterns)
        return false;
    header.nBits = 1;
    header.palette = EvenRamp(1);
    return true;
}

struct HeaderRow {
    ImageFormat format;
    bool (*read)(Span file, FileHeader& header);
};
constexpr HeaderRow c_aHeaders[]
    = {{ImageFormat::Pcx, ReadPcxHeader}, {ImageFormat::Dcx, ReadDcxHeader},   {ImageFormat::Tga, ReadTgaHeader},
       {ImageFormat::Sgi, ReadSgiHeader}, {ImageFormat::Pict, ReadPictHeader}, {ImageFormat::Pntg, ReadPntgHeader}};

std::uint32_t KeyOf(std::uint8_t blue, std::uint8_t green, std::uint8_t red)
{
    return blue | green << 8 | static_cast<std::uint32_t>(red) << 16;
}

/// The picture's pixels as indices of the file's palette; false at the first colour that does not stand there.
bool ToIndices(const LBitmapBase& source, const FileHeader& header, LBitmapBase& out)
{
    std::unordered_map<std::uint32_t, std::uint8_t> indices; // of equal entries the first
    for (std::size_t i = 0; i < header.palette.size(); i++)
        indices.try_emplace(KeyOf(header.palette[i].rgbBlue, header.palette[i].rgbGreen, header.palette[i].rgbRed),
                            static_cast<std::uint8_t>(i));
    if (!out.Create(source.GetWidth(), source.GetHeight(), header.nBits, ORDER_BGRORGRAY, header.palette))
        return false;
    const auto palette = source.Palette();
    for (int y = 0; y < source.GetHeight(); y++) {
        const std::uint8_t* p = source.Row(y);
        std::uint8_t* pOut = out.WriteRow(y);
        std::uint32_t nLast = ~0U;
        for (int x = 0; x < source.GetWidth(); x++) {
            std::uint32_t nKey = 0;
            if (palette.empty()) {
                nKey = KeyOf(p[0], p[1], p[2]);
                p += 3;
            } else {
                const RGBQUAD& color = palette[*p++];
                nKey = KeyOf(color.rgbBlue, color.rgbGreen, color.rgbRed);
            }
            if (nKey == nLast) {
                pOut[x] = pOut[x - 1];
                continue;
            }
            const auto it = indices.find(nKey);
            if (it == indices.end())
                return false;
            pOut[x] = it->second;
            nLast = nKey;
        }
    }
    return true;
}

} // namespace

bool ReadFileHeader(ImageFormat format, std::span<const std::uint8_t> file, FileHeader& header)
{
    header = FileHeader();
    for (const HeaderRow& row : c_aHeaders)
        if (row.format == format)
            return row.read(file, header);
    return false;
}

void MatchFileHeader(const FileHeader& header, LBitmapBase& bitmap)
{
    const int nXDpi = bitmap.GetXResolution() > 0 ? bitmap.GetXResolution() : header.nXDpi;
    const int nYDpi = bitmap.GetYResolution() > 0 ? bitmap.GetYResolution() : header.nYDpi;
    if (header.nBits > 0 && header.nBits <= 8 && header.palette.size() == std::size_t{1} << header.nBits) {
        LBitmapBase indexed;
        if (ToIndices(bitmap, header, indexed)) {
            NormalizeBilevel(indexed);
            indexed.SetFileName(bitmap.GetFileName());
            bitmap = indexed;
        }
    }
    bitmap.SetResolution(nXDpi, nYDpi);
}

} // namespace kestrune
