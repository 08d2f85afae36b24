// Records of the selection: the mask alone, and the state of picture, float and masks together.
#include "undo/PayloadRecord.h"
#include "undo/UndoStack.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace kestrune {

namespace {

using std::size_t;
using std::uint8_t;

/// A block of mask bytes at its place; null when nothing is selected.
struct MaskBlock {
    CRect rc;
    std::unique_ptr<uint8_t[]> bytes;
    size_t Size() const { return bytes ? static_cast<size_t>(rc.Width()) * rc.Height() : 0; }
};

size_t MaskSize(const CPaintImage& image) { return static_cast<size_t>(image.m_nWidth) * image.m_nHeight; }

/// The mask's memory with every byte written: one that is known to be empty may never have been.
void SettleMask(CPaintImage& image)
{
    if (!image.m_pMask)
        image.m_pMask = std::make_unique<uint8_t[]>(MaskSize(image));
    else if (image.m_bMaskBoundsValid && image.m_bMaskEmpty)
        std::memset(image.m_pMask.get(), 0, MaskSize(image));
}

MaskBlock CopyBlock(const CPaintImage& image, const CRect& rc)
{
    MaskBlock block{rc, nullptr};
    if (rc.IsEmpty())
        return block;
    block.bytes.reset(new uint8_t[static_cast<size_t>(rc.Width()) * rc.Height()]);
    for (int y = rc.top; y < rc.bottom; y++)
        std::memcpy(block.bytes.get() + static_cast<size_t>(y - rc.top) * rc.Width(),
                    image.m_pMask.get() + static_cast<size_t>(y) * image.m_nWidth + rc.left, rc.Width());
    return block;
}

void WriteBlock(CPaintImage& image, const MaskBlock& block)
{
    const CRect rc = Intersect(block.rc, {0, 0, image.m_nWidth, image.m_nHeight});
    for (int y = rc.top; block.bytes && y < rc.bottom; y++)
        std::memcpy(image.m_pMask.get() + static_cast<size_t>(y) * image.m_nWidth + rc.left,
                    block.bytes.get() + static_cast<size_t>(y - block.rc.top) * block.rc.Width()
                        + (rc.left - block.rc.left),
                    rc.Width());
}

/// The mask's bounding block, after which the mask is all 0.
MaskBlock TakeMask(CPaintImage& image)
{
    SettleMask(image);
    CRect rc;
    if (!image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom))
        return {rc, nullptr};
    MaskBlock block = CopyBlock(image, rc);
    std::memset(image.m_pMask.get(), 0, MaskSize(image));
    return block;
}

void SetSelectionFlags(CPaintImage& image)
{
    image.m_bFloatReady = true;
    image.m_bFloating = false;
    image.m_bSelection = true;
    image.m_bMaskBoundsValid = true;
}

void SetMaskBounds(CPaintImage& image, const CRect& rc)
{
    image.m_nMaskX1 = rc.left;
    image.m_nMaskY1 = rc.top;
    image.m_nMaskX2 = rc.right;
    image.m_nMaskY2 = rc.bottom;
}

// ---- The mask alone

struct MaskPayload final : UndoPayload {
    MaskBlock block;
    bool bHadFloat = false;
    void Count(HistoryByteCount& count) override { count.nBytes += block.Size(); }
};

bool SwapMask(CPaintImage& image, UndoDirection, std::uint32_t, UndoPayload* pPayload)
{
    MaskPayload& record = *static_cast<MaskPayload*>(pPayload);
    MaskBlock present = TakeMask(image);
    WriteBlock(image, record.block);
    image.InvalidateMaskBounds();
    image.Site().RepaintAll();
    image.m_bMaskEmpty = !record.block.bytes;
    const CRect rc = image.m_bMaskEmpty ? CRect{0, 0, image.m_nWidth, image.m_nHeight} : record.block.rc;
    SetMaskBounds(image, rc);
    image.m_nFloatX = rc.left;
    image.m_nFloatY = rc.top;
    image.m_nFloatW = rc.Width();
    image.m_nFloatH = rc.Height();
    image.m_rcFloat = image.m_rcFloatStart = rc;
    if (image.m_bMaskEmpty)
        image.ReleaseFloat();
    else
        image.CaptureFloat(rc.left, rc.top, rc.Width(), rc.Height());
    // The selection flag goes up even when nothing is selected: m_bMaskEmpty tells the truth, and is what is asked.
    SetSelectionFlags(image);
    record.block = std::move(present);
    record.bHadFloat = image.m_pFloatMask != nullptr;
    return true;
}

// ---- Picture, float and masks together

struct SelectionState {
    LBitmapBase bitmap, floatBitmap;
    MaskBlock mask; ///< the part of the whole mask that is not 0
    std::unique_ptr<uint8_t[]> pFloatMask;
    CRect rcFloat; ///< the float's position and size
};

struct SelectionPayload final : UndoPayload {
    SelectionState state;
    void Count(HistoryByteCount& count) override
    {
        count.AddBands(state.bitmap.Bands());
        count.AddBands(state.floatBitmap.Bands());
        count.nBytes += state.mask.Size();
        if (state.pFloatMask)
            count.nBytes += static_cast<size_t>(state.rcFloat.Width()) * state.rcFloat.Height();
    }
    void Pin(LBitmapBase& picture) override { picture = state.bitmap; }
};

/// The part of the mask that is not 0, found in the bytes themselves: the cached bounds may speak of the float.
CRect SelectedRect(const CPaintImage& image)
{
    CRect rc;
    for (int y = 0; y < image.m_nHeight; y++) {
        const uint8_t* pRow = image.m_pMask.get() + static_cast<size_t>(y) * image.m_nWidth;
        if (!pRow[0] && !std::memcmp(pRow, pRow + 1, image.m_nWidth - 1))
            continue;
        const auto IsSet = [](uint8_t b) { return b != 0; };
        const int nFirst = static_cast<int>(std::find_if(pRow, pRow + image.m_nWidth, IsSet) - pRow);
        int nEnd = image.m_nWidth;
        while (!pRow[nEnd - 1])
            nEnd--;
        rc = Unite(rc, {nFirst, y, nEnd, y + 1});
    }
    return rc;
}

SelectionState CaptureState(const CPaintImage& image)
{
    SelectionState state;
    state.bitmap.Copy(image.m_Bitmap);
    state.floatBitmap.Copy(image.m_FloatBitmap);
    state.rcFloat
        = {image.m_nFloatX, image.m_nFloatY, image.m_nFloatX + image.m_nFloatW, image.m_nFloatY + image.m_nFloatH};
    if (image.m_pMask && !(image.m_bMaskBoundsValid && image.m_bMaskEmpty))
        state.mask = CopyBlock(image, SelectedRect(image));
    if (image.m_pFloatMask) {
        const size_t nBytes = static_cast<size_t>(image.m_FloatBitmap.GetWidth()) * image.m_FloatBitmap.GetHeight();
        state.pFloatMask.reset(new uint8_t[nBytes]);
        std::memcpy(state.pFloatMask.get(), image.m_pFloatMask.get(), nBytes);
    }
    return state;
}

bool SwapSelection(CPaintImage& image, UndoDirection, std::uint32_t, UndoPayload* pPayload)
{
    SelectionState& record = static_cast<SelectionPayload*>(pPayload)->state;
    SelectionState fresh = CaptureState(image);
    image.m_Bitmap.Copy(record.bitmap);
    image.m_BaseBitmap.Copy(record.bitmap);
    image.ReleaseFloat();
    image.m_FloatBitmap.Copy(record.floatBitmap);
    image.m_pFloatMask = std::move(record.pFloatMask);
    if (!image.m_pMask)
        image.m_pMask = std::make_unique<uint8_t[]>(MaskSize(image));
    std::memset(image.m_pMask.get(), 0, MaskSize(image));
    WriteBlock(image, record.mask);
    image.m_nFloatX = record.rcFloat.left;
    image.m_nFloatY = record.rcFloat.top;
    image.m_nFloatW = record.rcFloat.Width();
    image.m_nFloatH = record.rcFloat.Height();
    image.InvalidateMaskBounds();
    // Bounds follow the float; a state in which nothing was selected is known to be empty, as everywhere.
    image.m_bMaskEmpty = !record.mask.bytes;
    // Of a float that was moved partly out the bounds are what is inside: they say which bytes of the mask may be read.
    const CRect rcPicture{0, 0, image.m_nWidth, image.m_nHeight}, rcSeen = Intersect(record.rcFloat, rcPicture);
    SetMaskBounds(image, image.m_bMaskEmpty ? rcPicture : rcSeen);
    image.m_rcFloat = image.m_rcFloatStart = image.m_pFloatMask || !image.m_bMaskEmpty ? rcSeen : rcPicture;
    SetSelectionFlags(image);
    record = std::move(fresh);
    return true;
}

} // namespace

bool PushMask(CPaintImage& image, std::uint32_t nKind)
{
    SettleMask(image);
    auto pPayload = std::make_unique<MaskPayload>();
    CRect rc;
    if (image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom))
        pPayload->block = CopyBlock(image, rc);
    else
        pPayload->block.rc = rc;
    pPayload->bHadFloat = image.m_pFloatMask != nullptr;
    const size_t nBytes = pPayload->block.Size();
    PushPayload(image, std::move(pPayload), SwapMask, {nBytes, nKind, false});
    image.InvalidateMaskBounds();
    return true;
}

bool PushSelection(CPaintImage& image, std::uint32_t nKind)
{
    auto pPayload = std::make_unique<SelectionPayload>();
    pPayload->state = CaptureState(image);
    const size_t nBytes = MaskSize(image) * 3 + pPayload->state.mask.Size();
    PushPayload(image, std::move(pPayload), SwapSelection, {nBytes, nKind, true});
    ThinOlderRecords(image, {0, 0, image.m_nWidth, image.m_nHeight});
    return true;
}

} // namespace kestrune
