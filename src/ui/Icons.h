#pragma once

#include <QCursor>
#include <QIcon>
#include <QPixmap>
#include <QString>

namespace kestrune {

/// An icon by its place below packaging/icons without the ending: "commands/open", "tools/brush", "history/08". It is a
/// drawing in the theme's colours, sharp at every size. A null icon for an unknown name.
QIcon LoadIcon(const QString& strName);

/// The same drawing as a pixmap of `size` logical pixels for a screen of scale `fScale`; null for an unknown name.
QPixmap LoadPixmapIcon(const QString& strName, QSize size, qreal fScale);

/// A cursor by its name below packaging/icons/cursors ("brush", "hand-open"), drawn for the finest screen there is.
/// The plain arrow for an unknown name.
QCursor LoadCursor(const QString& strName);

/// The same by the number under which tools and boxes ask for it (153 is the rectangle selection's).
QCursor LoadCursor(int nResource);

/// The icon name of a tool or effect brush command (1006 gives "tools/brush"); empty when the command is no tool.
QString ToolIconName(int nCommand);

} // namespace kestrune
