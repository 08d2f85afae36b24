#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrune {

/// One block of bytes through which rows are moved. `RowBuffer` is one locked at width x 3 bytes.
class LBuffer {
public:
    LBuffer() = default;
    explicit LBuffer(std::size_t nBytes) { Reallocate(nBytes); }

    /// Sets the size in bytes; what was held up to the smaller size stays, the rest is undefined. Throws std::bad_alloc.
    void Reallocate(std::size_t nBytes) { m_bytes.resize(nBytes); }
    std::uint8_t* Lock() { return m_bytes.data(); }
    void Unlock() {}
    void Free()
    {
        m_bytes.clear();
        m_bytes.shrink_to_fit();
    }

    std::size_t GetSize() const { return m_bytes.size(); }
    const std::uint8_t* Data() const { return m_bytes.data(); }

private:
    std::vector<std::uint8_t> m_bytes;
};

} // namespace kestrune
