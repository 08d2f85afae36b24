#pragma once

#include "doc/PaintImage.h"

#include <cstddef>
#include <cstdint>
#include <set>

namespace kestrune {

class CPixelSnapshot;

/// Which way a record is exchanged.
enum UndoDirection { DIRECTION_UNDO = 0, DIRECTION_REDO = 1 };

/// Adds up what records hold beyond the picture itself; memory that several share counts once.
struct HistoryByteCount {
    std::set<const void*> seen;
    std::size_t nBytes = 0;
    void AddBands(const CBandStore& bands);
};

/// What a record type keeps of the picture.
struct UndoPayload {
    virtual ~UndoPayload() = default;
    virtual void Count(HistoryByteCount&) { }
    /// The pixels of a rectangle record.
    virtual CPixelSnapshot* Rectangle() { return nullptr; }
    /// True when the exchange may give the picture another size.
    virtual bool IsWhole() const { return false; }
    /// See `PinHistory`: makes whole what was thinned out, and `state` the picture on the record's far side.
    virtual void Pin(LBitmapBase&) { }
};

/// One undoable act. It exchanges itself with the present state of the picture, so that one routine serves both ways.
struct UndoRecord {
    using Swap = bool (*)(CPaintImage& image, UndoDirection direction, std::uint32_t nKind, UndoPayload* pPayload);
    using Free = void (*)(UndoDirection direction, std::uint32_t nKind, UndoPayload* pPayload);

    std::uint32_t nKind = 0; ///< row of the table of kinds
    UndoPayload* pPayload = nullptr; ///< the record type's own data; null in a group's marks
    std::uint32_t nBytes = 0; ///< size to count: the bytes of the pixels or the mask, and 24
    bool bImage = false; ///< changes pixels, not the mask alone
    bool bGroupMark = false; ///< opens or closes a group
    Swap pfnSwap = nullptr;
    Free pfnFree = nullptr; ///< frees the payload
};

} // namespace kestrune
