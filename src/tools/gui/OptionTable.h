#pragma once

#include "tools/ToolOptions.h"
#include "tools/ToolTable.h"

#include <span>
#include <string_view>

namespace kestrune {

/// How an option bar shows a setting.
enum class OptionControl {
    Percent,  ///< a number box in percent, with a popup slider
    Number,   ///< a plain number box with a popup slider
    Pixels,   ///< a number box in pixels, with a popup slider
    Size,     ///< a number box in pixels alone: the range is too wide to slide through
    List,     ///< a combo box; row 0 is the setting's least value
    Blend,    ///< a combo box of the blend modes
    Check,
    Buttons,  ///< buttons with a drawing, one of them pressed; the first is the setting's least value
    Radio,    ///< the same with texts
    Hint,     ///< a quiet line of text, for tools that have nothing to set
    Pattern,  ///< the patch and the percent of the background pattern
    Texture,  ///< the patch of the brush texture
};

/// Which tools of the family a control is for; its place stays empty in front of the others.
enum class OptionFor { All, Shapes /* rectangle, ellipse */, Outlines /* free, polygon */, Wand, Strength /* effects with a strength */ };

/// One entry of a list or of a group of buttons.
struct OptionItem {
    std::string_view text; ///< of the row, or the tip of a button with a drawing
    std::string_view icon; ///< a drawing below packaging/icons
};

/// One control of an option bar.
struct OptionControlRow {
    ToolBar bar;
    OptionControl kind;
    ToolOption option;      ///< `Count` where the control shows none
    int nControl;           ///< its number, by which it can be found as "Control1463"; 0 for one that has none
    std::string_view label; ///< before the control, or of the check box; the text of a hint
    std::string_view tip;
    std::span<const OptionItem> items = {};
    OptionFor tools = OptionFor::All;
    ToolOption enabledBy = ToolOption::Count; ///< a check box without which the control says nothing and is grey
};

/// All controls in the order in which they stand, bar by bar.
std::span<const OptionControlRow> OptionControls();
/// The part of the table that belongs to one bar; empty for a bar without any.
std::span<const OptionControlRow> OptionControls(ToolBar bar);
/// The bar on which a setting can be changed; None for a setting without a control.
ToolBar BarOfOption(ToolOption option);

} // namespace kestrune
