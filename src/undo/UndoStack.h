#pragma once

#include "undo/UndoRecord.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string_view>
#include <vector>

// The operations on the two record lists of a picture. A record is pushed before the act changes what it holds.

namespace kestrune {

// ---- Pushing. Each returns true; an exhausted heap throws std::bad_alloc and leaves the lists as they were.

/// Records a rectangle of `m_Bitmap` (clamped into the picture). While a float exists the mask's bounds are recorded
/// instead, whatever rectangle is given.
bool PushRect(CPaintImage& image, int x1, int y1, int x2, int y2, std::uint32_t nKind);
/// Records the whole picture before its size changes. A selection does not survive the exchange, in either direction.
bool PushWhole(CPaintImage& image, std::uint32_t nKind);
/// Records the mask. Afterwards the bounds count as unknown: the act is about to change the mask.
bool PushMask(CPaintImage& image, std::uint32_t nKind);
/// Records picture, float, mask and float mask together.
bool PushSelection(CPaintImage& image, std::uint32_t nKind);
/// Records the picture as it was born, after `Load` (UNDO_LOADED) or any kind of creation (UNDO_NEW): row 0 of the
/// history.
void RecordFirstState(CPaintImage& image, std::uint32_t nKind);

/// Frees the redo list, trims, and adds a record of `nPayloadBytes` at the head; the caller fills in payload and
/// functions. The history box hears of it through `SyncPushed`, once the record is complete.
UndoRecord& PushRecord(CPaintImage& image, std::size_t nPayloadBytes, std::uint32_t nKind, bool bImage);
void SyncPushed(CPaintImage& image);

/// For composite acts: one pair of marks around all that is pushed between. They nest.
void BeginGroup(CPaintImage& image, std::uint32_t nKind);
void EndGroup(CPaintImage& image);

// ---- Stepping.

/// One step back or forward; nothing when there is none. The history box and the view are not told.
void Undo(CPaintImage& image);
void Redo(CPaintImage& image);
void StepRecord(CPaintImage& image, std::list<UndoRecord*>& source, std::list<UndoRecord*>& destination,
                UndoDirection direction);

/// The last record is the picture's origin and is never undone by the command.
bool CanUndo(const CPaintImage& image);
bool CanRedo(const CPaintImage& image);
/// The two commands: step, move the history box's current row, repaint. Nothing when not possible.
void UndoCommand(CPaintImage& image);
void RedoCommand(CPaintImage& image);
/// A click on a row of the history: steps until `nRow` is the current one. Rows outside change nothing.
void JumpToHistory(CPaintImage& image, int nRow);

// ---- Rows of the history box.

/// What `CImageSite::SyncHistoryBox` is told. The picture's lists are already in the new state then.
enum HistoryBoxMode {
    HISTORY_ROW_ADDED = 0, ///< rows after the current one go, a row for the newest record comes and is current
    HISTORY_ROW_TRIMMED = 1, ///< row 0 goes
    HISTORY_ROW_UP = 2, ///< the current row moves up by one
    HISTORY_ROW_DOWN = 3 ///< the current row moves down by one
};

struct HistoryRow {
    std::uint32_t nKind;
    int nGroup;
    std::string_view name;
    bool bUndone; ///< a record that redo would bring back
};
/// Oldest first; the current one is row `m_nHistoryIndex`.
std::vector<HistoryRow> HistoryRows(const CPaintImage& image);

// ---- Limits and memory.

/// The setting "History" of section "General": how many records may stand before the oldest go; 0 is no limit.
void SetHistoryLimit(int nRecords);
int HistoryLimit();
inline constexpr int c_nDefaultHistoryLimit = 20;

/// Removes the oldest records over the limit. It runs before a push, so that the list holds at most one more than the
/// limit.
void TrimHistory(CPaintImage& image);
/// Empties one list through the records' free functions.
void FreeRecords(CPaintImage& image, UndoDirection direction, std::list<UndoRecord*>& list);

/// To be called when an act has ended, after its last change of pixels: the newest record may then keep only what the act
/// changed, at once and on another core, rather than when the next record comes. Nothing happens where it has nothing to gain.
void SettleHistory(CPaintImage& image);

/// To be called before pixels are changed without a record (a change of colour mode). Older records keep only what
/// their act changed; this makes each hold its whole rectangle again, so that undoing restores an older picture in
/// full.
void PinHistory(CPaintImage& image);

/// Bytes that the records of both lists hold and the picture does not. Waits for records that are being thinned out.
std::size_t HistoryBytes(CPaintImage& image);

} // namespace kestrune
