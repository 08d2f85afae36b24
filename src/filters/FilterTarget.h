#pragma once

#include "base/Geometry.h"
#include "doc/Bitmap.h"
#include "filters/FilterTable.h"

#include <cstdint>
#include <functional>

namespace kestrune {

/// Where a run reads and writes: resolves preview, applied run and selection once for all operations.
///
/// The source is a copy that shares its rows with the picture, so a filter may read any row while it writes others.
class CFilterTarget {
public:
    /// An applied run writes the selection bitmap, or the working bitmap. A preview's rectangle is cut to the picture.
    explicit CFilterTarget(const FilterRun& run);

    /// True when there is nothing to do: an empty rectangle, or bitmaps that are not 24 bits deep.
    bool IsEmpty() const { return m_rc.IsEmpty(); }
    /// The rectangle, in pixels of the source; an applied run's is the whole of it.
    const CRect& Rect() const { return m_rc; }
    int Width() const { return m_rc.Width(); }
    int Height() const { return m_rc.Height(); }
    int RowBytes() const { return m_rc.Width() * 3; }
    /// Size of what the rectangle is a part of.
    int SourceWidth() const { return m_source.GetWidth(); }
    int SourceHeight() const { return m_source.GetHeight(); }

    /// Row `y` of the rectangle (0 is its top), from its left edge on: `RowBytes` bytes, blue, green, red.
    const std::uint8_t* Row(int y) const { return m_source.Row(m_rc.top + y) + static_cast<std::size_t>(m_rc.left) * 3; }

    /// Makes the rows to fill writable from any thread; their contents are undefined then. `WriteRows` does it by itself.
    void Prepare();
    /// Calls `work(y0, y1)` for pieces of the rectangle's rows on all cores; `work` fills each of its rows from `OutRow` on
    /// and says `Finish`. Pieces hold at least `nGrain` rows.
    void WriteRows(int nGrain, const std::function<void(int, int)>& work);
    /// The row to fill, from the rectangle's left edge on.
    std::uint8_t* OutRow(int y);
    /// Merges a preview's row through the mask; to be called once when a row is filled.
    void Finish(int y);

private:
    const FilterRun& m_run;
    LBitmapBase m_source;
    LBitmapBase* m_pOut = nullptr;
    CRect m_rc;
    bool m_bMerge = false;
};

/// Applies a function to each row of the run: `row(in, out, pixels)`, `in` and `out` being different rows.
void FilterEachRow(const FilterRun& run, const std::function<void(const std::uint8_t*, std::uint8_t*, int)>& row);

} // namespace kestrune
