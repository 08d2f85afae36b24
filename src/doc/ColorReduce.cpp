#include "doc/ColorReduce.h"

#include "base/ParallelRows.h"
#include "doc/NearestColor.h"
#include "doc/Palettes.h"
#include "doc/Quantise.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kestrune {

namespace {

/// Everything that mapping one row needs to know.
struct Mapping {
    const LBitmapBase& bitmap;
    std::span<const RGBQUAD> palette;
    CNearestColor nearest;
    bool bGrey; ///< the palette holds greys alone

    Mapping(const LBitmapBase& from, std::span<const RGBQUAD> colors)
        : bitmap(from)
        , palette(colors)
        , nearest(colors)
        , bGrey(std::all_of(colors.begin(), colors.end(),
                            [](const RGBQUAD& q) { return q.rgbRed == q.rgbGreen && q.rgbGreen == q.rgbBlue; }))
    {
    }

    /// The wanted colour of a pixel: blue, green, red.
    std::array<int, 3> Wanted(const std::uint8_t* p) const
    {
        if (!bGrey)
            return {p[0], p[1], p[2]};
        const int v = Luminance(p[2], p[1], p[0]);
        return {v, v, v};
    }
    int Find(const std::array<int, 3>& bgr) const
    {
        return nearest.Find(std::clamp(bgr[2], 0, 255), std::clamp(bgr[1], 0, 255), std::clamp(bgr[0], 0, 255));
    }
};

void MapNearest(const Mapping& map, CBandStore& target)
{
    ParallelRows(target.Rows(), 16, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            const std::uint8_t* p = map.bitmap.Row(y);
            std::uint8_t* pOut = target.WriteRow(y);
            for (int x = 0; x < map.bitmap.GetWidth(); x++, p += 3)
                pOut[x] = static_cast<std::uint8_t>(map.Find(map.Wanted(p)));
        }
    });
}

/// Entry (x, y) of the 8 x 8 threshold matrix, 0..63: the bits of x ^ y and y, the lowest first, woven together.
constexpr int BayerLevel(int x, int y)
{
    int v = 0;
    for (int i = 0; i < 3; i++)
        v |= (((x ^ y) >> i & 1) << (5 - 2 * i)) | ((y >> i & 1) << (4 - 2 * i));
    return v;
}
static_assert(BayerLevel(0, 0) == 0 && BayerLevel(1, 1) == 16 && BayerLevel(1, 0) == 32 && BayerLevel(0, 1) == 48);

/// How far apart neighbouring entries lie along one channel (0 blue, 1 green, 2 red): the threshold must reach from one to the
/// next, no further. The middle one of all entries' steps, so that a few greys in a cube of colours don't count.
int SpreadOf(std::span<const RGBQUAD> palette, int nChannel)
{
    std::vector<int> steps;
    for (const RGBQUAD& from : palette) {
        int nLeast = 256;
        for (const RGBQUAD& to : palette) {
            const int apart[3] = {to.rgbBlue - from.rgbBlue, to.rgbGreen - from.rgbGreen, to.rgbRed - from.rgbRed};
            const int nStep = std::abs(apart[nChannel]);
            const int nDistance = apart[0] * apart[0] + apart[1] * apart[1] + apart[2] * apart[2];
            if (nStep > 0 && 4 * nStep * nStep > nDistance) // lies mostly this way
                nLeast = std::min(nLeast, nStep);
        }
        if (nLeast < 256)
            steps.push_back(nLeast);
    }
    if (steps.empty())
        return 0;
    std::nth_element(steps.begin(), steps.begin() + steps.size() / 2, steps.end());
    return steps[steps.size() / 2];
}

void MapOrdered(const Mapping& map, CBandStore& target)
{
    const int spread[3] = {SpreadOf(map.palette, 0), SpreadOf(map.palette, 1), SpreadOf(map.palette, 2)};
    std::array<std::array<std::array<int, 3>, 8>, 8> offset; // thresholds about zero
    for (int y = 0; y < 8; y++)
        for (int x = 0; x < 8; x++)
            for (int c = 0; c < 3; c++)
                offset[y][x][c] = (2 * BayerLevel(x, y) - 63) * spread[c] / 128;
    ParallelRows(target.Rows(), 16, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            const std::uint8_t* p = map.bitmap.Row(y);
            std::uint8_t* pOut = target.WriteRow(y);
            for (int x = 0; x < map.bitmap.GetWidth(); x++, p += 3) {
                std::array<int, 3> bgr = map.Wanted(p);
                for (int c = 0; c < 3; c++)
                    bgr[c] += offset[y & 7][x & 7][c];
                pOut[x] = static_cast<std::uint8_t>(map.Find(bgr));
            }
        }
    });
}

/// Floyd-Steinberg, every other row from right to left so that no worms run one way. Each error is split into four whole
/// parts that add up to it: the mean of an area is kept. Rows hang on each other, so this runs on one core.
void MapDiffused(const Mapping& map, CBandStore& target)
{
    // A colour that the palette cannot reach leaves an error at every pixel; it may not grow without end and smear over
    // what follows.
    constexpr int c_nOvershoot = 96;
    const int nWidth = map.bitmap.GetWidth();
    std::vector<std::array<int, 3>> here(nWidth + 2), below(nWidth + 2); // errors, one pixel of margin on each side
    for (int y = 0; y < target.Rows(); y++) {
        std::fill(below.begin(), below.end(), std::array<int, 3>{});
        const std::uint8_t* pRow = map.bitmap.Row(y);
        std::uint8_t* pOut = target.WriteRow(y);
        const int nStep = y & 1 ? -1 : 1;
        for (int i = 0, x = y & 1 ? nWidth - 1 : 0; i < nWidth; i++, x += nStep) {
            std::array<int, 3> bgr = map.Wanted(pRow + x * 3);
            for (int c = 0; c < 3; c++)
                bgr[c] = std::clamp(bgr[c] + here[x + 1][c], -c_nOvershoot, 255 + c_nOvershoot);
            const int iColor = map.Find(bgr);
            pOut[x] = static_cast<std::uint8_t>(iColor);
            const RGBQUAD& q = map.palette[iColor];
            const int got[3] = {q.rgbBlue, q.rgbGreen, q.rgbRed};
            for (int c = 0; c < 3; c++) {
                const int nError = bgr[c] - got[c];
                const int nNext = nError * 7 >> 4, nBehind = nError * 3 >> 4, nUnder = nError * 5 >> 4;
                here[x + 1 + nStep][c] += nNext;
                below[x + 1 - nStep][c] += nBehind;
                below[x + 1][c] += nUnder;
                below[x + 1 + nStep][c] += nError - nNext - nBehind - nUnder;
            }
        }
        std::swap(here, below);
    }
}

} // namespace

std::vector<RGBQUAD> ChoosePalette(const LBitmapBase& bitmap, int nBits, std::uint32_t dwFlags, std::span<const RGBQUAD> user)
{
    const int nColors = 1 << nBits;
    if ((dwFlags & CRF_USERPALETTE) && !user.empty())
        return {user.begin(), user.begin() + std::min<std::size_t>(user.size(), nColors)};
    if (dwFlags & CRF_GRAYPALETTE)
        return GreyRamp(nColors);
    if ((dwFlags & CRF_NETSCAPEPALETTE) && nBits == 8)
        return WebPalette();
    if ((dwFlags & CRF_OPTIMIZEDPALETTE) || (nBits > 1 && !(dwFlags & (CRF_FIXEDPALETTE | CRF_NETSCAPEPALETTE))))
        return OptimisedPalette(bitmap, nColors);
    return nBits == 1 ? GreyRamp(2) : nBits == 4 ? SystemPalette() : CubePalette();
}

void MapToPalette(const LBitmapBase& bitmap, std::span<const RGBQUAD> palette, std::uint32_t dwFlags, CBandStore& target)
{
    const Mapping map(bitmap, palette);
    if (dwFlags & CRF_NODITHER)
        MapNearest(map, target);
    else if (dwFlags & CRF_ERRORDIFFUSION)
        MapDiffused(map, target);
    else if (dwFlags & CRF_ORDEREDDITHER)
        MapOrdered(map, target);
    else
        MapNearest(map, target);
}

} // namespace kestrune
