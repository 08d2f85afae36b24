#include "paint/PaintCore.h"

#include "base/Arith.h"
#include "doc/PaintImage.h"
#include "paint/Blend.h"
#include "resources/PaintSources.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrune {

namespace {

/// Keeps a distance that lies on a dab's place from laying that dab twice.
constexpr double c_fSlack = 1e-5;
/// Rows of the tile's own memory end with room for a whole vector.
constexpr std::size_t c_nSlack = 96;

bool IsFilled(std::size_t nBytes, int nWidth, int nHeight, int nPixelSize)
{
    return nWidth > 0 && nHeight > 0 && nBytes / nPixelSize / nWidth >= static_cast<std::size_t>(nHeight);
}

} // namespace

PaintCore::PaintCore(CPaintImage& image, const StrokeSettings& settings)
    : m_pImage(&image)
    , m_settings(settings)
{
}

PaintCore::~PaintCore() = default;

void PaintCore::Begin(unsigned, double x, double y)
{
    m_nImageWidth = m_pImage->m_Bitmap.GetWidth();
    m_nImageHeight = m_pImage->m_Bitmap.GetHeight();
    m_coverage = StrokeCoverage(m_nImageWidth, m_nImageHeight);
    m_aFull.assign(m_nImageHeight, {});
    m_canvas = m_pImage->m_BaseBitmap.Bands();
    if (m_pImage->m_pFloatMask && m_pImage->m_FloatBitmap.IsAllocated()) {
        m_floatCanvas = m_pImage->m_FloatBitmap.Bands();
        m_aFloatLaid.assign(m_canvas.BandCount(), false);
    }
    m_bHardAlpha = m_pImage->IsHardAlpha();
    m_bTexture = IsFilled(g_brushTexture.aBytes.size(), g_brushTexture.nWidth, g_brushTexture.nHeight, 1);
    if (m_bTexture)
        m_texture = {g_brushTexture.aBytes, g_brushTexture.nWidth, g_brushTexture.nHeight};

    m_nOpacity = m_settings.nOpacity * 255 / 100;
    m_fSpacing = m_settings.nSpacing / 100.0;
    m_nMode = m_settings.nMode;
    if (IsFilled(g_activeBrush.aMask.size(), g_activeBrush.nWidth, g_activeBrush.nHeight, 1))
        SetBrush(g_activeBrush.aMask, g_activeBrush.nWidth, g_activeBrush.nHeight);
    m_xAxis = {g_activeBrush.xAxis[0], g_activeBrush.xAxis[1]};
    m_yAxis = {g_activeBrush.yAxis[0], g_activeBrush.yAxis[1]};

    m_ptCurrent = m_ptLast = m_ptStart = {x, y};
    m_fDistance = m_fPixelDistance = 0;
}

void PaintCore::SetBrush(std::span<const std::uint8_t> mask, int nWidth, int nHeight)
{
    SubpixelMaskCache& cache = SubpixelMaskCache::Get();
    cache.SetMask(mask.first(static_cast<std::size_t>(nWidth) * nHeight), nWidth, nHeight, m_bMaskDirty);
    m_bMaskDirty = false;
    m_nBrushWidth = nWidth;
    m_nBrushHeight = nHeight;
    m_pBrushMask = cache.Mask();
}

const std::uint8_t* PaintCore::ReadPixels(const CBandStore& store, int y, int x, int nCount)
{
    const std::size_t nFrom = static_cast<std::size_t>(x) * 3;
    return store.RowPart(y, nFrom, nFrom + static_cast<std::size_t>(nCount) * 3) + nFrom;
}

std::uint8_t* PaintCore::WritePixels(CBandStore& store, int y, int x, int nCount)
{
    const std::size_t nFrom = static_cast<std::size_t>(x) * 3;
    return store.WriteRowPart(y, nFrom, nFrom + static_cast<std::size_t>(nCount) * 3) + nFrom;
}

/// The float's pixels go where its rectangle stands now, without regard to its mask. What to skip follows from the place where
/// it was captured, not from the rectangle: kept so.
void PaintCore::PrepareCanvas(int y0, int y1)
{
    if (!m_floatCanvas)
        return;
    const CRect rc = Intersect(m_pImage->m_rcFloat, {0, 0, m_nImageWidth, m_nImageHeight});
    const int nSkipX = std::max(-m_pImage->m_nFloatX, 0), nSkipY = std::max(-m_pImage->m_nFloatY, 0);
    const int nColumns = std::min(rc.Width(), static_cast<int>(m_floatCanvas->RowBytes() / 3) - nSkipX);
    const int nRows = std::min(rc.Height(), m_floatCanvas->Rows() - nSkipY);
    for (int iBand = y0 / m_canvas.BandRows(); iBand < m_canvas.BandCount() && m_canvas.FirstRow(iBand) < y1; iBand++) {
        if (m_aFloatLaid[iBand])
            continue;
        m_aFloatLaid[iBand] = true;
        const int nEnd = std::min(m_canvas.FirstRow(iBand + 1), rc.top + nRows);
        for (int y = std::max(m_canvas.FirstRow(iBand), rc.top); y < nEnd && nColumns > 0; y++)
            std::memcpy(WritePixels(m_canvas, y, rc.left, nColumns), ReadPixels(*m_floatCanvas, y - rc.top + nSkipY, nSkipX, nColumns),
                        static_cast<std::size_t>(nColumns) * 3);
    }
}

void PaintCore::StrokeTo(double x, double y)
{
    m_ptCurrent = {x, y};
    Walk();
    m_ptLast = m_ptCurrent;
    FlushRepaint();
}

void PaintCore::DabAgain()
{
    Dab();
    FlushRepaint();
}

/// Dabs fall at whole multiples of the spacing, counted from the press in brush widths along the axes, so they keep even
/// distances through the corners of the mouse's path. Without movement, and without a brush, there is nothing to lay.
void PaintCore::Walk()
{
    const DabPoint d{m_ptCurrent.x - m_ptLast.x, m_ptCurrent.y - m_ptLast.y};
    const auto along = [&](const DabPoint& axis) {
        return (d.x * axis.x + d.y * axis.y) / (axis.x * axis.x + axis.y * axis.y);
    };
    const double u = along(m_xAxis), v = along(m_yAxis);
    const double fLength = std::sqrt(u * u + v * v) * 0.5;
    const double fPixels = std::sqrt(d.x * d.x + d.y * d.y);
    if (!(fLength >= 0) || !(m_fSpacing > 0) || m_nBrushWidth == 0) {
        m_fPixelDistance += fPixels;
        return;
    }
    const double fStart = m_fDistance, fEnd = m_fDistance + fLength, fPixelStart = m_fPixelDistance;
    const DabPoint ptLast = m_ptLast;
    while (m_fDistance < fEnd) {
        const double n = std::trunc(m_fDistance / m_fSpacing + 1.0 + c_fSlack);
        m_fDistance = n * m_fSpacing;
        if (fEnd + c_fSlack >= m_fDistance) {
            const double t = (m_fDistance - fStart) / fLength;
            m_ptCurrent = {ptLast.x + d.x * t, ptLast.y + d.y * t};
            m_fPixelDistance = fPixelStart + fPixels * t;
            Dab();
        }
    }
    m_fDistance = fEnd;
    m_fPixelDistance = fPixelStart + fPixels;
    m_ptCurrent = {ptLast.x + d.x, ptLast.y + d.y};
}

bool PaintCore::GetTile()
{
    // A command that came in while the button was down may have given the picture another size.
    if (m_nBrushWidth == 0 || m_pImage->m_Bitmap.GetWidth() != m_nImageWidth || m_pImage->m_Bitmap.GetHeight() != m_nImageHeight)
        return false;
    const int x0 = static_cast<int>(m_ptCurrent.x) - (m_nBrushWidth >> 1);
    const int y0 = static_cast<int>(m_ptCurrent.y) - (m_nBrushHeight >> 1);
    const int x1 = std::clamp(x0 + m_nBrushWidth, 0, m_nImageWidth), y1 = std::clamp(y0 + m_nBrushHeight, 0, m_nImageHeight);
    m_tile.x = std::clamp(x0, 0, m_nImageWidth);
    m_tile.y = std::clamp(y0, 0, m_nImageHeight);
    m_tile.nWidth = x1 - m_tile.x;
    m_tile.nHeight = y1 - m_tile.y;
    m_tile.aInk.clear();
    m_tile.pAlpha = nullptr;
    if (m_tile.nWidth <= 0 || m_tile.nHeight <= 0)
        return false;
    PrepareCanvas(m_tile.y, m_tile.y + m_tile.nHeight);
    return true;
}

void PaintCore::SetInk(std::uint32_t crColor)
{
    const std::uint8_t bgr[3] = {BlueOf(crColor), GreenOf(crColor), RedOf(crColor)};
    if (!std::memcmp(m_tile.aColor, bgr, 3)) // as after the last dab
        return;
    for (int i = 0; i < c_nColorPixels; i++)
        std::memcpy(m_tile.aColor + i * 3, bgr, 3);
}

std::uint32_t PaintCore::SnappedColor(std::uint32_t crColor)
{
    return g_nColors <= 256 && g_pPalette ? SnapToPalette(crColor, *g_pPalette) : crColor;
}

std::uint8_t* PaintCore::MakeInk()
{
    const std::size_t nRow = static_cast<std::size_t>(m_tile.nWidth) * 3;
    if (m_aInkRows.size() < nRow * m_tile.nHeight + c_nSlack)
        m_aInkRows.resize(nRow * m_tile.nHeight + c_nSlack);
    m_tile.aInk.resize(m_tile.nHeight);
    for (int j = 0; j < m_tile.nHeight; j++)
        m_tile.aInk[j] = m_aInkRows.data() + nRow * j;
    return m_aInkRows.data();
}

std::uint8_t* PaintCore::MakeAlpha()
{
    const std::size_t nBytes = static_cast<std::size_t>(m_tile.nWidth) * m_tile.nHeight;
    if (m_aAlphaRows.size() < nBytes + c_nSlack)
        m_aAlphaRows.resize(nBytes + c_nSlack);
    m_tile.pAlpha = m_aAlphaRows.data();
    return m_aAlphaRows.data();
}

void PaintCore::TakePattern()
{
    const PaintPattern& pattern = g_paintPattern;
    if (!IsFilled(pattern.aPixels.size(), pattern.nWidth, pattern.nHeight, 3) || pattern.nPercent <= 0)
        return;
    m_pattern = {pattern.aPixels, pattern.nWidth, pattern.nHeight, pattern.nPercent * 255 / 100};
    for (std::size_t i = 0; i + 2 < m_pattern.aPixels.size(); i += 3)
        std::swap(m_pattern.aPixels[i], m_pattern.aPixels[i + 2]);
}

void PaintCore::OverlayPattern()
{
    if (m_pattern.nAlpha == 0)
        return;
    const std::size_t nWidth = m_tile.nWidth;
    std::uint8_t* pInk = MakeInk();
    for (int j = 0; j < m_tile.nHeight; j++, pInk += nWidth * 3) {
        const std::uint8_t* pRow
            = m_pattern.aPixels.data() + static_cast<std::size_t>((j + m_tile.y) % m_pattern.nHeight) * m_pattern.nWidth * 3;
        int nColumn = m_tile.x % m_pattern.nWidth;
        for (std::size_t i = 0; i < nWidth; i++) {
            for (int k = 0; k < 3; k++)
                pInk[i * 3 + k] = Lerp255(m_tile.aColor[k], pRow[nColumn * 3 + k], m_pattern.nAlpha);
            if (++nColumn == m_pattern.nWidth)
                nColumn = 0;
        }
    }
}

DabMask& PaintCore::GetDabMask()
{
    SubpixelMaskCache& cache = SubpixelMaskCache::Get();
    if (m_bHardEdge)
        return cache.GetHardMask();
    return cache.GetSubpixelMask(SubpixelMaskCache::PhaseOf(m_ptCurrent.y, m_nBrushHeight),
                                 SubpixelMaskCache::PhaseOf(m_ptCurrent.x, m_nBrushWidth));
}

void PaintCore::Paint()
{
    PasteDab(GetDabMask());
    Touch(m_tile.Rect());
}

/// Screens are told of a whole piece of the path at once, as long as its bounding box holds little else than what was laid.
void PaintCore::Touch(const CRect& rc)
{
    const auto area = [](const CRect& r) { return static_cast<double>(r.Width()) * r.Height(); };
    const CRect rcAll = Unite(m_rcDirty, rc);
    const double fNew = area(rc) - area(Intersect(m_rcLastDab, rc));
    m_rcLastDab = rc;
    if (!m_rcDirty.IsEmpty() && area(rcAll) > 2 * (m_fDirtyArea + fNew)) {
        FlushRepaint();
        m_rcDirty = rc;
        m_fDirtyArea = area(rc);
        return;
    }
    m_rcDirty = rcAll;
    m_fDirtyArea += fNew;
}

void PaintCore::FlushRepaint()
{
    if (!m_rcDirty.IsEmpty())
        m_pImage->Site().RepaintRect(m_rcDirty);
    m_rcDirty = {};
    m_fDirtyArea = 0;
}

void PaintCore::End()
{
    CPaintImage& image = *m_pImage;
    if (!image.m_pFloatMask)
        image.m_BaseBitmap.Copy(image.m_Bitmap);
    else if (m_bIncremental && m_floatCanvas && m_floatCanvas->Rows() == image.m_FloatBitmap.GetHeight()
             && m_floatCanvas->RowBytes() == image.m_FloatBitmap.GetRowBytes())
        image.m_FloatBitmap.WriteBands() = *m_floatCanvas;
}

} // namespace kestrune
