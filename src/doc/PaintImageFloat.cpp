#include "doc/PaintImage.h"

#include "base/Arith.h"
#include "base/ParallelRows.h"
#include "doc/FloatKernels.h"
#include "doc/ProjectiveResample.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

/// Moves each pixel toward one colour (blue, green, red) by its mask byte.
void EraseRow(std::uint8_t* pRow, const std::uint8_t* pMask, int nWidth, const std::uint8_t (&bgr)[3], bool bHard)
{
    for (int x = 0; x < nWidth; x++) {
        const int nAlpha = bHard ? HardenAlpha(pMask[x]) : pMask[x];
        for (int c = 0; c < 3; c++)
            pRow[x * 3 + c] = Lerp255(pRow[x * 3 + c], bgr[c], nAlpha);
    }
}

} // namespace

void CPaintImage::CaptureFloat(int x, int y, int w, int h)
{
    ReleaseFloat();
    if (w <= 0 || h <= 0)
        return;
    const std::size_t nBytes = static_cast<std::size_t>(w) * h;
    auto pMask = std::make_unique<std::uint8_t[]>(nBytes); // zero: outside the mask
    const CRect rc = Intersect({x, y, x + w, y + h}, {0, 0, m_nWidth, m_nHeight});
    // A mask known to be empty may never have been written.
    const bool bReadMask = m_pMask && !(m_bMaskBoundsValid && m_bMaskEmpty);
    m_FloatBitmap.Create(w, h, 24, ORDER_BGR);
    if (rc != CRect{x, y, x + w, y + h})
        m_FloatBitmap.Fill(0);
    if (!rc.IsEmpty())
        m_FloatBitmap.Combine(rc.left - x, rc.top - y, rc.Width(), rc.Height(), m_Bitmap, rc.left, rc.top, CB_COPY);
    for (int row = rc.top; bReadMask && row < rc.bottom; row++)
        std::memcpy(pMask.get() + static_cast<std::size_t>(row - y) * w + (rc.left - x),
                    m_pMask.get() + static_cast<std::size_t>(row) * m_nWidth + rc.left, rc.Width());
    m_pFloatMask = std::move(pMask);
}

void CPaintImage::ReleaseFloat()
{
    m_pFloatMask.reset();
    m_FloatBitmap.Free();
    m_rcComposited = {};
    m_bTransforming = false; // it was of that float
}

void CPaintImage::CutFloatHole()
{
    if (Site().MoveMode() == 1)
        return;
    m_BaseBitmap.Copy(m_Bitmap);
    CRect rc;
    // Outside the mask's bounds every byte is 0 and the pixel stays.
    if (!m_pMask || !GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom) || rc.IsEmpty())
        return;
    const COLORREF cr = m_pPalette && !m_pPalette->empty() ? SnapToPalette(g_crBackground, *m_pPalette) : g_crBackground;
    const std::uint8_t bgr[3] = {BlueOf(cr), GreenOf(cr), RedOf(cr)};
    const bool bHard = IsHardAlpha();
    m_BaseBitmap.DetachRows(rc.top, rc.bottom);
    ParallelRows(rc.Height(), 32, [&](int y0, int y1) {
        for (int y = rc.top + y0; y < rc.top + y1; y++)
            EraseRow(m_BaseBitmap.WriteRow(y) + rc.left * 3, m_pMask.get() + static_cast<std::size_t>(y) * m_nWidth + rc.left,
                     rc.Width(), bgr, bHard);
    });
}

/// The part of the picture that the float covers.
CRect CPaintImage::FloatTarget(int nMaskStride) const
{
    if (!m_pFloatMask || nMaskStride <= 0 || nMaskStride > m_FloatBitmap.GetWidth())
        return {};
    // Its memory is the limit, whatever a caller's rectangles say.
    const CRect rcMemory{m_nFloatX, m_nFloatY, m_nFloatX + nMaskStride, m_nFloatY + m_FloatBitmap.GetHeight()};
    return Intersect(Intersect(m_rcFloat, rcMemory), {0, 0, m_nWidth, m_nHeight});
}

/// Writes the float, at an opacity in percent, over the base bitmap into that part of `m_Bitmap`.
void CPaintImage::BlendFloat(const CRect& rc, int nMaskStride, int nPercent)
{
    const FloatCover cover{static_cast<int>(nPercent * 255 / 100.0), IsHardAlpha()};
    m_Bitmap.DetachRows(rc.top, rc.bottom);
    ParallelRows(rc.Height(), 32, [&](int y0, int y1) {
        for (int y = rc.top + y0; y < rc.top + y1; y++) {
            const int xFloat = rc.left - m_nFloatX, yFloat = y - m_nFloatY;
            BlendFloatRow({m_BaseBitmap.Row(y) + rc.left * 3, m_FloatBitmap.Row(yFloat) + xFloat * 3,
                           m_pFloatMask.get() + static_cast<std::size_t>(yFloat) * nMaskStride + xFloat, m_Bitmap.WriteRow(y) + rc.left * 3,
                           rc.Width()},
                          cover);
        }
    });
}

/// Brings a part of `m_Bitmap` back to the base bitmap, but not what is about to be written anyway.
void CPaintImage::RestoreBase(const CRect& rc, const CRect& rcExcept)
{
    m_Bitmap.DetachRows(rc.top, rc.bottom);
    for (int y = rc.top; y < rc.bottom; y++) {
        const auto copy = [&](int x1, int x2) {
            if (x2 > x1)
                std::memcpy(m_Bitmap.WriteRow(y) + x1 * 3, m_BaseBitmap.Row(y) + x1 * 3, static_cast<std::size_t>(x2 - x1) * 3);
        };
        if (y < rcExcept.top || y >= rcExcept.bottom) {
            copy(rc.left, rc.right);
        } else {
            copy(rc.left, std::min(rc.right, rcExcept.left));
            copy(std::max(rc.left, rcExcept.right), rc.right);
        }
    }
}

void CPaintImage::RepaintComposite(const CRect& rc)
{
    // The first time the hole that it was lifted from changes too.
    const CRect rcBefore = m_rcComposited.IsEmpty() ? m_rcFloatStart : m_rcComposited;
    m_rcComposited = rc;
    Site().RepaintRect(Intersect(Unite(rc, rcBefore), {0, 0, m_nWidth, m_nHeight}));
}

void CPaintImage::CompositeFloat(int, int, int nMaskStride)
{
    m_Bitmap.Copy(m_BaseBitmap);
    const CRect rc = FloatTarget(nMaskStride);
    BlendFloat(rc, nMaskStride, Site().FloatOpacity());
    RepaintComposite(rc);
}

void CPaintImage::WriteFloatBack()
{
    const int nMaskStride = m_FloatBitmap.GetWidth();
    const CRect rc = FloatTarget(nMaskStride);
    m_BaseBitmap.Copy(m_Bitmap);
    BlendFloat(rc, nMaskStride, 100);
    m_BaseBitmap.Copy(m_Bitmap);
    Site().RepaintRect(rc);
}

void CPaintImage::MoveFloatTo(int x, int y, CompositeFrom from)
{
    const int dx = x - m_nFloatX, dy = y - m_nFloatY;
    m_nFloatX = x;
    m_nFloatY = y;
    m_rcFloat = Intersect({x, y, x + m_nFloatW, y + m_nFloatH}, {0, 0, m_nWidth, m_nHeight});
    if (m_bTransforming) {
        m_Transform = m_Transform * Matrix3{{{1, 0, -static_cast<double>(dx)}, {0, 1, -static_cast<double>(dy)}, {0, 0, 1}}};
        m_Transform.Translate(dx, dy);
        for (PointF& pt : m_Corner)
            pt = {pt.x + dx, pt.y + dy};
    }
    const int nMaskStride = m_FloatBitmap.GetWidth();
    if (from == CompositeFrom::Base)
        return CompositeFloat(dx, dy, nMaskStride);
    const CRect rc = FloatTarget(nMaskStride);
    RestoreBase(m_rcComposited, rc);
    BlendFloat(rc, nMaskStride, Site().FloatOpacity());
    RepaintComposite(rc);
}

Quad CPaintImage::FloatCorners() const
{
    const double x1 = m_nFloatX, y1 = m_nFloatY, x2 = m_nFloatX + m_nFloatW, y2 = m_nFloatY + m_nFloatH;
    return {PointF{x1, y1}, PointF{x2, y1}, PointF{x2, y2}, PointF{x1, y2}};
}

std::optional<FloatPixels> CPaintImage::TransformedFloat(const Matrix3& transform) const
{
    constexpr std::int64_t c_nMostPixels = std::int64_t{1} << 28;
    if (!m_pFloatMask)
        return {};
    // From the float's own corner to the picture.
    Matrix3 map = transform * Matrix3{{{1, 0, static_cast<double>(m_nFloatX)}, {0, 1, static_cast<double>(m_nFloatY)}, {0, 0, 1}}};
    const CRect rc = ProjectedRect(map, m_FloatBitmap.GetWidth(), m_FloatBitmap.GetHeight());
    if (rc.IsEmpty() || static_cast<std::int64_t>(rc.Width()) * rc.Height() > c_nMostPixels)
        return {};
    map.Translate(-rc.left, -rc.top);
    Matrix3 inverse; // a map that collapses leaves it so, and some of the float is seen where it lay flat
    map.Invert(inverse);
    FloatPixels result;
    result.rc = rc;
    result.bitmap.Create(rc.Width(), rc.Height(), 24, ORDER_BGR);
    result.pMask.reset(new std::uint8_t[static_cast<std::size_t>(rc.Width()) * rc.Height()]);
    ResampleProjective({m_FloatBitmap, m_pFloatMask.get()}, inverse, {result.bitmap, result.pMask.get()});
    return result;
}

void CPaintImage::ReplaceFloat(FloatPixels pixels)
{
    m_FloatBitmap = std::move(pixels.bitmap);
    m_pFloatMask = std::move(pixels.pMask);
    m_nFloatX = pixels.rc.left;
    m_nFloatY = pixels.rc.top;
    m_nFloatW = pixels.rc.Width();
    m_nFloatH = pixels.rc.Height();
    m_rcFloat = m_rcFloatStart = Intersect(pixels.rc, {0, 0, m_nWidth, m_nHeight});
    m_bFloatReady = true;
    m_bSelection = false;
    m_bTransforming = false;
    CompositeFloat(0, 0, m_nFloatW);
}

} // namespace kestrune
