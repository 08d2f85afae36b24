#include "filters/ChannelHistograms.h"

#include "base/ParallelRows.h"
#include "doc/Bitmap.h"

#include <memory>
#include <mutex>

namespace kestrune {

ChannelHistograms CountChannels(const LBitmapBase& bitmap)
{
    constexpr int c_nGrain = 64;
    ChannelHistograms total{};
    if (bitmap.GetBitsPerPixel() != 24)
        return total;
    std::mutex mutex;
    ParallelRows(bitmap.GetHeight(), c_nGrain, [&](int y0, int y1) {
        std::array<std::array<int, 256>, 3> part{}; // blue, green, red
        for (int y = y0; y < y1; y++) {
            const std::uint8_t* p = bitmap.Row(y);
            for (const std::uint8_t* const pEnd = p + bitmap.GetRowBytes(); p < pEnd; p += 3)
                for (int c = 0; c < 3; c++)
                    part[c][p[c]]++;
        }
        const std::lock_guard lock(mutex);
        for (int c = 0; c < 3; c++)
            for (int i = 0; i < 256; i++) {
                total[3 - c][i] += part[c][i];
                total[0][i] += part[c][i];
            }
    });
    return total;
}

} // namespace kestrune
