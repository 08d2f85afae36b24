#include "tools/SelectionActs.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "selection/MaskDisc.h"
#include "selection/MaskFeather.h"
#include "selection/MaskFill.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"

#include <cstring>
#include <vector>

namespace kestrune {

namespace {

MaskPlane MaskOf(const CPaintImage& image)
{
    return {image.m_pMask.get(), image.m_nWidth, image.m_nHeight};
}

/// The bounds as the picture keeps them: the whole picture when nothing is selected.
CRect MaskBoundsOf(CPaintImage& image)
{
    CRect rc;
    image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom);
    return rc;
}

void ClearPart(const MaskPlane& mask, const CRect& rc)
{
    for (int y = rc.top; y < rc.bottom; y++)
        std::memset(mask.Row(y) + rc.left, 0, rc.Width());
}

/// Combines a shape that covers a part of the mask; elsewhere it is 0. `rcOld` holds all of the mask that is not 0.
void CombinePart(const MaskPlane& mask, const CRect& rcOld, const MaskPlane& shape, const CRect& rcPart, SelectMode mode)
{
    if (mode == SelectMode::New)
        ClearPart(mask, rcOld);
    if (mode == SelectMode::Intersect)
        for (const CRect& rc : {CRect{rcOld.left, rcOld.top, rcOld.right, rcPart.top}, {rcOld.left, rcPart.bottom, rcOld.right, rcOld.bottom},
                                {rcOld.left, rcOld.top, rcPart.left, rcOld.bottom}, {rcPart.right, rcOld.top, rcOld.right, rcOld.bottom}})
            if (const CRect rcOutside = Intersect(rc, rcOld); !rcOutside.IsEmpty())
                ClearPart(mask, rcOutside);
    for (int y = rcPart.top; y < rcPart.bottom; y++)
        CombineMask({mask.Row(y) + rcPart.left, rcPart.Width(), 1}, shape.Row(y - rcPart.top), mode);
}

} // namespace

MaskPlane WritableMask(CPaintImage& image)
{
    const bool bAllocate = !image.m_pMask;
    if (bAllocate)
        image.AllocateMask();
    const MaskPlane mask = MaskOf(image);
    if (bAllocate || (image.m_bMaskBoundsValid && image.m_bMaskEmpty))
        std::memset(mask.pBytes, 0, mask.Size());
    return mask;
}

void FinishSelection(CPaintImage& image)
{
    image.InvalidateMaskBounds();
    FinishSelection(image, MaskBoundsOf(image));
}

void FinishSelection(CPaintImage& image, const CRect& rcFloat)
{
    CommitFloat(image);
    image.m_nFloatX = rcFloat.left;
    image.m_nFloatY = rcFloat.top;
    image.m_nFloatW = rcFloat.Width();
    image.m_nFloatH = rcFloat.Height();
    image.m_rcFloat = image.m_rcFloatStart = rcFloat;
    image.CaptureFloat(rcFloat.left, rcFloat.top, rcFloat.Width(), rcFloat.Height());
    image.m_bFloatReady = image.m_bSelection = true;
    image.m_bFloating = false;
    image.Site().RepaintAll();
}

void CommitFloat(CPaintImage& image)
{
    image.m_BaseBitmap.Copy(image.m_Bitmap);
    image.ReleaseFloat();
    image.m_bFloating = false;
}

void DropSelection(CPaintImage& image)
{
    CommitFloat(image);
    if (image.m_pMask)
        std::memset(image.m_pMask.get(), 0, MaskOf(image).Size());
    image.InvalidateMaskBounds();
    image.m_bFloatReady = image.m_bSelection = false;
    image.Site().RepaintAll();
}

void MaskFromFloat(CPaintImage& image)
{
    if (!image.m_pFloatMask)
        return;
    const MaskPlane mask = WritableMask(image);
    const int nWidth = image.m_FloatBitmap.GetWidth(), nHeight = image.m_FloatBitmap.GetHeight();
    const CRect rcFloat{image.m_nFloatX, image.m_nFloatY, image.m_nFloatX + nWidth, image.m_nFloatY + nHeight};
    const CRect rc = Intersect(rcFloat, {0, 0, image.m_nWidth, image.m_nHeight});
    std::memset(mask.pBytes, 0, mask.Size());
    for (int y = rc.top; y < rc.bottom; y++)
        std::memcpy(mask.Row(y) + rc.left,
                    image.m_pFloatMask.get() + static_cast<std::size_t>(y - rcFloat.top) * nWidth + (rc.left - rcFloat.left),
                    rc.Width());
    image.InvalidateMaskBounds();
}

void SelectAll(CPaintImage& image)
{
    PushMask(image, UNDO_SELECT_ALL);
    FillMask(MaskOf(image), 255);
    FinishSelection(image);
}

void SelectNone(CPaintImage& image)
{
    PushMask(image, UNDO_SELECT_NONE);
    DropSelection(image);
}

void InvertSelection(CPaintImage& image)
{
    PushMask(image, UNDO_SELECT_INVERT);
    InvertMask(MaskOf(image));
    image.InvalidateMaskBounds();
    CRect rc;
    if (image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom))
        FinishSelection(image, rc);
    else
        DropSelection(image);
}

void FeatherSelection(CPaintImage& image, double fRadius)
{
    if (!(fRadius > 0))
        return;
    PushMask(image, UNDO_SELECT_FEATHER);
    FeatherMask(MaskOf(image), fRadius, FeatherTaps::All);
    FinishSelection(image);
}

void BorderSelection(CPaintImage& image, int nWidth)
{
    if (nWidth < 0)
        return SayMessage(IDS_BORDER_NEGATIVE);
    PushMask(image, UNDO_SELECT_BORDER);
    BorderMask(MaskOf(image), nWidth, nWidth);
    FinishSelection(image);
}

void GrowSelection(CPaintImage& image, int nRadius)
{
    PushMask(image, UNDO_SELECT_GROW);
    GrowMask(MaskOf(image), nRadius);
    FinishSelection(image);
}

void ShrinkSelection(CPaintImage& image, int nRadius)
{
    PushMask(image, UNDO_SELECT_SHRINK);
    ShrinkMask(MaskOf(image), nRadius);
    FinishSelection(image);
}

void SelectShape(CPaintImage& image, const CRect& rcShape, const ShapeDrawer& draw, const SelectShapeParams& params)
{
    const CRect rcPicture{0, 0, image.m_nWidth, image.m_nHeight};
    const bool bTurned = params.bColumns && params.nFeather == 0;
    const int n = params.nFeather > 0 ? FeatherCurve(params.nFeather, FeatherTaps::WithoutLast).nHalf : 0;
    CRect rcPart = Intersect({rcShape.left - n, rcShape.top - n, rcShape.right + n, rcShape.bottom + n}, rcPicture);
    if (bTurned)
        rcPart = rcPicture;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(rcPart.Width()) * rcPart.Height());
    const MaskPlane shape{bytes.data(), rcPart.Width(), rcPart.Height()};
    draw(shape, rcPart);
    std::vector<std::uint8_t> turned(bTurned ? bytes.size() : 0);
    if (bTurned)
        ColumnsReadAsRows(shape, turned.data());
    else
        FeatherMask(shape, params.nFeather, FeatherTaps::WithoutLast);

    CRect rcOld;
    if (!image.GetMaskBounds(rcOld.left, rcOld.top, rcOld.right, rcOld.bottom))
        rcOld = {};
    PushMask(image, params.nKind);
    CombinePart(MaskOf(image), rcOld, bTurned ? MaskPlane{turned.data(), shape.nWidth, shape.nHeight} : shape, rcPart, params.mode);
    FinishSelection(image);
}

void MoveSelectionMask(CPaintImage& image, int dx, int dy)
{
    PushMask(image, UNDO_MOVE_SELECTION);
    image.MoveMask(dx, dy);
}

} // namespace kestrune
