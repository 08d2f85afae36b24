#include "tools/BrushOutline.h"

#include "resources/PaintSources.h"

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

/// A brush of more grain than that shows the edges of its rows instead: nobody can read so many lines.
constexpr std::size_t c_nMostLines = 1500;

/// The mask as inside and outside: inside is what paints at least half as strong as its strongest place.
class Inside {
public:
    Inside(const std::vector<std::uint8_t>& aMask, int nWidth, int nHeight)
        : m_aMask(aMask)
        , m_nWidth(nWidth)
        , m_nHeight(nHeight)
        , m_nAtLeast(std::max(1, (*std::ranges::max_element(aMask) + 1) / 2))
    {
    }
    bool operator()(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < m_nWidth && y < m_nHeight && m_aMask[static_cast<std::size_t>(y) * m_nWidth + x] >= m_nAtLeast;
    }

private:
    const std::vector<std::uint8_t>& m_aMask;
    int m_nWidth, m_nHeight, m_nAtLeast;
};

/// The edges between inside and outside, in mask pixels, runs of one direction joined.
std::vector<ToolOverlay::Line> TraceEdges(const Inside& inside, int nWidth, int nHeight)
{
    std::vector<ToolOverlay::Line> aLines;
    for (int y = 0; y <= nHeight; y++)
        for (int x = 0; x < nWidth; x++) {
            const int nStart = x;
            while (x < nWidth && inside(x, y - 1) != inside(x, y))
                x++;
            if (x > nStart)
                aLines.push_back({{nStart, y}, {x, y}});
        }
    for (int x = 0; x <= nWidth; x++)
        for (int y = 0; y < nHeight; y++) {
            const int nStart = y;
            while (y < nHeight && inside(x - 1, y) != inside(x, y))
                y++;
            if (y > nStart)
                aLines.push_back({{x, nStart}, {x, y}});
        }
    return aLines;
}

/// Only the first and last pixel of each row.
std::vector<ToolOverlay::Line> TraceRows(const Inside& inside, int nWidth, int nHeight)
{
    std::vector<ToolOverlay::Line> aLines;
    for (int y = 0; y < nHeight; y++) {
        int nFirst = 0, nLast = nWidth;
        while (nFirst < nLast && !inside(nFirst, y))
            nFirst++;
        while (nLast > nFirst && !inside(nLast - 1, y))
            nLast--;
        if (nFirst < nLast) {
            aLines.push_back({{nFirst, y}, {nFirst, y + 1}});
            aLines.push_back({{nLast, y}, {nLast, y + 1}});
        }
    }
    return aLines;
}

} // namespace

void BrushOutline::Trace(float fZoom)
{
    m_aMask = g_activeBrush.aMask;
    m_nWidth = g_activeBrush.nWidth;
    m_nHeight = g_activeBrush.nHeight;
    m_fZoom = fZoom;
    auto pShape = std::make_shared<OverlayShape>();
    const Inside inside(m_aMask, m_nWidth, m_nHeight);
    pShape->aLines = TraceEdges(inside, m_nWidth, m_nHeight);
    if (pShape->aLines.size() > c_nMostLines)
        pShape->aLines = TraceRows(inside, m_nWidth, m_nHeight);
    for (ToolOverlay::Line& line : pShape->aLines)
        for (CPoint* p : {&line.a, &line.b}) {
            *p = {static_cast<int>(static_cast<float>(p->x) * fZoom), static_cast<int>(static_cast<float>(p->y) * fZoom)};
            pShape->rc = {0, 0, std::max(pShape->rc.right, p->x + 1), std::max(pShape->rc.bottom, p->y + 1)};
        }
    // Far out many lines fall on one pixel.
    const auto key = [](const ToolOverlay::Line& l) { return std::array{l.a.x, l.a.y, l.b.x, l.b.y}; };
    std::ranges::sort(pShape->aLines, {}, key);
    // Not the ranges' form: the compiler that the fuzz targets need does not take it.
    pShape->aLines.erase(std::unique(pShape->aLines.begin(), pShape->aLines.end(), [&](const auto& a, const auto& b) { return key(a) == key(b); }),
                         pShape->aLines.end());
    m_pShape = std::move(pShape);
}

/// Client pixels from the corner of the dab's rectangle to where its mask falls. A dab on a whole pixel spreads half a pixel
/// further, a hardened one is a whole pixel further; at the picture's left and upper edges both lie a pixel back.
static int MaskShift(int nCorner, bool bHard, float fZoom)
{
    const int nHalves = (bHard ? 2 : 1) - (nCorner > 0 ? 0 : 2);
    return static_cast<int>(static_cast<float>(nHalves) * fZoom / 2);
}

void BrushOutline::Place(const CToolView& view, CPoint pt, bool bHard, ToolOverlay& overlay)
{
    const ActiveBrush& brush = g_activeBrush;
    if (brush.nWidth <= 0 || brush.nHeight <= 0 || brush.aMask.size() < static_cast<std::size_t>(brush.nWidth) * brush.nHeight)
        return;
    if (!m_pShape || m_fZoom != view.GetZoom() || m_nWidth != brush.nWidth || m_nHeight != brush.nHeight || m_aMask != brush.aMask)
        Trace(view.GetZoom());
    // Where the dab's corner falls: on whole pixels of the picture, as the dab itself.
    const CPoint ptImage = view.ClientToImage(pt);
    const CPoint corner{ptImage.x - (m_nWidth >> 1), ptImage.y - (m_nHeight >> 1)};
    overlay.pShape = m_pShape;
    overlay.ptShape = view.ImageToClient(corner);
    overlay.ptShape.x += MaskShift(corner.x, bHard, m_fZoom);
    overlay.ptShape.y += MaskShift(corner.y, bHard, m_fZoom);
}

} // namespace kestrune
