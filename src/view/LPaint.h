#pragma once

#include "base/Geometry.h"

#include <cstdint>
#include <vector>

class QPainter;

namespace kestrune {

class LBitmapBase;

/// Draws a bitmap's source rectangle to a destination rectangle of a painter, smoothly when it shrinks and with hard pixels
/// when it grows. Nothing of the scaled picture is kept: it is made strip by strip in a buffer that fits the processor's
/// cache and goes straight on to the painter, so a view costs no memory beside the picture.
///
/// The painter's units must be pixels of its device where sharpness matters. Aspect is the caller's: the scale is that of the width.
class LPaint {
public:
    LPaint(const LBitmapBase& bitmap, QPainter& painter);

    void SetSrcRect(const CRect& rc) { m_rcSrc = rc; }
    void SetDstRect(const CRect& rc) { m_rcDst = rc; }
    void SetClipDstRect(const CRect& rc) { m_rcClip = rc; }
    /// The exact scale, where the destination's truncated size does not tell it.
    void SetZoom(double fZoom) { m_fZoom = fZoom; }

    /// Copies the pixels (the one raster operation in use).
    void PaintDC();

private:
    const LBitmapBase& m_bitmap;
    QPainter& m_painter;
    CRect m_rcSrc; ///< the whole bitmap until set
    CRect m_rcDst; ///< the bitmap's size until set
    CRect m_rcClip;
    double m_fZoom = 0;
};

} // namespace kestrune
