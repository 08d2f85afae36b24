#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace kestrune {

/// Rows of bytes kept in bands of whole rows, shared copy-on-write: a copy shares every band, the first write to a band
/// makes that band private. Rows are contiguous; two rows of different bands are not neighbours in memory.
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

    const std::uint8_t* Row(int y) const { return m_bands[Band(y)]->data.get() + Offset(y); }

    /// A row to write to. Not to be called from several threads for rows of one band; parallel kernels call `Detach` first.
    std::uint8_t* WriteRow(int y);

    /// Makes the bands of the rows [y0, y1) private, after which `WriteRow` of those rows is safe from any thread.
    void Detach(int y0, int y1);
    /// The same for rows that are about to be written in whole: bands that lie inside are not copied, their contents are
    /// undefined.
    void Replace(int y0, int y1);

    /// The number of bytes of bands that this store shares with no other.
    std::size_t PrivateBytes() const;
    /// True when both stores hold the very same band at that row.
    bool SharesBand(const CBandStore& other, int y) const { return m_bands[Band(y)] == other.m_bands[other.Band(y)]; }

    // Bands by number, for snapshots that hold only some of them. A row of a band that was dropped must not be touched.
    int BandCount() const { return static_cast<int>(m_bands.size()); }
    /// The first row of a band; that of the band after the last one is the number of rows.
    int FirstRow(int iBand) const { return iBand < BandCount() ? iBand << m_nBandShift : m_nRows; }
    bool HasBand(int iBand) const { return m_bands[iBand] != nullptr; }
    void DropBand(int iBand) { m_bands[iBand].reset(); }
    /// Exchanges a band with a store of the same rows and row length.
    void SwapBand(CBandStore& other, int iBand) { m_bands[iBand].swap(other.m_bands[iBand]); }

private:
    struct BandData {
        std::unique_ptr<std::uint8_t[]> data;
    };
    std::size_t Band(int y) const { return static_cast<std::size_t>(y) >> m_nBandShift; }
    std::size_t Offset(int y) const { return static_cast<std::size_t>(y & (m_nBandRows - 1)) * m_nRowBytes; }
    int RowsInBand(std::size_t iBand) const;
    std::size_t ChooseBands();
    bool IsPrivate(std::size_t iBand) const;
    void MakePrivate(std::size_t iBand, bool bKeep);

    int m_nRows = 0;
    std::size_t m_nRowBytes = 0;
    int m_nBandRows = 1; ///< a power of two, so that finding a row is a shift and a mask
    int m_nBandShift = 0;
    std::vector<std::shared_ptr<BandData>> m_bands;
};

} // namespace kestrune
