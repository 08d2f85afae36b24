#pragma once

#include <QString>

#include <optional>

namespace kestrune {

/// A key of the keyboard as the toolkit's events carry it.
struct ToolkitKey {
    int nKey = 0;    ///< Qt::Key
    QString strText; ///< the character that pressing it types, if any
};

/// The key of a virtual key number (letters and digits are their capital character codes); nothing for a number that is no key.
std::optional<ToolkitKey> KeyOfVirtualCode(int nCode);

} // namespace kestrune
