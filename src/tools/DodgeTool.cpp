#include "tools/DodgeTool.h"

#include "paint/DodgeCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CDodgeTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::DodgeOpacity);
    settings.nSpacing = GetToolOption(ToolOption::DodgeSpace);
    settings.nMode = GetToolOption(ToolOption::DodgeMode);
    settings.nPressure = GetToolOption(ToolOption::DodgePressure);
    settings.nCurve = GetToolOption(ToolOption::DodgeCurve);
    return std::make_unique<DodgeCore>(image, settings);
}

} // namespace kestrune
