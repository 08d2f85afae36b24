#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrune {

/// Source pixels of one pixel of the scaled picture along one axis, with weights that add up to 256.
struct ScreenTap {
    int nFirst;                     ///< first source pixel
    int nCount;                     ///< at least 1
    const std::uint16_t* pWeights;
};

/// A source pixel and the place of its block in a row: [nStart, nEnd).
struct ScreenRun {
    int nStart;
    int nEnd;
};

/// The loops over one row, in one of their forms.
struct ScreenKernels {
    /// `nPixels` pixels of 24 bits to 32.
    void (*convert)(const std::uint8_t* pBgr, std::uint32_t* pOut, int nPixels);
    /// Pixel i of `pPixels` fills run i. Runs follow each other without a gap; the last ends the row.
    void (*spread)(const std::uint32_t* pPixels, std::span<const ScreenRun> runs, std::uint32_t* pOut);
    /// `pOut[i]` = sum of weight k x row k at i: 8 bits and 8 behind the point.
    void (*mixRows)(std::span<const std::uint8_t* const> rows, const std::uint16_t* pWeights, std::uint16_t* pOut,
                    std::size_t nBytes);
    /// One row of pixels from a mixed row that begins at source pixel `nOrigin` and has four values behind its last.
    void (*mixAcross)(const std::uint16_t* pMixed, std::span<const ScreenTap> taps, int nOrigin, std::uint32_t* pOut);
};
ScreenKernels PlainScreenKernels();
/// The form for this processor.
ScreenKernels VectorScreenKernels();

constexpr std::uint32_t ScreenPixel(unsigned nBlue, unsigned nGreen, unsigned nRed)
{
    return 0xff000000u | nRed << 16 | nGreen << 8 | nBlue;
}

} // namespace kestrune
