#pragma once

#include "base/Color.h"

#include <array>
#include <cstddef>

namespace kestrune {

/// One more than a full grid of 256: the last index, 256, is a colour like any other.
inline constexpr int c_nSwatches = 257;
using SwatchColors = std::array<COLORREF, c_nSwatches>;

namespace swatches {

/// The sixteen that every painter knows; the order of the first eight is fixed.
inline constexpr COLORREF c_aClassic[] = {
    Rgb(255, 255, 255), Rgb(0, 0, 0),     Rgb(0, 0, 128),     Rgb(0, 128, 0),     Rgb(0, 128, 128), Rgb(128, 0, 0),
    Rgb(128, 0, 128),   Rgb(128, 128, 0), Rgb(192, 192, 192), Rgb(128, 128, 128), Rgb(255, 0, 0),   Rgb(255, 255, 0),
    Rgb(0, 255, 0),     Rgb(0, 255, 255), Rgb(0, 0, 255),     Rgb(255, 0, 255),
};

/// Skin, wood and earth from light to dark, then leaf and sea.
inline constexpr COLORREF c_aNatural[] = {
    Rgb(255, 239, 222), Rgb(253, 224, 200), Rgb(245, 205, 176), Rgb(232, 184, 150), Rgb(214, 160, 124),
    Rgb(190, 133, 98),  Rgb(160, 106, 75),  Rgb(128, 82, 56),   Rgb(94, 59, 41),    Rgb(62, 39, 28),
    Rgb(222, 202, 160), Rgb(196, 164, 110), Rgb(150, 118, 68),  Rgb(178, 92, 52),   Rgb(136, 62, 38),
    Rgb(84, 74, 60),    Rgb(206, 218, 176), Rgb(164, 186, 120), Rgb(118, 146, 78),  Rgb(78, 106, 52),
    Rgb(46, 70, 38),    Rgb(190, 216, 222), Rgb(132, 176, 188), Rgb(80, 128, 146),  Rgb(42, 82, 104),
};

inline constexpr int c_nGreys = 16, c_nHues = 24, c_nInk = 8;

/// A pure hue, `iHue` of 24 around the circle, one channel 0..255.
constexpr int PureChannel(int iHue, int nChannel)
{
    // Distance from the channel's own hue, in steps of 15 degrees: full within 4, nothing beyond 8.
    int nSteps = iHue - nChannel * 8;
    nSteps = nSteps < 0 ? -nSteps : nSteps;
    nSteps = nSteps > 12 ? 24 - nSteps : nSteps;
    return nSteps <= 4 ? 255 : nSteps >= 8 ? 0 : (8 - nSteps) * 255 / 4;
}

/// A row of the hue table: how much white or black is mixed in, in percent.
struct Tone {
    int nWhite;
    int nBlack;
};
inline constexpr Tone c_aTones[] = {{80, 0}, {60, 0}, {35, 0}, {0, 0}, {0, 20}, {0, 40}, {0, 60}, {0, 78}};

constexpr COLORREF Toned(int iHue, Tone tone)
{
    int aChannel[3] = {};
    for (int k = 0; k < 3; k++) {
        const int nPure = PureChannel(iHue, k);
        aChannel[k] = (nPure + (255 - nPure) * tone.nWhite / 100) * (100 - tone.nBlack) / 100;
    }
    return Rgb(aChannel[0], aChannel[1], aChannel[2]);
}

constexpr SwatchColors Make()
{
    SwatchColors colors{};
    std::size_t n = 0;
    for (COLORREF cr : c_aClassic)
        colors[n++] = cr;
    for (int i = 0; i < c_nGreys; i++) // between white and black, which stand in front
        colors[n++] = Rgb(247 - i * 16, 247 - i * 16, 247 - i * 16);
    for (Tone tone : c_aTones)
        for (int iHue = 0; iHue < c_nHues; iHue++)
            colors[n++] = Toned(iHue, tone);
    for (COLORREF cr : c_aNatural)
        colors[n++] = cr;
    for (int i = 0; i < c_nInk; i++) // ink, growing blue
        colors[n++] = Rgb(63, 63, 112 + i * 16);
    return colors;
}

static_assert(std::size(c_aClassic) + c_nGreys + std::size(c_aTones) * c_nHues + std::size(c_aNatural) + c_nInk
              == c_nSwatches);

} // namespace swatches

/// The built-in swatches: what the grid shows where the file that ships cannot be read.
inline constexpr SwatchColors c_aBuiltInSwatches = swatches::Make();

static_assert(c_aBuiltInSwatches[0] == Rgb(255, 255, 255) && c_aBuiltInSwatches[1] == Rgb(0, 0, 0));
static_assert(c_aBuiltInSwatches[255] == Rgb(63, 63, 208) && c_aBuiltInSwatches[256] == Rgb(63, 63, 224));

} // namespace kestrune
