#include "paint/BrushCore.h"

#include "doc/ColorState.h"

#include <cmath>

namespace kestrune {

namespace {
constexpr double c_fFadeCurve = 5.541; ///< leaves 1 of 255 at the fade length
constexpr int c_nFadeStep = 10;        ///< pixels that one unit of the setting stands for
} // namespace

void BrushCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    TakePattern();
    LayFirst();
}

/// A stroke with fade dies out on its own and then walks on laying nothing. With a length of 0 not even the first dab is laid:
/// its distance over the length is no number.
int BrushCore::FadeAlpha() const
{
    const double fLength = static_cast<double>(m_settings.nPressure) * c_nFadeStep;
    if (!(fLength > 0))
        return 0;
    const double x = m_fPixelDistance / fLength;
    return static_cast<int>(255 * std::exp(-x * x * c_fFadeCurve));
}

void BrushCore::Dab()
{
    if (!GetTile())
        return;
    m_nDabAlpha = m_settings.bFade ? FadeAlpha() : 255;
    if (m_nDabAlpha == 0)
        return;
    SetInk(g_crForeground);
    OverlayPattern();
    Paint();
}

} // namespace kestrune
