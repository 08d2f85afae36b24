#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrune {

/// Pixels that a spline reads beyond the source on each side.
inline constexpr int c_nProjectivePad = 3;

/// The source as the row kernel reads it: blue, green and red times alpha, then alpha, as 16-bit numbers, with a border of zeros of
/// `c_nProjectivePad` pixels around.
struct PremultipliedSource {
    const std::uint16_t* pPixels; ///< the border's upper left pixel
    int nWidth;                   ///< without the border
    int nHeight;
    std::size_t nStride; ///< numbers from row to row
};

/// Homogeneous coordinates of an output row's first pixel, and what a step to the right adds.
struct ProjectiveRow {
    double start[3];
    double step[3];
};

struct ProjectedRow {
    std::uint8_t* pBgr;
    std::uint8_t* pMask;
    int nCount;
};

/// One row of the source in the kernel's form, without its border.
void PremultiplyRow(const std::uint8_t* pBgr, const std::uint8_t* pMask, std::uint16_t* pOut, int nCount);
/// One output row.
void ProjectRow(const PremultipliedSource& source, const ProjectiveRow& row, const ProjectedRow& out);

/// False where the processor has no vectors that the kernel could use: the plain form serves there.
bool HasProjectiveKernel();

} // namespace kestrune
