#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrune {

/// Coefficients of the recursive Gaussian, by distance 0..4: of the source (n) and of the result (d), forward (p) and
/// backward (m), and what stands for the pixels beyond a line's ends (b).
struct GaussianCoefficients {
    using Five = std::array<double, 5>;
    Five np{}, nm{}, dp{}, dm{}, bdp{}, bdm{};
};

/// Lines that are filtered side by side: the numbers of a step of all lines lie next to each other. 24 is eight rows of
/// pixels, 32 a strip of columns.
inline constexpr int c_nGaussianRowLanes = 48;
inline constexpr int c_nGaussianColumnLanes = 64;

/// Filters `nLanes` (one of the two above) lines of `nLength` steps at once, in place: `pLines` holds nLength x nLanes
/// bytes, `pScratch` has room for as many doubles.
void GaussianLines(const GaussianCoefficients& coefficients, int nLanes, std::uint8_t* pLines, int nLength, double* pScratch);

} // namespace kestrune
