#include "view/LPaint.h"

#include "doc/Bitmap.h"
#include "doc/ScreenScale.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <climits>
#include <cmath>

namespace kestrune {

namespace {

constexpr std::size_t c_nStripBytes = 256 * 1024; ///< a part of the second-level cache, so the painter reads what is still there

} // namespace

LPaint::LPaint(const LBitmapBase& bitmap, QPainter& painter)
    : m_bitmap(bitmap)
    , m_painter(painter)
    , m_rcSrc{0, 0, bitmap.GetWidth(), bitmap.GetHeight()}
    , m_rcDst(m_rcSrc)
    , m_rcClip{INT_MIN, INT_MIN, INT_MAX, INT_MAX}
{
}

void LPaint::PaintDC()
{
    const double fZoom = m_fZoom > 0 ? m_fZoom : static_cast<double>(m_rcDst.Width()) / std::max(m_rcSrc.Width(), 1);
    // Where the whole scaled bitmap's corner would lie; the kernel counts from there.
    const int nLeft = m_rcDst.left - static_cast<int>(std::lround(m_rcSrc.left * fZoom));
    const int nTop = m_rcDst.top - static_cast<int>(std::lround(m_rcSrc.top * fZoom));
    const CRect rcWhole{nLeft, nTop, nLeft + static_cast<int>(m_bitmap.GetWidth() * fZoom), nTop + static_cast<int>(m_bitmap.GetHeight() * fZoom)};
    const CRect rc = Intersect(Intersect(m_rcDst, m_rcClip), rcWhole);
    if (rc.IsEmpty() || !m_bitmap.IsAllocated())
        return;
    const std::ptrdiff_t nStride = static_cast<std::ptrdiff_t>(rc.Width()) * 4;
    const int nRows = std::clamp(static_cast<int>(c_nStripBytes / nStride), 1, rc.Height());
    // Kept from one call to the next: fresh memory would cost a small rectangle more than its pixels. All drawing is on one thread.
    static std::vector<std::uint32_t> s_strip;
    if (s_strip.size() < static_cast<std::size_t>(rc.Width()) * nRows)
        s_strip.resize(static_cast<std::size_t>(rc.Width()) * nRows);
    for (int y = rc.top; y < rc.bottom; y += nRows) {
        const int nEnd = std::min(y + nRows, rc.bottom);
        ScaleToScreen(m_bitmap, fZoom, {rc.left - nLeft, y - nTop, rc.right - nLeft, nEnd - nTop}, s_strip.data(), nStride);
        m_painter.drawImage(QPoint(rc.left, y), QImage(reinterpret_cast<const uchar*>(s_strip.data()), rc.Width(), nEnd - y,
                                                       nStride, QImage::Format_RGB32));
    }
}

} // namespace kestrune
