#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrune {

/// One byte for each pixel of a picture (or cell of any other plane), all zero at first. The system gives a page of memory when it is first written, so
/// a map costs what is painted on and not what the picture measures.
class CoverageMap {
public:
    CoverageMap() = default;
    /// Throws std::bad_alloc.
    CoverageMap(int nWidth, int nHeight);
    ~CoverageMap();
    CoverageMap(const CoverageMap&) = delete;
    CoverageMap& operator=(const CoverageMap&) = delete;
    CoverageMap(CoverageMap&& other) noexcept { Swap(other); }
    CoverageMap& operator=(CoverageMap&& other) noexcept
    {
        Swap(other);
        return *this;
    }

    /// For a map of which much will be touched: the system may hand out pages of megabytes from now on, which spares the processor
    /// looking up thousands of small ones, but makes the first touch of each a longer wait.
    void UseLargePages();

    std::uint8_t* Row(int y) const { return m_pBytes + static_cast<std::size_t>(y) * m_nWidth; }
    int Width() const { return m_nWidth; }

private:
    void Swap(CoverageMap& other) noexcept;

    std::uint8_t* m_pBytes = nullptr;
    std::size_t m_nBytes = 0;
    int m_nWidth = 0;
};

} // namespace kestrune
