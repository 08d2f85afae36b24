#pragma once

#include <cstdint>
#include <vector>

namespace kestrune {

// What the painting tools read of the boxes at the press. The boxes write these, the tools copy what a stroke needs.

/// The brush that paints: the chosen entry's mask, softened and passed through the response curve.
struct ActiveBrush {
    std::vector<std::uint8_t> aMask; ///< nWidth x nHeight bytes, 0 none to 255 full paint; empty while no brush is chosen
    int nWidth = 0;
    int nHeight = 0;
    /// The axes of the entry the mask was made from, in pixels; the soft edge does not change them.
    double xAxis[2] = {0, 0};
    double yAxis[2] = {0, 0};
    double dSpacing = 0; ///< the entry's own spacing, in percent

    /// So narrow that pencil and eraser lay it hardened, on whole pixels.
    bool IsTiny() const { return nWidth < 4; }
};
extern ActiveBrush g_activeBrush;

/// The background pattern that some tools lay over their colour, tiled from the picture's origin.
struct PaintPattern {
    std::vector<std::uint8_t> aPixels; ///< nWidth x nHeight x 3 bytes, red, green, blue; empty: no pattern
    int nWidth = 0;
    int nHeight = 0;
    int nPercent = 100; ///< 0..100
};
extern PaintPattern g_paintPattern;

/// The brush texture: bytes that are multiplied into the paint, tiled from the picture's origin.
struct BrushTexture {
    std::vector<std::uint8_t> aBytes; ///< nWidth x nHeight; empty: no texture is active
    int nWidth = 0;
    int nHeight = 0;
};
extern BrushTexture g_brushTexture;

} // namespace kestrune
