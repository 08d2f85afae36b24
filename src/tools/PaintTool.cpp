#include "tools/PaintTool.h"

#include "doc/PaintImage.h"
#include "tools/ToolRegistry.h"

#include <algorithm>

namespace kestrune {

CToolView* g_pActiveToolView = nullptr;

CPaintTool::CPaintTool(int nToolId)
    : m_nToolId(nToolId)
{
    AppendTool(this);
}

CPaintTool::~CPaintTool()
{
    RemoveTool(this);
}

void CPaintTool::OnLButtonDown(CToolView& view, unsigned, CPoint)
{
    view.SetCapture();
    m_bMoving = false;
}

void CPaintTool::OnLButtonUp(CToolView& view, unsigned, CPoint)
{
    if (view.HasCapture())
        view.ReleaseCapture();
}

CPoint CPaintTool::ClampToImage(const CToolView& view, CPoint pt, const CPaintImage& image)
{
    const CPoint origin = view.GetImageOrigin();
    const auto clamp = [&](int n, int nOrigin, int nSize) {
        const float fLow = static_cast<float>(nOrigin);
        const float fHigh = fLow + static_cast<float>(nSize) * view.GetZoom();
        return static_cast<int>(std::clamp(static_cast<float>(n), fLow, fHigh));
    };
    return {clamp(pt.x, origin.x, image.m_nWidth), clamp(pt.y, origin.y, image.m_nHeight)};
}

bool CPaintTool::IsInClient(const CToolView& view, CPoint pt)
{
    const CSize size = view.GetClientSize();
    return pt.x >= 0 && pt.y >= 0 && pt.x < size.cx && pt.y < size.cy;
}

} // namespace kestrune
