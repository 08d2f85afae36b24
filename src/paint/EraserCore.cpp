#include "paint/EraserCore.h"

#include "doc/ColorState.h"
#include "resources/PaintSources.h"

namespace kestrune {

void EraserCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_nMode = 0;
    m_bHardEdge = g_activeBrush.IsTiny();
    m_bEraseFloatAlpha = m_settings.bEraseFloat;
    LayFirst();
}

void EraserCore::Dab()
{
    if (!GetTile())
        return;
    SetInk(SnappedColor(g_crBackground));
    Paint();
}

} // namespace kestrune
