#include "paint/DodgeCore.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double c_fThird = 0.333333;

double Highlights(double x, double e)
{
    return x * (1 + e * c_fThird);
}

double Midtones(double x, double e)
{
    return e >= 0 ? std::pow(x, 1 / (1 + e)) : std::pow(x, 1 - e * c_fThird);
}

double Shadows(double x, double e)
{
    if (e >= 0) {
        const double f = c_fThird * e;
        return f + x - f * x;
    }
    const double f = -c_fThird * e;
    return x < f ? 0 : (x - f) / (1 - f);
}

} // namespace

std::array<std::uint8_t, 256> DodgeCore::MakeTable(int nCurve, double fExposure)
{
    const auto curve = nCurve == CURVE_HIGHLIGHTS ? Highlights : nCurve == CURVE_SHADOWS ? Shadows : Midtones;
    std::array<std::uint8_t, 256> aTable{};
    for (int i = 0; i < 256; i++)
        aTable[i] = static_cast<std::uint8_t>(std::clamp(static_cast<int>(curve(i / 255.0, fExposure) * 255), 0, 255));
    return aTable;
}

void DodgeCore::Begin(unsigned nFlags, double x, double y)
{
    PaintCore::Begin(nFlags, x, y);
    m_aTable = MakeTable(m_settings.nCurve, Sign() * m_settings.nPressure / 100.0);
    LayFirst();
}

void DodgeCore::Dab()
{
    if (!GetTile())
        return;
    std::uint8_t* pInk = MakeInk();
    const int nBytes = m_tile.nWidth * 3;
    for (int j = 0; j < m_tile.nHeight; j++, pInk += nBytes) {
        const std::uint8_t* pCanvas = CanvasRow(m_tile.y + j, m_tile.x);
        for (int i = 0; i < nBytes; i++)
            pInk[i] = m_aTable[pCanvas[i]];
    }
    Paint();
}

} // namespace kestrune
