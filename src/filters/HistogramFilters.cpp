// Normalize and Equalize: one look at the whole working area, then tables.
#include "base/ParallelRows.h"
#include "filters/ByteTables.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <mutex>

namespace kestrune {

namespace {

using Histograms = std::array<std::array<int, 256>, 3>; ///< blue, green, red

void CountRow(const std::uint8_t* pRow, int nPixels, Histograms (&parts)[2])
{
    // Two sets in turn: neighbours are often equal, and an entry must be stored before it can be read again.
    int x = 0;
    for (; x + 2 <= nPixels; x += 2, pRow += 6)
        for (int c = 0; c < 3; ++c) {
            ++parts[0][c][pRow[c]];
            ++parts[1][c][pRow[c + 3]];
        }
    for (; x < nPixels; ++x, pRow += 3)
        for (int c = 0; c < 3; ++c)
            ++parts[0][c][pRow[c]];
}

Histograms CountBytes(const CFilterTarget& target)
{
    Histograms total{};
    std::mutex mutex;
    ParallelRows(target.Height(), 64, [&](int y0, int y1) {
        Histograms parts[2] = {};
        for (int y = y0; y < y1; ++y)
            CountRow(target.Row(y), target.Width(), parts);
        const std::lock_guard lock(mutex);
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < 256; ++i)
                total[c][i] += parts[0][c][i] + parts[1][c][i];
    });
    return total;
}

/// Cuts a channel's histogram into 256 parts of like weight: their first bytes, 256 at the end.
std::array<int, 257> MakePartition(const std::array<int, 256>& histogram, double fMean)
{
    std::array<int, 257> p{};
    p[256] = 256;
    const auto at = [&](int i) { return i < 256 ? histogram[i] : 0; };
    int k = 0;
    int nSum = at(0) + at(1);
    for (int j = 1; j < 256; ++j) {
        const double fWanted = j * fMean;
        while (nSum <= fWanted && k < 256)
            nSum += at(++k + 1);
        const int nBefore = nSum - at(k);
        p[j] = nSum - fWanted <= nBefore / 2.0 ? k + 1 : k;
    }
    return p;
}

ByteTable MakeTable(const std::array<int, 257>& partition)
{
    ByteTable table;
    for (int i = 0; i < 256; ++i) {
        const int u = static_cast<int>(i / 255.0 * 255.0 + 0.5);
        int j = 0;
        while (j < 255 && partition[j + 1] <= u)
            ++j;
        table[i] = static_cast<std::uint8_t>(static_cast<int>(j / 255.0 * 255.0));
    }
    return table;
}

void LookUp(CFilterTarget& target, const ChannelTables& tables)
{
    target.WriteRows(16, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            LookUpRow(tables, target.Row(y), target.OutRow(y), target.Width());
            target.Finish(y);
        }
    });
}

} // namespace

/// Stretches the range between the darkest and the brightest byte of all channels.
void RunNormalize(const FilterRun& run)
{
    CFilterTarget target(run);
    if (target.IsEmpty())
        return;
    std::uint8_t nMin = 255;
    std::uint8_t nMax = 0;
    std::mutex mutex;
    ParallelRows(target.Height(), 64, [&](int y0, int y1) {
        std::uint8_t nLow = 255;
        std::uint8_t nHigh = 0;
        for (int y = y0; y < y1; ++y)
            RangeOfRow(target.Row(y), static_cast<std::size_t>(target.RowBytes()), nLow, nHigh);
        const std::lock_guard lock(mutex);
        nMin = std::min(nMin, nLow);
        nMax = std::max(nMax, nHigh);
    });
    const ByteTable table = NormalizeTable(nMin, nMax);
    LookUp(target, {table, table, table});
}

/// Each channel gets a flat histogram of its own. The mean is that of a histogram of the brightest channel, whose total is
/// the number of pixels.
void RunEqualize(const FilterRun& run)
{
    CFilterTarget target(run);
    if (target.IsEmpty())
        return;
    const Histograms histograms = CountBytes(target);
    const double fMean = static_cast<double>(target.Width()) * target.Height() / 256.0;
    ChannelTables tables;
    for (int c = 0; c < 3; ++c)
        tables[c] = MakeTable(MakePartition(histograms[c], fMean));
    LookUp(target, tables);
}

} // namespace kestrune
