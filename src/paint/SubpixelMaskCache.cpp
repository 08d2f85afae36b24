#include "paint/SubpixelMaskCache.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

const std::uint8_t c_aSubpixelKernels[5][5][9] = {
    {{64, 64, 0, 64, 64, 0, 0, 0, 0},
     {25, 102, 0, 25, 102, 0, 0, 0, 0},
     {0, 128, 0, 0, 128, 0, 0, 0, 0},
     {0, 102, 25, 0, 102, 25, 0, 0, 0},
     {0, 64, 64, 0, 64, 64, 0, 0, 0}},
    {{25, 25, 0, 102, 102, 0, 0, 0, 0},
     {6, 43, 0, 43, 162, 0, 0, 0, 0},
     {0, 50, 0, 0, 205, 0, 0, 0, 0},
     {0, 43, 6, 0, 162, 43, 0, 0, 0},
     {0, 25, 25, 0, 102, 102, 0, 0, 0}},
    {{0, 0, 0, 128, 128, 0, 0, 0, 0},
     {0, 0, 0, 50, 205, 0, 0, 0, 0},
     {0, 0, 0, 0, 255, 0, 0, 0, 0},
     {0, 0, 0, 0, 205, 50, 0, 0, 0},
     {0, 0, 0, 0, 128, 128, 0, 0, 0}},
    {{0, 0, 0, 102, 102, 0, 25, 25, 0},
     {0, 0, 0, 43, 162, 0, 6, 43, 0},
     {0, 0, 0, 0, 205, 0, 0, 50, 0},
     {0, 0, 0, 0, 162, 43, 0, 43, 6},
     {0, 0, 0, 0, 102, 102, 0, 25, 25}},
    {{0, 0, 0, 64, 64, 0, 64, 64, 0},
     {0, 0, 0, 25, 102, 0, 25, 102, 0},
     {0, 0, 0, 0, 128, 0, 0, 128, 0},
     {0, 0, 0, 0, 102, 25, 0, 102, 25},
     {0, 0, 0, 0, 64, 64, 0, 64, 64}},
};

namespace {

/// Adds a mask row, weighted, to a padded row; a plain loop that the compiler turns into vectors.
void AddWeighted(std::uint8_t* pOut, const std::uint8_t* pMask, int nCount, int nWeight)
{
    for (int i = 0; i < nCount; i++)
        pOut[i] = static_cast<std::uint8_t>(std::min(255, pOut[i] + ((pMask[i] * nWeight + 128) >> 8)));
}

} // namespace

SubpixelMaskCache& SubpixelMaskCache::Get()
{
    static SubpixelMaskCache s_cache;
    return s_cache;
}

void SubpixelMaskCache::SetMask(std::span<const std::uint8_t> mask, int nWidth, int nHeight, bool bDirty)
{
    if (!bDirty && nWidth == m_nWidth && nHeight == m_nHeight && std::ranges::equal(mask, m_aMask))
        return;
    m_aMask.assign(mask.begin(), mask.end());
    m_nWidth = nWidth;
    m_nHeight = nHeight;
    for (auto& row : m_aPhases)
        for (DabMask& phase : row)
            phase = {};
    m_hard = {};
}

int SubpixelMaskCache::PhaseOf(double f, int nSize)
{
    if (f < 0)
        f += nSize;
    f -= std::floor(f);
    return std::min(static_cast<int>(f * 5), 4); // a fraction that rounds up to 1 belongs to the last fifth
}

DabMask SubpixelMaskCache::Padded() const
{
    DabMask mask;
    mask.aBytes.resize(static_cast<std::size_t>(Stride()) * PaddedHeight());
    return mask;
}

void SubpixelMaskCache::FindSpans(DabMask& mask) const
{
    const int nWidth = PaddedWidth();
    mask.aSpans.resize(PaddedHeight());
    const std::uint8_t* pRow = mask.aBytes.data();
    for (DabSpan& span : mask.aSpans) {
        int nFirst = 0, nLast = nWidth;
        while (nFirst < nLast && pRow[nFirst] == 0)
            nFirst++;
        while (nLast > nFirst && pRow[nLast - 1] == 0)
            nLast--;
        span = {nFirst, nLast};
        pRow += Stride();
    }
}

DabMask& SubpixelMaskCache::GetSubpixelMask(int iy, int ix)
{
    DabMask& phase = m_aPhases[iy][ix];
    if (!phase.aBytes.empty())
        return phase;
    DabMask mask = Padded();
    // The cut at 255 may be made after each weight or after all: sums only grow.
    for (int row = 0; row < m_nHeight; row++)
        for (int k = 0; k < 9; k++)
            if (const int nWeight = c_aSubpixelKernels[iy][ix][k])
                AddWeighted(mask.aBytes.data() + static_cast<std::size_t>(row + k / 3) * Stride() + k % 3,
                            m_aMask.data() + static_cast<std::size_t>(row) * m_nWidth, m_nWidth, nWeight);
    FindSpans(mask);
    return phase = std::move(mask);
}

DabMask& SubpixelMaskCache::GetHardMask()
{
    if (!m_hard.aBytes.empty())
        return m_hard;
    DabMask mask = Padded();
    for (int row = 0; row < m_nHeight; row++)
        for (int col = 0; col < m_nWidth; col++)
            if (m_aMask[static_cast<std::size_t>(row) * m_nWidth + col])
                mask.aBytes[static_cast<std::size_t>(row + 1) * Stride() + col + 1] = 255;
    FindSpans(mask);
    return m_hard = std::move(mask);
}

} // namespace kestrune
