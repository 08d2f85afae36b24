#include "tools/MagicWandTool.h"

#include "doc/PaintImage.h"
#include "selection/FloodFill.h"
#include "tools/ToolOptions.h"
#include "undo/UndoKinds.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace kestrune {

void CMagicWandTool::Free::operator()(void* p) const
{
    std::free(p);
}

void CMagicWandTool::BeginShape(CToolView&)
{
    const LBitmapBase& bitmap = m_pImage->m_Bitmap;
    // Zeros that cost nothing where the area does not reach.
    m_pArea.reset(static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(m_nImageWidth) * m_nImageHeight, 1)));
    if (!m_pArea)
        throw std::bad_alloc();
    FloodParams params{{std::min(static_cast<int>(m_aCorners[0].x), m_nImageWidth - 1), std::min(static_cast<int>(m_aCorners[0].y), m_nImageHeight - 1)},
                       {},
                       GetToolOption(ToolOption::FloaterTolerance),
                       true};
    std::memcpy(params.aSeed, bitmap.Row(params.pt.y) + params.pt.x * 3, sizeof params.aSeed);
    m_rcArea = FloodFill({m_nImageWidth, m_nImageHeight, [&](int y) { return bitmap.Row(y); }}, params,
                         {m_pArea.get(), m_nImageWidth, m_nImageHeight});
    m_nCorner = 2; // the press alone says all
}

void CMagicWandTool::DrawShape(const MaskPlane& plane, const CRect& rcPart) const
{
    for (int y = 0; y < plane.nHeight; y++)
        std::memcpy(plane.Row(y), m_pArea.get() + static_cast<std::size_t>(rcPart.top + y) * m_nImageWidth + rcPart.left, plane.nWidth);
}

std::uint32_t CMagicWandTool::UndoKind() const
{
    return UNDO_SELECT_WAND;
}

} // namespace kestrune
