#pragma once

#include "filters/FilterValues.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace kestrune {

class CPaintImage;
class CProfile;
class LBitmapBase;

/// Who handles a filter's command.
enum class FilterHandler {
    Dispatcher, ///< filters with a dialog
    NoDialog,   ///< runs at once
    Blur,       ///< has a handler of its own, which does what `NoDialog` does
    Own         ///< stands outside the common road altogether
};

/// When the undo record is pushed.
enum class FilterUndo {
    BeforeRun,
    AfterRun,   ///< the record of a run without a selection holds the result
    AfterDialog ///< the dialog's OK has already run the filter; the record comes after it and holds the result too
};

/// Which dialog asks for the values.
enum class FilterDialogKind {
    None,
    Common,        ///< the parameters of the row, one line each
    Colourize,     ///< those, and a colour
    Matrix,        ///< 25 cells, divisor, offset: `MatrixValues`
    HueSaturation, ///< `HueSaturationValues`
    Levels,        ///< `LevelsValues`
    Curves,        ///< `CurvesValues`
    ColorBalance,  ///< `ColorBalanceValues`
    Own
};

/// How a parameter is edited.
enum class FilterControl { Slider, Check, Choice };

/// One parameter of a filter. Values are whole numbers; `nDecimals` says how many decimals the edit shows.
struct FilterParam {
    std::string_view strKey; ///< the settings key, and the key in scripts
    std::string_view strLabel;
    int nDefault; ///< as the control shows it
    int nMin;     ///< of the slider
    int nMax;
    int nEditMin; ///< of the edit
    int nEditMax;
    int nDecimals = 0;
    int nStoredFactor = 1;             ///< what is kept is the value times this
    std::string_view strReadSection{}; ///< where reading looks, when not in the filter's own section
    FilterControl control = FilterControl::Slider;
    std::string_view strUnit{}; ///< shown behind the edit
};

/// What a filter operation is given.
struct FilterRun {
    CPaintImage& image;
    LBitmapBase* pOutput;      ///< receives a preview
    const LBitmapBase* pInput; ///< read by a preview, and by an applied run without a selection
    int x, y, nWidth, nHeight; ///< the rectangle of a preview, in image pixels
    const FilterValues& values;
    /// False: filters the rectangle alone, merges it through the canvas mask and writes it to the output bitmap.
    /// True: filters the working bitmap, or the selection bitmap when there is one, in whole; nothing is merged.
    bool bApply;
};
using FilterOperation = void (*)(const FilterRun&);

/// All that the program knows of one filter.
struct FilterRow {
    int nCommand;
    std::uint32_t nUndoKind;
    std::string_view strTitle;
    std::string_view strSection; ///< of the settings; empty: nothing is kept
    FilterHandler handler;
    FilterUndo undo;
    FilterDialogKind dialog;
    std::span<const FilterParam> params;
    FilterOperation operation; ///< null: not built yet, the command is grey
    bool bDefaultsButton = false; ///< the dialog has a button that sets all back
};

/// All filters: those of the dispatcher first, in the order in which it looks for an id.
std::span<const FilterRow> FilterTable();
/// The row of a command; null for another one.
const FilterRow* FindFilter(int nCommand);

/// Commands that a handler is given but has no branch for: they change nothing and leave no record.
bool IsBranchlessFilterCommand(int nCommand);
std::span<const int> BranchlessFilterCommands();

/// The index of a parameter in `FilterValues::an`, -1 for an unknown key.
int FindFilterParam(const FilterRow& row, std::string_view strKey);

/// What a dialog opens with: constants, and what the settings hold.
FilterValues LoadFilterValues(const FilterRow& row, const CProfile& profile);
/// What OK writes.
void SaveFilterValues(const FilterRow& row, const FilterValues& values, CProfile& profile);

} // namespace kestrune
