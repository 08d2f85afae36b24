#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace kestrune {

/// Puts a value into a control as if typed or clicked, so that everything that hangs on it follows. An error text when the
/// control refuses it: it is disabled, the value is out of its range or of another kind.
///
/// Number boxes (a sum is worked out), spin boxes, line edits, combo boxes (by index, by the data or the text of a row),
/// check boxes (0, 1), button groups (by the button's id) and sliders are understood.
std::optional<QString> PutIntoControl(QObject& control, const QString& strValue);

} // namespace kestrune
