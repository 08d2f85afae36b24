#include "tools/SmudgeTool.h"

#include "paint/SmudgeCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CSmudgeTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::SmudgeOpacity);
    settings.nPressure = GetToolOption(ToolOption::SmudgePressure);
    return std::make_unique<SmudgeCore>(image, settings);
}

} // namespace kestrune
