#include "paint/PencilCore.h"

#include "doc/ColorState.h"

namespace kestrune {

void PencilCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_bHardEdge = IsTinyBrush();
    TakePattern();
    LayFirst();
}

void PencilCore::Dab()
{
    if (!GetTile())
        return;
    SetInk(SnappedColor(g_crForeground));
    OverlayPattern();
    Paint();
}

} // namespace kestrune
