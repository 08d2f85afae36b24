#include "doc/Canvas.h"

namespace kestrune {

LBitmapBase OnCanvas(const LBitmapBase& source, CSize canvas, int nAnchor, COLORREF crRest)
{
    LBitmapBase target;
    if (!target.Create(canvas.cx, canvas.cy, 24))
        return source;
    target.SetResolution(source.GetXResolution(), source.GetYResolution());
    target.SetFileName(source.GetFileName());
    const CPoint pt = CanvasOffset({source.GetWidth(), source.GetHeight()}, canvas, nAnchor);
    const CRect rcPicture{pt.x, pt.y, pt.x + source.GetWidth(), pt.y + source.GetHeight()};
    if (Intersect(rcPicture, {0, 0, canvas.cx, canvas.cy}) != CRect{0, 0, canvas.cx, canvas.cy})
        target.Fill(crRest); // one band for all: what the picture does not cover stays shared
    target.Combine(pt.x, pt.y, source.GetWidth(), source.GetHeight(), source, 0, 0, CB_COPY);
    return target;
}

} // namespace kestrune
