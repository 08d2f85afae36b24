// The blur of the menu: a mean of 3 x 3, the picture's edge standing for what lies beyond it.
#include "base/Random.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <vector>

namespace kestrune {

void RunBlur(const FilterRun& run)
{
    CFilterTarget target(run);
    if (target.IsEmpty())
        return;
    // A number is drawn for every byte and compared with a limit that none reaches. The result knows nothing of it; the
    // state of the source after the filter does.
    Srand(ClockSeed());
    SkipRand(static_cast<std::uint64_t>(target.RowBytes()) * static_cast<std::uint64_t>(target.Height()));
    target.WriteRows(16, [&](int y0, int y1) {
        std::vector<std::uint16_t> sums(static_cast<std::size_t>(target.RowBytes()) + 6);
        for (int y = y0; y < y1; ++y) {
            const std::uint8_t* const apRows[] = {target.Row(std::max(y - 1, 0)), target.Row(y),
                                                  target.Row(std::min(y + 1, target.Height() - 1))};
            BoxRow(apRows, sums.data(), target.OutRow(y), static_cast<std::size_t>(target.RowBytes()));
            target.Finish(y);
        }
    });
}

} // namespace kestrune
