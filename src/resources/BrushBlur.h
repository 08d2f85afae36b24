#pragma once

#include <cstdint>
#include <vector>

namespace kestrune {

/// The weights of the soft edge: a bell of that radius in pixels (1 and up), whose running sums give the weight of any stretch
/// of equal bytes in one subtraction.
class CBrushKernel {
public:
    explicit CBrushKernel(int nRadius);

    /// Taps reach from -Half() to Half() - 1: the last one is never counted, in the sums or in the divisor.
    int Half() const { return m_nHalf; }
    /// The weight of the taps from..to-1, for -Half() <= from <= to <= Half().
    int Weight(int nFrom, int nTo) const { return m_aSums[static_cast<std::size_t>(nTo + m_nHalf)] - m_aSums[static_cast<std::size_t>(nFrom + m_nHalf)]; }
    int Divisor() const { return Weight(-m_nHalf, m_nHalf); }

private:
    int m_nHalf;
    std::vector<int> m_aSums;
};

/// Blurs a plane of width x height bytes in place, columns first, then rows, the edge bytes repeating outside. Runs of equal
/// bytes cost one step each, since most of a brush is empty or full.
void BlurBrush(std::vector<std::uint8_t>& plane, int nWidth, int nHeight, int nRadius);

} // namespace kestrune
