#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace kestrune {

/// Reader of a placeable metafile's header: the size that the picture declares of itself.
class CPaintMetaFile {
public:
    /// The 22-byte header with the alignment of a little-endian file.
    struct Header {
        std::uint32_t dwKey = 0;
        std::uint16_t wHandle = 0;
        std::int16_t nLeft = 0, nTop = 0, nRight = 0, nBottom = 0;
        std::uint16_t nInch = 0;
        std::uint8_t aReserved[6] = {};
    };
    static constexpr std::uint32_t c_dwKey = 0x9AC6CDD7;

    /// Reads the header; without the key, or when the file is too short, everything comes out 0.
    void ReadHeader(std::span<const std::uint8_t> file);
    /// True when width, height and units per inch are all non-zero.
    bool IsUsable() const { return m_nWidth != 0 && m_nHeight != 0 && m_nInch != 0; }

    int m_nWidth = 0;  ///< header units
    int m_nHeight = 0; ///< header units
    int m_nInch = 0;   ///< header units an inch
    Header m_Header;
};

} // namespace kestrune
