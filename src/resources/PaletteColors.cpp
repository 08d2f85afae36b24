#include "resources/PaletteColors.h"

#include <utility>

namespace kestrune {

namespace {

constexpr COLORREF c_crColorBits = 0x00FFFFFF;

COLORREF Mapped(COLORREF cr) { return IsPaletteMapped() ? SnapToPalette(cr, *g_pPaletteEntries) : cr; }

} // namespace

COLORREF g_crForegroundMapped = Rgb(0, 0, 0); // as the plain ones start
COLORREF g_crBackgroundMapped = Rgb(255, 255, 255);
bool g_bPaletteMappingOff = false;

bool IsPaletteMapped()
{
    return !g_bPaletteMappingOff && g_nPaletteColors <= 256 && g_pPaletteEntries && !g_pPaletteEntries->empty();
}

void SetForeground(COLORREF cr)
{
    g_crForeground = cr & c_crColorBits;
    MapColors();
}

void SetBackground(COLORREF cr)
{
    g_crBackground = cr & c_crColorBits;
    MapColors();
}

void SwapForegroundAndBackground()
{
    std::swap(g_crForeground, g_crBackground);
    MapColors();
}

void ResetForegroundAndBackground()
{
    g_crForeground = Rgb(0, 0, 0);
    g_crBackground = Rgb(255, 255, 255);
    MapColors();
}

void MapColors()
{
    g_crForegroundMapped = Mapped(g_crForeground);
    g_crBackgroundMapped = Mapped(g_crBackground);
}

COLORREF ForegroundInUse() { return IsPaletteMapped() ? g_crForegroundMapped : g_crForeground; }

COLORREF BackgroundInUse() { return IsPaletteMapped() ? g_crBackgroundMapped : g_crBackground; }

} // namespace kestrune
