#include "undo/PixelSnapshot.h"

#include <tbb/task_group.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <utility>

namespace kestrune {

namespace {

/// Comparing so few bands is quicker than telling another core to.
constexpr std::size_t c_nBandsAtOnce = 4;

constexpr int c_nRowsAhead = 4;
constexpr std::size_t c_nLine = 64; ///< bytes that memory hands over at once

/// The first byte of [nFrom, nTo) that differs, or nTo. Whole blocks first, because the library compares those fast.
std::size_t FirstDifference(const std::uint8_t* a, const std::uint8_t* b, std::size_t nFrom, std::size_t nTo)
{
    constexpr std::size_t c_nBlock = 512;
    while (nTo - nFrom > c_nBlock && !std::memcmp(a + nFrom, b + nFrom, c_nBlock))
        nFrom += c_nBlock;
    while (nFrom < nTo && a[nFrom] == b[nFrom])
        nFrom++;
    return nFrom;
}

/// One past the last byte of [nFrom, nTo) that differs, or nFrom.
std::size_t EndOfDifference(const std::uint8_t* a, const std::uint8_t* b, std::size_t nFrom, std::size_t nTo)
{
    constexpr std::size_t c_nBlock = 512;
    while (nTo - nFrom > c_nBlock && !std::memcmp(a + nTo - c_nBlock, b + nTo - c_nBlock, c_nBlock))
        nTo -= c_nBlock;
    while (nTo > nFrom && a[nTo - 1] == b[nTo - 1])
        nTo--;
    return nTo;
}

bool IsAlike(const CBandStore& a, const CBandStore& b) { return a.Rows() == b.Rows() && a.RowBytes() == b.RowBytes(); }

} // namespace

/// The comparison of the picture before and after an act. The stores share the bands, so that nobody writes to them
/// meanwhile.
struct CPixelSnapshot::Job {
    CRect rc;
    CBandStore before, after;
    std::vector<int> bands; ///< those to compare
    std::vector<Patch> patches; ///< one for each; empty where the band is kept as it is, or did not change
    std::atomic<bool> bDone{false};
    tbb::task_group group;
};

void HistoryByteCount::AddBands(const CBandStore& bands)
{
    for (int i = 0; i < bands.BandCount(); i++)
        if (bands.HasBand(i) && seen.insert(bands.BandId(i)).second)
            nBytes += (bands.FirstRow(i + 1) - bands.FirstRow(i)) * bands.RowBytes();
}

CPixelSnapshot::CPixelSnapshot(const LBitmapBase& bitmap, const CRect& rc)
    : m_rc(Intersect(rc, {0, 0, bitmap.GetWidth(), bitmap.GetHeight()}))
{
    if (m_rc.IsEmpty())
        return;
    // Shared bands cost whole rows if everything changes; the packed copy always costs the rectangle.
    if (m_rc.Width() * 2 >= bitmap.GetWidth() && m_rc.Height() > bitmap.Bands().BandRows()) {
        Share(bitmap);
        m_bShared = true;
    } else {
        m_patches.push_back(
            MakePatch(bitmap.Bands(), m_rc.top, m_rc.bottom, m_rc.left * std::size_t{3}, m_rc.right * std::size_t{3}));
    }
}

CPixelSnapshot::~CPixelSnapshot()
{
    if (m_pJob)
        m_pJob->group.wait();
}

void CPixelSnapshot::Share(const LBitmapBase& bitmap)
{
    m_bands = bitmap.Bands();
    const int nFirst = m_rc.top / m_bands.BandRows(), nLast = (m_rc.bottom - 1) / m_bands.BandRows();
    for (int i = 0; i < nFirst; i++)
        m_bands.DropBand(i);
    for (int i = nLast + 1; i < m_bands.BandCount(); i++)
        m_bands.DropBand(i);
}

CPixelSnapshot::Patch CPixelSnapshot::MakePatch(const CBandStore& bands, int y0, int y1, std::size_t nFrom,
                                                std::size_t nTo)
{
    Patch patch{y0, y1, nFrom, nTo, nullptr};
    patch.bytes.reset(new std::uint8_t[patch.Size()]);
    std::uint8_t* p = patch.bytes.get();
    for (int y = y0; y < y1; y++, p += nTo - nFrom)
        std::memcpy(p, bands.Row(y) + nFrom, nTo - nFrom);
    return patch;
}

void CPixelSnapshot::SwapPatch(Patch& patch, LBitmapBase& bitmap)
{
    const std::size_t nTo = std::min(patch.nTo, bitmap.GetRowBytes());
    const int y1 = std::min(patch.y1, bitmap.GetHeight());
    std::uint8_t* p = patch.bytes.get();
    for (int y = patch.y0; y < y1 && patch.nFrom < nTo; y++, p += patch.nTo - patch.nFrom) {
        // Rows lie in pages of their own, where a processor foresees nothing.
        const std::uint8_t* pAhead = bitmap.Row(std::min(y + c_nRowsAhead, y1 - 1));
        for (std::size_t i = patch.nFrom; i < nTo; i += c_nLine)
            __builtin_prefetch(pAhead + i, 1);
        std::swap_ranges(p, p + (nTo - patch.nFrom), bitmap.WriteRow(y) + patch.nFrom);
    }
}

/// Exchanges one shared band with the bitmap's, whole, and gives back to the bitmap what lies outside the rectangle.
void CPixelSnapshot::SwapShared(LBitmapBase& bitmap, int iBand)
{
    const int y0 = m_bands.FirstRow(iBand), y1 = m_bands.FirstRow(iBand + 1);
    if (m_bands.SharesBand(bitmap.Bands(), y0))
        return;
    m_bands.SwapBand(bitmap.WriteBands(), iBand);
    const std::size_t nRow = m_bands.RowBytes();
    const std::size_t nLeft = m_rc.left * std::size_t{3}, nRight = m_rc.right * std::size_t{3};
    if (m_rc.top <= y0 && m_rc.bottom >= y1 && nLeft == 0 && nRight == nRow)
        return;
    for (int y = y0; y < y1; y++) {
        const std::uint8_t* pOld = m_bands.Row(y);
        std::uint8_t* pNew = bitmap.WriteRow(y);
        if (y < m_rc.top || y >= m_rc.bottom) {
            std::memcpy(pNew, pOld, nRow);
        } else {
            std::memcpy(pNew, pOld, nLeft);
            std::memcpy(pNew + nRight, pOld + nRight, nRow - nRight);
        }
    }
}

void CPixelSnapshot::Swap(LBitmapBase& bitmap)
{
    FinishThinning(true);
    // Only a change of size without a record could bring another shape here: then there is nothing to exchange with.
    if (IsAlike(m_bands, bitmap.Bands()))
        for (int i = 0; i < m_bands.BandCount(); i++)
            if (m_bands.HasBand(i))
                SwapShared(bitmap, i);
    for (Patch& patch : m_patches)
        SwapPatch(patch, bitmap);
}

/// The smallest part of a band's rectangle that holds all differences, packed; without bytes when that would not be
/// clearly less than the band.
CPixelSnapshot::Patch CPixelSnapshot::Difference(const Job& job, int iBand)
{
    const int y0 = std::max(job.before.FirstRow(iBand), job.rc.top);
    const int y1 = std::min(job.before.FirstRow(iBand + 1), job.rc.bottom);
    const std::size_t nLeft = job.rc.left * std::size_t{3}, nRight = job.rc.right * std::size_t{3};
    Patch patch{y1, y0, nRight, nLeft, nullptr};
    for (int y = y0; y < y1; y++) {
        const std::uint8_t *a = job.before.Row(y), *b = job.after.Row(y);
        const std::size_t nFrom = FirstDifference(a, b, nLeft, nRight);
        if (nFrom == nRight)
            continue;
        patch.nFrom = std::min(patch.nFrom, nFrom);
        patch.nTo = std::max(patch.nTo, EndOfDifference(a, b, nFrom, nRight));
        patch.y0 = std::min(patch.y0, y);
        patch.y1 = y + 1;
    }
    if (patch.y0 >= patch.y1)
        return {}; // changed and changed back: nothing to keep
    const std::size_t nBand = (job.before.FirstRow(iBand + 1) - job.before.FirstRow(iBand)) * job.before.RowBytes();
    if (patch.Size() >= nBand / 4 * 3)
        return patch;
    return MakePatch(job.before, patch.y0, patch.y1, patch.nFrom, patch.nTo);
}

void CPixelSnapshot::RunJob(Job& job)
{
    job.patches.reserve(job.bands.size());
    for (int iBand : job.bands) {
        job.patches.push_back(Difference(job, iBand));
        const Patch& patch = job.patches.back();
        const bool bKeepBand = !patch.bytes && patch.y1 > patch.y0;
        if (!bKeepBand)
            job.before.DropBand(iBand); // here, where nobody waits for the heap to take it back
    }
    job.after = {};
    job.bDone = true;
}

void CPixelSnapshot::StartThinning(const LBitmapBase& after)
{
    if (!m_bShared || !IsAlike(m_bands, after.Bands()))
        return;
    auto pJob = std::make_unique<Job>();
    for (int i = 0; i < m_bands.BandCount(); i++) {
        if (!m_bands.HasBand(i))
            continue;
        if (m_bands.SharesBand(after.Bands(), m_bands.FirstRow(i)))
            m_bands.DropBand(i);
        else
            pJob->bands.push_back(i);
    }
    m_bShared = false;
    m_bThinned = true;
    if (pJob->bands.empty())
        return;
    pJob->rc = m_rc;
    pJob->before = std::move(m_bands); // until it is done; everybody waits for that who wants them
    pJob->after = after.Bands();
    m_pJob = std::move(pJob);
    if (m_pJob->bands.size() <= c_nBandsAtOnce)
        RunJob(*m_pJob);
    else
        m_pJob->group.run([pRun = m_pJob.get()] { RunJob(*pRun); });
    FinishThinning(false);
}

void CPixelSnapshot::FinishThinning(bool bWait)
{
    if (!m_pJob || (!bWait && !m_pJob->bDone))
        return;
    m_pJob->group.wait();
    m_bands = std::move(m_pJob->before);
    for (Patch& patch : m_pJob->patches)
        if (patch.bytes)
            m_patches.push_back(std::move(patch));
    m_pJob.reset();
}

void CPixelSnapshot::Pin(LBitmapBase& state)
{
    FinishThinning(true);
    if (!m_bThinned) {
        Swap(state);
        LBitmapBase back = state; // what the record holds was to be read, not exchanged
        Swap(back);
        return;
    }
    Swap(state);
    m_patches.clear();
    Share(state);
    m_bShared = true;
    m_bThinned = false;
}

void CPixelSnapshot::Count(HistoryByteCount& count)
{
    FinishThinning(true);
    count.AddBands(m_bands);
    for (const Patch& patch : m_patches)
        count.nBytes += patch.Size();
}

} // namespace kestrune
