#include "doc/PictureTurn.h"

#include "base/ParallelRows.h"
#include "doc/TurnKernels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrune {

namespace {

/// A tile of a quarter turn: so many rows of the source become columns of so many lines of the turned picture. Lines are many, so that
/// what is read of a source row fills its cache lines and few pages are looked up anew; both tiles fit the first two caches.
constexpr int c_nTileColumns = 64;
constexpr int c_nTileLines = 128;

void QuarterTurn(const LBitmapBase& source, LBitmapBase& target, PictureTurn turn, const TurnKernels& kernels)
{
    const int nWidth = source.GetWidth(), nHeight = source.GetHeight();
    const bool bLeft = turn == PictureTurn::Left;
    // Lines are taken in the order in which the source's columns stand in memory.
    ParallelRows(nWidth, c_nTileLines, [&](int nFirst, int nEnd) {
        std::array<const std::uint8_t*, c_nTileColumns> aRows;
        std::array<std::uint8_t*, c_nTileLines> aOut;
        for (int xSource = nFirst; xSource < nEnd; xSource += c_nTileLines) {
            const int nLines = std::min(c_nTileLines, nEnd - xSource);
            const int y0 = bLeft ? nWidth - xSource - nLines : xSource;
            for (int x0 = 0; x0 < nHeight; x0 += c_nTileColumns) {
                const int nColumns = std::min(c_nTileColumns, nHeight - x0);
                for (int i = 0; i < nColumns; i++)
                    aRows[i] = source.Row(bLeft ? x0 + i : nHeight - 1 - x0 - i);
                for (int i = 0; i < nLines; i++)
                    aOut[i] = target.WriteRow(y0 + i) + x0 * 3;
                kernels.turnBlock({aRows.data(), aOut.data(), nColumns, nLines, bLeft ? nWidth - 1 - y0 : y0, bLeft ? -1 : 1,
                                   nWidth, nHeight - x0});
            }
        }
    });
}

/// A bitmap with a palette is on its way to 24 bits: no hot path turns it.
void QuarterTurnIndices(const LBitmapBase& source, LBitmapBase& target, PictureTurn turn)
{
    const int nWidth = source.GetWidth(), nHeight = source.GetHeight();
    for (int y = 0; y < nWidth; y++) {
        std::uint8_t* pOut = target.WriteRow(y);
        for (int x = 0; x < nHeight; x++)
            pOut[x] = turn == PictureTurn::Left ? source.Row(x)[nWidth - 1 - y] : source.Row(nHeight - 1 - x)[y];
    }
}

void MirrorInto(const LBitmapBase& source, LBitmapBase& target, bool bFlip, const TurnKernels& kernels)
{
    const int nWidth = source.GetWidth(), nHeight = source.GetHeight();
    ParallelRows(nHeight, 64, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            const std::uint8_t* pRow = source.Row(bFlip ? nHeight - 1 - y : y);
            if (source.GetBitsPerPixel() == 24)
                kernels.mirrorRow(pRow, target.WriteRow(y), nWidth);
            else
                std::reverse_copy(pRow, pRow + nWidth, target.WriteRow(y));
        }
    });
}

void FlipInto(const LBitmapBase& source, LBitmapBase& target)
{
    ParallelRows(source.GetHeight(), 64, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++)
            std::memcpy(target.WriteRow(y), source.Row(source.GetHeight() - 1 - y), source.GetRowBytes());
    });
}

} // namespace

LBitmapBase TurnedBitmap(const LBitmapBase& source, PictureTurn turn, TurnForm form)
{
    LBitmapBase target;
    if (!source.IsAllocated())
        return target;
    const TurnKernels kernels = form == TurnForm::Plain ? PlainTurnKernels() : VectorTurnKernels();
    const bool bQuarter = turn == PictureTurn::Left || turn == PictureTurn::Right;
    target.Create(bQuarter ? source.GetHeight() : source.GetWidth(), bQuarter ? source.GetWidth() : source.GetHeight(),
                  source.GetBitsPerPixel(), ORDER_BGRORGRAY, source.Palette());
    target.SetFileName(source.GetFileName());
    if (bQuarter)
        target.SetResolution(source.GetYResolution(), source.GetXResolution());
    else
        target.SetResolution(source.GetXResolution(), source.GetYResolution());
    if (bQuarter && source.GetBitsPerPixel() == 24)
        QuarterTurn(source, target, turn, kernels);
    else if (bQuarter)
        QuarterTurnIndices(source, target, turn);
    else if (turn == PictureTurn::Flip)
        FlipInto(source, target);
    else
        MirrorInto(source, target, turn == PictureTurn::Half, kernels);
    return target;
}

void TurnPlane(std::uint8_t* pPlane, int nWidth, int nHeight, PictureTurn turn)
{
    const auto Row = [=](int y) { return pPlane + static_cast<std::size_t>(y) * nWidth; };
    if (turn == PictureTurn::Mirror)
        for (int y = 0; y < nHeight; y++)
            std::reverse(Row(y), Row(y) + nWidth);
    if (turn == PictureTurn::Flip)
        for (int y = 0; y < nHeight / 2; y++)
            std::swap_ranges(Row(y), Row(y) + nWidth, Row(nHeight - 1 - y));
    if (turn == PictureTurn::Half)
        std::reverse(pPlane, pPlane + static_cast<std::size_t>(nWidth) * nHeight);
}

} // namespace kestrune
