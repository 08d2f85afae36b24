#include "tools/ToolCommands.h"

#include "doc/PaintImage.h"
#include "tools/ToolRegistry.h"

#include <utility>

namespace kestrune {

int g_nEffectKind = 6;

void RegisterToolCommands(CCommandTarget& target, std::function<CPaintImage*()> image,
                          std::function<void(const ToolRow&, int)> showBars)
{
    const auto add = [&](const ToolRow& row, int nCommand, int nStored, int nEffectKind) {
        const auto choose = [&row, nCommand, nStored, nEffectKind, showBars] {
            if (nEffectKind)
                g_nEffectKind = nEffectKind;
            showBars(row, nCommand);
            SwitchTool(row.nId, nStored);
        };
        const auto update = [&row, image](CommandState& state) {
            state.bChecked = g_nCurrentTool == row.nId;
            if (row.bar == ToolBar::Transform) {
                const CPaintImage* pImage = image();
                state.bEnabled = pImage && pImage->m_bFloatReady;
            }
        };
        target.OnCommandId(nCommand, choose, update);
    };
    for (const ToolRow& row : ToolTable())
        if (row.nCommand)
            add(row, row.nCommand, row.nStoredCommand, 0);
    for (const EffectRow& effect : EffectTable())
        add(*FindToolRow(effect.nTool), effect.nCommand, effect.nCommand, effect.nEffectKind);
}

} // namespace kestrune
