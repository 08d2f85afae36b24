#include "tools/BlurTool.h"

#include "paint/BlurCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CBlurTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::ConvolveOpacity);
    settings.nSpacing = GetToolOption(ToolOption::ConvolveSpace);
    settings.nPressure = GetToolOption(ToolOption::ConvolvePressure);
    return std::make_unique<BlurCore>(image, settings);
}

} // namespace kestrune
