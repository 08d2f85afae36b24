#pragma once

#include <cstdint>
#include <string_view>

namespace kestrune {

/// One kind of act: what the history box writes, and which of its icons stands before it.
struct UndoKind {
    std::uint32_t nId;
    int nGroup;
    std::string_view name;
};

inline constexpr std::uint32_t c_nUndoKinds = 92;

// Kinds that the code refers to by name.
inline constexpr std::uint32_t UNDO_LOADED = 1;
inline constexpr std::uint32_t UNDO_NEW = 2;
inline constexpr std::uint32_t UNDO_PASTE = 6;
inline constexpr std::uint32_t UNDO_SELECT_RECT = 8;
inline constexpr std::uint32_t UNDO_SELECT_ELLIPSE = 9;
inline constexpr std::uint32_t UNDO_SELECT_POLYGON = 10;
inline constexpr std::uint32_t UNDO_SELECT_FREE = 11;
inline constexpr std::uint32_t UNDO_SELECT_WAND = 12;
inline constexpr std::uint32_t UNDO_SELECT_ALL = 13;
inline constexpr std::uint32_t UNDO_SELECT_NONE = 14;
inline constexpr std::uint32_t UNDO_SELECT_INVERT = 15;
inline constexpr std::uint32_t UNDO_SELECT_FEATHER = 16;
inline constexpr std::uint32_t UNDO_SELECT_BORDER = 17;
inline constexpr std::uint32_t UNDO_SELECT_GROW = 18;
inline constexpr std::uint32_t UNDO_SELECT_SHRINK = 19;
inline constexpr std::uint32_t UNDO_MOVE_SELECTION = 20;
inline constexpr std::uint32_t UNDO_BRUSH = 22;
inline constexpr std::uint32_t UNDO_CROP = 39;
inline constexpr std::uint32_t UNDO_RESIZE = 41;
inline constexpr std::uint32_t UNDO_CANVAS = 42;
inline constexpr std::uint32_t UNDO_ROTATE = 43;
inline constexpr std::uint32_t UNDO_CLEAR = 47;
inline constexpr std::uint32_t UNDO_MIRROR_SELECTION = 48;
inline constexpr std::uint32_t UNDO_FLIP_SELECTION = 49;

/// The row of an id; for an unknown one group 0 and an empty name.
UndoKind FindUndoKind(std::uint32_t nId);

} // namespace kestrune
