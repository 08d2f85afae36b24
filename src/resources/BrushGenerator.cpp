#include "resources/BrushGenerator.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kestrune {

namespace {

constexpr int c_nSteps = 5; ///< samples a pixel
/// Not a closer value of two pi: the small shear that it gives is part of every brush that was ever made here.
constexpr double c_dTurn = 6.28;
constexpr double c_dHardest = 1000000.0;
constexpr double c_dNothing = 0.00001;

double Falloff(double t)
{
    if (t < -0.5)
        return 2 * (-1 - t) * (-1 - t);
    if (t < 0.5)
        return 1 - 2 * t * t;
    return 2 * (1 - t) * (1 - t);
}

/// The coverage at a distance of i / 5 pixels from the centre.
std::vector<std::uint8_t> RadialTable(double dRadius, double dExponent)
{
    const auto sample = [&](double d) { return d <= dRadius ? Falloff(std::pow(d / dRadius, dExponent)) : 0.0; };
    const double dReach = std::ceil(dRadius + 1);
    std::vector<std::uint8_t> table(static_cast<std::size_t>(std::ceil(std::sqrt(dReach * 2 * dReach) + 1) * c_nSteps));
    double aWeights[c_nSteps];
    double d = 0, dSum = 0;
    for (int i = 0; i < c_nSteps; i++) {
        d = std::fabs((i + 0.5) / c_nSteps - 0.5);
        aWeights[i] = sample(d);
        dSum += aWeights[i];
    }
    // A window of five samples moves outwards; the first steps of it see the centre from both sides.
    for (std::size_t i = 0; i < table.size() && (d < dRadius || dSum > c_dNothing); i++) {
        double& dWeight = aWeights[i % c_nSteps];
        dSum -= dWeight;
        dWeight = sample(d);
        dSum += dWeight;
        table[i] = static_cast<std::uint8_t>(std::clamp(std::floor(dSum * 51.0 + 0.5), 0.0, 255.0));
        d += 0.2;
    }
    return table;
}

/// Half the mask's side along one axis: no more than the radius, less where the ellipse turned does not reach so far.
int HalfExtent(double dRadius, double dReach)
{
    return static_cast<int>(std::ceil(dRadius <= dReach ? dRadius : dReach));
}

} // namespace

BrushEntry GenerateBrush(const BrushShape& shape)
{
    const double r = std::clamp(shape.dRadius, 0.1, 100.0);
    const double q = std::clamp(shape.nRoundness, 1, 20);
    const int nHardness = std::clamp(shape.nHardness, 0, 100), nAngle = std::clamp(shape.nAngle, 0, 180);
    const double h = nHardness / 100.0;
    const double a = nAngle * c_dTurn / 360.0;
    const double s = std::sin(a), c = std::cos(a), R = std::ceil(r);
    const double tx = std::max(std::fabs(R * c - R * s / q), std::fabs(R * c + R * s / q));
    const double ty = std::max(std::fabs(R * s + R * c / q), std::fabs(R * s - R * c / q));
    const int hw = HalfExtent(r, tx), hh = HalfExtent(r, ty);
    const std::vector<std::uint8_t> table = RadialTable(r, 1 - h < 0.000001 ? c_dHardest : 1 / (1 - h));

    BrushEntry entry;
    entry.m_bGenerated = true;
    entry.m_dRadius = r;
    entry.m_dHardness = nHardness;
    entry.m_dAngle = nAngle;
    entry.m_dRoundness = q;
    entry.m_xAxis[0] = c * r;
    entry.m_xAxis[1] = -s * r;
    entry.m_yAxis[0] = s * r / q;
    entry.m_yAxis[1] = c * r / q;
    entry.m_nWidth = 2 * hw + 1;
    entry.m_nHeight = 2 * hh + 1;
    entry.m_pMask.resize(static_cast<std::size_t>(entry.m_nWidth) * static_cast<std::size_t>(entry.m_nHeight));
    std::uint8_t* const pCentre = entry.m_pMask.data() + static_cast<std::ptrdiff_t>(hh) * entry.m_nWidth + hw;
    for (int y = 0; y <= hh; y++)
        for (int x = -hw; x <= hw; x++) {
            const double u = x * c - y * s, v = (y * c + x * s) * q;
            const double d = std::sqrt(u * u + v * v);
            const std::uint8_t nValue = d < r + 1 ? table[static_cast<std::size_t>(std::floor(d * c_nSteps + 0.5))] : 0;
            const std::ptrdiff_t nAt = static_cast<std::ptrdiff_t>(y) * entry.m_nWidth + x;
            pCentre[nAt] = nValue;
            pCentre[-nAt] = nValue;
        }
    return entry;
}

} // namespace kestrune
