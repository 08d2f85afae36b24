#include "undo/UndoStack.h"

#include "undo/PixelSnapshot.h"
#include "undo/UndoKinds.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace kestrune {

namespace {

constexpr std::size_t c_nRecordBytes = 24; // what a record counts beside its pixels
int g_nHistoryLimit = c_nDefaultHistoryLimit;

void FreeRecord(UndoRecord* pRecord, UndoDirection direction)
{
    if (pRecord->pfnFree)
        pRecord->pfnFree(direction, pRecord->nKind, pRecord->pPayload);
    delete pRecord;
}

void FreeHistory(CPaintImage& image)
{
    FreeRecords(image, DIRECTION_UNDO, image.m_UndoList);
    FreeRecords(image, DIRECTION_REDO, image.m_RedoList);
}

UndoRecord& AddRecord(CPaintImage& image, std::size_t nPayloadBytes, std::uint32_t nKind, bool bImage)
{
    auto pRecord = std::make_unique<UndoRecord>();
    pRecord->nKind = nKind;
    pRecord->nBytes = static_cast<std::uint32_t>(nPayloadBytes + c_nRecordBytes);
    pRecord->bImage = bImage;
    image.m_UndoList.push_front(pRecord.get());
    image.m_nUndoBytes += pRecord->nBytes;
    image.m_pfnFreeHistory = FreeHistory;
    return *pRecord.release();
}

void MakeRoom(CPaintImage& image)
{
    if (!image.m_RedoList.empty())
        FreeRecords(image, DIRECTION_REDO, image.m_RedoList);
    TrimHistory(image);
}

void PinList(LBitmapBase state, const std::list<UndoRecord*>& list)
{
    for (const UndoRecord* pRecord : list)
        if (pRecord->pPayload)
            pRecord->pPayload->Pin(state);
}

} // namespace

void SetHistoryLimit(int nRecords) { g_nHistoryLimit = std::max(nRecords, 0); }

int HistoryLimit() { return g_nHistoryLimit; }

UndoRecord& PushRecord(CPaintImage& image, std::size_t nPayloadBytes, std::uint32_t nKind, bool bImage)
{
    MakeRoom(image);
    UndoRecord& record = AddRecord(image, nPayloadBytes, nKind, bImage);
    if (image.m_nGroupDepth == 0)
        image.m_nUndoDepth++;
    return record;
}

void SyncPushed(CPaintImage& image)
{
    image.m_nHistoryIndex = static_cast<int>(image.m_UndoList.size()) - 1;
    image.Site().SyncHistoryBox(HISTORY_ROW_ADDED);
}

void RecordFirstState(CPaintImage& image, std::uint32_t nKind)
{
    PushRect(image, 0, 0, image.m_nWidth, image.m_nHeight, nKind);
}

void TrimHistory(CPaintImage& image)
{
    if (g_nHistoryLimit == 0)
        return;
    // m_nUndoBytes keeps counting what goes here, on purpose: it is a record of the traffic, nothing is decided by it.
    while (image.m_UndoList.size() > static_cast<std::size_t>(g_nHistoryLimit)) {
        FreeRecord(image.m_UndoList.back(), DIRECTION_REDO);
        image.m_UndoList.pop_back();
        image.Site().SyncHistoryBox(HISTORY_ROW_TRIMMED);
    }
}

void FreeRecords(CPaintImage& image, UndoDirection direction, std::list<UndoRecord*>& list)
{
    while (!list.empty()) {
        image.m_nUndoBytes -= list.front()->nBytes;
        FreeRecord(list.front(), direction);
        list.pop_front();
    }
}

void BeginGroup(CPaintImage& image, std::uint32_t nKind)
{
    if (image.m_nGroupDepth++ > 0)
        return;
    MakeRoom(image);
    AddRecord(image, 0, nKind, false).bGroupMark = true;
    image.m_nGroupKind = nKind;
}

void EndGroup(CPaintImage& image)
{
    if (image.m_nGroupDepth == 0 || --image.m_nGroupDepth > 0)
        return;
    AddRecord(image, 0, image.m_nGroupKind, false).bGroupMark = true;
    image.m_nGroupKind = 0;
    SyncPushed(image);
}

void StepRecord(CPaintImage& image, std::list<UndoRecord*>& source, std::list<UndoRecord*>& destination,
                UndoDirection direction)
{
    if (source.empty())
        return;
    UndoRecord* pRecord = source.front();
    if (pRecord->pfnSwap)
        pRecord->pfnSwap(image, direction, pRecord->nKind, pRecord->pPayload);
    destination.splice(destination.begin(), source, source.begin());
    image.m_nUndoDepth += direction == DIRECTION_REDO ? 1 : -1;
}

void Undo(CPaintImage& image) { StepRecord(image, image.m_UndoList, image.m_RedoList, DIRECTION_UNDO); }

void Redo(CPaintImage& image) { StepRecord(image, image.m_RedoList, image.m_UndoList, DIRECTION_REDO); }

bool CanUndo(const CPaintImage& image) { return image.m_UndoList.size() > 1; }

bool CanRedo(const CPaintImage& image) { return !image.m_RedoList.empty(); }

void UndoCommand(CPaintImage& image)
{
    if (!CanUndo(image))
        return;
    Undo(image);
    image.m_nHistoryIndex--;
    image.Site().SyncHistoryBox(HISTORY_ROW_UP);
    image.Site().RepaintAll();
}

void RedoCommand(CPaintImage& image)
{
    if (!CanRedo(image))
        return;
    Redo(image);
    image.m_nHistoryIndex++;
    image.Site().SyncHistoryBox(HISTORY_ROW_DOWN);
    image.Site().RepaintAll();
}

void JumpToHistory(CPaintImage& image, int nRow)
{
    if (nRow < 0 || nRow == image.m_nHistoryIndex
        || nRow >= static_cast<int>(image.m_UndoList.size() + image.m_RedoList.size()))
        return;
    for (; image.m_nHistoryIndex > nRow && CanUndo(image); image.m_nHistoryIndex--)
        Undo(image);
    for (; image.m_nHistoryIndex < nRow && CanRedo(image); image.m_nHistoryIndex++)
        Redo(image);
    image.Site().RepaintAll();
}

std::vector<HistoryRow> HistoryRows(const CPaintImage& image)
{
    std::vector<HistoryRow> rows;
    const auto Add = [&rows](const UndoRecord* pRecord, bool bUndone) {
        const UndoKind kind = FindUndoKind(pRecord->nKind);
        rows.push_back({pRecord->nKind, kind.nGroup, kind.name, bUndone});
    };
    for (auto it = image.m_UndoList.rbegin(); it != image.m_UndoList.rend(); ++it)
        Add(*it, false);
    for (const UndoRecord* pRecord : image.m_RedoList)
        Add(pRecord, true);
    return rows;
}

void PinHistory(CPaintImage& image)
{
    PinList(image.m_Bitmap, image.m_UndoList);
    PinList(image.m_Bitmap, image.m_RedoList);
}

std::size_t HistoryBytes(CPaintImage& image)
{
    HistoryByteCount count;
    count.AddBands(image.m_Bitmap.Bands());
    count.AddBands(image.m_BaseBitmap.Bands());
    count.nBytes = 0; // those count as the picture's
    for (const auto* pList : {&image.m_UndoList, &image.m_RedoList})
        for (const UndoRecord* pRecord : *pList)
            if (pRecord->pPayload)
                pRecord->pPayload->Count(count);
    return count.nBytes;
}

} // namespace kestrune
