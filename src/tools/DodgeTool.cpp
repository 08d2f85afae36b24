#include "tools/DodgeTool.h"

#include "paint/DodgeCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

StrokeSettings CDodgeTool::Settings()
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::DodgeOpacity);
    settings.nSpacing = GetToolOption(ToolOption::DodgeSpace);
    settings.nMode = GetToolOption(ToolOption::DodgeMode);
    settings.nPressure = GetToolOption(ToolOption::DodgePressure);
    settings.nCurve = GetToolOption(ToolOption::DodgeCurve);
    return settings;
}

std::unique_ptr<PaintCore> CDodgeTool::MakeCore(CPaintImage& image) const
{
    return std::make_unique<DodgeCore>(image, Settings());
}

} // namespace kestrune
