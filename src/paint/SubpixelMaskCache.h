#pragma once

#include "paint/DabKernels.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kestrune {

/// A brush mask at one fraction of a pixel, with a border: its own width and height plus 2. Rows end with zeros beyond that, so
/// that vectors may read and lay whole steps.
struct DabMask {
    static constexpr int c_nTail = 64;
    std::vector<std::uint8_t> aBytes;
    std::vector<DabSpan> aSpans; ///< the columns of each row that are not 0
    std::vector<DabSpan> aSteps; ///< the same in the whole steps that a dab far from the edges lays; empty until there was one
    /// The bytes through a table, for strokes that build up: what a mask byte and the opacity make of a full alpha.
    std::vector<std::uint8_t> aMapped;
    int nMapKey = -1; ///< which table that was; -1 none yet
};

/// The brush mask resampled at 5 x 5 fractions of a pixel, and once more hardened for tiny brushes. Each is built when it is
/// first asked for and kept over strokes, as long as the strokes bring the same mask: its bytes are the key, so that a mask of
/// other content at the same address is not mistaken for it.
class SubpixelMaskCache {
public:
    /// The cache of the process.
    static SubpixelMaskCache& Get();

    /// Makes this mask the one that is cached; what was built from another is dropped. `bDirty` drops it in any case.
    void SetMask(std::span<const std::uint8_t> mask, int nWidth, int nHeight, bool bDirty);

    /// The cache's own copy, which lives until the next `SetMask` brings another.
    const std::uint8_t* Mask() const { return m_aMask.data(); }
    int PaddedWidth() const { return m_nWidth + 2; }
    int Stride() const { return PaddedWidth() + DabMask::c_nTail; } ///< bytes from row to row
    int PaddedHeight() const { return m_nHeight + 2; }

    /// The fraction of a coordinate in fifths of a pixel, 0..4. `nSize` is the mask's side, which lifts points a little left of
    /// or above the picture to positive numbers.
    static int PhaseOf(double f, int nSize);
    DabMask& GetSubpixelMask(int iy, int ix);
    /// Any byte but 0 becomes 255; no sub-pixel placement.
    DabMask& GetHardMask();

private:
    DabMask Padded() const;
    void FindSpans(DabMask& mask) const;

    std::vector<std::uint8_t> m_aMask;
    int m_nWidth = 0;
    int m_nHeight = 0;
    DabMask m_aPhases[5][5];
    DabMask m_hard;
};

/// The kernels of the 25 fractions, [iy][ix], three rows of three weights on a scale of 256. They are as they have always been:
/// not everywhere the exact product of the weights of each axis.
extern const std::uint8_t c_aSubpixelKernels[5][5][9];

} // namespace kestrune
