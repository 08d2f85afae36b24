#include "tools/FreeSelectTool.h"

#include "selection/PolygonRaster.h"
#include "tools/ToolOptions.h"
#include "undo/UndoKinds.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nSamples = 3; ///< in each direction of a pixel, for soft edges

} // namespace

void CFreeSelectTool::BeginShape(CToolView&)
{
    m_points = {m_aCorners[0]};
}

void CFreeSelectTool::ContinueShape(CToolView&)
{
    m_points.push_back(m_aCorners[1]);
}

CRect CFreeSelectTool::ShapeBounds() const
{
    if (m_points.empty())
        return {};
    const auto [itLeft, itRight] = std::minmax_element(m_points.begin(), m_points.end(), [](auto& a, auto& b) { return a.x < b.x; });
    const auto [itTop, itBottom] = std::minmax_element(m_points.begin(), m_points.end(), [](auto& a, auto& b) { return a.y < b.y; });
    if (itLeft->x == itRight->x || itTop->y == itBottom->y)
        return {};
    return {static_cast<int>(itLeft->x), static_cast<int>(itTop->y), static_cast<int>(std::ceil(itRight->x)),
            static_cast<int>(std::ceil(itBottom->y))};
}

void CFreeSelectTool::DrawShape(const MaskPlane& plane, const CRect& rcPart) const
{
    PolygonRaster raster(m_nImageWidth, m_nImageHeight, GetToolOption(ToolOption::FloaterAntiAlias) ? c_nSamples : 1);
    raster.AddPolyline(m_points);
    raster.Render(rcPart, plane);
}

std::uint32_t CFreeSelectTool::UndoKind() const
{
    return UNDO_SELECT_FREE;
}

void CFreeSelectTool::AddBand(const CToolView& view, ToolOverlay& overlay) const
{
    for (std::size_t i = 1; i < m_points.size(); i++)
        overlay.aLines.push_back({ToClient(view, m_points[i - 1]), ToClient(view, m_points[i])});
}

} // namespace kestrune
