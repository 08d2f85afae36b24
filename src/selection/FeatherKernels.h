#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrune {

/// The curve as the line kernel wants it. All sums stay below 2^24, so that they are exact in floats.
struct FeatherLine {
    static constexpr int c_nBlock = 64;                       ///< outputs made at a time
    static constexpr int c_nSampled = 2 * c_nBlock - 1;       ///< or these, where only every other one is summed
    int nHalf;
    float fTotal;
    float fSteepest; ///< by how much the weights of two neighbours differ at most
    /// For each gap from 0 to `c_nGaps` a table of `nLength`: the weight of what lies at or beyond a change, for distances of output to
    /// change from -nHalf - 2 * c_nBlock on; where the gap is not 0, of a second change that far behind the first as well.
    static constexpr int c_nGaps = 8;
    int nLength; ///< even
    std::vector<float> beyond;
    /// The same, parted into the even and the odd places.
    std::vector<float> aHalves[2];

    /// The place of an output's weight is this and the change's `nPlace`.
    int PlaceOf(int nOutput) const { return nOutput + nHalf + 2 * c_nBlock; }
    const float* At(int nPlace) const { return beyond.data() + nPlace; }
    /// From there on stand the weights of every other output.
    const float* EveryOtherAt(int nPlace) const { return aHalves[nPlace & 1].data() + static_cast<unsigned>(nPlace) / 2; }
};

/// One change of value in a line: at this position it is another than before, by this much. Two changes by the same that follow each
/// other closely count as one: under a wide curve most lines climb step by step, and that halves the work.
struct LineChange {
    int nAt;
    int nLast;    ///< the second change's position, or the same
    int nPlace;   ///< of its table, less its position
    float fBy;    ///< each of the two
    float fLevel; ///< the value from here on
    float fSoFar; ///< how much all changes up to this one make together, up or down
};

/// What some outputs see of a line: the value before the changes, and those within the curve's reach (at least one).
struct FeatherWindow {
    int nStart;
    const LineChange* pChanges;
    int nChanges;

    /// By how much the line goes up and down in it, taken together.
    float Way() const { return pChanges[nChanges - 1].fSoFar - pChanges->fSoFar + std::abs(pChanges->fBy) * (pChanges->nLast > pChanges->nAt ? 2 : 1); }
    /// It only rises or only falls.
    bool IsOneWay() const { return std::abs(pChanges[nChanges - 1].fLevel - static_cast<float>(nStart)) == Way(); }
};

struct FeatherKernels {
    /// The places where a byte differs from the one before; how many. There is room for one less than the line has bytes.
    int (*findChanges)(const FeatherLine& line, const std::uint8_t* pBytes, int nLength, LineChange* pChanges);
    /// The weighted means of `nCount` (at most `c_nBlock`) outputs from `nFirst` on.
    void (*block)(const FeatherLine& line, const FeatherWindow& window, int nFirst, std::uint8_t* pOut, int nCount);
    /// The same for exactly `c_nSampled` outputs of a wide curve under which the mask changes little by little. Every other output is
    /// summed; one between two others lies near their mean, at most `fOff` away, and between them where all changes go one way. Where
    /// that leaves a doubt, it is summed too.
    void (*sampled)(const FeatherLine& line, const FeatherWindow& window, int nFirst, float fOff, std::uint8_t* pOut);
    /// Turns a tile of 16 columns and 16 rows.
    void (*turn16)(const std::uint8_t* pIn, std::ptrdiff_t nInStride, std::uint8_t* pOut, std::ptrdiff_t nOutStride);
};
FeatherKernels BestFeatherKernels();

} // namespace kestrune
