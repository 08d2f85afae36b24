#include "doc/PaintImage.h"

#include "base/Arith.h"
#include "base/ParallelRows.h"

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

/// Moves each pixel toward the float's by the float mask times the opacity.
void BlendRow(std::uint8_t* pRow, const std::uint8_t* pFloat, const std::uint8_t* pMask, int nWidth, int nOpacity, bool bHard)
{
    for (int x = 0; x < nWidth; x++) {
        const int nScaled = Mul255(pMask[x], nOpacity);
        const int nAlpha = bHard ? HardenAlpha(nScaled) : nScaled;
        for (int c = 0; c < 3; c++)
            pRow[x * 3 + c] = Lerp255(pRow[x * 3 + c], pFloat[x * 3 + c], nAlpha);
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
    const std::uint8_t bgr[3] = {BlueOf(g_crBackground), GreenOf(g_crBackground), RedOf(g_crBackground)};
    const bool bHard = IsHardAlpha();
    m_BaseBitmap.DetachRows(rc.top, rc.bottom);
    ParallelRows(rc.Height(), 32, [&](int y0, int y1) {
        for (int y = rc.top + y0; y < rc.top + y1; y++)
            EraseRow(m_BaseBitmap.WriteRow(y) + rc.left * 3, m_pMask.get() + static_cast<std::size_t>(y) * m_nWidth + rc.left,
                     rc.Width(), bgr, bHard);
    });
}

void CPaintImage::CompositeFloat(int, int, int nMaskStride)
{
    const int nOpacity = static_cast<int>(Site().FloatOpacity() * 255 / 100.0);
    m_Bitmap.Copy(m_BaseBitmap);
    CRect rc = Intersect(m_rcFloat, {0, 0, m_nWidth, m_nHeight});
    // The float may be smaller than its rectangle says only by a caller's mistake; its memory is the limit all the same.
    rc = Intersect(rc, {m_rcFloat.left, m_rcFloat.top, m_rcFloat.left + m_FloatBitmap.GetWidth(),
                        m_rcFloat.top + m_FloatBitmap.GetHeight()});
    if (m_pFloatMask && nMaskStride > 0 && nMaskStride <= m_FloatBitmap.GetWidth() && !rc.IsEmpty()) {
        rc.right = std::min(rc.right, m_rcFloat.left + nMaskStride);
        const int nSkipX = rc.left - m_rcFloat.left, nSkipY = rc.top - m_rcFloat.top;
        const bool bHard = IsHardAlpha();
        m_Bitmap.DetachRows(rc.top, rc.bottom);
        ParallelRows(rc.Height(), 32, [&](int y0, int y1) {
            for (int y = y0; y < y1; y++)
                BlendRow(m_Bitmap.WriteRow(rc.top + y) + rc.left * 3, m_FloatBitmap.Row(nSkipY + y) + nSkipX * 3,
                         m_pFloatMask.get() + static_cast<std::size_t>(nSkipY + y) * nMaskStride + nSkipX, rc.Width(), nOpacity,
                         bHard);
        });
    }
    // The first time the hole that it was lifted from changes too.
    const CRect rcBefore = m_rcComposited.IsEmpty() ? m_rcFloatStart : m_rcComposited;
    m_rcComposited = m_rcFloat;
    Site().RepaintRect(Intersect(Unite(m_rcFloat, rcBefore), {0, 0, m_nWidth, m_nHeight}));
}

} // namespace kestrune
