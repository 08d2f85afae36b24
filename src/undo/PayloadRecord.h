#pragma once

#include "undo/UndoRecord.h"
#include "undo/UndoStack.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// For the sources of the record types.

namespace kestrune {

/// What a record type tells of the record it pushes.
struct PushedRecord {
    std::size_t nPayloadBytes;
    std::uint32_t nKind;
    bool bImage;
};

/// Pushes a record with that payload, which is complete when the history box hears of it.
inline void PushPayload(CPaintImage& image, std::unique_ptr<UndoPayload> pPayload, UndoRecord::Swap pfnSwap,
                        const PushedRecord& pushed)
{
    UndoRecord& record = PushRecord(image, pushed.nPayloadBytes, pushed.nKind, pushed.bImage);
    record.pPayload = pPayload.release();
    record.pfnSwap = pfnSwap;
    record.pfnFree = [](UndoDirection, std::uint32_t, UndoPayload* p) { delete p; };
    SyncPushed(image);
}

/// Lets older records keep only what their act changed: a record that restores all of `rc` has just been pushed.
void ThinOlderRecords(CPaintImage& image, const CRect& rc);

} // namespace kestrune
