#pragma once

#include "base/CommandTarget.h"

#include <functional>

class QWidget;

namespace kestrune {

class CPaintImage;
class CProfile;

/// Adds the commands of all filters to a member of the command route. `image` yields the picture (null: the commands
/// are grey); the dialogs keep their values in `profile` and stand before `pParent`. A filter without an operation is
/// grey; the ids that a handler takes without doing anything are there too.
void RegisterFilterCommands(CCommandTarget& target, std::function<CPaintImage*()> image, CProfile& profile,
                            QWidget* pParent);

} // namespace kestrune
