#include "paint/DodgeCore.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double c_fThird = 0.333333;
constexpr int c_nBlock = 32; ///< pixels looked up at once

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
    m_ink = CoverageMap(m_nImageWidth * 3, m_nImageHeight);
    m_done = CoverageMap((m_nImageWidth + c_nBlock - 1) / c_nBlock, m_nImageHeight);
    LayFirst();
}

/// Looks up the blocks of a row that hold these columns. The canvas of a capped stroke stays as it is, so each is done once.
void DodgeCore::LookUp(int y, int nFirst, int nLast)
{
    std::uint8_t* pDone = m_done.Row(y);
    for (int i = nFirst / c_nBlock; i * c_nBlock < nLast; i++) {
        if (pDone[i])
            continue;
        pDone[i] = 1;
        const int nFrom = i * c_nBlock, nCount = std::min(c_nBlock, m_nImageWidth - nFrom);
        const std::uint8_t* pCanvas = CanvasRow(y, nFrom, nCount);
        std::uint8_t* pInk = m_ink.Row(y) + nFrom * 3;
        for (int k = 0; k < nCount * 3; k++)
            pInk[k] = m_aTable[pCanvas[k]];
    }
}

void DodgeCore::Dab()
{
    if (!GetTile())
        return;
    m_tile.aInk.resize(m_tile.nHeight);
    for (int j = 0; j < m_tile.nHeight; j++) {
        LookUp(m_tile.y + j, m_tile.x, m_tile.x + m_tile.nWidth);
        m_tile.aInk[j] = m_ink.Row(m_tile.y + j) + m_tile.x * 3;
    }
    Paint();
}

} // namespace kestrune
