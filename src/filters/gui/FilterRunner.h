#pragma once

#include <functional>

class QWidget;

namespace kestrune {

/// Runs a filter's work and returns when it has ended, or throws what it threw. Work over 0.3 seconds gets the wait
/// cursor, and the window is kept drawn meanwhile: the work goes on beside, while this thread handles all events but
/// those of the user. The canvas, which draws the picture that is being written, keeps what it shows until the end.
///
/// Nothing else may touch the picture until then; `IsFilterRunning` is what commands ask that a timer could start meanwhile.
void RunWithWaitCursor(const std::function<void()>& work, QWidget* pCanvas);

bool IsFilterRunning();

} // namespace kestrune
