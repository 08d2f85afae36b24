#include "tools/AirBrushTool.h"

#include "doc/PaintImage.h"
#include "paint/AirBrushCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

namespace {
constexpr int c_nFlowTimer = 1;
constexpr int c_nFlowPeriod = 200; ///< ms between the dabs of a resting mouse
} // namespace

std::unique_ptr<PaintCore> CAirBrushTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::AirOpacity);
    settings.nSpacing = GetToolOption(ToolOption::AirSpace);
    settings.nMode = GetToolOption(ToolOption::AirMode);
    settings.nPressure = GetToolOption(ToolOption::AirPressure);
    return std::make_unique<AirBrushCore>(image, settings);
}

/// On a float the paint flows only while the mouse moves.
void CAirBrushTool::AfterPress(CToolView& view)
{
    if (!m_pImage->m_pFloatMask)
        view.StartTimer(c_nFlowTimer, c_nFlowPeriod);
}

void CAirBrushTool::OnTimer(CToolView& view, int nTimer)
{
    if (nTimer == c_nFlowTimer && m_bStroking && m_pCore && view.GetImage() == m_pImage)
        m_pCore->DabAgain();
}

void CAirBrushTool::BeforeRelease(CToolView& view)
{
    view.KillTimer(c_nFlowTimer);
}

} // namespace kestrune
