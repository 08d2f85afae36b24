#include "selection/gui/SelectionOutline.h"

#include <QPainter>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nTile = 64;
constexpr QRgb c_black = 0xFF000000, c_white = 0xFFFFFFFF;

bool IsBlack(int nSum, int nPhase)
{
    return ((nSum + nPhase) & 7) < 4;
}

} // namespace

bool CSelectionOutline::Follow(std::span<const MaskSegment> segments, const OutlinePlace& place)
{
    if (m_bTaken && place == m_place)
        return false;
    m_place = place;
    m_bTaken = true;
    for (auto& pixels : m_pixels)
        pixels.clear();
    m_tiles.clear();
    const QSize size(place.sizeClient.cx, place.sizeClient.cy);
    if (segments.empty() || size.isEmpty()) {
        m_image = {};
        return true;
    }
    if (m_image.size() != size)
        m_image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    m_image.fill(0);
    const double fZoom = place.fZoom;
    // The picture's far edges are lines just outside of it. Where that is just out of sight too, its last pixels show them.
    const auto On = [fZoom](int n, int nOrigin, int nPicture, int nClient) {
        const int nAt = static_cast<int>(n * fZoom) + nOrigin;
        return n == nPicture && nAt == nClient ? nAt - 1 : nAt;
    };
    const auto Client = [&](int x, int y) {
        return CPoint{On(x, place.ptOrigin.x, place.sizePicture.cx, place.sizeClient.cx),
                      On(y, place.ptOrigin.y, place.sizePicture.cy, place.sizeClient.cy)};
    };
    for (const MaskSegment& segment : segments)
        AddLine(Client(segment.x1, segment.y1), Client(segment.x2, segment.y2));
    CollectTiles();
    return true;
}

void CSelectionOutline::Forget()
{
    m_bTaken = false;
    m_tiles.clear();
    m_image = {};
    for (auto& pixels : m_pixels)
        pixels = {};
}

/// A horizontal or vertical line from a to b, both ends included; what another line has drawn already is left as it is.
void CSelectionOutline::AddLine(CPoint a, CPoint b)
{
    const int x1 = std::max(a.x, 0), x2 = std::min(b.x, m_place.sizeClient.cx - 1);
    const int y1 = std::max(a.y, 0), y2 = std::min(b.y, m_place.sizeClient.cy - 1);
    const std::uint32_t nStride = static_cast<std::uint32_t>(m_image.bytesPerLine() / sizeof(QRgb));
    QRgb* const pBits = reinterpret_cast<QRgb*>(m_image.bits());
    for (int y = y1; y <= y2; y++)
        for (int x = x1; x <= x2; x++) {
            const std::uint32_t nAt = static_cast<std::uint32_t>(y) * nStride + static_cast<std::uint32_t>(x);
            if (pBits[nAt])
                continue;
            pBits[nAt] = IsBlack(x + y, m_nPhase) ? c_black : c_white;
            m_pixels[(x + y) & 7].push_back(nAt);
        }
}

void CSelectionOutline::CollectTiles()
{
    const int nStride = static_cast<int>(m_image.bytesPerLine() / sizeof(QRgb));
    const int nColumns = (m_place.sizeClient.cx + c_nTile - 1) / c_nTile, nRows = (m_place.sizeClient.cy + c_nTile - 1) / c_nTile;
    std::vector<bool> used(static_cast<std::size_t>(nColumns) * nRows);
    for (const auto& pixels : m_pixels)
        for (const std::uint32_t nAt : pixels)
            used[nAt / nStride / c_nTile * nColumns + nAt % nStride / c_nTile] = true;
    for (int j = 0; j < nRows; j++)
        for (int i = 0; i < nColumns; i++) {
            if (!used[j * nColumns + i])
                continue;
            const int nFirst = i;
            while (i + 1 < nColumns && used[j * nColumns + i + 1])
                i++;
            m_tiles.push_back({nFirst * c_nTile, j * c_nTile, std::min((i + 1) * c_nTile, m_place.sizeClient.cx),
                               std::min((j + 1) * c_nTile, m_place.sizeClient.cy)});
        }
}

void CSelectionOutline::Paint(const std::vector<std::uint32_t>& pixels, QRgb color)
{
    QRgb* const pBits = reinterpret_cast<QRgb*>(m_image.bits());
    for (const std::uint32_t nAt : pixels)
        pBits[nAt] = color;
}

void CSelectionOutline::Tick()
{
    m_nPhase = (m_nPhase + 1) % c_nPhases;
    if (m_image.isNull())
        return;
    // Two of the eight lists have come to the end of a stripe.
    Paint(m_pixels[(c_nPhases - m_nPhase) & 7], c_black);
    Paint(m_pixels[(c_nPhases + 4 - m_nPhase) & 7], c_white);
}

void CSelectionOutline::Resume()
{
    m_nPause = std::max(m_nPause - 1, 0);
}

void CSelectionOutline::Draw(QPainter& painter, const CRect& rc) const
{
    for (const CRect& rcTile : m_tiles) {
        const CRect rcPart = Intersect(rcTile, rc);
        if (!rcPart.IsEmpty())
            painter.drawImage(QPoint(rcPart.left, rcPart.top), m_image,
                              QRect(rcPart.left, rcPart.top, rcPart.Width(), rcPart.Height()));
    }
}

} // namespace kestrune
