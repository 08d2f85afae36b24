#pragma once

#include "paint/CoverageMap.h"

#include <cstdint>
#include <vector>

namespace kestrune {

/// How much paint a stroke has laid on each pixel of the picture, 0 at first.
///
/// Memory that the system hands out costs more at its first touch than the paint that is laid there. So the memory of a stroke
/// is cleared at its end, where it was touched, and kept for the next one, as long as it is not much. And rows are only as long as
/// the stroke has spread so far, or the rows of a small dab on a wide picture would each take a page of their own.
class StrokeCoverage {
public:
    StrokeCoverage() = default;
    /// Throws std::bad_alloc.
    StrokeCoverage(int nWidth, int nHeight);
    ~StrokeCoverage();
    StrokeCoverage(const StrokeCoverage&) = delete;
    StrokeCoverage& operator=(const StrokeCoverage&) = delete;
    StrokeCoverage& operator=(StrokeCoverage&& other) noexcept;

    /// Makes room for the columns [x0, x1); to be called before they are opened. Addresses and `Stride` may change. Throws
    /// std::bad_alloc.
    void Reach(int x0, int x1)
    {
        if (x0 < m_nFirst || x1 > m_nFirst + m_nStride)
            Spread(x0, x1);
    }
    int Stride() const { return m_nStride; } ///< bytes from row to row

    /// The bytes of a row from the column on, of which those up to `x1` (exclusive) may be written.
    std::uint8_t* Open(int y, int x0, int x1)
    {
        const std::size_t nFirst = Place(y, x0), nLast = nFirst + (x1 - x0);
        for (std::size_t i = nFirst / c_nPage; i * c_nPage < nLast; i++)
            if (m_block.aState[i] != PAGE_DIRTY)
                Touch(i);
        return m_block.bytes.Row(0) + nFirst;
    }

private:
    static constexpr std::size_t c_nPage = 4096;
    enum PageState : std::uint8_t { PAGE_UNTOUCHED, PAGE_CLEAR, PAGE_DIRTY };
    struct Block {
        CoverageMap bytes;
        std::vector<std::uint8_t> aState; ///< `PageState` of each page
        std::size_t nTouched = 0;         ///< pages that the system has given
    };

    std::size_t Place(int y, int x) const { return static_cast<std::size_t>(y) * m_nStride + (x - m_nFirst); }
    void Touch(std::size_t iPage);
    void Clear();
    void Spread(int x0, int x1);
    static Block& Spare();

    Block m_block;
    std::vector<std::size_t> m_aDirty;
    int m_nWidth = 0, m_nHeight = 0; ///< of the picture
    int m_nFirst = 0;  ///< the first column that rows hold
    int m_nStride = 0; ///< and how many
};

} // namespace kestrune
