// Maximum and Minimum over a square window that stays inside the rectangle: at the ends it stands still instead of shrinking.
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"
#include "filters/Window.h"

#include <array>
#include <vector>

namespace kestrune {

namespace {

using RowsOp = void (*)(const std::uint8_t* const*, int, std::uint8_t*, std::size_t);

/// Rows first, then columns: each is a small number of rows laid over each other.
void RunExtreme(const FilterRun& run, RowsOp extremeOf)
{
    CFilterTarget target(run);
    const CWindow rows(run.values.an[0], target.Height());
    const CWindow columns(run.values.an[0], target.Width());
    const auto nPlaces = static_cast<std::size_t>(columns.Places()) * 3;
    target.WriteRows(16, [&](int y0, int y1) {
        std::vector<std::uint8_t> column(static_cast<std::size_t>(target.RowBytes()));
        std::array<const std::uint8_t*, CWindow::c_nMost> apRows;
        for (int y = y0; y < y1; ++y) {
            for (int i = 0; i < rows.Size(); ++i)
                apRows[i] = target.Row(rows.Start(y) + i);
            extremeOf(apRows.data(), rows.Size(), column.data(), column.size());
            for (int i = 0; i < columns.Size(); ++i)
                apRows[i] = column.data() + 3 * i;
            extremeOf(apRows.data(), columns.Size(), target.OutRow(y) + 3 * columns.Before(), nPlaces);
            columns.SpreadEnds(target.OutRow(y));
            target.Finish(y);
        }
    });
}

} // namespace

void RunMaximum(const FilterRun& run) { RunExtreme(run, MaxOfRows); }
void RunMinimum(const FilterRun& run) { RunExtreme(run, MinOfRows); }

} // namespace kestrune
