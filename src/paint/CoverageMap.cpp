#include "paint/CoverageMap.h"

#include <new>
#include <utility>

#include <sys/mman.h>

namespace kestrune {

CoverageMap::CoverageMap(int nWidth, int nHeight)
    : m_nBytes(static_cast<std::size_t>(nWidth) * static_cast<std::size_t>(nHeight))
    , m_nWidth(nWidth)
{
    if (m_nBytes == 0)
        return;
    // Straight from the system: the heap would clear recycled memory as a whole.
    void* p = mmap(nullptr, m_nBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (p == MAP_FAILED)
        throw std::bad_alloc();
    m_pBytes = static_cast<std::uint8_t*>(p);
}

CoverageMap::~CoverageMap()
{
    if (m_pBytes)
        munmap(m_pBytes, m_nBytes);
}

void CoverageMap::UseLargePages()
{
    if (m_pBytes)
        madvise(m_pBytes, m_nBytes, MADV_HUGEPAGE); // a system without them goes on as before
}

void CoverageMap::Swap(CoverageMap& other) noexcept
{
    std::swap(m_pBytes, other.m_pBytes);
    std::swap(m_nBytes, other.m_nBytes);
    std::swap(m_nWidth, other.m_nWidth);
}

} // namespace kestrune
