#pragma once

#include <span>
#include <string_view>

namespace kestrune {

enum ToolId {
    TOOL_RECT_SELECT = 0x10,
    TOOL_ELLIPSE_SELECT = 0x20,
    TOOL_POLYGON_SELECT = 0x30,
    TOOL_FREE_SELECT = 0x40,
    TOOL_MOVE = 0x50,
    TOOL_MAGIC_WAND = 0x60,
    TOOL_CROP = 0x70,
    TOOL_PENCIL = 0x80,
    TOOL_BRUSH = 0x90,
    TOOL_ERASER = 0x100,
    TOOL_AIR_BRUSH = 0x110,
    TOOL_STAMP = 0x120,
    TOOL_BLUR = 0x140,
    TOOL_SHARPEN = 0x150,
    TOOL_DODGE = 0x160,
    TOOL_BURN = 0x170,
    TOOL_SMUDGE = 0x180,
    TOOL_GRADIENT = 0x190,
    TOOL_BUCKET = 0x200,
    TOOL_SCALE = 0x210,
    TOOL_ROTATE = 0x220,
    TOOL_SKEW_HORZ = 0x230,
    TOOL_SKEW_VERT = 0x240,
    TOOL_FREE_TRANSFORM = 0x250,
    TOOL_PHOTO_BRUSH = 0x260,
    TOOL_COLOR_EFFECT = 0x270,
    TOOL_TEXTURE_EFFECT = 0x280,
    TOOL_EYEDROPPER = 0x400,
    TOOL_TEXT = 0x500,
    TOOL_ZOOM = 0x600,
    TOOL_HAND = 0x700
};

/// The option bar of a tool: one bar for each family. The comment is the settings section of the family.
enum class ToolBar {
    None,
    Selection, ///< "Floater"
    Move,      ///< "Floater"
    Crop,
    Transform,
    Pencil,    ///< "Pencil"
    Brush,     ///< "Paint Brush"
    Eraser,    ///< "Eraser"
    AirBrush,  ///< "Air Brush"
    Stamp,     ///< "Stamp"
    Convolve,  ///< "ConvolveB"
    Dodge,     ///< "Dodge"
    Smudge,    ///< "Smudge"
    Art,       ///< "Art1"
    Gradient,  ///< "Gradient"
    Bucket,    ///< "Bucket"
    Tube,      ///< "Tube"
    Eyedropper,
    Text,
    Zoom,
    Hand
};

/// What the choice of a tool does to the side box that holds the brushes.
enum class SideBox { Hide, Brushes, Pictures, Keep };

/// What the program knows of one tool.
struct ToolRow {
    int nId;
    std::string_view strClass;
    int nCommand;       ///< chooses the tool; 0 for the effect brushes, whose commands stand in `EffectTable`
    int nStoredCommand; ///< what goes to `g_nCurrentToolCommand`
    std::string_view strName;
    int nUndoKind;   ///< recorded at mouse-down; 0: none, or the tool itself says
    int nCursor;     ///< over the view; 0 leaves the view's own
    int nBarIcon;    ///< picture on the option bar; 0 none
    ToolBar bar;
    SideBox sideBox;
};

/// All tools in the order of the registry.
std::span<const ToolRow> ToolTable();
/// The row of a tool; null for an unknown id.
const ToolRow* FindToolRow(int nId);

/// One command of the two effect brushes.
struct EffectRow {
    int nCommand;
    int nTool;
    int nEffectKind;
    std::string_view strName;
    std::string_view strTitle; ///< of the option bar
    std::string_view strLabel; ///< of its strength control; empty: none
};
std::span<const EffectRow> EffectTable();
/// The row of an effect command; null for another.
const EffectRow* FindEffectRow(int nCommand);

/// Cursor numbers outside the table's own column.
inline constexpr int c_nCursorMoveSelection = 15024; ///< a selection tool over the selection
inline constexpr int c_nCursorGrab = 334;            ///< the hand while it holds the picture

} // namespace kestrune
