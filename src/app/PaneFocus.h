#pragma once

#include <span>

class QWidget;

namespace kestrune {

/// Carries the keyboard from the pane that has it to the next one (or the one before) that is in sight and can take it: the way by
/// keyboard out of a picture, whose window keeps the Tab key to itself. In a row of buttons the one that is checked comes first.
void FocusNextPane(std::span<QWidget* const> panes, bool bForward);

} // namespace kestrune
