#include "paint/PencilCore.h"

#include "doc/ColorState.h"
#include "resources/PaintSources.h"

namespace kestrune {

void PencilCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_bHardEdge = g_activeBrush.IsTiny();
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
