#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kestrune {

/// Splits a line of a script into words: parted by blanks; `"..."` keeps blanks in one word and may be a part of one; `#` where a word
/// would start begins a comment; `$1`, `$2`, ... stand for the arguments, inside quotes too, and stay one word whatever they hold.
/// Nothing, with the reason in `strError`, for a quote without its end or an argument that was not given.
std::optional<QStringList> SplitScriptLine(const QString& strLine, const QStringList& args, QString& strError);

} // namespace kestrune
