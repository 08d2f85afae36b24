#include "doc/files/PsdWriter.h"

#include "doc/files/ByteWriter.h"
#include "doc/files/PackBits.h"
#include "doc/files/PsdStructure.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nMaxPlainSide = 30000;

void WriteResolution(CByteWriter& w, int nXDpi, int nYDpi)
{
    constexpr unsigned c_nResolution = 1005, c_nBody = 16, c_nPerInch = 1, c_nInches = 1;
    if (nXDpi <= 0 || nYDpi <= 0) {
        w.U32BE(0); // unknown: no resources
        return;
    }
    w.U32BE(4 + 2 + 2 + 4 + c_nBody);
    w.Text("8BIM");
    w.U16BE(c_nResolution);
    w.U16BE(0); // no name
    w.U32BE(c_nBody);
    for (int nDpi : {nXDpi, nYDpi}) {
        w.U32BE(static_cast<std::uint32_t>(std::min(nDpi, 0x7FFF)) << 16);
        w.U16BE(c_nPerInch);
        w.U16BE(c_nInches);
    }
}

} // namespace

int WritePsd(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24)
        return IMG_ERROR_BITS;
    const int nWidth = bitmap.GetWidth(), nHeight = bitmap.GetHeight();
    const bool bBig = nWidth > c_nMaxPlainSide || nHeight > c_nMaxPlainSide;
    CByteWriter w(out);
    w.Text("8BPS");
    w.U16BE(bBig ? 2 : 1);
    w.Zeros(6);
    w.U16BE(3);
    w.U32BE(static_cast<std::uint32_t>(nHeight));
    w.U32BE(static_cast<std::uint32_t>(nWidth));
    w.U16BE(8);
    w.U16BE(PSD_RGB);
    w.U32BE(0); // no palette
    WriteResolution(w, bitmap.GetXResolution(), bitmap.GetYResolution());
    w.Zeros(bBig ? 8 : 4); // no layers
    w.U16BE(1); // run-length coded

    const std::size_t nCount = bBig ? 4 : 2;
    std::size_t nCountAt = w.Size();
    w.Zeros(nCount * 3 * static_cast<std::size_t>(nHeight));
    std::vector<std::uint8_t> aPlane(static_cast<std::size_t>(nWidth));
    for (int iChannel = 2; iChannel >= 0; iChannel--) // red first
        for (int y = 0; y < nHeight; y++) {
            const std::uint8_t* p = bitmap.Row(y) + iChannel;
            for (auto& value : aPlane) {
                value = *p;
                p += 3;
            }
            const std::size_t nStart = w.Size();
            AppendPackBits(aPlane, out);
            const std::size_t nBytes = w.Size() - nStart;
            if (bBig)
                w.PatchU32BE(nCountAt, static_cast<std::uint32_t>(nBytes));
            else
                w.PatchU16BE(nCountAt, static_cast<unsigned>(nBytes));
            nCountAt += nCount;
        }
    return IMG_SUCCESS;
}

} // namespace kestrune
