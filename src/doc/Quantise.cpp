#include "doc/Quantise.h"

#include "base/ParallelRows.h"
#include "doc/NearestColor.h"
#include "doc/Palettes.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

namespace kestrune {

namespace {

constexpr int c_nRounds = 4; ///< rounds of moving the entries; later ones gain under a hundredth of the error

/// Sums over a set of pixels. All whole numbers, so that they may be added in any order.
struct Moments {
    std::int64_t n = 0;
    std::int64_t sum[3] = {}; ///< blue, green, red
    std::int64_t squares = 0;

    void Add(const std::uint8_t* p)
    {
        n++;
        for (int c = 0; c < 3; c++) {
            sum[c] += p[c];
            squares += p[c] * p[c];
        }
    }
    void Add(const Moments& o, int nSign = 1)
    {
        n += nSign * o.n;
        for (int c = 0; c < 3; c++)
            sum[c] += nSign * o.sum[c];
        squares += nSign * o.squares;
    }
    /// Squared length of the sum over the count: what the variance lacks. The greater the better the set fits one colour.
    double Fit() const
    {
        const auto Square = [](std::int64_t v) { return static_cast<double>(v) * static_cast<double>(v); };
        return n ? (Square(sum[0]) + Square(sum[1]) + Square(sum[2])) / static_cast<double>(n) : 0;
    }
    double Variance() const { return static_cast<double>(squares) - Fit(); }
    RGBQUAD Mean() const
    {
        const auto Of = [this](int c) { return static_cast<std::uint8_t>((sum[c] + n / 2) / n); };
        return {Of(0), Of(1), Of(2), 0};
    }
};

bool Darker(const RGBQUAD& a, const RGBQUAD& b)
{
    const auto Key = [](const RGBQUAD& q) {
        return std::array{Luminance(q.rgbRed, q.rgbGreen, q.rgbBlue), int{q.rgbRed}, int{q.rgbGreen}, int{q.rgbBlue}};
    };
    return Key(a) < Key(b);
}

/// All colours of the bitmap, or nothing when there are more than `nMost`.
std::optional<std::vector<RGBQUAD>> FewColors(const LBitmapBase& bitmap, int nMost)
{
    constexpr std::uint32_t c_nFree = 0xffffffff;
    std::array<std::uint32_t, 1024> slots; // at most a quarter full
    slots.fill(c_nFree);
    std::vector<RGBQUAD> colors;
    std::uint32_t nLast = c_nFree;
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        const std::uint8_t* p = bitmap.Row(y);
        for (int x = 0; x < bitmap.GetWidth(); x++, p += 3) {
            const std::uint32_t nColor = p[0] | p[1] << 8 | p[2] << 16;
            if (nColor == nLast)
                continue;
            nLast = nColor;
            std::size_t i = nColor * 0x9E3779B1u >> 22;
            while (slots[i] != c_nFree && slots[i] != nColor)
                i = (i + 1) & (slots.size() - 1);
            if (slots[i] == nColor)
                continue;
            if (static_cast<int>(colors.size()) == nMost)
                return std::nullopt;
            slots[i] = nColor;
            colors.push_back({p[0], p[1], p[2], 0});
        }
    }
    std::sort(colors.begin(), colors.end(), Darker);
    return colors;
}

/// The picture's colours in cells: each channel's own range of levels in up to 64 steps, so that a dark or pale picture is
/// cut as finely as a bright one.
class CHistogram {
public:
    static constexpr int c_nSide = 64;

    explicit CHistogram(const LBitmapBase& bitmap)
        : m_cells(c_nSide * c_nSide * c_nSide)
    {
        FindRange(bitmap);
        std::mutex mutex;
        // Few large pieces: each has a table of its own to add up.
        ParallelRows(bitmap.GetHeight(), std::max(256, bitmap.GetHeight() / 4 + 1), [&](int y0, int y1) {
            std::vector<Moments> own(m_cells.size());
            for (int y = y0; y < y1; y++) {
                const std::uint8_t* p = bitmap.Row(y);
                for (int x = 0; x < bitmap.GetWidth(); x++, p += 3)
                    own[CellOf(p)].Add(p);
            }
            const std::scoped_lock lock(mutex);
            for (std::size_t i = 0; i < own.size(); i++)
                if (own[i].n)
                    m_cells[i].Add(own[i]);
        });
    }

    const std::vector<Moments>& Cells() const { return m_cells; }
    static std::size_t Index(int b, int g, int r) { return (static_cast<std::size_t>(b) * c_nSide + g) * c_nSide + r; }

private:
    std::size_t CellOf(const std::uint8_t* p) const
    {
        return Index((p[0] - m_nLow[0]) >> m_nShift[0], (p[1] - m_nLow[1]) >> m_nShift[1], (p[2] - m_nLow[2]) >> m_nShift[2]);
    }

    void FindRange(const LBitmapBase& bitmap)
    {
        std::uint8_t low[3] = {255, 255, 255}, high[3] = {};
        for (int y = 0; y < bitmap.GetHeight(); y++) {
            const std::uint8_t* p = bitmap.Row(y);
            for (int x = 0; x < bitmap.GetWidth(); x++, p += 3) {
                for (int c = 0; c < 3; c++) {
                    low[c] = std::min(low[c], p[c]);
                    high[c] = std::max(high[c], p[c]);
                }
            }
        }
        for (int c = 0; c < 3; c++) {
            m_nLow[c] = low[c];
            while ((high[c] - low[c]) >> m_nShift[c] >= c_nSide)
                m_nShift[c]++;
        }
    }

    int m_nLow[3] = {};
    int m_nShift[3] = {};
    std::vector<Moments> m_cells;
};

/// A box of cells, low ends exclusive and high ends inclusive, as the running sums want it.
struct Box {
    int low[3] = {0, 0, 0};
    int high[3] = {CHistogram::c_nSide, CHistogram::c_nSide, CHistogram::c_nSide};
    Moments total;
    double fVariance = 0;
};

/// Cuts the box of all colours by running sums over the cells, after which the sums of any box are eight look-ups.
class CBoxCutter {
public:
    explicit CBoxCutter(const std::vector<Moments>& cells)
        : m_running(c_nRun * c_nRun * c_nRun)
    {
        for (int b = 1; b < c_nRun; b++) {
            for (int g = 1; g < c_nRun; g++) {
                Moments line;
                for (int r = 1; r < c_nRun; r++) {
                    line.Add(cells[CHistogram::Index(b - 1, g - 1, r - 1)]);
                    Moments& m = At(b, g, r);
                    m = line;
                    m.Add(At(b - 1, g, r));
                    m.Add(At(b, g - 1, r));
                    m.Add(At(b - 1, g - 1, r), -1);
                    // The line runs from 0 in this row alone; the three neighbours hold what lies before it.
                }
            }
        }
    }

    std::vector<RGBQUAD> Cut(int nColors) const
    {
        std::vector<Box> boxes(1);
        Measure(boxes[0]);
        while (static_cast<int>(boxes.size()) < nColors) {
            const auto worst = std::max_element(boxes.begin(), boxes.end(),
                                                [](const Box& a, const Box& b) { return a.fVariance < b.fVariance; });
            if (worst->fVariance <= 0)
                break;
            Box upper;
            if (Split(*worst, upper))
                boxes.push_back(upper);
            else
                worst->fVariance = 0; // one cell: cannot be cut
        }
        std::vector<RGBQUAD> palette;
        for (const Box& box : boxes)
            if (box.total.n)
                palette.push_back(box.total.Mean());
        return palette;
    }

private:
    static constexpr int c_nRun = CHistogram::c_nSide + 1;

    Moments& At(int b, int g, int r) { return m_running[(static_cast<std::size_t>(b) * c_nRun + g) * c_nRun + r]; }
    const Moments& At(int b, int g, int r) const { return m_running[(static_cast<std::size_t>(b) * c_nRun + g) * c_nRun + r]; }

    Moments Sum(const int low[3], const int high[3]) const
    {
        Moments m;
        for (int i = 0; i < 8; i++) {
            const int nSign = (i & 1) ^ (i >> 1 & 1) ^ (i >> 2 & 1) ? 1 : -1;
            m.Add(At(i & 1 ? high[0] : low[0], i & 2 ? high[1] : low[1], i & 4 ? high[2] : low[2]), nSign);
        }
        return m;
    }

    void Measure(Box& box) const
    {
        box.total = Sum(box.low, box.high);
        box.fVariance = box.total.n > 1 ? box.total.Variance() : 0;
    }

    /// Cuts where the two parts together fit best; false when no cut leaves pixels on both sides.
    bool Split(Box& box, Box& upper) const
    {
        double fBest = -1;
        int iAxis = 0, nAt = 0;
        for (int c = 0; c < 3; c++) {
            for (int i = box.low[c] + 1; i < box.high[c]; i++) {
                int high[3] = {box.high[0], box.high[1], box.high[2]};
                high[c] = i;
                const Moments lower = Sum(box.low, high);
                if (lower.n == 0)
                    continue;
                if (lower.n == box.total.n)
                    break;
                Moments rest = box.total;
                rest.Add(lower, -1);
                const double fFit = lower.Fit() + rest.Fit();
                if (fFit > fBest) {
                    fBest = fFit;
                    iAxis = c;
                    nAt = i;
                }
            }
        }
        if (fBest < 0)
            return false;
        upper = box;
        upper.low[iAxis] = nAt;
        box.high[iAxis] = nAt;
        Measure(box);
        Measure(upper);
        return true;
    }

    std::vector<Moments> m_running;
};

/// Moves each entry to the middle of the cells nearest to it.
void Refine(std::vector<RGBQUAD>& palette, const std::vector<Moments>& cells)
{
    for (int nRound = 0; nRound < c_nRounds; nRound++) {
        const CNearestColor nearest(palette);
        std::vector<Moments> own(palette.size());
        for (const Moments& cell : cells) {
            if (cell.n == 0)
                continue;
            const RGBQUAD q = cell.Mean();
            own[nearest.Find(q.rgbRed, q.rgbGreen, q.rgbBlue)].Add(cell);
        }
        for (std::size_t i = 0; i < palette.size(); i++)
            if (own[i].n)
                palette[i] = own[i].Mean();
    }
}

} // namespace

std::vector<RGBQUAD> OptimisedPalette(const LBitmapBase& bitmap, int nColors)
{
    if (std::optional<std::vector<RGBQUAD>> few = FewColors(bitmap, nColors))
        return *few;
    const CHistogram histogram(bitmap);
    std::vector<RGBQUAD> palette = CBoxCutter(histogram.Cells()).Cut(nColors);
    Refine(palette, histogram.Cells());
    std::sort(palette.begin(), palette.end(), Darker);
    return palette;
}

} // namespace kestrune
