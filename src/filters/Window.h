#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kestrune {

/// A window that slides along a line and stands still at its ends. An even size reaches further back by one. A size over
/// the line's length is the line.
class CWindow {
public:
    static constexpr int c_nMost = 10;

    CWindow(int nSize, int nLength)
        : m_nSize(std::min(std::clamp(nSize, 1, c_nMost), std::max(nLength, 1)))
        , m_nLength(nLength)
    {
    }

    int Size() const { return m_nSize; }
    /// How far it reaches before the pixel; the first pixel whose window has moved is the next one.
    int Before() const { return m_nSize / 2; }
    /// The number of places it can take.
    int Places() const { return m_nLength - m_nSize + 1; }
    int Start(int n) const { return std::clamp(n - Before(), 0, m_nLength - m_nSize); }

    /// A row of pixels whose places are filled from `Before()` on: the ends take what their nearest place has.
    void SpreadEnds(std::uint8_t* pRow) const
    {
        for (int x = 0; x < Before(); ++x)
            std::memcpy(pRow + 3 * x, pRow + 3 * Before(), 3);
        for (int x = Before() + Places(); x < m_nLength; ++x)
            std::memcpy(pRow + 3 * x, pRow + 3 * (Before() + Places() - 1), 3);
    }

private:
    int m_nSize;
    int m_nLength;
};

} // namespace kestrune
