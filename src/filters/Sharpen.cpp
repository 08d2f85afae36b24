// Sharpening by two weights of each byte; rows at the border keep their place but not always their content.
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

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
    const int nDivisor = std::max(100 - run.values.an[0], 1);
    const int nHeight = target.Height();
    const auto nBytes = static_cast<std::size_t>(target.RowBytes());
    target.WriteRows(16, [&](int y0, int y1) {
        // Both weights of three rows: above, own, below.
        std::vector<std::int32_t> scratch(nBytes * 7);
        std::int32_t* apNegative[3];
        std::int32_t* apPositive[3];
        for (std::size_t i = 0; i < 3; ++i) {
            apNegative[i] = scratch.data() + i * nBytes;
            apPositive[i] = scratch.data() + (3 + i) * nBytes;
        }
        const auto load = [&](int y, int i) { SharpenWeights(target.Row(y), nDivisor, apPositive[i], apNegative[i], nBytes); };
        load(std::max(y0 - 1, 0), 0);
        load(y0, 1);
        for (int y = y0; y < y1; ++y) {
            std::uint8_t* const pOut = target.OutRow(y);
            const bool bBorder = y == 0 || y == nHeight - 1;
            std::memcpy(pOut, target.Row(bBorder ? (y == 0 ? 0 : LastRowSource(nHeight)) : y), nBytes);
            load(std::min(y + 1, nHeight - 1), 2);
            if (!bBorder)
                SharpenRow(apNegative, apPositive[1], scratch.data() + 6 * nBytes, pOut, nBytes);
            target.Finish(y);
            std::rotate(apNegative, apNegative + 1, apNegative + 3);
            std::rotate(apPositive, apPositive + 1, apPositive + 3);
        }
    });
}

} // namespace kestrune
