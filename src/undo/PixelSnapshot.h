#pragma once

#include "undo/UndoRecord.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace kestrune {

/// The pixels of a rectangle of a 24-bit bitmap, kept as cheaply as they can be.
///
/// A small rectangle is one packed patch. A large one shares the bitmap's bands copy-on-write, which costs nothing
/// until the act changes them. Once a later record knows the picture after the act too, `StartThinning` compares before
/// and after: bands that did not change are dropped, and of the others only the part that did is kept, packed. That
/// runs on another core while the user goes on; whatever needs the result waits for it.
class CPixelSnapshot {
public:
    CPixelSnapshot(const LBitmapBase& bitmap, const CRect& rc);
    ~CPixelSnapshot();
    CPixelSnapshot(const CPixelSnapshot&) = delete;
    CPixelSnapshot& operator=(const CPixelSnapshot&) = delete;

    const CRect& Rect() const { return m_rc; }

    /// Exchanges the pixels with the bitmap's. What lies outside the bitmap is left alone.
    void Swap(LBitmapBase& bitmap);

    /// Shares bands and was not yet thinned out.
    bool IsShared() const { return m_bShared; }
    /// `after` is the picture as the act left it; from now on only what differs is kept.
    void StartThinning(const LBitmapBase& after);
    /// Takes over the result if it is there, or waits for it.
    void FinishThinning(bool bWait);
    bool IsThinning() const { return m_pJob != nullptr; }

    /// Puts the pixels into `state`, and holds the whole rectangle of it again when it had been thinned out.
    void Pin(LBitmapBase& state);
    void Count(HistoryByteCount& count);

private:
    struct Patch {
        int y0 = 0, y1 = 0; ///< rows
        std::size_t nFrom = 0, nTo = 0; ///< bytes of a row
        std::unique_ptr<std::uint8_t[]> bytes;
        std::size_t Size() const { return (nTo - nFrom) * static_cast<std::size_t>(y1 - y0); }
    };
    struct Job;

    static Patch MakePatch(const CBandStore& bands, int y0, int y1, std::size_t nFrom, std::size_t nTo);
    static void SwapPatch(Patch& patch, LBitmapBase& bitmap);
    static Patch Difference(const Job& job, int iBand);
    static void RunJob(Job& job);
    void Share(const LBitmapBase& bitmap);
    void SwapShared(LBitmapBase& bitmap, int iBand);

    CRect m_rc;
    CBandStore m_bands; ///< bands outside the rectangle's rows, and those that a patch replaces, are missing
    std::vector<Patch> m_patches;
    bool m_bShared = false;
    bool m_bThinned = false;
    std::unique_ptr<Job> m_pJob;
};

} // namespace kestrune
