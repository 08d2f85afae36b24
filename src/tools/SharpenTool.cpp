#include "tools/SharpenTool.h"

#include "paint/SharpenCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CSharpenTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::ConvolveOpacity);
    settings.nSpacing = GetToolOption(ToolOption::ConvolveSpace);
    settings.nPressure = GetToolOption(ToolOption::ConvolvePressure);
    return std::make_unique<SharpenCore>(image, settings);
}

} // namespace kestrune
