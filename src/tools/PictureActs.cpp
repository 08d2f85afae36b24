#include "tools/PictureActs.h"

#include "doc/Canvas.h"
#include "resources/PaletteColors.h"
#include "tools/SelectionActs.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace kestrune {

namespace {

std::size_t PixelsOf(const LBitmapBase& bitmap)
{
    return static_cast<std::size_t>(bitmap.GetWidth()) * bitmap.GetHeight();
}

CRect RectOf(const CPaintImage& image)
{
    return {0, 0, image.m_nWidth, image.m_nHeight};
}

} // namespace

void ReplacePicture(CPaintImage& image, LBitmapBase bitmap, std::uint32_t nKind)
{
    // The mask's bytes stay undefined: it is known to be empty.
    std::unique_ptr<std::uint8_t[]> pMask(new std::uint8_t[PixelsOf(bitmap)]);
    LBitmapBase base = bitmap;
    PushWhole(image, nKind);
    image.m_Bitmap = std::move(bitmap);
    image.m_BaseBitmap = std::move(base);
    image.m_nWidth = image.m_Bitmap.GetWidth();
    image.m_nHeight = image.m_Bitmap.GetHeight();
    image.ReleaseFloat();
    image.m_pMask = std::move(pMask);
    image.InvalidateMaskBounds();
    image.m_bMaskEmpty = image.m_bMaskBoundsValid = true;
    image.m_nMaskX1 = image.m_nMaskY1 = 0;
    image.m_nMaskX2 = image.m_nWidth;
    image.m_nMaskY2 = image.m_nHeight;
    image.m_bFloatReady = image.m_bFloating = image.m_bSelection = false;
    image.m_bCropActive = false;
    image.Site().SizeChanged();
    image.Site().RepaintAll();
}

void ResizePicture(CPaintImage& image, int nWidth, int nHeight, int nFlags)
{
    if (nWidth <= 0 || nHeight <= 0)
        return;
    LBitmapBase bitmap = image.m_Bitmap;
    bitmap.Size(nWidth, nHeight, nFlags);
    ReplacePicture(image, std::move(bitmap), UNDO_RESIZE);
}

void ResizeCanvas(CPaintImage& image, int nWidth, int nHeight, int nAnchor)
{
    if (nWidth <= 0 || nHeight <= 0 || nAnchor < 0 || nAnchor >= c_nCanvasAnchors)
        return;
    ReplacePicture(image, OnCanvas(image.m_Bitmap, {nWidth, nHeight}, nAnchor, BackgroundInUse()), UNDO_CANVAS);
}

void TurnPicture(CPaintImage& image, PictureTurn turn)
{
    ReplacePicture(image, TurnedBitmap(image.m_Bitmap, turn), UNDO_ROTATE);
}

void CropPicture(CPaintImage& image, CRect rc)
{
    rc.Normalize();
    rc = Intersect(rc, RectOf(image));
    if (rc.IsEmpty())
        return;
    LBitmapBase bitmap = image.m_Bitmap;
    bitmap.Trim(rc.left, rc.top, rc.Width(), rc.Height());
    ReplacePicture(image, std::move(bitmap), UNDO_CROP);
}

bool TurnSelection(CPaintImage& image, PictureTurn turn)
{
    if (!image.m_pFloatMask)
        return false;
    const int nWidth = image.m_FloatBitmap.GetWidth(), nHeight = image.m_FloatBitmap.GetHeight();
    LBitmapBase turned = TurnedBitmap(image.m_FloatBitmap, turn);
    CRect rcBounds;
    image.GetMaskBounds(rcBounds.left, rcBounds.top, rcBounds.right, rcBounds.bottom); // which the record takes
    PushRect(image, 0, 0, image.m_nWidth, image.m_nHeight, turn == PictureTurn::Mirror ? UNDO_MIRROR_SELECTION : UNDO_FLIP_SELECTION);
    image.m_FloatBitmap = std::move(turned);
    TurnPlane(image.m_pFloatMask.get(), nWidth, nHeight, turn);
    if (image.m_bFloating)
        image.CompositeFloat(0, 0, nWidth);
    else
        image.WriteFloatBack();
    MaskFromFloat(image);
    SettleHistory(image);
    image.Site().RepaintAll();
    return true;
}

void ClearPicture(CPaintImage& image)
{
    CRect rc;
    image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom); // which the record takes while a float exists
    PushRect(image, 0, 0, image.m_nWidth, image.m_nHeight, UNDO_CLEAR);
    if (!image.m_pFloatMask) {
        image.m_Bitmap.Fill(BackgroundInUse());
        image.m_BaseBitmap.Copy(image.m_Bitmap);
    } else {
        image.ReleaseFloat();
        if (!image.m_bFloating)
            image.CutFloatHole();
        image.m_Bitmap.Copy(image.m_BaseBitmap);
        FinishSelection(image);
    }
    SettleHistory(image);
    image.Site().RepaintAll();
}

void ChangeColorMode(CPaintImage& image, int nColorMode, std::uint32_t dwFlags)
{
    constexpr struct {
        int nBits;
        bool bPalette;
    } c_aModes[] = {{1, false}, {4, true}, {8, true}, {8, false}, {24, false}};
    if (nColorMode < MODE_BITMAP || nColorMode > MODE_RGB)
        return;
    const auto& mode = c_aModes[nColorMode];
    LBitmapBase reduced = image.m_Bitmap;
    if (nColorMode == MODE_GRAY)
        reduced.GrayScale(8);
    else if (nColorMode != MODE_RGB)
        reduced.ColorRes(mode.nBits, nColorMode == MODE_BITMAP ? CRF_FIXEDPALETTE | CRF_ERRORDIFFUSION : dwFlags);
    LBitmapBase working = reduced;
    working.ColorRes(24, CRF_TRUECOLOR);

    PinHistory(image);
    image.m_nColorMode = nColorMode;
    image.m_nBitsPerPixel = mode.nBits;
    image.m_bPaletteMode = mode.bPalette;
    if (mode.bPalette)
        image.m_dwColorResFlags = dwFlags;
    g_nColors = ColorsOfDepth(mode.nBits);
    image.MakePalette(reduced);
    image.m_Bitmap = std::move(working);
    image.m_BaseBitmap.Copy(image.m_Bitmap);
    if (image.m_pFloatMask)
        FinishSelection(image);
    MapColors();
    image.Site().RepaintAll();
}

void PasteAsFloat(CPaintImage& image, const LBitmapBase& pasted)
{
    const int nWidth = pasted.GetWidth(), nHeight = pasted.GetHeight();
    if (pasted.GetBitsPerPixel() != 24)
        return;
    std::unique_ptr<std::uint8_t[]> pFloatMask(new std::uint8_t[PixelsOf(pasted)]);
    std::memset(pFloatMask.get(), 255, PixelsOf(pasted));
    PushSelection(image, UNDO_PASTE);
    CommitFloat(image);
    image.m_FloatBitmap.Copy(pasted);
    image.m_pFloatMask = std::move(pFloatMask);
    image.m_nFloatX = image.m_nFloatY = 0;
    image.m_nFloatW = nWidth;
    image.m_nFloatH = nHeight;
    image.m_rcFloat = image.m_rcFloatStart = {0, 0, nWidth, nHeight};
    image.m_bFloatReady = image.m_bFloating = image.m_bSelection = true;
    MaskFromFloat(image);
    image.CompositeFloat(0, 0, nWidth);
    image.Site().RepaintAll();
}

LBitmapBase CopiedPixels(CPaintImage& image)
{
    LBitmapBase bitmap = image.m_Bitmap;
    CRect rc;
    if (image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom))
        bitmap.Trim(rc.left, rc.top, rc.Width(), rc.Height());
    return bitmap;
}

} // namespace kestrune
