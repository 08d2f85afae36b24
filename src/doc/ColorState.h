#pragma once

#include "base/Color.h"

#include <cstdint>
#include <vector>

namespace kestrune {

/// The colour count of "no limit": no picture is active.
inline constexpr int c_nColorsUnlimited = 1000;

/// Colour count of the active picture; over 256 means no limit.
extern int g_nColors;
/// Palette of the active picture when it has at most 256 colours, else null. Owned by the active `CPaintImage`.
extern const std::vector<RGBQUAD>* g_pPalette;

/// The colours chosen.
extern COLORREF g_crForeground;
extern COLORREF g_crBackground;

/// The colour count of a depth: 2 shifted left by the depth less 1; no limit for a depth that the count cannot hold, or none.
constexpr int ColorsOfDepth(int nBitsPerPixel)
{
    return nBitsPerPixel >= 1 && nBitsPerPixel <= 29 ? 2 << (nBitsPerPixel - 1) : c_nColorsUnlimited;
}

/// The palette entry nearest to the colour by squared distance over red, green and blue; the lowest index wins a tie.
COLORREF SnapToPalette(COLORREF cr, const std::vector<RGBQUAD>& palette);

/// Hardens an alpha to 0 or 255 at the threshold 128.
constexpr int HardenAlpha(int nAlpha) { return nAlpha < 128 ? 0 : 255; }

} // namespace kestrune
