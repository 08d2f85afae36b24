// Filters that see one byte of each pixel, its grey or its brightest channel, and set all three by it.
#include "filters/ByteTables.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

using PixelTable = std::array<std::uint32_t, 256>; ///< blue in the low byte, then green, then red
using ByteOfPixel = void (*)(const std::uint8_t*, std::uint8_t*, std::size_t);

/// `pixel(i)` is what a pixel whose byte is `i` becomes.
template <typename Pixel>
void RunByByte(const FilterRun& run, ByteOfPixel byteOf, const Pixel& pixel)
{
    PixelTable table;
    for (int i = 0; i < 256; ++i)
        table[i] = pixel(i);
    CFilterTarget target(run);
    const auto nPixels = static_cast<std::size_t>(target.Width());
    target.WriteRows(16, [&](int y0, int y1) {
        std::vector<std::uint8_t> bytes(nPixels);
        for (int y = y0; y < y1; ++y) {
            byteOf(target.Row(y), bytes.data(), nPixels);
            std::uint8_t* const pOut = target.OutRow(y);
            // Four bytes at once: the next pixel overwrites the fourth.
            for (std::size_t x = 0; x + 1 < nPixels; ++x)
                std::memcpy(pOut + 3 * x, &table[bytes[x]], 4);
            std::memcpy(pOut + 3 * (nPixels - 1), &table[bytes[nPixels - 1]], 3);
            target.Finish(y);
        }
    });
}

constexpr std::uint32_t Pixel(int b, int g, int r)
{
    return static_cast<std::uint32_t>(b) | static_cast<std::uint32_t>(g) << 8 | static_cast<std::uint32_t>(r) << 16;
}

} // namespace

void RunDesaturate(const FilterRun& run)
{
    RunByByte(run, GreyRow, [](int i) { return Pixel(i, i, i); });
}

/// Black and white by the brightest channel.
void RunThreshold(const FilterRun& run)
{
    RunByByte(run, BrightestRow, [&](int i) { return i < run.values.an[0] ? 0u : Pixel(255, 255, 255); });
}

/// A darkened, flattened grey, warmed by tone: red rises and blue falls most in the shadows.
void RunOldPhoto(const FilterRun& run)
{
    const double fAmount = run.values.an[0];
    const ByteTable red = OldPhotoTable(fAmount);
    const ByteTable blue = OldPhotoTable(-fAmount);
    RunByByte(run, GreyRow, [&](int nGrey) {
        const int t = std::clamp((((nGrey * 90) / 100 - 128) * 70) / 100 + 128, 0, 255);
        return Pixel(blue[t], t, red[t]);
    });
}

} // namespace kestrune
