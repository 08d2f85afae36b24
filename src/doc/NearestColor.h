#pragma once

#include "base/Color.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace kestrune {

/// The entry nearest by squared distance over red, green and blue; the lowest index wins a tie. Walks the whole palette.
int NearestIndex(std::span<const RGBQUAD> palette, int nRed, int nGreen, int nBlue);

/// The same answer for millions of colours. The cube of colours is cut into cells, and each cell knows the few entries
/// that can be nearest to a colour in it; it is built by halving, so that a cell looks only at what its parent kept.
class CNearestColor {
public:
    explicit CNearestColor(std::span<const RGBQUAD> palette);

    /// Channels 0..255. Safe from any thread.
    int Find(int nRed, int nGreen, int nBlue) const
    {
        const Cell& cell = m_cells[((nRed >> 3) << 10) | ((nGreen >> 3) << 5) | (nBlue >> 3)];
        const Candidate* p = m_candidates.data() + cell.nFirst;
        // Distance and index in one number: the least of them needs no branch, and the lower index wins a tie by itself.
        int nBest = Key(p[0], nRed, nGreen, nBlue);
        for (std::uint32_t i = 1; i < cell.nCount; i++)
            nBest = std::min(nBest, Key(p[i], nRed, nGreen, nBlue));
        return nBest & 255;
    }

private:
    struct Candidate {
        std::uint8_t nRed, nGreen, nBlue, nIndex;
    };
    struct Cell {
        std::uint32_t nFirst = 0;
        std::uint32_t nCount = 0;
    };
    static int Key(const Candidate& c, int nRed, int nGreen, int nBlue)
    {
        const int r = c.nRed - nRed, g = c.nGreen - nGreen, b = c.nBlue - nBlue;
        return (r * r + g * g + b * b) << 8 | c.nIndex;
    }
    void Split(const std::vector<Candidate>& kept, int nRed, int nGreen, int nBlue, int nSide);

    std::vector<Cell> m_cells; ///< 32 x 32 x 32, by the upper five bits of red, green, blue
    std::vector<Candidate> m_candidates;
};

} // namespace kestrune
