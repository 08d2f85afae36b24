#include "tools/EraserTool.h"

#include "paint/EraserCore.h"
#include "resources/PaintSources.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CEraserTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::EraserOpacity);
    settings.nSpacing = GetToolOption(ToolOption::EraserSpace);
    settings.bEraseFloat = GetToolOption(ToolOption::EraserHard) != 0;
    return std::make_unique<EraserCore>(image, settings);
}

bool CEraserTool::LaysHardMask() const
{
    return g_activeBrush.IsTiny();
}

} // namespace kestrune
