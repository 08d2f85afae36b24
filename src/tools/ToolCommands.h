#pragma once

#include "base/CommandTarget.h"
#include "tools/ToolTable.h"

#include <functional>

namespace kestrune {

class CPaintImage;

/// The effect that the effect brushes paint: `EffectRow::nEffectKind` of the last effect command.
extern int g_nEffectKind;

/// Adds every command that chooses a tool to a member of the command route.
/// `image` yields the picture whose float the transform tools need (null: none; they are grey then), `showBars` shows the
/// tool's option bar and side box, before the old tool is left.
void RegisterToolCommands(CCommandTarget& target, std::function<CPaintImage*()> image,
                          std::function<void(const ToolRow&, int nCommand)> showBars);

} // namespace kestrune
