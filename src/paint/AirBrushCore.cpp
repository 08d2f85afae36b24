#include "paint/AirBrushCore.h"

#include "doc/ColorState.h"

namespace kestrune {

void AirBrushCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_bIncremental = true;
    m_nOpacity = m_nOpacity * m_settings.nPressure / 100;
    TakePattern();
    LayFirst();
}

void AirBrushCore::Dab()
{
    if (!GetTile())
        return;
    SetInk(g_crForeground);
    OverlayPattern();
    Paint();
}

} // namespace kestrune
