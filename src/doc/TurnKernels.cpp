#include "doc/TurnKernels.h"

#include <algorithm>
#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "doc/TurnKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

#ifndef KESTRUNE_PLAIN_TURN // the file is read many times over
#define KESTRUNE_PLAIN_TURN
namespace kestrune {
namespace {

void MovePixel(const std::uint8_t* pFrom, std::uint8_t* pTo)
{
    pTo[0] = pFrom[0];
    pTo[1] = pFrom[1];
    pTo[2] = pFrom[2];
}

/// Pixels [x0, nWidth) of the mirrored row.
void PlainMirrorFrom(const std::uint8_t* pRow, std::uint8_t* pOut, int x0, int nWidth)
{
    for (int x = x0; x < nWidth; x++)
        MovePixel(pRow + (nWidth - 1 - x) * 3, pOut + x * 3);
}

void PlainMirrorRow(const std::uint8_t* pRow, std::uint8_t* pOut, int nWidth)
{
    PlainMirrorFrom(pRow, pOut, 0, nWidth);
}

/// The columns [x0, x1) of the lines [y0, y1) of a block.
void PlainTurnPart(const TurnKernels::Block& block, int x0, int x1, int y0, int y1)
{
    for (int dx = x0; dx < x1; dx++) {
        const std::uint8_t* pRow = block.aRows[dx];
        for (int dy = y0; dy < y1; dy++)
            MovePixel(pRow + (block.xFirst + dy * block.nStep) * 3, block.aOut[dy] + dx * 3);
    }
}

void PlainTurnBlock(const TurnKernels::Block& block)
{
    PlainTurnPart(block, 0, block.nColumns, 0, block.nLines);
}

} // namespace
} // namespace kestrune
#endif

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

void MirrorRow(const std::uint8_t* pRow, std::uint8_t* pOut, int nWidth)
{
    PlainMirrorRow(pRow, pOut, nWidth);
}
void TurnBlock(const TurnKernels::Block& block)
{
    PlainTurnBlock(block);
}

#else

/// Five pixels a step. The load begins a byte before them and the store ends a byte behind them, which the next step overwrites.
void MirrorRow(const std::uint8_t* pRow, std::uint8_t* pOut, int nWidth)
{
    const hn::FixedTag<std::uint8_t, 16> d8;
    alignas(16) constexpr std::uint8_t c_aOrder[16] = {13, 14, 15, 10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3, 0};
    const auto order = hn::Load(d8, c_aOrder);
    int x = 0;
    for (; x + 6 <= nWidth; x += 5)
        hn::StoreU(hn::TableLookupBytes(hn::LoadU(d8, pRow + (nWidth - 5 - x) * 3 - 1), order), d8, pOut + x * 3);
    PlainMirrorFrom(pRow, pOut, x, nWidth);
}

/// Blocks of four by four pixels: spread to four bytes a pixel, transposed as 32-bit lanes, packed again.
void TurnBlock(const TurnKernels::Block& block)
{
    const hn::FixedTag<std::uint8_t, 16> d8;
    const hn::FixedTag<std::uint32_t, 4> d32;
    const hn::FixedTag<std::uint64_t, 2> d64;
    alignas(16) constexpr std::uint8_t c_aSpread[16] = {0, 1, 2, 0, 3, 4, 5, 0, 6, 7, 8, 0, 9, 10, 11, 0};
    alignas(16) constexpr std::uint8_t c_aPack[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 0, 0, 0, 0};
    const auto spread = hn::Load(d8, c_aSpread);
    const auto pack = hn::Load(d8, c_aPack);
    // A load and a store move 16 bytes where 12 are meant: into the sixth pixel. Lines are taken in the order of the columns that they
    // come from, so that a step of -1 reads in the same order and stores the other way round.
    const int nWhole = std::min(block.nColumns & ~3, (block.nRoom - 2) & ~3);
    const int xLow = block.nStep > 0 ? block.xFirst : block.xFirst - (block.nLines - 1);
    const int nFit = std::min(block.nLines, block.nRowPixels - 6 - xLow + 4) & ~3; // lines whose loads stay inside their row
    if (nWhole <= 0 || nFit <= 0) {
        PlainTurnBlock(block);
        return;
    }
    const auto Out = [&](int i, int dx) { return block.aOut[block.nStep > 0 ? i : block.nLines - 1 - i] + dx * 3; };
    for (int dx = 0; dx < nWhole; dx += 4) {
        const std::uint8_t* const* aRows = block.aRows + dx;
        for (int i = 0; i < nFit; i += 4) {
            const std::ptrdiff_t nOffset = static_cast<std::ptrdiff_t>(xLow + i) * 3;
            const auto Lanes = [&](int k) HWY_ATTR { return hn::BitCast(d32, hn::TableLookupBytes(hn::LoadU(d8, aRows[k] + nOffset), spread)); };
            const auto a = Lanes(0), b = Lanes(1), c = Lanes(2), d = Lanes(3);
            const auto ab0 = hn::BitCast(d64, hn::InterleaveLower(d32, a, b)), ab1 = hn::BitCast(d64, hn::InterleaveUpper(d32, a, b));
            const auto cd0 = hn::BitCast(d64, hn::InterleaveLower(d32, c, d)), cd1 = hn::BitCast(d64, hn::InterleaveUpper(d32, c, d));
            const auto Put = [&](int k, auto lanes) HWY_ATTR { hn::StoreU(hn::TableLookupBytes(hn::BitCast(d8, lanes), pack), d8, Out(i + k, dx)); };
            Put(0, hn::InterleaveLower(d64, ab0, cd0));
            Put(1, hn::InterleaveUpper(d64, ab0, cd0));
            Put(2, hn::InterleaveLower(d64, ab1, cd1));
            Put(3, hn::InterleaveUpper(d64, ab1, cd1));
        }
    }
    if (nFit < block.nLines) { // the last few columns of the rows: lines at one end of the block
        const int y0 = block.nStep > 0 ? nFit : 0, y1 = block.nStep > 0 ? block.nLines : block.nLines - nFit;
        PlainTurnPart(block, 0, nWhole, y0, y1);
    }
    PlainTurnPart(block, nWhole, block.nColumns, 0, block.nLines);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(MirrorRow);
HWY_EXPORT(TurnBlock);

TurnKernels PlainTurnKernels()
{
    return {PlainMirrorRow, PlainTurnBlock};
}

TurnKernels VectorTurnKernels()
{
    return {[](const std::uint8_t* pRow, std::uint8_t* pOut, int nWidth) { HWY_DYNAMIC_DISPATCH(MirrorRow)(pRow, pOut, nWidth); },
            [](const TurnKernels::Block& block) { HWY_DYNAMIC_DISPATCH(TurnBlock)(block); }};
}

} // namespace kestrune
#endif
