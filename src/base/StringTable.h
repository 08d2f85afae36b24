#pragma once

#include <string_view>

namespace kestrune {

/// The text of that number, UTF-8; empty for an unknown one. Texts for the user stand here and nowhere else,
/// low in the house so that the core can say them too. Command prompts stand with their commands.
std::string_view StringText(int nId);

// Numbers of texts that the code refers to by name. Those from 60001 on are this program's own.
inline constexpr int IDS_OLE_INIT_FAILED = 100;
inline constexpr int IDS_PRODUCT_NAME = 130;
inline constexpr int IDS_BAD_FORMAT = 60001;
inline constexpr int IDS_LOAD_ERROR = 60002;

} // namespace kestrune
