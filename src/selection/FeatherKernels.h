#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrune {

/// The curve as the line kernel wants it. All sums stay below 2^24, so that they are exact in floats.
struct FeatherLine {
    static constexpr int c_nBlock = 64; ///< outputs made at a time
    int nHalf;
    float fTotal;
    /// Weight of what lies at or beyond a change, for distances from -nHalf - c_nBlock to nHalf + c_nBlock of output to change.
    std::vector<float> beyond;
    const float* Beyond(int nDistance) const { return beyond.data() + nDistance + nHalf + c_nBlock; }
};

/// One change of value in a line: at this position it is another than before, by this much.
struct LineChange {
    int nAt;
    float fBy;
};

struct FeatherKernels {
    /// The weighted means of `nCount` (at most `c_nBlock`) outputs from `nFirst` on: `nStart` is the value before the changes, which
    /// are those within the curve's reach.
    void (*block)(const FeatherLine& line, int nStart, const LineChange* pChanges, int nChanges, int nFirst, std::uint8_t* pOut,
                  int nCount);
    /// Turns a tile of 16 columns and 16 rows.
    void (*turn16)(const std::uint8_t* pIn, std::ptrdiff_t nInStride, std::uint8_t* pOut, std::ptrdiff_t nOutStride);
};
FeatherKernels BestFeatherKernels();

} // namespace kestrune
