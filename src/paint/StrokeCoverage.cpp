#include "paint/StrokeCoverage.h"

#include <cstring>
#include <utility>

namespace kestrune {

namespace {
constexpr std::size_t c_nMostKept = 16 << 20; ///< bytes; what a longer stroke has touched goes back to the system
} // namespace

StrokeCoverage::Block& StrokeCoverage::Spare()
{
    static Block s_spare; // strokes run on the main thread alone
    return s_spare;
}

StrokeCoverage::StrokeCoverage(int nWidth, int nHeight)
    : m_nWidth(nWidth)
{
    const std::size_t nPages = (m_nWidth * nHeight + c_nPage - 1) / c_nPage;
    m_block = std::exchange(Spare(), {});
    if (m_block.aState.size() >= nPages)
        return;
    m_block = {};
    m_block.bytes = CoverageMap(static_cast<int>(c_nPage), static_cast<int>(nPages));
    m_block.aState.assign(nPages, PAGE_UNTOUCHED);
}

StrokeCoverage::~StrokeCoverage()
{
    if (m_block.aState.empty() || m_block.nTouched * c_nPage > c_nMostKept)
        return;
    for (const std::size_t i : m_aDirty) {
        std::memset(m_block.bytes.Row(0) + i * c_nPage, 0, c_nPage);
        m_block.aState[i] = PAGE_CLEAR;
    }
    Spare() = std::move(m_block);
}

StrokeCoverage& StrokeCoverage::operator=(StrokeCoverage&& other) noexcept
{
    std::swap(m_block, other.m_block);
    std::swap(m_aDirty, other.m_aDirty);
    std::swap(m_nWidth, other.m_nWidth);
    return *this;
}

void StrokeCoverage::Touch(std::size_t iPage)
{
    std::uint8_t& nState = m_block.aState[iPage];
    if (nState == PAGE_UNTOUCHED) {
        // A page that is read before it is written is handed out twice, first as the one of zeros that all share.
        *static_cast<volatile std::uint8_t*>(m_block.bytes.Row(0) + iPage * c_nPage) = 0;
        m_block.nTouched++;
    }
    nState = PAGE_DIRTY;
    m_aDirty.push_back(iPage);
}

} // namespace kestrune
