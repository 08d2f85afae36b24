#pragma once

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace kestrune {

/// Runs `work(first, end)` over the rows [0, nRows) on all cores, in pieces of at least `nGrain` rows.
/// Rows must not depend on each other: the result may never depend on how they are cut.
template <typename Work>
void ParallelRows(int nRows, int nGrain, const Work& work)
{
    if (nRows <= nGrain) {
        if (nRows > 0)
            work(0, nRows);
        return;
    }
    tbb::parallel_for(tbb::blocked_range<int>(0, nRows, nGrain),
                      [&](const tbb::blocked_range<int>& r) { work(r.begin(), r.end()); });
}

} // namespace kestrune
