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
// Parts of rows are taken over in whole units of this, so that a dab beside the last one seldom asks for more.
constexpr std::size_t c_nPartUnit = 1024;

std::size_t MachineMemory()
{
    static const std::size_t s_nBytes = static_cast<std::size_t>(std::max(0L, sysconf(_SC_PHYS_PAGES)))
        * static_cast<std::size_t>(std::max(0L, sysconf(_SC_PAGESIZE)));
    return s_nBytes;
}

template <typename T>
bool IsSoleOwner(const std::shared_ptr<T>& p)
{
    if (p.use_count() != 1)
        return false;
    // The count is read without ordering. A thread that has just let go of this may have read it until then; its release of the
    // count and this fence put those reads before the writes that follow here.
    std::atomic_thread_fence(std::memory_order_acquire);
    return true;
}
} // namespace

CBandStore::BandData::BandData(int nBandRows, std::size_t nRowBytes)
    : data(new std::uint8_t[nBandRows * nRowBytes])
    , nRows(nBandRows)
    , nHeld(Pack(0, nRowBytes))
{
}

CBandStore::CBandStore(int nRows, std::size_t nRowBytes)
    : m_nRows(nRows)
    , m_nRowBytes(nRowBytes)
{
    const std::size_t nLimit = MachineMemory();
    if (nRowBytes > UINT32_MAX || (nLimit != 0 && nRowBytes != 0 && static_cast<std::size_t>(nRows) > nLimit / nRowBytes))
        throw std::bad_alloc();
    ChooseBands();
    for (std::size_t i = 0; i < BandsOf(nRows); i++) {
        if (i % c_nGroup == 0)
            m_groups.push_back(std::make_shared<BandGroup>());
        WriteBand(i) = std::make_shared<BandData>(RowsInBand(i), nRowBytes);
    }
}

CBandStore::CBandStore(int nRows, std::span<const std::uint8_t> row)
    : m_nRows(nRows)
    , m_nRowBytes(row.size())
{
    ChooseBands();
    const auto band = std::make_shared<BandData>(RowsInBand(0), m_nRowBytes);
    for (int y = 0; y < band->nRows; y++)
        std::copy(row.begin(), row.end(), band->data.get() + y * m_nRowBytes);
    const auto group = std::make_shared<BandGroup>();
    group->fill(band);
    m_groups.assign((BandsOf(nRows) + c_nGroup - 1) / c_nGroup, group);
    for (std::size_t i = BandsOf(nRows); i < m_groups.size() * c_nGroup; i++)
        WriteBand(i).reset(); // behind the last band there is no owner
}

/// Chooses the rows of a band for the store's row length.
void CBandStore::ChooseBands()
{
    while (m_nBandRows * 2 * m_nRowBytes <= c_nBandBytes && m_nBandRows < m_nRows) {
        m_nBandRows *= 2;
        m_nBandShift++;
    }
}

int CBandStore::RowsInBand(std::size_t iBand) const
{
    return std::min(m_nBandRows, m_nRows - static_cast<int>(iBand << m_nBandShift));
}

/// The band's place in the list, in a group that no other store has.
std::shared_ptr<CBandStore::BandData>& CBandStore::WriteBand(std::size_t iBand)
{
    std::shared_ptr<BandGroup>& group = m_groups[iBand / c_nGroup];
    if (!IsSoleOwner(group))
        group = std::make_shared<BandGroup>(*group);
    return (*group)[iBand % c_nGroup];
}

bool CBandStore::IsPrivate(std::size_t iBand) const
{
    return IsSoleOwner(m_groups[iBand / c_nGroup]) && IsSoleOwner(BandAt(iBand));
}

/// A part of most of a row saves little.
bool CBandStore::IsWorthParting(std::size_t nBytes) const
{
    return nBytes <= m_nRowBytes / 2;
}

std::uint8_t* CBandStore::WriteRow(int y)
{
    MakePrivate(Band(y), true);
    return BandAt(Band(y))->data.get() + Offset(y);
}

std::uint8_t* CBandStore::WriteRowPart(int y, std::size_t nFrom, std::size_t nTo)
{
    MakePartPrivate(Band(y), nFrom, nTo);
    return BandAt(Band(y))->data.get() + Offset(y);
}

void CBandStore::Detach(int y0, int y1)
{
    if (y1 <= y0)
        return;
    const std::size_t nFirst = Band(y0), nCount = Band(y1 - 1) + 1 - nFirst;
    for (std::size_t i = 0; i < nCount; i++)
        WriteBand(nFirst + i); // bands of one group may fall to different threads
    // From a megabyte on by all cores: fresh memory costs as much as the copy.
    ParallelRows(static_cast<int>(nCount), 4, [&](int i0, int i1) {
        for (int i = i0; i < i1; i++)
            MakePrivate(nFirst + static_cast<std::size_t>(i), true);
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
    if (IsPrivate(iBand)) {
        BandData& band = *BandAt(iBand);
        if (!band.Holds(0, m_nRowBytes))
            Fetch(band, 0, m_nRowBytes);
        return;
    }
    auto own = std::make_shared<BandData>(RowsInBand(iBand), m_nRowBytes);
    if (bKeep)
        std::memcpy(own->data.get(), Row(FirstRow(static_cast<int>(iBand))), own->nRows * m_nRowBytes);
    WriteBand(iBand) = std::move(own);
}

/// A private band that has the bytes [nFrom, nTo) of its rows. Where only the band is shared, that alone is copied.
void CBandStore::MakePartPrivate(std::size_t iBand, std::size_t nFrom, std::size_t nTo)
{
    if (IsPrivate(iBand)) {
        BandData& band = *BandAt(iBand);
        if (!band.Holds(nFrom, nTo))
            Fetch(band, nFrom, nTo);
        return;
    }
    nFrom = nFrom / c_nPartUnit * c_nPartUnit;
    nTo = std::min((nTo + c_nPartUnit - 1) / c_nPartUnit * c_nPartUnit, m_nRowBytes);
    if (!IsWorthParting(nTo - nFrom)) {
        MakePrivate(iBand, true);
        return;
    }
    auto own = std::make_shared<BandData>(RowsInBand(iBand), m_nRowBytes);
    Row(FirstRow(static_cast<int>(iBand))); // a source is whole: parts of parts would keep all of them in memory
    own->source = BandAt(iBand);
    CopyColumns(*own, nFrom, nTo);
    own->nHeld = BandData::Pack(nFrom, nTo);
    WriteBand(iBand) = std::move(own);
}

/// More columns from the source. It grows by its own width at least, so that a stroke along the row asks a few times and not at each
/// dab. Any number of threads may ask: what is written is what nobody could have read yet.
void CBandStore::Fetch(BandData& band, std::size_t nFrom, std::size_t nTo) const
{
    const std::lock_guard lock(band.fetching);
    if (band.Holds(nFrom, nTo))
        return;
    const std::uint64_t nHeld = band.nHeld.load(std::memory_order_relaxed);
    const std::size_t nFirst = BandData::First(nHeld), nEnd = BandData::End(nHeld), nWidth = nEnd - nFirst;
    nFrom = nFrom < nFirst ? std::min(nFrom, nFirst - std::min(nFirst, nWidth)) : nFirst;
    nTo = nTo > nEnd ? std::min(std::max(nTo, nEnd + nWidth), m_nRowBytes) : nEnd;
    if (!IsWorthParting(nTo - nFrom)) {
        nFrom = 0;
        nTo = m_nRowBytes;
    }
    CopyColumns(band, nFrom, nFirst);
    CopyColumns(band, nEnd, nTo);
    if (nFrom == 0 && nTo == m_nRowBytes)
        band.source.reset();
    band.nHeld.store(BandData::Pack(nFrom, nTo), std::memory_order_release);
}

void CBandStore::CopyColumns(BandData& band, std::size_t nFrom, std::size_t nTo) const
{
    const std::size_t nBytes = band.nRows * m_nRowBytes;
    for (std::size_t i = nFrom; nFrom < nTo && i < nBytes; i += m_nRowBytes)
        std::memcpy(band.data.get() + i, band.source->data.get() + i, nTo - nFrom);
}

std::size_t CBandStore::PrivateBytes() const
{
    std::size_t nBytes = 0;
    for (std::size_t i = 0; i < BandsOf(m_nRows); i++)
        if (IsPrivate(i))
            nBytes += RowsInBand(i) * m_nRowBytes;
    return nBytes;
}

} // namespace kestrune
