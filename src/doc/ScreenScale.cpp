#include "doc/ScreenScale.h"

#include "base/ParallelRows.h"
#include "doc/ScreenKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

/// Rows of the target, from the corner of the rectangle that is drawn.
struct Target {
    std::uint32_t* pOut;
    std::ptrdiff_t nStrideBytes;

    std::uint32_t* Row(int i) const
    {
        return reinterpret_cast<std::uint32_t*>(reinterpret_cast<std::uint8_t*>(pOut) + i * nStrideBytes);
    }
};

int SourceOf(int nDest, double fZoom, int nSize)
{
    return std::min(static_cast<int>(nDest / fZoom), nSize - 1);
}

/// So many rows are worth telling another core to. A dab's few pixels are drawn sooner than another core wakes up.
int RowsAtOnce(int nWidth, int nAtLeast)
{
    constexpr int c_nPixelsAtOnce = 32768;
    return std::max(nAtLeast, c_nPixelsAtOnce / std::max(nWidth, 1));
}

void DrawPlain(const LBitmapBase& bitmap, const CRect& rc, const Target& target, const ScreenKernels& kernels)
{
    ParallelRows(rc.Height(), RowsAtOnce(rc.Width(), 32), [&](int y0, int y1) {
        for (int y = y0; y < y1; y++)
            kernels.convert(bitmap.RowPart(rc.top + y, rc.left, rc.right) + rc.left * 3, target.Row(y), rc.Width());
    });
}

/// Each picture row is drawn once and copied for the rows below that show it too.
void DrawEnlarged(const LBitmapBase& bitmap, double fZoom, const CRect& rc, const Target& target, const ScreenKernels& kernels)
{
    const int nFirst = SourceOf(rc.left, fZoom, bitmap.GetWidth());
    std::vector<ScreenRun> runs(SourceOf(rc.right - 1, fZoom, bitmap.GetWidth()) - nFirst + 1);
    for (int x = 0; x < rc.Width(); x++) {
        ScreenRun& run = runs[SourceOf(rc.left + x, fZoom, bitmap.GetWidth()) - nFirst];
        if (run.nEnd == 0)
            run.nStart = x;
        run.nEnd = x + 1;
    }
    const int nCount = static_cast<int>(runs.size());
    ParallelRows(rc.Height(), RowsAtOnce(rc.Width(), 32), [&](int y0, int y1) {
        std::vector<std::uint32_t> pixels(runs.size());
        int nDrawn = -1;
        for (int y = y0; y < y1; y++) {
            const int nSource = SourceOf(rc.top + y, fZoom, bitmap.GetHeight());
            if (nSource == nDrawn) {
                std::memcpy(target.Row(y), target.Row(y - 1), static_cast<std::size_t>(rc.Width()) * 4);
                continue;
            }
            kernels.convert(bitmap.RowPart(nSource, nFirst, nFirst + nCount) + nFirst * 3, pixels.data(), nCount);
            kernels.spread(pixels.data(), runs, target.Row(y));
            nDrawn = nSource;
        }
    });
}

/// The taps of the scaled pixels [nFrom, nTo) along an axis of `nSize` source pixels.
struct Taps {
    std::vector<ScreenTap> taps;
    std::vector<std::uint16_t> weights;

    Taps(int nFrom, int nTo, double fZoom, int nSize)
    {
        const std::size_t nMost = static_cast<std::size_t>(std::ceil(1 / fZoom)) + 2;
        weights.resize(nMost * (nTo - nFrom)); // never grows: the taps point into it
        std::uint16_t* pWeights = weights.data();
        for (int i = nFrom; i < nTo; i++, pWeights += nMost) {
            const double fLow = std::min<double>(i / fZoom, nSize - 1);
            const double fHigh = std::min<double>((i + 1) / fZoom, nSize);
            const int j0 = static_cast<int>(fLow);
            const int j1 = std::min({static_cast<int>(std::ceil(fHigh)), nSize, j0 + static_cast<int>(nMost)});
            // Differences of the rounded share up to each pixel: whatever the rounding, they add up to 256.
            int nBefore = 0, nCount = 0;
            for (int j = j0; j < j1; j++) {
                const double fShare = j + 1 < j1 ? (j + 1 - fLow) / (fHigh - fLow) : 1.0;
                const int nShare = static_cast<int>(fShare * 256 + 0.5);
                pWeights[j - j0] = static_cast<std::uint16_t>(nShare - nBefore);
                if (nShare > nBefore)
                    nCount = j - j0 + 1;
                nBefore = nShare;
            }
            taps.push_back({j0, nCount, pWeights});
        }
    }
};

void DrawReduced(const LBitmapBase& bitmap, double fZoom, const CRect& rc, const Target& target, const ScreenKernels& kernels)
{
    const Taps across(rc.left, rc.right, fZoom, bitmap.GetWidth());
    const Taps down(rc.top, rc.bottom, fZoom, bitmap.GetHeight());
    const int nOrigin = across.taps.front().nFirst;
    const int nEnd = across.taps.back().nFirst + across.taps.back().nCount;
    const std::size_t nBytes = static_cast<std::size_t>(nEnd - nOrigin) * 3;
    ParallelRows(rc.Height(), RowsAtOnce(nEnd - nOrigin, 16), [&](int y0, int y1) {
        std::vector<std::uint16_t> mixed(nBytes + 4);
        std::vector<const std::uint8_t*> rows;
        for (int y = y0; y < y1; y++) {
            const ScreenTap& tap = down.taps[y];
            rows.resize(tap.nCount);
            for (int k = 0; k < tap.nCount; k++)
                rows[k] = bitmap.RowPart(tap.nFirst + k, nOrigin, nEnd) + nOrigin * 3;
            kernels.mixRows(rows, tap.pWeights, mixed.data(), nBytes);
            kernels.mixAcross(mixed.data(), across.taps, nOrigin, target.Row(y));
        }
    });
}

} // namespace

void ScaleToScreen(const LBitmapBase& bitmap, double fZoom, CRect rcDest, std::uint32_t* pOut, std::ptrdiff_t nStrideBytes,
                   ScreenForm form)
{
    if (bitmap.GetBitsPerPixel() != 24 || !(fZoom > 0))
        return;
    const CRect rcPicture{0, 0, static_cast<int>(bitmap.GetWidth() * fZoom), static_cast<int>(bitmap.GetHeight() * fZoom)};
    const CRect rc = Intersect(rcDest, rcPicture);
    if (rc.IsEmpty())
        return;
    Target target{pOut, nStrideBytes};
    target.pOut = target.Row(rc.top - rcDest.top) + (rc.left - rcDest.left);
    const ScreenKernels kernels = form == ScreenForm::Plain ? PlainScreenKernels() : VectorScreenKernels();
    if (fZoom == 1)
        DrawPlain(bitmap, rc, target, kernels);
    else if (fZoom > 1)
        DrawEnlarged(bitmap, fZoom, rc, target, kernels);
    else
        DrawReduced(bitmap, fZoom, rc, target, kernels);
}

} // namespace kestrune
