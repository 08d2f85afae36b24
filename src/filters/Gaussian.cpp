// Gaussian blur by a fourth-order recursion, whose cost knows no radius: down every column, then along every row. The
// bytes between the two passes stand in the picture's own rows. Unsharp mask is built on it.
#include "base/ParallelRows.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/GaussianKernel.h"
#include "filters/RowKernels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <type_traits>
#include <vector>

namespace kestrune {

namespace {

GaussianCoefficients MakeCoefficients(int nRadius)
{
    const double r = std::abs(nRadius) + 1.0;
    const double s = std::sqrt(-(r * r) / (2 * std::log(1.0 / 255.0)));
    const double x0 = -1.783 / s, x1 = -1.723 / s, x2 = 0.6318 / s, x3 = 1.997 / s;
    const double d = std::sqrt(6.28) * s; // 6.28 stands for two pi
    const double a0 = 1.6803 / d, a1 = 3.735 / d, a2 = -0.6803 / d, a3 = -0.2598 / d;

    GaussianCoefficients g;
    g.np = {a0 + a2,
            std::exp(x1) * (a3 * std::sin(x3) - std::cos(x3) * (2 * a0 + a2))
                + std::exp(x0) * (a1 * std::sin(x2) - std::cos(x2) * (2 * a2 + a0)),
            2 * std::exp(x0 + x1)
                    * (std::cos(x3) * (a0 + a2) * std::cos(x2) - std::sin(x2) * std::cos(x3) * a1
                       - std::sin(x3) * std::cos(x2) * a3)
                + std::exp(2 * x0) * a2 + std::exp(2 * x1) * a0,
            std::exp(2 * x0 + x1) * (a3 * std::sin(x3) - std::cos(x3) * a2)
                + std::exp(2 * x1 + x0) * (a1 * std::sin(x2) - std::cos(x2) * a0),
            0};
    g.dp = {0, -2 * std::exp(x1) * std::cos(x3) - 2 * std::exp(x0) * std::cos(x2),
            4 * std::cos(x3) * std::cos(x2) * std::exp(x0 + x1) + std::exp(2 * x1) + std::exp(2 * x0),
            -2 * std::cos(x2) * std::exp(2 * x1 + x0) - 2 * std::cos(x3) * std::exp(2 * x0 + x1),
            std::exp(2 * x0 + 2 * x1)};
    g.dm = g.dp;
    for (int i = 1; i < 5; ++i)
        g.nm[i] = g.np[i] - g.dp[i] * g.np[0];
    double fSumP = 0, fSumM = 0, fSumD = 0;
    for (int i = 0; i < 5; ++i) {
        fSumP += g.np[i];
        fSumM += g.nm[i];
        fSumD += g.dp[i];
    }
    for (int i = 0; i < 5; ++i) {
        g.bdp[i] = fSumP / (1 + fSumD) * g.dp[i];
        g.bdm[i] = fSumM / (1 + fSumD) * g.dm[i];
    }
    return g;
}

/// The columns, a strip of bytes at a time, from the source's rows into the rows to fill.
void BlurColumns(CFilterTarget& target, const std::vector<std::uint8_t*>& apOut, const GaussianCoefficients& g)
{
    constexpr int W = c_nGaussianColumnLanes;
    const auto nHeight = static_cast<std::size_t>(target.Height());
    ParallelRows((target.RowBytes() + W - 1) / W, 1, [&](int i0, int i1) {
        std::vector<std::uint8_t> lines(nHeight * W);
        std::vector<double> scratch(nHeight * W);
        for (int i = i0; i < i1; ++i) {
            const std::size_t nFirst = static_cast<std::size_t>(i) * W;
            const std::size_t n = std::min<std::size_t>(W, static_cast<std::size_t>(target.RowBytes()) - nFirst);
            const auto strip = [&](auto nBytes) { // of a known width, but for the last one
                for (std::size_t y = 0; y < nHeight; ++y)
                    std::memcpy(lines.data() + y * W, target.Row(static_cast<int>(y)) + nFirst, nBytes);
                GaussianLines(g, W, lines.data(), target.Height(), scratch.data());
                for (std::size_t y = 0; y < nHeight; ++y)
                    std::memcpy(apOut[y] + nFirst, lines.data() + y * W, nBytes);
            };
            if (n == W)
                strip(std::integral_constant<std::size_t, W>());
            else
                strip(n);
        }
    });
}

constexpr int c_nRowsAtOnce = c_nGaussianRowLanes / 3;

/// Calls `move(r, x, n)` for each pixel of a group of rows, the rows of a column after each other. A pixel is moved as four bytes,
/// the last of which the neighbour that comes next overwrites; only those of the last column are moved as three.
template <class Move>
void EachPixel(int nRows, int nWidth, const Move& move)
{
    for (std::size_t x = 0; x + 1 < static_cast<std::size_t>(nWidth); ++x)
        for (int r = 0; r < nRows; ++r)
            move(r, x, std::integral_constant<std::size_t, 4>());
    for (int r = 0; r < nRows; ++r)
        move(r, static_cast<std::size_t>(nWidth) - 1, std::integral_constant<std::size_t, 3>());
}

/// A group of rows (or what is left of them) side by side, in place.
void BlurRows(std::uint8_t* const* ppRows, int nRows, int nWidth, const GaussianCoefficients& g, std::uint8_t* pLines,
              double* pScratch)
{
    constexpr std::size_t W = c_nGaussianRowLanes;
    EachPixel(nRows, nWidth, [&](int r, std::size_t x, auto n) { std::memcpy(pLines + x * W + r * 3, ppRows[r] + 3 * x, n); });
    GaussianLines(g, W, pLines, nWidth, pScratch);
    EachPixel(nRows, nWidth, [&](int r, std::size_t x, auto n) { std::memcpy(ppRows[r] + 3 * x, pLines + x * W + r * 3, n); });
}

/// The blur, and what follows it on each row: `finish(y, row)`.
void Blur(CFilterTarget& target, int nRadius, const std::function<void(int, std::uint8_t*)>& finish)
{
    if (target.IsEmpty())
        return;
    const GaussianCoefficients g = MakeCoefficients(nRadius);
    target.Prepare();
    const int nHeight = target.Height();
    const int nWidth = target.Width();
    std::vector<std::uint8_t*> apOut(static_cast<std::size_t>(nHeight));
    for (int y = 0; y < nHeight; ++y)
        apOut[y] = target.OutRow(y);
    BlurColumns(target, apOut, g);
    ParallelRows((nHeight + c_nRowsAtOnce - 1) / c_nRowsAtOnce, 1, [&](int i0, int i1) {
        std::vector<std::uint8_t> lines(static_cast<std::size_t>(nWidth) * c_nGaussianRowLanes);
        std::vector<double> scratch(lines.size());
        for (int i = i0; i < i1; ++i) {
            const int yFirst = i * c_nRowsAtOnce;
            const int nRows = std::min(c_nRowsAtOnce, nHeight - yFirst);
            BlurRows(&apOut[yFirst], nRows, nWidth, g, lines.data(), scratch.data());
            for (int y = yFirst; y < yFirst + nRows; ++y) {
                finish(y, apOut[y]);
                target.Finish(y);
            }
        }
    });
}

} // namespace

void RunGaussian(const FilterRun& run)
{
    CFilterTarget target(run);
    Blur(target, run.values.an[0], [](int, std::uint8_t*) {});
}

/// Adds the difference to the blurred picture, a whole number of times, where twice it reaches the threshold. Amounts under
/// 100 add it no time at all.
void RunUnsharp(const FilterRun& run)
{
    CFilterTarget target(run);
    const int nFactor = run.values.an[1] / 100;
    const int nThreshold = run.values.an[2];
    Blur(target, run.values.an[0], [&](int y, std::uint8_t* pRow) {
        UnsharpRow(target.Row(y), pRow, nFactor, nThreshold, static_cast<std::size_t>(target.RowBytes()));
    });
}

} // namespace kestrune
