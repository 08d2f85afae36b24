// Records of pixels: a rectangle, and the whole picture when its size changes.
#include "undo/PayloadRecord.h"
#include "undo/PixelSnapshot.h"
#include "undo/UndoStack.h"

#include <algorithm>
#include <memory>

namespace kestrune {

namespace {

struct RectPayload final : UndoPayload {
    RectPayload(const LBitmapBase& bitmap, const CRect& rc)
        : pixels(bitmap, rc)
    {
    }
    CPixelSnapshot pixels;
    void Count(HistoryByteCount& count) override { pixels.Count(count); }
    CPixelSnapshot* Rectangle() override { return &pixels; }
    void Pin(LBitmapBase& state) override { pixels.Pin(state); }
};

struct WholePayload final : UndoPayload {
    LBitmapBase bitmap;
    void Count(HistoryByteCount& count) override { count.AddBands(bitmap.Bands()); }
    bool IsWhole() const override { return true; }
    void Pin(LBitmapBase& state) override { state = bitmap; }
};

bool SwapRect(CPaintImage& image, UndoDirection, std::uint32_t, UndoPayload* pPayload)
{
    image.m_BaseBitmap.Free(); // it follows anyway, and bands that it shares no longer have to be copied to be changed
    pPayload->Rectangle()->Swap(image.m_Bitmap);
    image.m_BaseBitmap.Copy(image.m_Bitmap);
    if (image.m_pFloatMask)
        image.CaptureFloat(image.m_nFloatX, image.m_nFloatY, image.m_nFloatW, image.m_nFloatH);
    return true;
}

bool SwapWhole(CPaintImage& image, UndoDirection, std::uint32_t, UndoPayload* pPayload)
{
    LBitmapBase& record = static_cast<WholePayload*>(pPayload)->bitmap;
    const std::size_t nPixels = static_cast<std::size_t>(record.GetWidth()) * record.GetHeight();
    auto pMask = std::make_unique<std::uint8_t[]>(nPixels);
    LBitmapBase present = image.m_Bitmap;
    image.m_Bitmap.Copy(record);
    image.m_Bitmap.SetResolution(present.GetXResolution(), present.GetYResolution()); // not part of the step
    record.Copy(present);
    image.m_BaseBitmap.Copy(image.m_Bitmap);
    image.ReleaseFloat();
    image.m_nWidth = image.m_Bitmap.GetWidth();
    image.m_nHeight = image.m_Bitmap.GetHeight();
    image.m_pMask = std::move(pMask);
    image.InvalidateMaskBounds();
    image.m_bFloatReady = image.m_bFloating = image.m_bSelection = false;
    image.Site().SizeChanged();
    return true;
}

} // namespace

/// A record that restores all of `rc` (or everything) has just been pushed: older ones inside may keep only what their
/// act changed, because nothing before it can be reached but through it.
void ThinOlderRecords(CPaintImage& image, const CRect& rc)
{
    constexpr int c_nMostAtOnce = 2;
    int nWaiting = 0;
    auto it = image.m_UndoList.begin();
    for (++it; it != image.m_UndoList.end(); ++it) {
        UndoPayload* pPayload = (*it)->pPayload;
        if (!pPayload)
            continue;
        if (pPayload->IsWhole())
            return; // before it the picture had another size
        CPixelSnapshot* pSnapshot = pPayload->Rectangle();
        if (!pSnapshot)
            continue;
        if (pSnapshot->IsThinning()) // let few wait for their turn, so that memory stays bounded
            pSnapshot->FinishThinning(++nWaiting >= c_nMostAtOnce);
        if (pSnapshot->IsShared() && Intersect(pSnapshot->Rect(), rc) == pSnapshot->Rect())
            pSnapshot->StartThinning(image.m_Bitmap);
    }
}

void SettleHistory(CPaintImage& image)
{
    UndoPayload* pPayload = image.m_UndoList.empty() ? nullptr : image.m_UndoList.front()->pPayload;
    CPixelSnapshot* pSnapshot = pPayload && !pPayload->IsWhole() ? pPayload->Rectangle() : nullptr;
    if (pSnapshot && pSnapshot->IsShared())
        pSnapshot->StartThinning(image.m_Bitmap);
}

bool PushRect(CPaintImage& image, int x1, int y1, int x2, int y2, std::uint32_t nKind)
{
    CRect rc{std::clamp(x1, 0, image.m_nWidth), std::clamp(y1, 0, image.m_nHeight), std::clamp(x2, 0, image.m_nWidth),
             std::clamp(y2, 0, image.m_nHeight)};
    if (image.m_pFloatMask)
        rc = {image.m_nMaskX1, image.m_nMaskY1, image.m_nMaskX2, image.m_nMaskY2};
    auto pPayload = std::make_unique<RectPayload>(image.m_Bitmap, rc);
    const CRect rcTaken = pPayload->pixels.Rect();
    const bool bShared = pPayload->pixels.IsShared();
    const std::size_t nBytes = static_cast<std::size_t>(rcTaken.Width()) * rcTaken.Height() * 3;
    PushPayload(image, std::move(pPayload), SwapRect, {nBytes, nKind, true});
    if (bShared)
        ThinOlderRecords(image, rcTaken);
    return true;
}

bool PushWhole(CPaintImage& image, std::uint32_t nKind)
{
    auto pPayload = std::make_unique<WholePayload>();
    pPayload->bitmap.Copy(image.m_Bitmap);
    const std::size_t nBytes = static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight * 3;
    PushPayload(image, std::move(pPayload), SwapWhole, {nBytes, nKind, true});
    ThinOlderRecords(image, {0, 0, image.m_nWidth, image.m_nHeight});
    return true;
}

} // namespace kestrune
