#pragma once

#include "doc/ColorState.h"

namespace kestrune {

/// The chosen colours as the palette of the active picture can show them. `MapColors` keeps them up to date.
extern COLORREF g_crForegroundMapped;
extern COLORREF g_crBackgroundMapped;

/// Colour count and palette of the active picture under the names that the colour box has for them.
inline int& g_nPaletteColors = g_nColors;
inline const std::vector<RGBQUAD>*& g_pPaletteEntries = g_pPalette;
/// Switches mapping off whatever the picture.
extern bool g_bPaletteMappingOff;

/// True when the active picture has at most 256 colours: the mapped colours are painted with then, the plain ones
/// otherwise.
bool IsPaletteMapped();

/// Chooses a colour (red in the low byte; the top byte is dropped) and maps it.
void SetForeground(COLORREF cr);
void SetBackground(COLORREF cr);
/// The two small buttons of the colour box: exchange, and black on white.
void SwapForegroundAndBackground();
void ResetForegroundAndBackground();

/// To be called when another picture became active or the palette of the active one changed.
void MapColors();

/// What to paint with now.
COLORREF ForegroundInUse();
COLORREF BackgroundInUse();

} // namespace kestrune
