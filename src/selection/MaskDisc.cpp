#include "selection/MaskDisc.h"

#include "base/ParallelRows.h"
#include "selection/MaskFill.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace kestrune {

namespace {

constexpr int c_nTile = 768;  ///< columns worked on at a time: what is read again and again stays in the cache
constexpr int c_nGrain = 48;  ///< rows that a thread takes at least
constexpr int c_nFar = 255;   ///< no edge near a column

struct Larger {
    static constexpr std::uint8_t c_nNeutral = 0;
    static std::uint8_t Of(std::uint8_t a, std::uint8_t b) { return std::max(a, b); }
};
struct Smaller {
    static constexpr std::uint8_t c_nNeutral = 255;
    static std::uint8_t Of(std::uint8_t a, std::uint8_t b) { return std::min(a, b); }
};

template <typename Pick>
void PickInto(std::uint8_t* __restrict pOut, const std::uint8_t* __restrict p, int n)
{
    for (int i = 0; i < n; i++)
        pOut[i] = Pick::Of(pOut[i], p[i]);
}

/// The columns of the disc with the same reach: offsets -nTo..-nFrom and nFrom..nTo.
struct DiscStep {
    int nFrom, nTo;
};

/// For each reach from 0 to the radius its columns; nTo below nFrom where there are none.
std::vector<DiscStep> StepsOf(int nRadius)
{
    std::vector<DiscStep> steps(nRadius + 1, {1, 0});
    for (int i = nRadius; i >= 0; i--) {
        DiscStep& step = steps[DiscReach(nRadius, i)];
        step.nTo = std::max(step.nTo, i);
        step.nFrom = i;
    }
    return steps;
}

/// Squares of a mask, each with the one value of all its bytes, or with `c_nMixed`.
class CFlatSquares {
public:
    static constexpr int c_nSide = 64;
    static constexpr int c_nMixed = -1;

    explicit CFlatSquares(const MaskPlane& mask)
        : m_nColumns((mask.nWidth + c_nSide - 1) / c_nSide)
        , m_nRows((mask.nHeight + c_nSide - 1) / c_nSide)
        , m_values(static_cast<std::size_t>(m_nColumns) * m_nRows)
    {
        ParallelRows(m_nRows, 1, [&](int j0, int j1) {
            for (int j = j0; j < j1; j++)
                for (int i = 0; i < m_nColumns; i++)
                    m_values[static_cast<std::size_t>(j) * m_nColumns + i] = ValueOf(mask, i * c_nSide, j * c_nSide);
        });
    }
    int Columns() const { return m_nColumns; }
    int Rows() const { return m_nRows; }

    /// The value of everything within a distance of a square, in the mask.
    int Around(int i, int j, int nDistance) const
    {
        const int n = (nDistance + c_nSide - 1) / c_nSide;
        const int nValue = m_values[static_cast<std::size_t>(j) * m_nColumns + i];
        for (int y = std::max(j - n, 0); y <= std::min(j + n, m_nRows - 1); y++)
            for (int x = std::max(i - n, 0); x <= std::min(i + n, m_nColumns - 1); x++)
                if (m_values[static_cast<std::size_t>(y) * m_nColumns + x] != nValue)
                    return c_nMixed;
        return nValue;
    }

private:
    static int ValueOf(const MaskPlane& mask, int x, int y)
    {
        const int nWidth = std::min(c_nSide, mask.nWidth - x), nEnd = std::min(y + c_nSide, mask.nHeight);
        const std::uint8_t* pFirst = mask.Row(y) + x;
        if (std::memcmp(pFirst, pFirst + 1, nWidth - 1) != 0) // each byte equals the one behind it
            return c_nMixed;
        for (int row = y + 1; row < nEnd; row++)
            if (std::memcmp(mask.Row(row) + x, pFirst, nWidth) != 0)
                return c_nMixed;
        return *pFirst;
    }

    int m_nColumns, m_nRows;
    std::vector<int> m_values;
};

/// Takes the extreme of each pixel's disc from one plane into another.
template <typename Pick>
class CDiscPick {
public:
    CDiscPick(const MaskPlane& in, const MaskPlane& out, int nRadius)
        : m_in(in)
        , m_out(out)
        , m_nRadius(nRadius)
        , m_steps(StepsOf(nRadius))
    {
    }

    void Run() const
    {
        const CFlatSquares squares(m_in);
        ParallelRows(squares.Rows(), 1, [&](int j0, int j1) {
            std::vector<std::uint8_t> columns(c_nTile + 2 * static_cast<std::size_t>(m_nRadius));
            for (int j = j0; j < j1; j++)
                RowOfSquares(squares, j, columns.data());
        });
    }

private:
    /// Squares with nothing but one value far around them keep it; those between are worked on together.
    void RowOfSquares(const CFlatSquares& squares, int j, std::uint8_t* pColumns) const
    {
        constexpr int c_nSide = CFlatSquares::c_nSide;
        const int y0 = j * c_nSide, y1 = std::min(y0 + c_nSide, m_in.nHeight);
        for (int i = 0; i < squares.Columns();) {
            const int nFirst = i, nValue = squares.Around(i, j, m_nRadius);
            i++;
            while (i < squares.Columns() && (i - nFirst) * c_nSide < c_nTile && squares.Around(i, j, m_nRadius) == nValue)
                i++;
            const int x = nFirst * c_nSide, nWidth = std::min(i * c_nSide, m_in.nWidth) - x;
            for (int y = y0; y < y1; y++)
                if (nValue == CFlatSquares::c_nMixed)
                    Tile(x, y, nWidth, pColumns);
                else
                    std::memset(m_out.Row(y) + x, nValue, nWidth);
        }
    }

    /// One tile of one row: `pColumns` becomes by and by the extreme of columns 2k + 1 high, for the tile and the radius around it.
    void Tile(int x, int y, int nWidth, std::uint8_t* pColumns) const
    {
        const int nFirst = std::max(x - m_nRadius, 0), nEnd = std::min(x + nWidth + m_nRadius, m_in.nWidth);
        std::uint8_t* pIn = pColumns + (nFirst - x + m_nRadius);
        std::uint8_t* pOut = m_out.Row(y) + x;
        std::memset(pColumns, Pick::c_nNeutral, nWidth + 2 * m_nRadius);
        std::memcpy(pIn, m_in.Row(y) + nFirst, nEnd - nFirst);
        std::memset(pOut, Pick::c_nNeutral, nWidth);
        for (int k = 0; k <= m_nRadius; k++) {
            if (k > 0 && y - k >= 0)
                PickInto<Pick>(pIn, m_in.Row(y - k) + nFirst, nEnd - nFirst);
            if (k > 0 && y + k < m_in.nHeight)
                PickInto<Pick>(pIn, m_in.Row(y + k) + nFirst, nEnd - nFirst);
            for (int i = m_steps[k].nFrom; i <= m_steps[k].nTo; i++) {
                PickInto<Pick>(pOut, pColumns + m_nRadius + i, nWidth);
                if (i > 0)
                    PickInto<Pick>(pOut, pColumns + m_nRadius - i, nWidth);
            }
        }
    }

    const MaskPlane m_in, m_out;
    const int m_nRadius;
    const std::vector<DiscStep> m_steps;
};

template <typename Pick>
void PickDisc(const MaskPlane& mask, int nRadius)
{
    std::vector<std::uint8_t> source(mask.pBytes, mask.pBytes + mask.Size());
    CDiscPick<Pick>({source.data(), mask.nWidth, mask.nHeight}, mask, nRadius).Run();
}

void ClearRim(const MaskPlane& mask)
{
    std::memset(mask.Row(0), 0, mask.nWidth);
    std::memset(mask.Row(mask.nHeight - 1), 0, mask.nWidth);
    for (int y = 0; y < mask.nHeight; y++)
        mask.Row(y)[0] = mask.Row(y)[mask.nWidth - 1] = 0;
}

/// 255 where the pixel and its neighbours in the row are all selected, else 0.
void InnerRow(const std::uint8_t* pRow, std::uint8_t* pOut, int nWidth)
{
    for (int x = 0; x < nWidth; x++)
        pOut[x] = pRow[x] >= 128 ? 255 : 0;
    // From a copy: the loop that reads its neighbours must not read what it wrote.
    std::uint8_t nBefore = pOut[0];
    for (int x = 0; x + 1 < nWidth; x++) {
        const std::uint8_t nHere = pOut[x];
        pOut[x] = nBefore & nHere & pOut[x + 1];
        nBefore = nHere;
    }
    pOut[nWidth - 1] &= nBefore;
}

/// The edge's pixels as 255, all others 0. Beyond the first and last row those rows count once more.
void EdgePlane(const MaskPlane& mask, const MaskPlane& edges)
{
    ParallelRows(mask.nHeight, c_nGrain, [&](int y0, int y1) {
        std::vector<std::uint8_t> inner(3 * static_cast<std::size_t>(mask.nWidth));
        std::uint8_t* apInner[3] = {inner.data(), inner.data() + mask.nWidth, inner.data() + 2 * static_cast<std::size_t>(mask.nWidth)};
        InnerRow(mask.Row(std::max(y0 - 1, 0)), apInner[0], mask.nWidth);
        InnerRow(mask.Row(y0), apInner[1], mask.nWidth);
        for (int y = y0; y < y1; y++) {
            InnerRow(mask.Row(std::min(y + 1, mask.nHeight - 1)), apInner[2], mask.nWidth);
            const std::uint8_t* pRow = mask.Row(y);
            std::uint8_t* pOut = edges.Row(y);
            for (int x = 0; x < mask.nWidth; x++)
                pOut[x] = pRow[x] >= 128 && !(apInner[0][x] & apInner[1][x] & apInner[2][x]) ? 255 : 0;
            std::rotate(apInner, apInner + 1, apInner + 3);
        }
    });
}

/// In place of each byte of an edge plane the distance, in rows, to the nearest edge pixel of its column, at most `c_nFar`.
void RowDistances(const MaskPlane& edges)
{
    constexpr int c_nColumns = 256;
    ParallelRows((edges.nWidth + c_nColumns - 1) / c_nColumns, 1, [&](int n0, int n1) {
        const int x0 = n0 * c_nColumns, x1 = std::min(n1 * c_nColumns, edges.nWidth);
        for (int y = 0; y < edges.nHeight; y++) {
            std::uint8_t* p = edges.Row(y);
            const std::uint8_t* pAbove = edges.Row(std::max(y - 1, 0));
            for (int x = x0; x < x1; x++) {
                const std::uint8_t nNext = static_cast<std::uint8_t>(std::min<std::uint8_t>(y > 0 ? pAbove[x] : c_nFar, c_nFar - 1) + 1);
                p[x] = p[x] ? 0 : nNext;
            }
        }
        for (int y = edges.nHeight - 2; y >= 0; y--) {
            std::uint8_t* p = edges.Row(y);
            const std::uint8_t* pBelow = edges.Row(y + 1);
            for (int x = x0; x < x1; x++)
                p[x] = std::min(p[x], static_cast<std::uint8_t>(std::min<std::uint8_t>(pBelow[x], c_nFar - 1) + 1));
        }
    });
}

/// The rows of the soft disc: for each distance 0..nRadiusY its bytes for -nRadiusX..nRadiusX.
std::vector<std::uint8_t> SoftDiscRows(int nRadiusX, int nRadiusY)
{
    std::vector<std::uint8_t> rows;
    rows.reserve(static_cast<std::size_t>(2 * nRadiusX + 1) * (nRadiusY + 1));
    for (int dy = 0; dy <= nRadiusY; dy++)
        for (int dx = -nRadiusX; dx <= nRadiusX; dx++)
            rows.push_back(SoftDisc(dx, dy, nRadiusX, nRadiusY));
    return rows;
}

} // namespace

int DiscReach(int nRadius, int i)
{
    const double d = i == 0 ? 0 : std::abs(i) - 0.5;
    return static_cast<int>(std::sqrt(nRadius * static_cast<double>(nRadius) - d * d) * 1.0);
}

std::uint8_t SoftDisc(int dx, int dy, int nRadiusX, int nRadiusY)
{
    const double a = dx == 0 ? 0 : std::abs(dx) - 0.5, b = dy == 0 ? 0 : std::abs(dy) - 0.5;
    const double d = a * a / (nRadiusX * nRadiusX) + b * b / (nRadiusY * nRadiusY);
    return d >= 1 ? 0 : static_cast<std::uint8_t>(255 * (1 - std::sqrt(d)));
}

void GrowMask(const MaskPlane& mask, int nRadius)
{
    if (nRadius >= 1)
        PickDisc<Larger>(mask, nRadius);
}

void ShrinkMask(const MaskPlane& mask, int nRadius)
{
    if (nRadius < 1)
        return;
    ClearRim(mask);
    PickDisc<Smaller>(mask, nRadius);
}

void BorderMask(const MaskPlane& mask, int nRadiusX, int nRadiusY)
{
    if (nRadiusX <= 0 || nRadiusY <= 0)
        return FillMask(mask, 0);
    std::vector<std::uint8_t> bytes(mask.Size());
    const MaskPlane distances{bytes.data(), mask.nWidth, mask.nHeight};
    EdgePlane(mask, distances);
    if (nRadiusX == 1 && nRadiusY == 1) {
        std::memcpy(mask.pBytes, bytes.data(), bytes.size());
        return;
    }
    RowDistances(distances);
    const std::vector<std::uint8_t> disc = SoftDiscRows(nRadiusX, nRadiusY);
    const int nSpan = 2 * nRadiusX + 1;
    ParallelRows(mask.nHeight, c_nGrain, [&](int y0, int y1) {
        std::vector<std::uint8_t> row(mask.nWidth + 2 * static_cast<std::size_t>(nRadiusX)); // with room for discs that stick out
        for (int y = y0; y < y1; y++) {
            std::fill(row.begin(), row.end(), std::uint8_t{0});
            const std::uint8_t* pDistance = distances.Row(y);
            for (int x = 0; x < mask.nWidth; x++)
                if (pDistance[x] <= nRadiusY)
                    PickInto<Larger>(row.data() + x, disc.data() + static_cast<std::size_t>(pDistance[x]) * nSpan, nSpan);
            std::memcpy(mask.Row(y), row.data() + nRadiusX, mask.nWidth);
        }
    });
}

} // namespace kestrune
