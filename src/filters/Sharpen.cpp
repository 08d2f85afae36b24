// Sharpening by weights from two tables; rows at the border keep their place but not always their content.
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

struct SharpenTables {
    std::array<std::int32_t, 256> anPositive;
    std::array<std::int32_t, 256> anNegative;
};

SharpenTables MakeTables(int nSharpness)
{
    SharpenTables t;
    const int nDivisor = std::max(100 - nSharpness, 1);
    for (int i = 0; i < 256; ++i) {
        t.anPositive[i] = i * 800 / nDivisor;
        t.anNegative[i] = (t.anPositive[i] + 4 - i * 8) >> 3;
    }
    return t;
}

void LookUp(const std::array<std::int32_t, 256>& table, const std::uint8_t* pRow, std::int32_t* pOut, int nBytes)
{
    for (int i = 0; i < nBytes; ++i)
        pOut[i] = table[pRow[i]];
}

/// The source row that the last output row shows: the walk keeps rows in four slots by their number and ends with what
/// stands in slot 2. A picture of two rows has nothing there and repeats its first one.
int LastRowSource(int nHeight)
{
    if (nHeight < 3)
        return 0;
    return (nHeight - 1 - 2) / 4 * 4 + 2;
}

} // namespace

void RunSharpen(const FilterRun& run)
{
    CFilterTarget target(run);
    const SharpenTables tables = MakeTables(run.values.an[0]);
    const int nHeight = target.Height();
    const int nBytes = target.RowBytes();
    const auto nSize = static_cast<std::size_t>(nBytes);
    target.WriteRows(16, [&](int y0, int y1) {
        std::vector<std::int32_t> scratch(nSize * 5);
        std::int32_t* const pPositive = scratch.data();
        std::int32_t* const pSum = pPositive + nSize;
        std::int32_t* apNegative[3] = {pSum + nSize, pSum + 2 * nSize, pSum + 3 * nSize};
        const auto load = [&](int y, int iSlot) { LookUp(tables.anNegative, target.Row(y), apNegative[iSlot], nBytes); };
        load(std::max(y0 - 1, 0), 0);
        load(y0, 1);
        for (int y = y0; y < y1; ++y) {
            std::uint8_t* const pOut = target.OutRow(y);
            const bool bBorder = y == 0 || y == nHeight - 1;
            std::memcpy(pOut, target.Row(bBorder ? (y == 0 ? 0 : LastRowSource(nHeight)) : y), nSize);
            load(std::min(y + 1, nHeight - 1), 2);
            if (!bBorder) {
                LookUp(tables.anPositive, target.Row(y), pPositive, nBytes);
                SharpenRow(apNegative, pPositive, pSum, pOut, nSize);
            }
            target.Finish(y);
            std::rotate(apNegative, apNegative + 1, apNegative + 3);
        }
    });
}

} // namespace kestrune
