#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kestrune {

/// Appends numbers of either byte order to the file that a writer builds in memory.
class CByteWriter {
public:
    explicit CByteWriter(std::vector<std::uint8_t>& out)
        : m_out(out)
    {
    }

    void U8(unsigned v) { m_out.push_back(static_cast<std::uint8_t>(v)); }
    void U16LE(unsigned v)
    {
        U8(v & 255);
        U8(v >> 8 & 255);
    }
    void U32LE(std::uint32_t v)
    {
        U16LE(v & 0xFFFF);
        U16LE(v >> 16);
    }
    void U16BE(unsigned v)
    {
        U8(v >> 8 & 255);
        U8(v & 255);
    }
    void U32BE(std::uint32_t v)
    {
        U16BE(v >> 16);
        U16BE(v & 0xFFFF);
    }
    void Text(std::string_view text);
    void Raw(std::span<const std::uint8_t> bytes);
    void Zeros(std::size_t nBytes);

    std::size_t Size() const { return m_out.size(); }
    /// Overwrites a big-endian number that was left open earlier.
    void PatchU16BE(std::size_t nPos, unsigned v)
    {
        m_out[nPos] = static_cast<std::uint8_t>(v >> 8);
        m_out[nPos + 1] = static_cast<std::uint8_t>(v);
    }
    void PatchU32BE(std::size_t nPos, std::uint32_t v)
    {
        PatchU16BE(nPos, v >> 16);
        PatchU16BE(nPos + 2, v & 0xFFFF);
    }

private:
    std::vector<std::uint8_t>& m_out;
};

} // namespace kestrune
