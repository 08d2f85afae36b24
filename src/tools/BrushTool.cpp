#include "tools/BrushTool.h"

#include "paint/BrushCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CBrushTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::BrushOpacity);
    settings.nSpacing = GetToolOption(ToolOption::BrushSpace);
    settings.nMode = GetToolOption(ToolOption::BrushMode);
    settings.nPressure = GetToolOption(ToolOption::BrushPressure);
    settings.bFade = GetToolOption(ToolOption::BrushFade) != 0;
    return std::make_unique<BrushCore>(image, settings);
}

} // namespace kestrune
