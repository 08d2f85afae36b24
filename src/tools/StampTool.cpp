#include "tools/StampTool.h"

#include "base/Messages.h"
#include "paint/StampCore.h"
#include "tools/ToolOptions.h"

namespace kestrune {

namespace {
constexpr int c_nNoSource = 1131;   ///< the text that tells how to set one
constexpr int c_nMarkerReach = 5; ///< client pixels from the middle of the cross to its ends
} // namespace

std::unique_ptr<PaintCore> CStampTool::MakeCore(CPaintImage& image) const
{
    StrokeSettings settings;
    settings.nOpacity = GetToolOption(ToolOption::StampOpacity);
    settings.nSpacing = GetToolOption(ToolOption::StampSpace);
    settings.nMode = GetToolOption(ToolOption::StampMode);
    return std::make_unique<StampCore>(image, settings);
}

/// Neither the press that sets the source nor a refused one changes the picture, so they leave no record in the history.
bool CStampTool::BeforeStroke(CToolView& view, unsigned nFlags, CPoint ptImage)
{
    if (nFlags == StampCore::c_nSourceFlags) {
        m_bNoSource = false;
        MakeCore(*m_pImage)->Begin(nFlags, ptImage.x, ptImage.y);
        return false;
    }
    if (!m_bNoSource)
        return true;
    if (view.HasCapture()) // the message takes the mouse, and the button's release with it
        view.ReleaseCapture();
    SayMessage(c_nNoSource);
    return false;
}

void CStampTool::AddToOverlay(CToolView& view, ToolOverlay& overlay)
{
    if (m_bNoSource)
        return;
    const CPoint pt = view.ImageToClient(StampCore::Source());
    overlay.aLines.push_back({{pt.x, pt.y - c_nMarkerReach}, {pt.x, pt.y + c_nMarkerReach}});
    overlay.aLines.push_back({{pt.x - c_nMarkerReach, pt.y}, {pt.x + c_nMarkerReach, pt.y}});
}

} // namespace kestrune
