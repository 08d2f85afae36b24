#include "paint/StrokeCoverage.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kestrune {

namespace {
constexpr int c_nLeastStride = 1024;
constexpr std::size_t c_nManyPages = 256; ///< a stroke of so many is a long one, no dab of a press
constexpr std::size_t c_nMostKept = 16 << 20; ///< bytes; what a longer stroke has touched goes back to the system
} // namespace

StrokeCoverage::Block& StrokeCoverage::Spare()
{
    static Block s_spare; // strokes run on the main thread alone
    return s_spare;
}

StrokeCoverage::StrokeCoverage(int nWidth, int nHeight)
    : m_nWidth(nWidth)
    , m_nHeight(nHeight)
{
    const std::size_t nPages = (static_cast<std::size_t>(nWidth) * nHeight + c_nPage - 1) / c_nPage;
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
    Clear();
    Spare() = std::move(m_block);
}

StrokeCoverage& StrokeCoverage::operator=(StrokeCoverage&& other) noexcept
{
    std::swap(m_block, other.m_block);
    std::swap(m_aDirty, other.m_aDirty);
    std::swap(m_nWidth, other.m_nWidth);
    std::swap(m_nHeight, other.m_nHeight);
    std::swap(m_nFirst, other.m_nFirst);
    std::swap(m_nStride, other.m_nStride);
    return *this;
}

void StrokeCoverage::Clear()
{
    for (const std::size_t i : m_aDirty) {
        std::memset(m_block.bytes.Row(0) + i * c_nPage, 0, c_nPage);
        m_block.aState[i] = PAGE_CLEAR;
    }
    m_aDirty.clear();
}

/// Longer rows. They get at least twice as long, to that side to which the stroke runs, so that what was laid moves seldom.
void StrokeCoverage::Spread(int x0, int x1)
{
    const int nOldFirst = m_nFirst, nOldStride = m_nStride;
    std::vector<std::uint8_t> aSaved(m_aDirty.size() * c_nPage);
    const std::vector<std::size_t> aOld = m_aDirty;
    for (std::size_t i = 0; i < aOld.size(); i++)
        std::memcpy(aSaved.data() + i * c_nPage, m_block.bytes.Row(0) + aOld[i] * c_nPage, c_nPage);
    Clear();
    const bool bLeft = nOldStride > 0 && x0 < nOldFirst;
    if (nOldStride > 0) {
        x0 = std::min(x0, nOldFirst);
        x1 = std::max(x1, nOldFirst + nOldStride);
    }
    m_nStride = std::min(std::max({x1 - x0, 2 * nOldStride, c_nLeastStride}), m_nWidth);
    m_nFirst = std::clamp(bLeft ? x1 - m_nStride : x0, 0, m_nWidth - m_nStride);
    const std::size_t nOldEnd = static_cast<std::size_t>(nOldStride) * m_nHeight;
    for (std::size_t i = 0; i < aOld.size(); i++) {
        const std::size_t nEnd = std::min((aOld[i] + 1) * c_nPage, nOldEnd);
        for (std::size_t n = aOld[i] * c_nPage, nCount; n < nEnd; n += nCount) { // the pieces of rows that lay in the page
            const std::size_t nColumn = n % nOldStride;
            nCount = std::min(nEnd - n, nOldStride - nColumn);
            const int x = nOldFirst + static_cast<int>(nColumn);
            std::uint8_t* pTo = Open(static_cast<int>(n / nOldStride), x, x + static_cast<int>(nCount));
            std::memcpy(pTo, aSaved.data() + i * c_nPage + n % c_nPage, nCount);
        }
    }
}

void StrokeCoverage::Touch(std::size_t iPage)
{
    std::uint8_t& nState = m_block.aState[iPage];
    if (nState == PAGE_UNTOUCHED) {
        // A page that is read before it is written is handed out twice, first as the one of zeros that all share.
        *static_cast<volatile std::uint8_t*>(m_block.bytes.Row(0) + iPage * c_nPage) = 0;
        if (++m_block.nTouched == c_nManyPages)
            m_block.bytes.UseLargePages();
    }
    nState = PAGE_DIRTY;
    m_aDirty.push_back(iPage);
}

} // namespace kestrune
