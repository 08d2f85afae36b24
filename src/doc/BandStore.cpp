#include "doc/BandStore.h"

#include "base/ParallelRows.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

#include <unistd.h>

namespace kestrune {

namespace {
// Small enough that a dab on a large picture copies little, large enough that sharing a hundred megapixels is cheap.
constexpr std::size_t c_nBandBytes = 256 * 1024;

std::size_t MachineMemory()
{
    static const std::size_t s_nBytes = static_cast<std::size_t>(std::max(0L, sysconf(_SC_PHYS_PAGES)))
        * static_cast<std::size_t>(std::max(0L, sysconf(_SC_PAGESIZE)));
    return s_nBytes;
}
} // namespace

CBandStore::CBandStore(int nRows, std::size_t nRowBytes)
    : m_nRows(nRows)
    , m_nRowBytes(nRowBytes)
{
    const std::size_t nLimit = MachineMemory();
    if (nLimit != 0 && nRowBytes != 0 && static_cast<std::size_t>(nRows) > nLimit / nRowBytes)
        throw std::bad_alloc();
    m_bands.resize(ChooseBands());
    for (std::size_t i = 0; i < m_bands.size(); i++) {
        m_bands[i] = std::make_shared<BandData>();
        m_bands[i]->data.reset(new std::uint8_t[RowsInBand(i) * nRowBytes]);
    }
}

CBandStore::CBandStore(int nRows, std::span<const std::uint8_t> row)
    : m_nRows(nRows)
    , m_nRowBytes(row.size())
{
    const std::size_t nBands = ChooseBands();
    const auto band = std::make_shared<BandData>();
    const int nBandRows = RowsInBand(0);
    band->data.reset(new std::uint8_t[nBandRows * m_nRowBytes]);
    for (int y = 0; y < nBandRows; y++)
        std::copy(row.begin(), row.end(), band->data.get() + y * m_nRowBytes);
    m_bands.assign(nBands, band);
}

/// Chooses the rows of a band for the store's row length; the number of bands.
std::size_t CBandStore::ChooseBands()
{
    while (m_nBandRows * 2 * m_nRowBytes <= c_nBandBytes && m_nBandRows < m_nRows) {
        m_nBandRows *= 2;
        m_nBandShift++;
    }
    return (static_cast<std::size_t>(m_nRows) + m_nBandRows - 1) >> m_nBandShift;
}

int CBandStore::RowsInBand(std::size_t iBand) const
{
    return std::min(m_nBandRows, m_nRows - static_cast<int>(iBand << m_nBandShift));
}

bool CBandStore::IsPrivate(std::size_t iBand) const
{
    if (m_bands[iBand].use_count() != 1)
        return false;
    // The count is read without ordering. A thread that has just let go of this band may have read it until then; its
    // release of the count and this fence put those reads before the writes that follow here.
    std::atomic_thread_fence(std::memory_order_acquire);
    return true;
}

std::uint8_t* CBandStore::WriteRow(int y)
{
    Detach(y, y + 1);
    return m_bands[Band(y)]->data.get() + Offset(y);
}

void CBandStore::Detach(int y0, int y1)
{
    if (y1 <= y0)
        return;
    // From a megabyte on by all cores: fresh memory costs as much as the copy, and a press of a large brush waits for it.
    const int nFirst = static_cast<int>(Band(y0));
    ParallelRows(static_cast<int>(Band(y1 - 1)) + 1 - nFirst, 4, [&](int i0, int i1) {
        for (int i = i0; i < i1; i++)
            MakePrivate(static_cast<std::size_t>(nFirst + i), true);
    });
}

void CBandStore::Replace(int y0, int y1)
{
    if (y1 <= y0)
        return;
    for (std::size_t i = Band(y0); i <= Band(y1 - 1); i++) {
        const int nFirst = FirstRow(static_cast<int>(i));
        MakePrivate(i, y0 > nFirst || y1 < nFirst + RowsInBand(i));
    }
}

void CBandStore::MakePrivate(std::size_t iBand, bool bKeep)
{
    if (IsPrivate(iBand))
        return;
    const std::size_t nBytes = RowsInBand(iBand) * m_nRowBytes;
    auto own = std::make_shared<BandData>();
    own->data.reset(new std::uint8_t[nBytes]);
    if (bKeep)
        std::memcpy(own->data.get(), m_bands[iBand]->data.get(), nBytes);
    m_bands[iBand] = std::move(own);
}

std::size_t CBandStore::PrivateBytes() const
{
    std::size_t nBytes = 0;
    for (std::size_t i = 0; i < m_bands.size(); i++)
        if (m_bands[i].use_count() == 1)
            nBytes += RowsInBand(i) * m_nRowBytes;
    return nBytes;
}

} // namespace kestrune
