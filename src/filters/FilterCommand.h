#pragma once

#include "doc/Bitmap.h"
#include "filters/FilterTable.h"

#include <functional>

namespace kestrune {

class CPaintImage;

/// The bitmaps of a filter dialog and the values it ended with. Copies share their rows with the picture.
struct FilterDialogData {
    LBitmapBase bmpPreview; ///< painted in the pane; previews are written here
    LBitmapBase bmpSource;  ///< what previews read
    LBitmapBase bmpClean;   ///< the preview bitmap before any filtering
    FilterValues values;
};

/// Fills the bitmaps as a dialog opens: the working bitmap, and in the source the selection's pixels where it stands.
void PrepareFilterDialog(const CPaintImage& image, FilterDialogData& data);

/// Asks the user for the values of a filter; the shell's dialogs.
class CFilterDialogs {
public:
    virtual ~CFilterDialogs() = default;
    /// Shows the dialog. True for OK. A dialog whose row says `AfterDialog` has called `ApplyFilter` before it returns.
    /// It prepares `data` itself.
    virtual bool DoModal(const FilterRow& row, CPaintImage& image, FilterDialogData& data) = 0;
};

/// A preview: the filter over a rectangle of the picture, merged through the mask, into `data.bmpPreview`.
void PreviewFilter(const FilterRow& row, CPaintImage& image, FilterDialogData& data, const CRect& rc);
/// The real run, over the selection bitmap or the working bitmap. Nothing is merged yet.
void ApplyFilter(const FilterRow& row, CPaintImage& image, FilterDialogData& data);
/// How the real run of an operation is called; null calls it at once. The shell's runner keeps the window drawn meanwhile and
/// returns (or throws what the operation threw) when it has ended.
using FilterRunner = std::function<void(const std::function<void()>& work)>;
void SetFilterRunner(FilterRunner runner);
/// Ends every filter command: the base bitmap follows, or the selection bitmap goes into the working bitmap through the
/// selection mask; then the view is repainted.
void CommitFilter(CPaintImage& image);

/// The handler of the filters with a dialog. A command without a branch only passes through the commit. Nothing without a
/// picture.
void OnFilterDialogCommand(CPaintImage* pImage, int nCommand, CFilterDialogs& dialogs);
/// The handler of the filters that run at once.
void OnFilterCommand(CPaintImage* pImage, int nCommand);
/// The handler of the box blur.
void OnBlurCommand(CPaintImage* pImage);

/// Routes a command to its handler; false when it is none of a filter's.
bool RouteFilterCommand(CPaintImage* pImage, int nCommand, CFilterDialogs& dialogs);
/// True for a command that some handler takes and whose operation exists, and for those without a branch.
bool CanRunFilterCommand(int nCommand);

} // namespace kestrune
