#pragma once

#include <cstddef>
#include <cstdint>

// What the dabs of a stroke do to rows of pixels. Colours are packed, 3 bytes a pixel, in the picture's order blue, green,
// red; alpha, mask and coverage have one byte a pixel. Each kernel has a plain form, which says what the result is, and a
// vector form chosen for the processor at run time, which gives the same bytes.

namespace kestrune {

inline constexpr int c_nColorPixels = 64; ///< as many as the widest vectors take in one step

/// Columns of one row; empty while x0 >= x1.
struct DabSpan {
    int x0 = 0, x1 = 0;
    /// Takes in a piece that touches it; of two pieces apart it keeps the longer one.
    void Join(int nFirst, int nLast)
    {
        if (x0 < x1 && nFirst <= x1 && nLast >= x0) {
            x0 = nFirst < x0 ? nFirst : x0;
            x1 = nLast > x1 ? nLast : x1;
        } else if (nLast - nFirst > x1 - x0) {
            x0 = nFirst;
            x1 = nLast;
        }
    }
};

/// Some rows of a dab that lie at even distances in memory, from the dab's first column on.
struct DabRun {
    int nRows = 0;
    const std::uint8_t* pCanvas = nullptr; ///< mixed from
    std::uint8_t* pOut = nullptr;          ///< the picture
    std::ptrdiff_t nStride = 0;            ///< of both
    std::uint8_t* pCoverage = nullptr;
    std::ptrdiff_t nCoverageStride = 0;
    const std::uint8_t* pMask = nullptr;   ///< as it is (capped), or mapped to alphas (stacked)
    std::ptrdiff_t nMaskStride = 0;
    /// Capped: for each row columns known to be covered in full, where no dab changes anything more; counted from `nFullOrigin`
    /// left of the run's first column. Null: nothing is known.
    DabSpan* pFull = nullptr;
    int nFullOrigin = 0;
    const DabSpan* pSpans = nullptr;       ///< for each row the pixels that the mask touches
    const std::uint8_t* const* ppInk = nullptr; ///< for each row the colours; null: the one colour
    const std::uint8_t* pColor = nullptr;       ///< that colour, as c_nColorPixels pixels
    int nOpacity = 255; ///< capped: 0..255
    int nDabAlpha = 255; ///< capped: the mask is scaled by it first
};

/// Coverage grows by the mask, out = canvas moved toward the ink by coverage x opacity. What lies outside the spans is left
/// alone: there the coverage does not grow, and the picture holds the result already.
void PlainCappedDab(const DabRun& run);
void CappedDab(const DabRun& run);

/// The canvas itself is moved toward the ink by the mapped mask, and the result goes to the picture too: the canvas must be
/// writable.
void PlainStackedDab(const DabRun& run);
void StackedDab(const DabRun& run);

/// out = canvas moved toward the ink by one alpha a pixel. `pOut` may be `pCanvas`.
void PlainLerpRow(const std::uint8_t* pCanvas, const std::uint8_t* pInk, const std::uint8_t* pAlpha, std::uint8_t* pOut,
                  std::size_t nCount);
void LerpRow(const std::uint8_t* pCanvas, const std::uint8_t* pInk, const std::uint8_t* pAlpha, std::uint8_t* pOut,
             std::size_t nCount);

/// smear = (canvas x (255 - p) + smear x p) / 255, truncated, byte by byte; p is 0..255.
void PlainSmearRow(const std::uint8_t* pCanvas, std::uint8_t* pSmear, int p, std::size_t nBytes);
void SmearRow(const std::uint8_t* pCanvas, std::uint8_t* pSmear, int p, std::size_t nBytes);

/// The ring's weight in a kernel of `ConvolveRow`.
inline constexpr int c_nConvolveUnit = 10000;
/// Three rows of the picture at the first byte to filter; three bytes before and behind them are read.
struct ConvolveRows {
    const std::uint8_t* pAbove;
    const std::uint8_t* pRow;
    const std::uint8_t* pBelow;
};
/// out = |(center x byte + unit x its eight neighbours) / (center + 8 x unit)|, truncated, at most 255. The neighbours are those
/// of the same channel. The divisor 0 counts as 1.
void PlainConvolveRow(const ConvolveRows& rows, std::uint8_t* pOut, int nCenter, std::size_t nBytes);
void ConvolveRow(const ConvolveRows& rows, std::uint8_t* pOut, int nCenter, std::size_t nBytes);

} // namespace kestrune
