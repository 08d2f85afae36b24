#include "doc/Palettes.h"

namespace kestrune {

namespace {
RGBQUAD Quad(int nRed, int nGreen, int nBlue)
{
    return {static_cast<std::uint8_t>(nBlue), static_cast<std::uint8_t>(nGreen), static_cast<std::uint8_t>(nRed), 0};
}

std::vector<RGBQUAD> Cube(int nReds, int nGreens, int nBlues)
{
    std::vector<RGBQUAD> cube;
    for (int r = 0; r < nReds; r++)
        for (int g = 0; g < nGreens; g++)
            for (int b = 0; b < nBlues; b++)
                cube.push_back(Quad(r * 255 / (nReds - 1), g * 255 / (nGreens - 1), b * 255 / (nBlues - 1)));
    return cube;
}
} // namespace

std::vector<RGBQUAD> GreyRamp(int nColors)
{
    std::vector<RGBQUAD> ramp(nColors);
    for (int i = 0; i < nColors; i++) {
        const int v = i * 255 / (nColors - 1);
        ramp[i] = Quad(v, v, v);
    }
    return ramp;
}

std::vector<RGBQUAD> SystemPalette()
{
    std::vector<RGBQUAD> palette;
    for (int i = 0; i < 16; i++) {
        const int nLevel = i & 8 ? 255 : 128;
        palette.push_back(Quad(i & 1 ? nLevel : 0, i & 2 ? nLevel : 0, i & 4 ? nLevel : 0));
    }
    palette[7] = Quad(192, 192, 192); // light grey stands among the dark ones, dark grey among the light
    palette[8] = Quad(128, 128, 128);
    return palette;
}

std::vector<RGBQUAD> CubePalette()
{
    std::vector<RGBQUAD> palette = Cube(6, 7, 6);
    for (const int v : {32, 96, 160, 224}) // the cube has hardly a neutral grey
        palette.push_back(Quad(v, v, v));
    return palette;
}

std::vector<RGBQUAD> WebPalette()
{
    return Cube(6, 6, 6);
}

bool IsGreyRamp(std::span<const RGBQUAD> palette)
{
    if (palette.size() < 2)
        return false;
    const std::vector<RGBQUAD> ramp = GreyRamp(static_cast<int>(palette.size()));
    bool bUp = true, bDown = true;
    for (std::size_t i = 0; i < ramp.size(); i++) {
        RGBQUAD q = palette[i];
        q.rgbReserved = 0;
        bUp &= q == ramp[i];
        bDown &= q == ramp[ramp.size() - 1 - i];
    }
    return bUp || bDown;
}

} // namespace kestrune
