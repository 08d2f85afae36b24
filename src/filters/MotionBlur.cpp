// A one-sided streak: the mean of the pixels on a line that starts at the pixel and goes one way.
#include "base/Geometry.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace kestrune {

namespace {

/// The offsets of the line's pixels from its first one, `nCount` of them. The line's slope comes from the picture's height
/// and is that of a walker of Bresenham's kind. A line without length has its first pixel alone.
std::vector<CPoint> WalkLine(int nHeight, int nAngle, int nCount)
{
    constexpr double c_fPi = 3.14; // of this filter
    int nLong = static_cast<int>(nHeight * std::cos(nAngle / 180.0 * c_fPi));
    int nShort = static_cast<int>(nHeight * std::sin(nAngle / 180.0 * c_fPi));
    const int nSignX = (nLong > 0) - (nLong < 0);
    const int nSignY = (nShort > 0) - (nShort < 0);
    nLong = std::abs(nLong);
    nShort = std::abs(nShort);
    const bool bSteep = nLong < nShort;
    if (bSteep)
        std::swap(nLong, nShort);
    std::vector<CPoint> offsets;
    CPoint at;
    int nError = 2 * nShort - nLong;
    for (int n = 0; n < nCount; ++n) {
        offsets.push_back(at);
        if (nLong == 0)
            break; // no direction to go
        for (; nError >= 0; nError -= 2 * nLong)
            (bSteep ? at.x : at.y) += bSteep ? nSignX : nSignY;
        (bSteep ? at.y : at.x) += bSteep ? nSignY : nSignX;
        nError += 2 * nShort;
    }
    return offsets;
}

/// A run of columns of one output row.
struct Columns {
    int nFirst;
    int nEnd;
};

class CMotionRow {
public:
    CMotionRow(CFilterTarget& target, const std::vector<CPoint>& offsets)
        : m_target(target)
        , m_offsets(offsets)
        , m_sums(static_cast<std::size_t>(target.RowBytes()))
    {
    }

    void Fill(int y)
    {
        std::ranges::fill(m_sums, static_cast<std::uint16_t>(0));
        // The walk stops where it leaves the rectangle: the further it goes, the fewer columns are still on it. Those
        // that leave have as many samples as were added so far.
        Columns on{0, m_target.Width()};
        int n = 0;
        for (; n < static_cast<int>(m_offsets.size()) && on.nFirst < on.nEnd; ++n) {
            const int nRow = y + m_offsets[n].y;
            if (nRow < 0 || nRow >= m_target.Height())
                break;
            const Columns next{std::max(on.nFirst, -m_offsets[n].x), std::min(on.nEnd, m_target.Width() - m_offsets[n].x)};
            Divide(y, {on.nFirst, std::min(next.nFirst, on.nEnd)}, n);
            Divide(y, {std::max(next.nEnd, on.nFirst), on.nEnd}, n);
            on = next;
            if (on.nFirst < on.nEnd)
                AddBytes(m_sums.data() + 3 * on.nFirst, m_target.Row(nRow) + 3 * (on.nFirst + m_offsets[n].x),
                         3 * static_cast<std::size_t>(on.nEnd - on.nFirst));
        }
        Divide(y, on, n);
    }

private:
    void Divide(int y, Columns c, int nSamples)
    {
        if (c.nFirst < c.nEnd && nSamples > 0)
            DivideSums(m_sums.data() + 3 * c.nFirst, nSamples, m_target.OutRow(y) + 3 * c.nFirst,
                       3 * static_cast<std::size_t>(c.nEnd - c.nFirst));
    }

    CFilterTarget& m_target;
    const std::vector<CPoint>& m_offsets;
    std::vector<std::uint16_t> m_sums; ///< 257 samples of a byte just fit
};

} // namespace

void RunMotionBlur(const FilterRun& run)
{
    CFilterTarget target(run);
    const std::vector<CPoint> offsets
        = WalkLine(target.SourceHeight(), run.values.an[0], std::clamp(run.values.an[1], 0, 255) + 2);
    target.WriteRows(8, [&](int y0, int y1) {
        CMotionRow row(target, offsets);
        for (int y = y0; y < y1; ++y) {
            row.Fill(y);
            target.Finish(y);
        }
    });
}

} // namespace kestrune
