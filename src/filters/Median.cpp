// The middle byte of a square window, each channel by itself; the window stays inside the rectangle as that of Maximum.
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/MedianKernel.h"
#include "filters/Window.h"

#include <array>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

/// The flipped rows of a window, each loaded once while the window moves down.
class CFlippedRows {
public:
    CFlippedRows(const CFilterTarget& target, int nRows)
        : m_target(target)
        , m_nStride(static_cast<std::size_t>(target.RowBytes()) + c_nMedianRoom + 3 * CWindow::c_nMost)
        , m_nRows(nRows)
        , m_bytes(m_nStride * static_cast<std::size_t>(nRows))
    {
    }

    /// The window's rows from `nFirst` on.
    const std::uint8_t* const* Move(int nFirst)
    {
        for (; m_nLoaded < nFirst + m_nRows; ++m_nLoaded)
            if (m_nLoaded >= nFirst)
                Load(m_nLoaded);
        for (int i = 0; i < m_nRows; ++i)
            m_apRows[i] = At(nFirst + i);
        return m_apRows.data();
    }

private:
    std::uint8_t* At(int y) { return m_bytes.data() + m_nStride * static_cast<std::size_t>(y % m_nRows); }
    void Load(int y)
    {
        const std::uint8_t* __restrict pIn = m_target.Row(y);
        std::uint8_t* __restrict pOut = At(y);
        const int nBytes = m_target.RowBytes();
        for (int i = 0; i < nBytes; ++i)
            pOut[i] = pIn[i] ^ c_nMedianFlip;
    }

    const CFilterTarget& m_target;
    std::size_t m_nStride;
    int m_nRows;
    int m_nLoaded = 0;
    std::vector<std::uint8_t> m_bytes;
    std::array<const std::uint8_t*, CWindow::c_nMost> m_apRows{};
};

} // namespace

void RunMedian(const FilterRun& run)
{
    CFilterTarget target(run);
    const CWindow rows(run.values.an[0], target.Height());
    const CWindow columns(run.values.an[0], target.Width());
    const auto nBytes = static_cast<std::size_t>(columns.Places()) * 3;
    target.WriteRows(16, [&](int y0, int y1) {
        CFlippedRows flipped(target, rows.Size());
        std::vector<std::uint8_t> result(nBytes + c_nMedianRoom);
        for (int y = y0; y < y1; ++y) {
            MedianRow(flipped.Move(rows.Start(y)), rows.Size(), columns.Size(), result.data(), nBytes);
            std::memcpy(target.OutRow(y) + 3 * columns.Before(), result.data(), nBytes);
            columns.SpreadEnds(target.OutRow(y));
            target.Finish(y);
        }
    });
}

} // namespace kestrune
