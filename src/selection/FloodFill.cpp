#include "selection/FloodFill.h"

#include "selection/FloodKernels.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace kestrune {

namespace {

/// A run that was filled, and how far its neighbours above and below have been looked at.
struct Frame {
    int y, x, nEnd;
};

class CFlood {
public:
    CFlood(const FloodSource& source, const FloodParams& params, const MaskPlane& mask)
        : m_source(source)
        , m_params(params)
        , m_mask(mask)
        , m_open(new std::uint8_t[mask.Size()]) // not cleared: a row is written when it is first looked at
        , m_rowSeen(mask.nHeight, false)
        , m_noRow(mask.nWidth, 0)
    {
        std::copy_n(params.aSeed, 3, m_test.aSeed);
        for (int d = 0; d < 256; d++)
            m_test.alpha[d] = WandAlpha(d, params.bAntiAlias, params.nTolerance);
        // It falls as the difference grows; none is always in.
        m_test.nFull = static_cast<int>(std::count(m_test.alpha.begin(), m_test.alpha.end(), 255)) - 1;
        m_test.nNone = static_cast<int>(std::find(m_test.alpha.begin(), m_test.alpha.end(), 0) - m_test.alpha.begin());
    }

    CRect Run()
    {
        if (CRect{0, 0, m_mask.nWidth, m_mask.nHeight}.Contains(m_params.pt.x, m_params.pt.y) && Open(m_params.pt.y)[m_params.pt.x])
            FillLine(m_params.pt.x, m_params.pt.y);
        while (!m_stack.empty()) {
            Frame& frame = m_stack.back();
            const int y = frame.y;
            const std::uint8_t* pUp = Open(y - 1);
            const std::uint8_t* pDown = Open(y + 1);
            const int x = NextOpen(pUp, pDown, frame.x, frame.nEnd);
            frame.x = x;
            if (x == frame.nEnd)
                m_stack.pop_back();
            else
                FillLine(x, pUp[x] ? y - 1 : y + 1);
        }
        return m_rcFilled;
    }

private:
    /// The alphas of a row's pixels that are not filled yet; zeros for a row outside.
    std::uint8_t* Open(int y)
    {
        if (y < 0 || y >= m_mask.nHeight)
            return m_noRow.data();
        std::uint8_t* p = m_open.get() + static_cast<std::size_t>(y) * m_mask.nWidth;
        if (!m_rowSeen[y]) {
            m_rowSeen[y] = true;
            m_row(m_test, m_source.row(y), m_mask.nWidth, p);
        }
        return p;
    }

    static int NextOpen(const std::uint8_t* pUp, const std::uint8_t* pDown, int x, int nEnd)
    {
        for (; x + 8 <= nEnd; x += 8) {
            std::uint64_t nUp, nDown;
            std::memcpy(&nUp, pUp + x, 8);
            std::memcpy(&nDown, pDown + x, 8);
            if (nUp | nDown)
                break;
        }
        while (x < nEnd && !(pUp[x] | pDown[x]))
            x++;
        return x;
    }

    void FillLine(int x, int y)
    {
        std::uint8_t* p = Open(y);
        int nFirst = x;
        while (nFirst > 0 && p[nFirst - 1])
            nFirst--;
        const void* pGap = std::memchr(p + x, 0, m_mask.nWidth - x);
        const int nEnd = pGap ? static_cast<int>(static_cast<const std::uint8_t*>(pGap) - p) : m_mask.nWidth;
        std::memcpy(m_mask.Row(y) + nFirst, p + nFirst, nEnd - nFirst);
        std::memset(p + nFirst, 0, nEnd - nFirst);
        m_rcFilled = Unite(m_rcFilled, {nFirst, y, nEnd, y + 1});
        m_stack.push_back({y, nFirst, nEnd});
    }

    const FloodSource& m_source;
    const FloodParams& m_params;
    const MaskPlane& m_mask;
    std::unique_ptr<std::uint8_t[]> m_open;
    std::vector<bool> m_rowSeen;
    std::vector<std::uint8_t> m_noRow;
    FloodTest m_test{};
    const FloodRow m_row = BestFloodRow();
    std::vector<Frame> m_stack;
    CRect m_rcFilled;
};

} // namespace

std::uint8_t WandAlpha(int nDifference, bool bAntiAlias, int nTolerance)
{
    const int t = std::max(nTolerance, 1);
    if (!bAntiAlias)
        return nDifference <= t ? 255 : 0;
    const double v = 1.5 - nDifference / static_cast<double>(t);
    if (v < 0)
        return 0;
    return v >= 0.5 ? 255 : static_cast<std::uint8_t>(static_cast<int>(v * 512) & 255);
}

CRect FloodFill(const FloodSource& source, const FloodParams& params, const MaskPlane& mask)
{
    return CFlood(source, params, mask).Run();
}

} // namespace kestrune
