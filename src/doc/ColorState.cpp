#include "doc/ColorState.h"

#include "doc/NearestColor.h"

namespace kestrune {

int g_nColors = c_nColorsUnlimited;
const std::vector<RGBQUAD>* g_pPalette = nullptr;
COLORREF g_crForeground = Rgb(0, 0, 0);
COLORREF g_crBackground = Rgb(255, 255, 255);

COLORREF SnapToPalette(COLORREF cr, const std::vector<RGBQUAD>& palette)
{
    if (palette.empty())
        return cr;
    const RGBQUAD& q = palette[NearestIndex(palette, RedOf(cr), GreenOf(cr), BlueOf(cr))];
    return Rgb(q.rgbRed, q.rgbGreen, q.rgbBlue);
}

} // namespace kestrune
