#include "selection/BoundaryTracer.h"

#include <bit>
#include <cstring>

namespace kestrune {

namespace {

constexpr int c_nSentinel = 0x2000000;

/// Where the state changes in a row: entry 0 is 0, then the positions, then the sentinel. Read in pairs from entry 0 they are the
/// unselected runs, from entry 1 the selected ones.
using Scan = std::vector<int>;

class CTracer {
public:
    CTracer(const MaskPlane& mask, const CRect& rc, std::vector<MaskSegment>& segments)
        : m_mask(mask)
        , m_rc(rc)
        , m_segments(segments)
        , m_vertSegs(static_cast<std::size_t>(mask.nWidth) + 1, -1)
    {
        for (Scan* pScan : {&m_rowPrev, &m_rowCur, &m_rowNext})
            pScan->resize(static_cast<std::size_t>(mask.nWidth) + 3);
    }

    void Trace()
    {
        ScanRow(m_rc.top - 1, m_rowPrev);
        ScanRow(m_rc.top, m_rowCur);
        for (int y = m_rc.top; y < m_rc.bottom; y++) {
            ScanRow(y + 1, m_rowNext);
            const int* pAbove = m_rowPrev.data();
            const int* pBelow = m_rowNext.data();
            for (const int* p = m_rowCur.data() + 1; *p != c_nSentinel; p += 2) {
                WalkRun(p[0], p[1], pAbove, y, 1);
                WalkRun(p[0], p[1], pBelow, y + 1, 0);
            }
            m_rowPrev.swap(m_rowCur);
            m_rowCur.swap(m_rowNext);
        }
    }

private:
    void ScanRow(int y, Scan& scan) const
    {
        int* pOut = scan.data();
        *pOut++ = 0;
        if (y >= m_rc.top && y < m_rc.bottom && y >= 0 && y < m_mask.nHeight) {
            const std::uint8_t* pRow = m_mask.Row(y);
            std::uint32_t nState = 0; // the top bit of the pixel before, at bit 0
            int x = m_rc.left;
            // Eight pixels at a time: the top bits are gathered into a byte, whose changes are the ends of runs.
            for (; x + 8 <= m_rc.right; x += 8) {
                std::uint64_t word;
                std::memcpy(&word, pRow + x, 8);
                const std::uint32_t nBits
                    = static_cast<std::uint32_t>(((word & 0x8080808080808080ull) * 0x0002040810204081ull) >> 56);
                for (std::uint32_t nChanges = nBits ^ ((nBits << 1 | nState) & 255); nChanges; nChanges &= nChanges - 1)
                    *pOut++ = x + std::countr_zero(nChanges);
                nState = nBits >> 7;
            }
            for (; x < m_rc.right; x++) {
                const std::uint32_t nBit = pRow[x] >> 7;
                if (nBit != nState)
                    *pOut++ = x;
                nState = nBit;
            }
            if (nState)
                *pOut++ = m_rc.right;
        }
        *pOut++ = c_nSentinel;
    }

    /// The bare pieces of the run [s, e) at line y. `pRuns` stands at the first unselected run that may touch it and moves on with the
    /// runs, so that a row is walked once.
    void WalkRun(int s, int e, const int*& pRuns, int y, int nTop)
    {
        while (pRuns[1] != c_nSentinel && pRuns[1] <= s)
            pRuns += 2;
        for (const int* p = pRuns;; p += 2) {
            const int a = p[0], b = p[1];
            if (a >= e)
                return;
            if (a <= s && b >= e)
                AddHorizontal(s, e, y, nTop);
            else if ((a > s && a < e) || (b > s && b < e))
                AddHorizontal(std::max(a, s), std::min(b, e), y, nTop);
            if (b >= e)
                return;
        }
    }

    void AddHorizontal(int xa, int xb, int y, int nTop)
    {
        ToggleVertical(xa, y, !nTop);
        ToggleVertical(xb, y, nTop);
        m_segments.push_back({xa, y, xb, y, nTop});
    }

    void ToggleVertical(int x, int y, int nOpen)
    {
        int& nStart = m_vertSegs[x];
        if (nStart < 0) {
            nStart = y;
        } else {
            m_segments.push_back({x, nStart, x, y, nOpen});
            nStart = -1;
        }
    }

    const MaskPlane& m_mask;
    const CRect m_rc;
    std::vector<MaskSegment>& m_segments;
    std::vector<int> m_vertSegs; ///< for each column the line at which a vertical edge began, or -1
    Scan m_rowPrev, m_rowCur, m_rowNext;
};

} // namespace

void TraceBoundary(const MaskPlane& mask, const CRect& rc, std::vector<MaskSegment>& segments)
{
    segments.clear();
    const CRect rcIn = Intersect(rc, {0, 0, mask.nWidth, mask.nHeight});
    if (!rcIn.IsEmpty())
        CTracer(mask, rcIn, segments).Trace();
}

} // namespace kestrune
