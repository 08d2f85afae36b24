#include "filters/ByteTables.h"

#include "filters/RowKernels.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

template <typename Entry>
ByteTable Fill(const Entry& entry)
{
    ByteTable table;
    for (int i = 0; i < 256; ++i)
        table[i] = static_cast<std::uint8_t>(static_cast<int>(entry(i))); // the low byte, where it could pass 255
    return table;
}

int ClampByte(int n) { return std::clamp(n, 0, 255); }

/// The curve of the tone weights: from next to nothing at black steeply up to about one.
double Rising(int i) { return 1.075 - 1.0 / (i / 16.0 + 1.0); }

} // namespace

ByteTable InvertTable()
{
    return Fill([](int i) { return (1 - i / 255.0) * 255.0; });
}

ByteTable PosterizeTable(int nLevel)
{
    const int nSteps = std::max(nLevel, 2);
    return Fill([=](int i) { return std::floor((i / 255.0) * (nSteps - 1.0) + 0.5) / (nSteps - 1.0) * 255.0; });
}

ByteTable GammaTable(double dGamma)
{
    return Fill([=](int i) { return std::pow(i / 255.0, dGamma) * 255.0; });
}

ByteTable BrightnessTable(int nBrightness, int nContrast)
{
    const int b = nBrightness + 100;
    const int c = nContrast + 100;
    return Fill([=](int v) { return ClampByte((((v * b) / 100 - 128) * c) / 100 + 128); });
}

ByteTable SolarizeTable(int nThreshold)
{
    const int nLimit = (nThreshold * 255) / 100;
    return Fill([=](int v) { return v > nLimit ? 255 - v : v; });
}

ByteTable NormalizeTable(int nMin, int nMax)
{
    return Fill([=](int i) { return nMin < nMax && i >= nMin && i <= nMax ? ((i - nMin) * 255) / (nMax - nMin) : i; });
}

ByteTable ColourizeTable(int nWeight, int nReference)
{
    return Fill([=](int v) { return (v * (100 - nWeight) + nReference * nWeight) / 100.0; });
}

double ShadowWeight(int i) { return Rising(255 - i); }

double HighlightWeight(int i) { return Rising(i); }

double BellWeight(int i)
{
    const double f = (i - 127.0) / 127.0;
    return (1.0 - f * f) * 0.667;
}

ByteTable BalanceTable(int nShadows, int nMidtones, int nHighlights)
{
    const auto add = [](int v, int nDelta, double fWeight) { return ClampByte(v + static_cast<int>(nDelta * fWeight)); };
    return Fill([=](int i) {
        // Shadows that get darker and highlights that get lighter have curves of their own, everything else follows the bell.
        int v = add(i, nShadows, nShadows < 1 ? ShadowWeight(i) : BellWeight(i));
        v = add(v, nMidtones, BellWeight(v));
        return add(v, nHighlights, nHighlights < 1 ? BellWeight(v) : HighlightWeight(v));
    });
}

ByteTable OldPhotoTable(double fDelta)
{
    return Fill([=](int i) {
        return ClampByte(i + static_cast<int>(fDelta * (fDelta < 1 ? ShadowWeight(i) : BellWeight(i))));
    });
}

void LookUpRow(const ChannelTables& tables, const std::uint8_t* pIn, std::uint8_t* pOut, int nPixels)
{
    alignas(16) const ChannelTables aligned = tables;
    const auto n = static_cast<std::size_t>(nPixels);
    if (tables[0] == tables[1] && tables[0] == tables[2])
        LookUpBytes(aligned[0].data(), pIn, pOut, 3 * n);
    else
        LookUpChannels(aligned[0].data(), pIn, pOut, n);
}

} // namespace kestrune
