#pragma once

#include "base/CommandTarget.h"

#include <functional>

class QWidget;

namespace kestrune {

class CPaintImage;

/// Adds the commands of the Select menu to a member of the command route. `image` yields the picture (null: the commands are grey);
/// the dialogs stand before `pParent`.
void RegisterSelectCommands(CCommandTarget& target, std::function<CPaintImage*()> image, QWidget* pParent);

} // namespace kestrune
