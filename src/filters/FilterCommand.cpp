#include "filters/FilterCommand.h"

#include "base/Arith.h"
#include "base/ParallelRows.h"
#include "doc/PaintImage.h"
#include "undo/UndoStack.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kestrune {

namespace {

/// Where the selection bitmap's first visible pixel stands in it.
CPoint FloatSkip(const CPaintImage& image)
{
    return {image.m_nFloatX < 0 ? -image.m_nFloatX : 0, image.m_nFloatY < 0 ? -image.m_nFloatY : 0};
}

/// The part of the selection rectangle that picture and selection bitmap both have.
CRect FloatPlace(const CPaintImage& image)
{
    const CPoint skip = FloatSkip(image);
    CRect rc = Intersect(image.m_rcFloat, {0, 0, image.m_nWidth, image.m_nHeight});
    rc.right = std::min(rc.right, image.m_rcFloat.left + image.m_FloatBitmap.GetWidth() - skip.x);
    rc.bottom = std::min(rc.bottom, image.m_rcFloat.top + image.m_FloatBitmap.GetHeight() - skip.y);
    return rc.IsEmpty() ? CRect{} : rc;
}

/// A row of the selection mask or bitmap that belongs to picture row `y`, at picture column `x`.
struct FloatRows {
    const std::uint8_t* pMask;
    const std::uint8_t* pPixels;
};
FloatRows FloatRowsAt(const CPaintImage& image, int x, int y)
{
    const CPoint skip = FloatSkip(image);
    const int nRow = y - image.m_rcFloat.top + skip.y;
    const std::size_t nColumn = static_cast<std::size_t>(x - image.m_rcFloat.left + skip.x);
    return {image.m_pFloatMask.get() + static_cast<std::size_t>(nRow) * image.m_FloatBitmap.GetWidth() + nColumn,
            image.m_FloatBitmap.Row(nRow) + nColumn * 3};
}

void CommitSelection(CPaintImage& image)
{
    const CRect rc = FloatPlace(image);
    if (rc.IsEmpty())
        return;
    image.m_Bitmap.DetachRows(rc.top, rc.bottom);
    ParallelRows(rc.Height(), 32, [&](int y0, int y1) {
        for (int y = rc.top + y0; y < rc.top + y1; ++y) {
            const FloatRows rows = FloatRowsAt(image, rc.left, y);
            const std::uint8_t* const pBase = image.m_BaseBitmap.Row(y) + static_cast<std::size_t>(rc.left) * 3;
            std::uint8_t* const pOut = image.m_Bitmap.WriteRow(y) + static_cast<std::size_t>(rc.left) * 3;
            for (int x = 0; x < rc.Width(); ++x) {
                const int nAlpha = Mul255(rows.pMask[x], 255);
                for (int c = 3 * x; c < 3 * x + 3; ++c)
                    pOut[c] = Lerp255(pBase[c], rows.pPixels[c], nAlpha);
            }
        }
    });
}

FilterRunner& TheRunner()
{
    static FilterRunner s_runner;
    return s_runner;
}

void RunReal(const FilterRow& row, const FilterRun& run)
{
    const auto work = [&] { row.operation(run); };
    if (const FilterRunner& runner = TheRunner())
        runner(work);
    else
        work();
}

void PushFilter(CPaintImage& image, const FilterRow& row)
{
    PushRect(image, 0, 0, image.m_nWidth, image.m_nHeight, row.nUndoKind);
}

void Finish(CPaintImage& image, bool bRecord)
{
    CommitFilter(image);
    if (bRecord)
        SettleHistory(image);
}

/// A filter without a dialog; `pRow` is null for a command without a branch.
void RunAtOnce(CPaintImage& image, const FilterRow* pRow)
{
    const bool bRun = pRow && pRow->operation;
    if (bRun) {
        const FilterValues values;
        if (pRow->undo == FilterUndo::BeforeRun)
            PushFilter(image, *pRow);
        RunReal(*pRow, {image, nullptr, nullptr, 0, 0, image.m_nWidth, image.m_nHeight, values, true});
        if (pRow->undo != FilterUndo::BeforeRun)
            PushFilter(image, *pRow);
    }
    Finish(image, bRun);
}

const FilterRow* FindFor(FilterHandler handler, int nCommand)
{
    const FilterRow* const pRow = FindFilter(nCommand);
    return pRow && pRow->handler == handler ? pRow : nullptr;
}

/// Commands without a branch that the handler of the filters without a dialog is given; the others go to the dispatcher.
constexpr int c_anAtOnceBranchless[] = {30036, 30077};

} // namespace

void PrepareFilterDialog(const CPaintImage& image, FilterDialogData& data)
{
    data.bmpPreview.Copy(image.m_Bitmap);
    data.bmpSource.Copy(image.m_Bitmap);
    data.bmpClean.Copy(image.m_Bitmap);
    if (!image.m_pFloatMask)
        return;
    const CRect rc = FloatPlace(image);
    for (int y = rc.top; y < rc.bottom; ++y)
        std::memcpy(data.bmpSource.WriteRow(y) + static_cast<std::size_t>(rc.left) * 3,
                    FloatRowsAt(image, rc.left, y).pPixels, static_cast<std::size_t>(rc.Width()) * 3);
}

void PreviewFilter(const FilterRow& row, CPaintImage& image, FilterDialogData& data, const CRect& rc)
{
    if (row.operation)
        row.operation({image, &data.bmpPreview, &data.bmpSource, rc.left, rc.top, rc.Width(), rc.Height(), data.values, false});
}

void ApplyFilter(const FilterRow& row, CPaintImage& image, FilterDialogData& data)
{
    if (row.operation)
        RunReal(row, {image, &data.bmpPreview, &data.bmpSource, 0, 0, data.bmpPreview.GetWidth(), data.bmpPreview.GetHeight(),
                      data.values, true});
}

void SetFilterRunner(FilterRunner runner)
{
    TheRunner() = std::move(runner);
}

void CommitFilter(CPaintImage& image)
{
    if (image.m_pFloatMask)
        CommitSelection(image); // the base bitmap stays: a second filter merges with the same unfiltered pixels
    else
        image.m_BaseBitmap.Copy(image.m_Bitmap);
    image.Site().RepaintAll();
}

void OnFilterDialogCommand(CPaintImage* pImage, int nCommand, CFilterDialogs& dialogs)
{
    if (!pImage)
        return;
    const FilterRow* const pRow = FindFor(FilterHandler::Dispatcher, nCommand);
    if (!pRow) {
        Finish(*pImage, false);
        return;
    }
    FilterDialogData data;
    if (!dialogs.DoModal(*pRow, *pImage, data))
        return;
    PushFilter(*pImage, *pRow);
    if (pRow->undo != FilterUndo::AfterDialog)
        ApplyFilter(*pRow, *pImage, data);
    Finish(*pImage, true);
}

void OnFilterCommand(CPaintImage* pImage, int nCommand)
{
    if (pImage)
        RunAtOnce(*pImage, FindFor(FilterHandler::NoDialog, nCommand));
}

void OnBlurCommand(CPaintImage* pImage)
{
    constexpr int c_nBlur = 30002;
    if (pImage)
        RunAtOnce(*pImage, FindFor(FilterHandler::Blur, c_nBlur));
}

bool RouteFilterCommand(CPaintImage* pImage, int nCommand, CFilterDialogs& dialogs)
{
    const FilterRow* const pRow = FindFilter(nCommand);
    if (!pRow && !IsBranchlessFilterCommand(nCommand))
        return false;
    const bool bAtOnce = pRow ? pRow->handler == FilterHandler::NoDialog
                              : std::ranges::find(c_anAtOnceBranchless, nCommand) != std::end(c_anAtOnceBranchless);
    if (pRow && pRow->handler == FilterHandler::Own)
        return false;
    if (pRow && pRow->handler == FilterHandler::Blur)
        OnBlurCommand(pImage);
    else if (bAtOnce)
        OnFilterCommand(pImage, nCommand);
    else
        OnFilterDialogCommand(pImage, nCommand, dialogs);
    return true;
}

bool CanRunFilterCommand(int nCommand)
{
    const FilterRow* const pRow = FindFilter(nCommand);
    return pRow ? pRow->operation != nullptr && pRow->handler != FilterHandler::Own : IsBranchlessFilterCommand(nCommand);
}

} // namespace kestrune
