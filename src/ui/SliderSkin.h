#pragma once

#include <QColor>
#include <QRect>

class QPainter;
class QPalette;

namespace kestrune {

/// The one look of all sliders of the program: a thin track and handles that stand on it.
enum class HandleState { Normal, Hot, Active, Disabled };

/// The track along the middle of the rectangle; the part between `x0` and `x1` is marked (none when x1 <= x0).
void DrawSliderTrack(QPainter& painter, const QPalette& palette, const QRect& rc, int x0 = 0, int x1 = 0);

/// A house-shaped handle that points up at (x, yTip), filled with `fill`.
void DrawSliderHandle(QPainter& painter, const QPalette& palette, QPoint tip, const QColor& fill, HandleState state);

/// A round thumb in the middle of a track.
void DrawSliderThumb(QPainter& painter, const QPalette& palette, QPoint centre, HandleState state);

/// A dotted frame that shows the focus.
void DrawSliderFocus(QPainter& painter, const QPalette& palette, const QRect& rc);

} // namespace kestrune
