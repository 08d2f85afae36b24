#pragma once

#include <span>
#include <string_view>

namespace kestrune {

/// Ids of commands that the code names. The other ids stand in their row alone.
enum CommandId {
    ID_FILE_NEW = 57600,
    ID_FILE_OPEN = 57601,
    ID_FILE_CLOSE = 57602,
    ID_FILE_SAVE = 57603,
    ID_FILE_SAVE_AS = 57604,
    ID_FILE_PAGE_SETUP = 57605,
    ID_FILE_PRINT_SETUP = 57606,
    ID_FILE_PRINT = 57607,
    ID_FILE_PRINT_PREVIEW = 57609,
    ID_FILE_MRU_FILE1 = 57616,
    ID_FILE_MRU_FILE5 = 57620,
    ID_EDIT_COPY = 57634,
    ID_EDIT_CUT = 57635,
    ID_EDIT_PASTE = 57637,
    ID_EDIT_UNDO = 57643,
    ID_EDIT_REDO = 57644,
    ID_WINDOW_ARRANGE = 57649,
    ID_WINDOW_CASCADE = 57650,
    ID_WINDOW_TILE_HORZ = 57651,
    ID_WINDOW_TILE_VERT = 57652,
    ID_APP_ABOUT = 57664,
    ID_APP_EXIT = 57665,
    ID_HELP = 57670,
    ID_VIEW_TOOLBAR = 59392,
    ID_VIEW_STATUS_BAR = 59393,
    ID_VIEW_OPTION_BAR = 59397,
    ID_PASTE_NEW = 30082,
    ID_PASTE_HERE = 30084,
    ID_CLEAR_CLIPBOARD = 30099,
    ID_PASTE_FROM_CLIPBOARD = 30152,
    ID_ZOOM_IN = 30063,
    ID_ZOOM_OUT = 30064,
    ID_ZOOM_FIT = 30065,
    ID_ZOOM_ACTUAL = 30066,
    ID_VIEW_RULERS = 30067,
    ID_CLOSE_ALL = 30108,
    ID_VIEW_TOOLBOX = 30135,
    ID_VIEW_COLOR_BAR = 30136,
    ID_VIEW_ASSISTANT_BAR = 30139,
    ID_VIEW_BROWSER_BAR = 30140,
    ID_VIEW_HISTORY_BAR = 30143,
    // This program's own.
    ID_FILE_EXPORT = 40001,
    ID_RESET_BOXES = 40002,
    ID_VIEW_BRUSH_LIB_BAR = 40003,
    ID_VIEW_BRUSH_BAR = 40004,
    ID_COLOR_DEFAULTS = 40010,
    ID_COLOR_SWAP = 40011,
    ID_COLOR_FOREGROUND = 40012,
    ID_COLOR_BACKGROUND = 40013,
    ID_COLOR_PALETTE = 40014,
};

/// What the program knows of one command; menus, toolbars, status bar and shortcuts follow from it.
struct CommandRow {
    int nId;
    std::string_view text;     ///< menu text with its & mnemonic
    std::string_view shortcut; ///< as shown behind the menu text, "Shift+Ctrl+I"; empty when there is none
    std::string_view prompt;   ///< the status bar's line
    std::string_view tip;      ///< the tool tip; the menu text without mnemonic and dots when empty
    std::string_view icon;     ///< a drawing below packaging/icons without its ending; empty when there is none
};

/// All commands, ascending by id.
std::span<const CommandRow> Commands();
/// The row of an id; null for an unknown one.
const CommandRow* FindCommand(int nId);

/// A further shortcut of a command that no menu shows.
struct ShortcutAlias {
    std::string_view shortcut;
    int nId;
};
std::span<const ShortcutAlias> ShortcutAliases();

enum class MenuItemKind { Command, Separator, Submenu, End, RecentFiles, WindowList };

/// One entry of a menu, in order. `Submenu` opens a level that `End` closes.
struct MenuItem {
    MenuItemKind kind;
    int nId = 0;                ///< Command
    std::string_view text = {}; ///< Submenu: its title. Command: a text of this place, when it differs from the row's.
    std::string_view icon = {}; ///< Submenu
};

/// The menu bar while no document is open (resource 128) and while one is (resource 129).
std::span<const MenuItem> StartMenu();
std::span<const MenuItem> DocumentMenu();
/// What a right click on the caption of a child frame shows.
std::span<const MenuItem> ViewContextMenu();
/// The menu of the colour box's title.
std::span<const MenuItem> ColorBoxMenu();

/// The main toolbar's commands; 0 stands for a separator.
std::span<const int> MainToolBarCommands();

/// The toolbox: a button and the resource of its group (0: the button stands alone).
struct ToolBoxButton {
    int nCommand;
    int nGroupResource;
};
std::span<const ToolBoxButton> ToolBoxButtons();
/// The commands of a group's resource, empty for an unknown one.
std::span<const int> ToolBoxGroup(int nResource);

} // namespace kestrune
