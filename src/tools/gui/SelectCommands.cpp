#include "tools/gui/SelectCommands.h"

#include "selection/gui/MaskDialog.h"
#include "tools/SelectionActs.h"

#include <QApplication>

#include <utility>

namespace kestrune {

namespace {

/// One command: without a dialog the number is 0. All but the first need a selection.
struct SelectCommandRow {
    int nId;
    void (*run)(CPaintImage& image, double fNumber);
};
constexpr SelectCommandRow c_aCommands[] = {
    {30056, [](CPaintImage& image, double) { SelectAll(image); }},
    {30057, [](CPaintImage& image, double) { SelectNone(image); }},
    {30059, [](CPaintImage& image, double) { InvertSelection(image); }},
    {30060, [](CPaintImage& image, double f) { FeatherSelection(image, f); }},
    {30134, [](CPaintImage& image, double f) { BorderSelection(image, static_cast<int>(f)); }},
    {30061, [](CPaintImage& image, double f) { GrowSelection(image, static_cast<int>(f)); }},
    {30062, [](CPaintImage& image, double f) { ShrinkSelection(image, static_cast<int>(f)); }},
};
constexpr int c_nSelectAll = 30056;

struct CWaitCursor {
    CWaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CWaitCursor() { QApplication::restoreOverrideCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};

void Run(const SelectCommandRow& row, CPaintImage& image, QWidget* pParent)
{
    const MaskDialogRow* pDialog = FindMaskDialog(row.nId);
    if (!pDialog)
        return row.run(image, 0);
    CMaskDialog dialog(*pDialog, pParent);
    if (const std::optional<double> number = dialog.Ask()) {
        const CWaitCursor wait;
        row.run(image, *number);
    }
}

} // namespace

void RegisterSelectCommands(CCommandTarget& target, std::function<CPaintImage*()> image, QWidget* pParent)
{
    for (const SelectCommandRow& row : c_aCommands)
        target.OnCommandId(
            row.nId,
            [&row, image, pParent] {
                if (CPaintImage* pImage = image())
                    Run(row, *pImage, pParent);
            },
            [&row, image](CommandState& state) {
                const CPaintImage* pImage = image();
                state.bEnabled = pImage && (row.nId == c_nSelectAll || pImage->m_bSelection);
            });
}

} // namespace kestrune
