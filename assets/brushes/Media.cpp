#include "Media.h"

#include "Canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace kestrune;

namespace {

constexpr double c_dPi = std::numbers::pi;

/// Each brush rolls its own dice, so that a new one does not change those after it.
std::uint32_t Seed(int nKind, int nSide)
{
    return static_cast<std::uint32_t>(nKind * 1000 + nSide);
}

/// How far a point lies along the ray of a ragged disc: 1 on its edge.
double Ragged(double x, double y, std::uint32_t nSeed, double dDepth)
{
    const double dAngle = std::atan2(y, x);
    const double dEdge = 1 - dDepth * Clouds(2.2 * std::cos(dAngle) + 7, 2.2 * std::sin(dAngle) + 7, nSeed, 3);
    return std::hypot(x, y) / dEdge;
}

} // namespace

BrushEntry FlatNib(int nSide, double dAngle)
{
    CCanvas canvas(nSide);
    const double s = std::sin(dAngle * c_dPi / 180), c = std::cos(dAngle * c_dPi / 180);
    canvas.Add([=](double x, double y) { return std::fabs(x * c - y * s) <= 0.94 && std::fabs(x * s + y * c) <= 0.24 ? 1.0 : 0.0; });
    return canvas.Entry();
}

BrushEntry Chalk(int nSide)
{
    CCanvas canvas(nSide);
    const std::uint32_t nSeed = Seed(1, nSide);
    canvas.Add([=](double x, double y) { return Ramp(1.0, 0.9, Ragged(x, y, nSeed, 0.22)); });
    canvas.Scale([=](int x, int y) {
        const double dEdge = std::hypot(x + 0.5 - nSide / 2.0, y + 0.5 - nSide / 2.0) / (nSide / 2.0);
        const double dGrain = 0.55 * Noise(x / 1.6, y / 1.6, nSeed + 1) + 0.45 * Noise(x * 0.9, y * 0.9, nSeed + 2);
        return Ramp(0.46 + 0.14 * dEdge * dEdge, 0.78 + 0.1 * dEdge * dEdge, dGrain);
    });
    return canvas.Entry();
}

BrushEntry Charcoal(int nSide)
{
    CCanvas canvas(nSide);
    const std::uint32_t nSeed = Seed(2, nSide);
    canvas.Add([=](double x, double y) {
        const double u = x * 0.82 - y * 0.57, v = (x * 0.57 + y * 0.82) * 1.9; // a stick lying aslant
        return Ramp(1.0, 0.72, Ragged(u, v, nSeed, 0.3));
    });
    canvas.Scale([=](int x, int y) {
        const double u = x * 0.82 - y * 0.57, v = x * 0.57 + y * 0.82;
        const double dGrain = 0.5 * Clouds(u / 7, v / 3.2, nSeed + 1, 3) + 0.5 * Noise(x / 1.3, y / 1.3, nSeed + 9);
        return Ramp(0.45, 0.76, dGrain);
    });
    return canvas.Entry();
}

BrushEntry Pastel(int nSide)
{
    CCanvas canvas(nSide);
    const std::uint32_t nSeed = Seed(3, nSide);
    canvas.Add([=](double x, double y) {
        const double dSquare = std::pow(std::pow(std::fabs(x), 5.0) + std::pow(std::fabs(y), 5.0), 0.2);
        return Ramp(0.98, 0.84, dSquare + 0.16 * (Clouds(x * 3 + 5, y * 3 + 5, nSeed, 3) - 0.3));
    });
    canvas.Scale([=](int x, int y) { return Ramp(0.4, 0.72, 0.5 * Clouds(x / 4.0, y / 4.0, nSeed + 4, 3) + 0.5 * Noise(x / 1.2, y / 1.2, nSeed + 8)); });
    return canvas.Entry();
}

BrushEntry Bristles(int nSide)
{
    CCanvas canvas(nSide);
    CDice dice(Seed(4, nSide));
    const int nHairs = nSide * 5 / 2 + 10;
    const double dThin = 1.2 / nSide;
    for (int i = 0; i < nHairs; i++) {
        const double dRadius = 0.92 * std::sqrt(dice.Roll()), dAngle = dice.Roll(0, 2 * c_dPi);
        const double dHair = dice.Roll(dThin, dThin * 2 + 0.03);
        canvas.Disc(dRadius * std::cos(dAngle), dRadius * std::sin(dAngle), dHair, dice.Roll(0.3, 1) * (1 - 0.4 * dRadius));
    }
    return canvas.Entry();
}

BrushEntry DryBrush(int nSide)
{
    CCanvas canvas(nSide);
    CDice dice(Seed(5, nSide));
    const int nHairs = nSide * 4;
    for (int i = 0; i < nHairs; i++) {
        const double u = dice.Roll(-0.95, 0.95), v = dice.Roll(-0.2, 0.2) * (1 - 0.5 * u * u);
        if (Noise(u * 6 + 40, 3, Seed(5, nSide)) < 0.27)
            continue; // gaps where the hairs have parted
        canvas.Disc(u * 0.9 + v * 0.25, v - u * 0.28, dice.Roll(0.7, 2.0) / nSide + 0.012, dice.Roll(0.2, 0.95));
    }
    return canvas.Entry();
}

BrushEntry Sponge(int nSide)
{
    CCanvas canvas(nSide);
    const std::uint32_t nSeed = Seed(6, nSide);
    canvas.Add([=](double x, double y) {
        const double dScale = nSide / 16.0;
        const double dPores = 0.3 * Noise(x * 3 + 20, y * 3 + 20, nSeed) + 0.7 * Clouds(x * dScale + 20, y * dScale + 20, nSeed + 5, 3);
        return Ramp(1.0, 0.7, Ragged(x, y, nSeed + 3, 0.3)) * Ramp(0.42, 0.52, dPores) * (0.55 + 0.45 * Noise(x * 9 + 3, y * 9 + 3, nSeed + 7));
    });
    return canvas.Entry();
}

BrushEntry Spray(int nSide)
{
    CCanvas canvas(nSide);
    CDice dice(Seed(7, nSide));
    for (int i = 0; i < nSide * 6; i++) {
        const double dRadius = 0.96 * std::pow(dice.Roll(), 0.8), dAngle = dice.Roll(0, 2 * c_dPi);
        canvas.Disc(dRadius * std::cos(dAngle), dRadius * std::sin(dAngle), dice.Roll(0.5, 1.5) / nSide, dice.Roll(0.3, 1));
    }
    return canvas.Entry();
}

BrushEntry Splatter(int nSide)
{
    CCanvas canvas(nSide);
    CDice dice(Seed(8, nSide));
    const std::uint32_t nSeed = Seed(8, nSide);
    canvas.Add([=](double x, double y) { return Ragged((x + 0.08) * 3.1, (y - 0.05) * 3.1, nSeed, 0.5) < 1 ? 1.0 : 0.0; });
    for (int i = 0; i < 9 + nSide / 12; i++) {
        // A drop that flew from the middle, with smaller ones behind it on the same line.
        const double dAngle = dice.Roll(0, 2 * c_dPi), dReach = dice.Roll(0.35, 0.9);
        const double dSize = dice.Roll(0.02, 0.1) * (1.15 - dReach);
        for (int k = 0; k < 4; k++)
            canvas.Disc(dReach * (1 - 0.07 * k) * std::cos(dAngle), dReach * (1 - 0.07 * k) * std::sin(dAngle), dSize * (1 - 0.22 * k), 1);
    }
    for (int i = 0; i < 20 + nSide / 2; i++) {
        const double dRadius = 0.25 + 0.7 * dice.Roll(), dAngle = dice.Roll(0, 2 * c_dPi);
        canvas.Disc(dRadius * std::cos(dAngle), dRadius * std::sin(dAngle), 0.004 + 0.03 * std::pow(dice.Roll(), 3.0) + 0.4 / nSide, dice.Roll(0.5, 1));
    }
    return canvas.Entry();
}

BrushEntry Cloud(int nSide)
{
    CCanvas canvas(nSide);
    const std::uint32_t nSeed = Seed(9, nSide);
    canvas.Add([=](double x, double y) {
        const double dFade = Ramp(1.0, 0.1, std::hypot(x, y));
        return dFade * Ramp(0.2, 0.75, 0.65 * Clouds(x * 2.4 + 11, y * 2.4 + 11, nSeed, 5) + 0.35 * dFade) * 0.9;
    });
    return canvas.Entry();
}
