#pragma once

#include "base/Geometry.h"

namespace kestrune {

/// What a `CPaintImage` asks of its surroundings. Every operation has a harmless default, so that a picture can live
/// without a window.
class CImageSite {
public:
    virtual ~CImageSite() = default;

    /// The float's opacity in percent (0..100), from the tool option bar.
    virtual int FloatOpacity() const { return 100; }
    /// The move mode of the tool option bar: 0 cut, 1 copy.
    virtual int MoveMode() const { return 0; }
    /// Pixels of `m_Bitmap` changed in that rectangle (image coordinates).
    virtual void RepaintRect(const CRect&) {}
    virtual void RepaintAll() {}
    /// `m_nWidth` and `m_nHeight` changed: scroll sizes and frame follow.
    virtual void SizeChanged() {}
    /// Rows of the history changed (`SyncHistoryBox` modes).
    virtual void SyncHistoryBox(int) {}
};

} // namespace kestrune
