#include "Canvas.h"

#include <algorithm>
#include <cmath>

using namespace kestrune;

namespace {

constexpr int c_nSamples = 4;

/// A number for a lattice point, 0..1.
double Lattice(int x, int y, std::uint32_t nSeed)
{
    std::uint32_t n = static_cast<std::uint32_t>(x) * 374761393u + static_cast<std::uint32_t>(y) * 668265263u + nSeed * 2246822519u;
    n = (n ^ (n >> 13)) * 1274126177u;
    n ^= n >> 16;
    return (n >> 8) / 16777216.0;
}

} // namespace

double CDice::Roll()
{
    m_nState ^= m_nState << 13;
    m_nState ^= m_nState >> 17;
    m_nState ^= m_nState << 5;
    return (m_nState >> 8) / 16777216.0;
}

double Ramp(double dFrom, double dTo, double d)
{
    const double t = std::clamp((d - dFrom) / (dTo - dFrom), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double Noise(double x, double y, std::uint32_t nSeed)
{
    const int ix = static_cast<int>(std::floor(x)), iy = static_cast<int>(std::floor(y));
    const double fx = Ramp(0, 1, x - ix), fy = Ramp(0, 1, y - iy);
    const double dTop = std::lerp(Lattice(ix, iy, nSeed), Lattice(ix + 1, iy, nSeed), fx);
    const double dBottom = std::lerp(Lattice(ix, iy + 1, nSeed), Lattice(ix + 1, iy + 1, nSeed), fx);
    return std::lerp(dTop, dBottom, fy);
}

double Clouds(double x, double y, std::uint32_t nSeed, int nOctaves)
{
    double dSum = 0, dWeight = 0;
    for (int i = 0; i < nOctaves; i++) {
        const double d = std::ldexp(1.0, -i);
        // Each layer is turned against the one before, or the squares of the lattice would show.
        const double s = std::sin(i * 2.4 + 0.6), c = std::cos(i * 2.4 + 0.6);
        dSum += d * Noise((x * c - y * s) / d, (x * s + y * c) / d, nSeed + static_cast<std::uint32_t>(i));
        dWeight += d;
    }
    return dSum / dWeight;
}

CCanvas::CCanvas(int nSide)
    : m_nSide(nSide)
    , m_aCover(static_cast<std::size_t>(nSide) * static_cast<std::size_t>(nSide))
{
}

void CCanvas::Add(const std::function<double(double x, double y)>& shape)
{
    const double dUnit = 2.0 / m_nSide;
    for (int y = 0; y < m_nSide; y++)
        for (int x = 0; x < m_nSide; x++) {
            double dSum = 0;
            for (int i = 0; i < c_nSamples * c_nSamples; i++)
                dSum += std::clamp(shape((x + (i % c_nSamples + 0.5) / c_nSamples) * dUnit - 1, (y + (i / c_nSamples + 0.5) / c_nSamples) * dUnit - 1), 0.0, 1.0);
            double& dCover = m_aCover[static_cast<std::size_t>(y * m_nSide + x)];
            dCover = std::max(dCover, dSum / (c_nSamples * c_nSamples));
        }
}

void CCanvas::Scale(const std::function<double(int x, int y)>& factor)
{
    for (int y = 0; y < m_nSide; y++)
        for (int x = 0; x < m_nSide; x++)
            m_aCover[static_cast<std::size_t>(y * m_nSide + x)] *= factor(x, y);
}

void CCanvas::Disc(double x, double y, double dRadius, double dStrength)
{
    // Only the pixels around it; the edge is as wide as a pixel, and a disc below a pixel's size grows faint instead of ragged.
    const double dUnit = 2.0 / m_nSide;
    const double px = (x + 1) / dUnit, py = (y + 1) / dUnit, r = dRadius / dUnit;
    for (int iy = static_cast<int>(py - r - 1); iy <= static_cast<int>(py + r + 1); iy++)
        for (int ix = static_cast<int>(px - r - 1); ix <= static_cast<int>(px + r + 1); ix++) {
            if (ix < 0 || iy < 0 || ix >= m_nSide || iy >= m_nSide)
                continue;
            const double d = std::hypot(ix + 0.5 - px, iy + 0.5 - py);
            double& dCover = m_aCover[static_cast<std::size_t>(iy * m_nSide + ix)];
            dCover = std::max(dCover, dStrength * std::clamp(r + 0.5 - d, 0.0, 1.0));
        }
}

BrushEntry CCanvas::Entry() const
{
    BrushEntry entry;
    entry.m_nWidth = entry.m_nHeight = m_nSide;
    for (const double d : m_aCover)
        entry.m_pMask.push_back(static_cast<std::uint8_t>(std::clamp(d, 0.0, 1.0) * 255 + 0.5));
    return entry;
}
