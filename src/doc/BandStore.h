#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace kestrune {

/// Rows of bytes kept in bands of whole rows, shared copy-on-write: a copy shares every band, the first write to a band
/// makes that band private. Rows are contiguous; two rows of different bands are not neighbours in memory.
///
/// A band of a wide picture holds thousands of pixels to the left and right of what a brush touches. So who writes some columns only
/// (`WriteRowPart`) gets a band that has just these of its own; the rest comes over from the band it was shared with when somebody
/// asks for whole rows, as every other call does. Nobody sees a difference but in time.
///
/// Threads: different stores may be used from different threads even while they share bands (the owner count is atomic, and
/// who finds himself the only owner sees all that earlier owners did with the band). One store is like any other object:
/// while one thread changes it (copying over it, `WriteRow` of a shared band), no other may read or copy it.
class CBandStore {
public:
    CBandStore() = default;
    /// Contents undefined (a page of the system's zeroes where the system gives one). Throws std::bad_alloc, also when the
    /// rows are more than the machine's memory: bands alone are so small that the system would promise them all the same.
    CBandStore(int nRows, std::size_t nRowBytes);
    /// Every row holds the same bytes. All bands are one shared band, so that a plain picture of any size costs one.
    CBandStore(int nRows, std::span<const std::uint8_t> row);

    int Rows() const { return m_nRows; }
    std::size_t RowBytes() const { return m_nRowBytes; }
    int BandRows() const { return m_nBandRows; }

    const std::uint8_t* Row(int y) const { return RowPart(y, 0, m_nRowBytes); }
    /// The same where only the bytes [nFrom, nTo) of the row will be read; still the address of its first byte.
    const std::uint8_t* RowPart(int y, std::size_t nFrom, std::size_t nTo) const
    {
        BandData& band = *BandAt(Band(y));
        if (!band.Holds(nFrom, nTo))
            Fetch(band, nFrom, nTo);
        return band.data.get() + Offset(y);
    }

    /// A row to write to. Not to be called from several threads at once; parallel kernels call `Detach` first.
    std::uint8_t* WriteRow(int y);
    /// The same where only the bytes [nFrom, nTo) will be read or written, in this row or another one of its band.
    std::uint8_t* WriteRowPart(int y, std::size_t nFrom, std::size_t nTo);

    /// Makes the bands of the rows [y0, y1) private, after which `WriteRow` of those rows is safe from any thread.
    void Detach(int y0, int y1);
    /// The same for rows that are about to be written in whole: bands that lie inside are not copied, their contents are
    /// undefined.
    void Replace(int y0, int y1);

    /// The number of bytes of bands that this store shares with no other.
    std::size_t PrivateBytes() const;
    /// True when both stores hold the very same band at that row.
    bool SharesBand(const CBandStore& other, int y) const { return BandAt(Band(y)) == other.BandAt(other.Band(y)); }

    // Bands by number, for snapshots that hold only some of them. A row of a band that was dropped must not be touched.
    int BandCount() const { return static_cast<int>(BandsOf(m_nRows)); }
    /// The first row of a band; that of the band after the last one is the number of rows.
    int FirstRow(int iBand) const { return iBand < BandCount() ? iBand << m_nBandShift : m_nRows; }
    bool HasBand(int iBand) const { return BandAt(iBand) != nullptr; }
    /// The same for two bands of any stores only if it is the same band.
    const void* BandId(int iBand) const { return BandAt(iBand).get(); }
    void DropBand(int iBand) { WriteBand(iBand).reset(); }
    /// Exchanges a band with a store of the same rows and row length.
    void SwapBand(CBandStore& other, int iBand) { WriteBand(iBand).swap(other.WriteBand(iBand)); }

private:
    struct BandData {
        BandData(int nBandRows, std::size_t nRowBytes);

        std::unique_ptr<std::uint8_t[]> data;
        int nRows;
        /// The bytes of each row that it has of its own, first and end. It only ever grows, by whoever holds the lock.
        std::atomic<std::uint64_t> nHeld;
        std::shared_ptr<BandData> source; ///< has the others; null as soon as there are none
        std::mutex fetching;

        static std::uint64_t Pack(std::size_t nFrom, std::size_t nTo) { return std::uint64_t{nFrom} << 32 | nTo; }
        static std::size_t First(std::uint64_t nHeld) { return nHeld >> 32; }
        static std::size_t End(std::uint64_t nHeld) { return nHeld & 0xFFFFFFFF; }
        bool Holds(std::size_t nFrom, std::size_t nTo) const
        {
            const std::uint64_t n = nHeld.load(std::memory_order_acquire);
            return First(n) <= nFrom && nTo <= End(n);
        }
    };
    /// Bands are listed in groups, which are shared in the same way: so a copy counts owners of groups and not of bands.
    static constexpr std::size_t c_nGroup = 32;
    using BandGroup = std::array<std::shared_ptr<BandData>, c_nGroup>;

    std::size_t Band(int y) const { return static_cast<std::size_t>(y) >> m_nBandShift; }
    std::size_t Offset(int y) const { return static_cast<std::size_t>(y & (m_nBandRows - 1)) * m_nRowBytes; }
    std::size_t BandsOf(int nRows) const { return (static_cast<std::size_t>(nRows) + m_nBandRows - 1) >> m_nBandShift; }
    const std::shared_ptr<BandData>& BandAt(std::size_t iBand) const { return (*m_groups[iBand / c_nGroup])[iBand % c_nGroup]; }
    std::shared_ptr<BandData>& WriteBand(std::size_t iBand);
    int RowsInBand(std::size_t iBand) const;
    void ChooseBands();
    bool IsPrivate(std::size_t iBand) const;
    bool IsWorthParting(std::size_t nBytes) const;
    void MakePrivate(std::size_t iBand, bool bKeep);
    void MakePartPrivate(std::size_t iBand, std::size_t nFrom, std::size_t nTo);
    void Fetch(BandData& band, std::size_t nFrom, std::size_t nTo) const;
    void CopyColumns(BandData& band, std::size_t nFrom, std::size_t nTo) const;

    int m_nRows = 0;
    std::size_t m_nRowBytes = 0;
    int m_nBandRows = 1; ///< a power of two, so that finding a row is a shift and a mask
    int m_nBandShift = 0;
    std::vector<std::shared_ptr<BandGroup>> m_groups;
};

} // namespace kestrune
