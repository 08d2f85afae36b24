#include "doc/files/PcxWriter.h"

#include "doc/files/ByteWriter.h"

namespace kestrune {

namespace {

constexpr std::size_t c_nHeader = 128;
constexpr std::size_t c_nGreatestRun = 63;
constexpr unsigned c_nRunMark = 0xC0;

/// Runs end with the plane's row, as the format asks. A single byte that looks like a run's count becomes a run of one.
void EncodePlane(std::span<const std::uint8_t> plane, CByteWriter& w)
{
    for (std::size_t i = 0; i < plane.size();) {
        std::size_t nRun = 1;
        while (i + nRun < plane.size() && nRun < c_nGreatestRun && plane[i + nRun] == plane[i])
            nRun++;
        if (nRun > 1 || plane[i] >= c_nRunMark)
            w.U8(c_nRunMark | static_cast<unsigned>(nRun));
        w.U8(plane[i]);
        i += nRun;
    }
}

} // namespace

int WritePcx(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    constexpr int c_nMaxSide = 65534;
    const int nWidth = bitmap.GetWidth(), nHeight = bitmap.GetHeight();
    if (bitmap.GetBitsPerPixel() != 24 || nWidth > c_nMaxSide || nHeight > c_nMaxSide)
        return IMG_ERROR_BITS;
    const std::size_t nStart = out.size();
    const unsigned nPlaneBytes = static_cast<unsigned>(nWidth + 1) / 2 * 2;
    CByteWriter w(out);
    w.U8(10);
    w.U8(5); // version with true colour
    w.U8(1); // run-length coded
    w.U8(8); // bits a pixel of one plane
    w.U16LE(0);
    w.U16LE(0);
    w.U16LE(static_cast<unsigned>(nWidth - 1));
    w.U16LE(static_cast<unsigned>(nHeight - 1));
    w.U16LE(static_cast<unsigned>(bitmap.GetXResolution()));
    w.U16LE(static_cast<unsigned>(bitmap.GetYResolution()));
    w.Zeros(48 + 1);
    w.U8(3); // planes
    w.U16LE(nPlaneBytes);
    w.U16LE(1); // colour, not grey
    w.Zeros(c_nHeader - (w.Size() - nStart));

    std::vector<std::uint8_t> aPlane(nPlaneBytes, 0);
    for (int y = 0; y < nHeight; y++)
        for (int iChannel = 2; iChannel >= 0; iChannel--) { // red first
            const std::uint8_t* p = bitmap.Row(y) + iChannel;
            for (int x = 0; x < nWidth; x++)
                aPlane[x] = p[static_cast<std::size_t>(x) * 3];
            EncodePlane(aPlane, w);
        }
    return IMG_SUCCESS;
}

} // namespace kestrune
