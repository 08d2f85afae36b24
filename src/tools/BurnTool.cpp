#include "tools/BurnTool.h"

#include "paint/BurnCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CBurnTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::DodgeOpacity);
    settings.nSpacing = GetToolOption(ToolOption::DodgeSpace);
    settings.nMode = GetToolOption(ToolOption::DodgeMode);
    settings.nPressure = GetToolOption(ToolOption::DodgePressure);
    settings.nCurve = GetToolOption(ToolOption::DodgeCurve);
    return std::make_unique<BurnCore>(image, settings);
}

} // namespace kestrune
