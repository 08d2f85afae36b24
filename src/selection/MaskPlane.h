#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrune {

/// A plane of bytes, row after row without gaps: 0 outside the selection, 255 inside. It does not own its memory.
struct MaskPlane {
    std::uint8_t* pBytes;
    int nWidth;
    int nHeight;

    std::uint8_t* Row(int y) const { return pBytes + static_cast<std::size_t>(y) * nWidth; }
    std::size_t Size() const { return static_cast<std::size_t>(nWidth) * nHeight; }
};

/// What a selection that is being made does to the one that stands.
enum class SelectMode { New = 1, Add = 2, Subtract = 3, Intersect = 4 };

} // namespace kestrune
