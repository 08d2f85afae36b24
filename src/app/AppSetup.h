#pragma once

class QApplication;

namespace kestrune {

/// What every way into the program (a window, a script) sets up before its first window: names, theme, the log.
void PrepareApplication(QApplication& app);

/// What can wait until the first window has been painted: the toolkit's own texts in Korean, the desktop's choice of theme.
void FinishApplication(QApplication& app);

} // namespace kestrune
