#pragma once

#include <cstdint>
#include <vector>

namespace kestrune {

/// One brush of the library: a mask of coverage with its axes and spacing.
struct BrushEntry {
    std::int32_t m_nSpacing = 20;      ///< percent; kept in the file
    std::int32_t m_nSecondValue = 100; ///< kept in the file and written back; nothing here reads it
    double m_xAxis[2] = {0, 0};        ///< in pixels, y downwards
    double m_yAxis[2] = {0, 0};
    int m_nWidth = 0;
    int m_nHeight = 0;
    std::vector<std::uint8_t> m_pMask; ///< m_nWidth x m_nHeight bytes from the top row, 255 full paint, 0 none
    bool m_bGenerated = false;         ///< made from the four numbers below; false for one read from a file
    double m_dRadius = 1.0;            ///< pixels
    double m_dHardness = 1.0;          ///< percent
    double m_dAngle = 1.0;             ///< degrees
    double m_dRoundness = 1.0;         ///< length of the brush by its breadth

    bool operator==(const BrushEntry&) const = default;
};

} // namespace kestrune
