#include "doc/files/Orientation.h"

#include "base/ParallelRows.h"
#include "doc/files/ByteReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

namespace kestrune {

namespace {

/// Turning by rows touches a new cache line for each pixel; squares of this side keep both sides in the cache.
constexpr int c_nBlock = 32;

template <int BYTES>
void TurnBlockRows(const LBitmapBase& source, LBitmapBase& target, int y0, int y1, int nOrientation)
{
    // The source pixel of (x, y): transposed for 5 to 8, then mirrored along either axis.
    const bool bTransposed = nOrientation >= 5;
    const bool bFlipX = nOrientation == 2 || nOrientation == 3 || nOrientation == 7 || nOrientation == 8;
    const bool bFlipY = nOrientation == 3 || nOrientation == 4 || nOrientation == 6 || nOrientation == 7;
    const int nWidth = target.GetWidth(), nSourceWidth = source.GetWidth(), nSourceHeight = source.GetHeight();
    for (int x0 = 0; x0 < nWidth; x0 += c_nBlock) {
        const int x1 = std::min(x0 + c_nBlock, nWidth);
        for (int y = y0; y < y1; y++) {
            std::uint8_t* p = target.WriteRow(y) + static_cast<std::ptrdiff_t>(x0) * BYTES;
            for (int x = x0; x < x1; x++, p += BYTES) {
                int sx = bTransposed ? y : x, sy = bTransposed ? x : y;
                if (bFlipX)
                    sx = nSourceWidth - 1 - sx;
                if (bFlipY)
                    sy = nSourceHeight - 1 - sy;
                std::memcpy(p, source.Row(sy) + static_cast<std::ptrdiff_t>(sx) * BYTES, BYTES);
            }
        }
    }
}

} // namespace

void ApplyOrientation(LBitmapBase& bitmap, int nOrientation)
{
    if (nOrientation < 2 || nOrientation > 8 || !bitmap.IsAllocated())
        return;
    const bool bTransposed = nOrientation >= 5;
    const int nWidth = bTransposed ? bitmap.GetHeight() : bitmap.GetWidth();
    const int nHeight = bTransposed ? bitmap.GetWidth() : bitmap.GetHeight();
    LBitmapBase target;
    target.Create(nWidth, nHeight, bitmap.GetBitsPerPixel(), ORDER_BGRORGRAY, bitmap.Palette());
    target.DetachRows(0, nHeight);
    ParallelRows((nHeight + c_nBlock - 1) / c_nBlock, 1, [&](int b0, int b1) {
        for (int b = b0; b < b1; b++) {
            const int y0 = b * c_nBlock, y1 = std::min(y0 + c_nBlock, nHeight);
            if (bitmap.GetBitsPerPixel() == 24)
                TurnBlockRows<3>(bitmap, target, y0, y1, nOrientation);
            else
                TurnBlockRows<1>(bitmap, target, y0, y1, nOrientation);
        }
    });
    if (bTransposed)
        target.SetResolution(bitmap.GetYResolution(), bitmap.GetXResolution());
    else
        target.SetResolution(bitmap.GetXResolution(), bitmap.GetYResolution());
    bitmap.Copy(target);
}

ExifInfo ReadExif(std::span<const std::uint8_t> block)
{
    constexpr std::uint8_t aMark[] = {'E', 'x', 'i', 'f', 0, 0};
    CByteReader in(block);
    if (in.StartsWith(aMark)) {
        block = block.subspan(sizeof aMark);
        in = CByteReader(block);
    }
    ExifInfo info;
    const std::uint16_t wOrder = in.U16LE();
    if (wOrder != 0x4949 && wOrder != 0x4D4D)
        return info;
    const bool bBig = wOrder == 0x4D4D;
    if (in.U16(bBig) != 42)
        return info;
    in.Seek(in.U32(bBig));
    const int nEntries = in.U16(bBig);
    const auto rational = [&](std::uint32_t nOffset) {
        CByteReader at(block);
        at.Seek(nOffset);
        const double fUpper = at.U32(bBig), fLower = at.U32(bBig);
        return at.Ok() && fLower > 0 ? fUpper / fLower : 0.0;
    };
    double fX = 0, fY = 0;
    int nUnit = 2;
    for (int i = 0; i < nEntries && in.Ok(); i++) {
        const std::uint16_t nTag = in.U16(bBig);
        const std::uint16_t nType = in.U16(bBig);
        in.Skip(4);
        CByteReader value(in.TakeUpTo(4));
        if (nTag == 0x0112 && nType == 3)
            info.nOrientation = value.U16(bBig);
        else if (nTag == 0x0128 && nType == 3)
            nUnit = value.U16(bBig);
        else if (nTag == 0x011A && nType == 5)
            fX = rational(value.U32(bBig));
        else if (nTag == 0x011B && nType == 5)
            fY = rational(value.U32(bBig));
    }
    const auto dpi = [&](double f) {
        f *= nUnit == 3 ? 2.54 : 1.0;
        return nUnit == 1 || !(f >= 1 && f < 100000) ? 0 : static_cast<int>(std::lround(f));
    };
    info.nXResolution = dpi(fX);
    info.nYResolution = dpi(fY);
    if (info.nOrientation < 1 || info.nOrientation > 8)
        info.nOrientation = 1;
    return info;
}

} // namespace kestrune
