#include "tools/PencilTool.h"

#include "paint/PencilCore.h"
#include "resources/PaintSources.h"
#include "tools/ToolOptions.h"

namespace kestrune {

std::unique_ptr<PaintCore> CPencilTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::PencilOpacity);
    settings.nSpacing = GetToolOption(ToolOption::PencilSpace);
    settings.nMode = GetToolOption(ToolOption::PencilMode);
    return std::make_unique<PencilCore>(image, settings);
}

bool CPencilTool::LaysHardMask() const
{
    return g_activeBrush.IsTiny();
}

} // namespace kestrune
