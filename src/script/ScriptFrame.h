#pragma once

#include "app/PaintApp.h"

#include <QImage>
#include <QStringList>

namespace kestrune {

// What a script does with the window itself, as a person does with its frames and boxes.

/// The N-th child frame in the order of opening comes to the front. False when there is none.
bool ActivateChild(CPaintApp& app, int nIndex);
/// Closes the active child frame as its close button does. False when it stays open.
bool CloseActiveChild(CPaintApp& app);
/// The active child frame's title.
QString ActiveTitle(CPaintApp& app);
/// The option bar's control of a setting; null for an unknown setting.
QObject* FindOptionControl(CPaintApp& app, const QString& strSection, const QString& strKey);
/// Chooses the brush texture or the background pattern in its box; "none" chooses none. False for a file that is no image.
bool ChooseTexture(CPaintApp& app, const QString& strPath);
bool ChoosePattern(CPaintApp& app, const QString& strPath);
/// The number box of the pattern's percent.
QObject* PatternPercentControl(CPaintApp& app);
/// Types a factor (1 is 100 %) into the option bar's zoom box.
void TypeZoom(CPaintApp& app, float fZoom);
/// The main frame, or the box of that bar id, as a picture; null when there is no such box.
QImage GrabFrame(CPaintApp& app);
QImage GrabBox(CPaintApp& app, int nBarId);
/// Clicks on a row of the history box. False when it has no such row.
bool ClickHistoryRow(CPaintApp& app, int nRow);
/// The rows of the history box, oldest first: `*` for the current one, `-` for one that redo would bring back, else a blank;
/// a blank; the row's text.
QStringList HistoryTexts(CPaintApp& app);
/// What the boxes load once the window has been painted, at once.
void LoadBoxes(CPaintApp& app);
/// Closes every document without a question, as the end of a script does.
void DropDocuments(CPaintApp& app);
/// True while the main frame is open.
bool IsFrameOpen(CPaintApp& app);

} // namespace kestrune
