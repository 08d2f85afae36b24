#include "paint/BlendKernels.h"

#include "base/Arith.h"
#include "doc/ColorState.h"
#include "paint/BlendMode.h"
#include "base/ColorConvert.h"

#include <algorithm>
#include <cstdlib>

namespace kestrune {

namespace {

using std::uint8_t;

// One function a mode: c is the canvas's channel, s the source's.

constexpr int Normal(int, int s) { return s; }
constexpr int Multiply(int c, int s) { return Mul255(c, s); }
constexpr int Divide(int c, int s) { return std::min(c * 256 / (s + 1), 255); }
constexpr int Screen(int c, int s) { return 255 - Mul255(255 - c, 255 - s); }
constexpr int Overlay(int c, int s) { return Mul255(c, c + Mul255(2 * s, 255 - c)); } // 2 s is not limited to 255
constexpr int Difference(int c, int s) { return c < s ? s - c : c - s; }
constexpr int Addition(int c, int s) { return std::min(c + s, 255); }
constexpr int Subtract(int c, int s) { return std::max(c - s, 0); }
constexpr int Darken(int c, int s) { return std::min(c, s); }
constexpr int Lighten(int c, int s) { return std::max(c, s); }

template <int (*op)(int, int), int nPixelSize>
void ChannelRow(const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, std::size_t nCount)
{
    for (std::size_t i = 0; i < nCount; i++, pCanvas += 3, pSource += nPixelSize, pDestination += nPixelSize) {
        for (int k = 0; k < 3; k++)
            pDestination[k] = static_cast<uint8_t>(op(pCanvas[k], pSource[k]));
        if constexpr (nPixelSize == 4)
            pDestination[3] = pSource[3];
    }
}

// One function a colour mode, on whole pixels.

template <int HsvBytes::*component>
RgbBytes ReplaceHsv(RgbBytes c, RgbBytes s)
{
    HsvBytes hsv = RgbToHsv(c);
    hsv.*component = RgbToHsv(s).*component;
    return HsvToRgb(hsv);
}

RgbBytes ReplaceColor(RgbBytes c, RgbBytes s)
{
    const HlsBytes source = RgbToHls(s);
    return HlsToRgb(source.h, RgbToHls(c).l, source.s);
}

template <RgbBytes (*op)(RgbBytes, RgbBytes), int nPixelSize>
void PixelRow(const uint8_t* pCanvas, const uint8_t* pSource, uint8_t* pDestination, std::size_t nCount)
{
    for (std::size_t i = 0; i < nCount; i++, pCanvas += 3, pSource += nPixelSize, pDestination += nPixelSize) {
        const RgbBytes rgb = op({pCanvas[0], pCanvas[1], pCanvas[2]}, {pSource[0], pSource[1], pSource[2]});
        pDestination[0] = static_cast<uint8_t>(rgb.r);
        pDestination[1] = static_cast<uint8_t>(rgb.g);
        pDestination[2] = static_cast<uint8_t>(rgb.b);
        if constexpr (nPixelSize == 4)
            pDestination[3] = pSource[3];
    }
}

template <int n>
constexpr BlendRowFn c_aRows[BLEND_COUNT] = {
    ChannelRow<Normal, n>,
    nullptr, // Dissolve
    ChannelRow<Normal, n>,
    ChannelRow<Multiply, n>,
    ChannelRow<Divide, n>,
    ChannelRow<Screen, n>,
    ChannelRow<Overlay, n>,
    ChannelRow<Difference, n>,
    ChannelRow<Addition, n>,
    ChannelRow<Subtract, n>,
    ChannelRow<Darken, n>,
    ChannelRow<Lighten, n>,
    PixelRow<ReplaceHsv<&HsvBytes::h>, n>,
    PixelRow<ReplaceHsv<&HsvBytes::s>, n>,
    PixelRow<ReplaceColor, n>,
    PixelRow<ReplaceHsv<&HsvBytes::v>, n>,
};

} // namespace

BlendRowFn PlainBlendRow(int nMode, int nPixelSize)
{
    if (nMode < 0 || nMode >= BLEND_COUNT)
        return nullptr;
    return nPixelSize == 3 ? c_aRows<3>[nMode] : c_aRows<4>[nMode];
}

void PlainDissolveRow(std::uint32_t& nState, const uint8_t* pSource, uint8_t* pDestination, std::size_t nCount,
                      int nPixelSize)
{
    for (std::size_t i = 0; i < nCount; i++, pSource += nPixelSize, pDestination += nPixelSize) {
        std::copy_n(pSource, 3, pDestination);
        nState = nState * 214013u + 2531011u;
        const int n = static_cast<int>(nState >> 16 & 255);
        if (nPixelSize == 4)
            pDestination[3] = n <= pSource[3] ? pSource[3] : uint8_t{0};
    }
}

void PlainMixRun(const uint8_t* pCanvas, const uint8_t* pBlock, uint8_t* pOut, std::size_t nCount, const MixRun& run)
{
    for (std::size_t i = 0; i < nCount; i++, pCanvas += 3, pBlock += 4, pOut += 3) {
        int a = Mul255(pBlock[3], run.nOpacity);
        if (run.bHardAlpha)
            a = HardenAlpha(a);
        if (run.pTexture)
            a = Mul255(a, run.pTexture[i]);
        for (int k = 0; k < 3; k++)
            pOut[k] = Lerp255(pCanvas[k], pBlock[k], a);
    }
}

void PlainMultiplyAlphaRow(uint8_t* pBlock, const uint8_t* pMask, int nOpacity, std::size_t nCount, int nPixelSize)
{
    uint8_t* pAlpha = pBlock + nPixelSize - 1;
    for (std::size_t i = 0; i < nCount; i++, pAlpha += nPixelSize) {
        if (nOpacity == 255) {
            *pAlpha = static_cast<uint8_t>(Mul255(*pAlpha, pMask[i]));
        } else { // one rounding for the three factors
            const int t = *pAlpha * pMask[i] * nOpacity + 32603;
            *pAlpha = static_cast<uint8_t>(((t >> 7) + t) >> 16);
        }
    }
}

void PlainAccumulateRow(uint8_t* pCoverage, const uint8_t* pDab, std::size_t nCount)
{
    for (std::size_t i = 0; i < nCount; i++)
        pCoverage[i] = static_cast<uint8_t>(pCoverage[i] + Mul255(255 - pCoverage[i], pDab[i]));
}

} // namespace kestrune
