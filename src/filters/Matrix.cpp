// The user's own kernel of 5 x 5. Neighbours outside count nothing, so that a positive kernel darkens the border.
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

constexpr int c_nSide = 5;
constexpr int c_nReach = c_nSide / 2;
constexpr std::size_t c_nPad = c_nReach * 3;

/// Five rows of floats, each with room for the reach on both sides. Whole numbers: 25 products of at most 999 x 255 stay
/// below 2^24, so that no order of additions changes a sum.
class CFloatRows {
public:
    explicit CFloatRows(const CFilterTarget& target)
        : m_target(target)
        , m_nStride(static_cast<std::size_t>(target.RowBytes()) + 2 * c_nPad)
        , m_rows(m_nStride * c_nSide)
    {
    }
    /// Loads a row of the rectangle; nothing where there is none.
    void Load(int y)
    {
        if (y >= 0 && y < m_target.Height())
            BytesToFloats(m_target.Row(y), At(y), static_cast<std::size_t>(m_target.RowBytes()));
    }
    /// The first pixel of a loaded row.
    float* At(int y) { return m_rows.data() + m_nStride * static_cast<std::size_t>(y % c_nSide) + c_nPad; }

private:
    const CFilterTarget& m_target;
    std::size_t m_nStride;
    std::vector<float> m_rows; // the room at the sides stays 0
};

} // namespace

void RunMatrix(const FilterRun& run)
{
    const auto* const pMatrix = std::get_if<MatrixValues>(&run.values.extra);
    if (!pMatrix)
        return;
    CFilterTarget target(run);
    const auto nBytes = static_cast<std::size_t>(target.RowBytes());
    const int nScale = std::max(pMatrix->nScale, 1);
    target.WriteRows(16, [&](int y0, int y1) {
        CFloatRows rows(target);
        std::vector<float> sum(nBytes);
        for (int y = y0 - c_nReach; y < y0 + c_nReach; ++y)
            rows.Load(y);
        for (int y = y0; y < y1; ++y) {
            rows.Load(y + c_nReach);
            std::ranges::fill(sum, 0.0f);
            for (int i = 0; i < c_nSide * c_nSide; ++i) {
                const int nRow = y + i / c_nSide - c_nReach;
                if (pMatrix->anMatrix[i] == 0 || nRow < 0 || nRow >= target.Height())
                    continue;
                const float* const pRow = rows.At(nRow) + (i % c_nSide - c_nReach) * 3;
                AddWeighted(sum.data(), pRow, static_cast<float>(pMatrix->anMatrix[i]), nBytes);
            }
            ScaleSums(sum.data(), nScale, pMatrix->nOffset, target.OutRow(y), nBytes);
            target.Finish(y);
        }
    });
}

} // namespace kestrune
