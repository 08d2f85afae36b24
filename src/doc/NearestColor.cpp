#include "doc/NearestColor.h"

#include <algorithm>
#include <array>

namespace kestrune {

namespace {
constexpr int c_nCellSide = 8;

/// Least and greatest distance between a level and the levels [nLow, nLow + nSide).
int LeastOf(int v, int nLow, int nSide)
{
    return v < nLow ? nLow - v : v > nLow + nSide - 1 ? v - (nLow + nSide - 1) : 0;
}
int GreatestOf(int v, int nLow, int nSide)
{
    return std::max(std::abs(v - nLow), std::abs(v - (nLow + nSide - 1)));
}
} // namespace

int NearestIndex(std::span<const RGBQUAD> palette, int nRed, int nGreen, int nBlue)
{
    int iBest = 0;
    int nBest = 3 * 255 * 255 + 1;
    for (std::size_t i = 0; i < palette.size(); i++) {
        const int r = palette[i].rgbRed - nRed, g = palette[i].rgbGreen - nGreen, b = palette[i].rgbBlue - nBlue;
        const int nDistance = r * r + g * g + b * b;
        if (nDistance < nBest) {
            nBest = nDistance;
            iBest = static_cast<int>(i);
        }
    }
    return iBest;
}

CNearestColor::CNearestColor(std::span<const RGBQUAD> palette)
    : m_cells(32 * 32 * 32)
{
    std::vector<Candidate> all;
    for (std::size_t i = 0; i < std::min<std::size_t>(palette.size(), 256); i++)
        all.push_back({palette[i].rgbRed, palette[i].rgbGreen, palette[i].rgbBlue, static_cast<std::uint8_t>(i)});
    if (all.empty())
        all.push_back({});
    m_candidates.reserve(m_cells.size() * 4);
    Split(all, 0, 0, 0, 256);
}

/// Keeps, of a parent's candidates, those that can be nearest within the cell, in the palette's order.
void CNearestColor::Split(const std::vector<Candidate>& kept, int nRed, int nGreen, int nBlue, int nSide)
{
    std::array<int, 256> least;
    int nBound = 4 * 255 * 255;
    for (std::size_t i = 0; i < kept.size(); i++) {
        const Candidate& c = kept[i];
        const int r = LeastOf(c.nRed, nRed, nSide), g = LeastOf(c.nGreen, nGreen, nSide), b = LeastOf(c.nBlue, nBlue, nSide);
        const int R = GreatestOf(c.nRed, nRed, nSide), G = GreatestOf(c.nGreen, nGreen, nSide), B = GreatestOf(c.nBlue, nBlue, nSide);
        least[i] = r * r + g * g + b * b;
        nBound = std::min(nBound, R * R + G * G + B * B);
    }
    std::vector<Candidate> own;
    for (std::size_t i = 0; i < kept.size(); i++)
        if (least[i] <= nBound)
            own.push_back(kept[i]);
    if (nSide > c_nCellSide) {
        const int nHalf = nSide / 2;
        for (int i = 0; i < 8; i++)
            Split(own, nRed + (i & 4 ? nHalf : 0), nGreen + (i & 2 ? nHalf : 0), nBlue + (i & 1 ? nHalf : 0), nHalf);
        return;
    }
    Cell& cell = m_cells[((nRed >> 3) << 10) | ((nGreen >> 3) << 5) | (nBlue >> 3)];
    cell.nFirst = static_cast<std::uint32_t>(m_candidates.size());
    cell.nCount = static_cast<std::uint32_t>(own.size());
    m_candidates.insert(m_candidates.end(), own.begin(), own.end());
}

} // namespace kestrune
