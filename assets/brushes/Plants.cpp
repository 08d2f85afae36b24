#include "Media.h"

#include "Canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace kestrune;

namespace {

constexpr double c_dPi = std::numbers::pi;

struct Turn {
    explicit Turn(double dDegrees)
        : s(std::sin(dDegrees * c_dPi / 180))
        , c(std::cos(dDegrees * c_dPi / 180))
    {
    }
    /// The coordinates along and across the direction.
    double Along(double x, double y) const { return x * c - y * s; }
    double Across(double x, double y) const { return x * s + y * c; }

    double s, c;
};

/// Coverage of a leaf from 0 to 1 along u, its blade up to `dBreadth` on each side, with a pale midrib and veins.
double Blade(double u, double v, double dBreadth)
{
    if (u < 0 || u > 1)
        return 0;
    const double dHalf = dBreadth * std::pow(std::sin(c_dPi * std::pow(u, 0.8)), 0.9);
    if (std::fabs(v) > dHalf)
        return 0;
    const double dRib = std::fabs(v) < 0.018 + 0.012 * (1 - u) ? 0.45 : 1;
    const double dVein = std::fabs(std::fmod(u * 7 - std::fabs(v) * 9 + 70, 1.0) - 0.5);
    return std::min(dRib, 0.78 + 0.22 * Ramp(0.0, 0.14, dVein)) * (0.9 + 0.1 * u);
}

double Segment(double x, double y, double x0, double y0, double x1, double y1)
{
    const double dx = x1 - x0, dy = y1 - y0;
    const double t = std::clamp(((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    return std::hypot(x - x0 - t * dx, y - y0 - t * dy);
}

} // namespace

BrushEntry Leaf(int nSide, double dAngle)
{
    CCanvas canvas(nSide);
    const Turn turn(dAngle);
    canvas.Add([=](double x, double y) {
        const double u = (turn.Along(x, y) + 0.62) / 1.56;
        return Blade(u, turn.Across(x, y) / 1.56 + 0.05 * std::sin(u * 3), 0.24);
    });
    canvas.Add([=](double x, double y) { // the stalk
        const double u = turn.Along(x, y), v = turn.Across(x, y);
        return u > -0.95 && u < -0.55 && std::fabs(v + 0.1 * (u + 0.6) * (u + 0.6)) < 0.03 ? 0.9 : 0.0;
    });
    return canvas.Entry();
}

BrushEntry MapleLeaf(int nSide)
{
    CCanvas canvas(nSide);
    constexpr struct {
        double dAngle, dLength;
    } aLobes[] = {{90, 1.0}, {40, 0.92}, {140, 0.92}, {-5, 0.72}, {185, 0.72}, {-50, 0.4}, {230, 0.4}};
    for (const auto& lobe : aLobes) {
        const Turn turn(lobe.dAngle);
        canvas.Add([=](double x, double y) {
            const double u = turn.Along(x, y - 0.18) / (lobe.dLength * 1.08), v = turn.Across(x, y - 0.18);
            if (u < 0 || u > 1)
                return 0.0;
            // Saw teeth along both edges, growing towards the widest place.
            const double dTooth = 0.05 * std::fmod(u * 6 + 6, 1.0) * (1 - u);
            const double dHalf = 0.26 * lobe.dLength * std::pow(std::sin(c_dPi * std::pow(u, 0.62)), 1.15) - dTooth;
            if (std::fabs(v) > dHalf)
                return 0.0;
            return std::fabs(v) < 0.016 ? 0.5 : 0.95;
        });
    }
    canvas.Add([](double x, double y) { return Segment(x, y, 0, 0.18, 0.06, 0.92) < 0.03 ? 0.95 : 0.0; });
    return canvas.Entry();
}

BrushEntry Sprig(int nSide)
{
    CCanvas canvas(nSide);
    const auto stem = [](double t) { return std::pair(-0.62 + 1.2 * t, 0.8 - 1.45 * t - 0.3 * std::sin(t * 2.6) * (1 - t)); };
    for (int i = 0; i < 12; i++) {
        const auto [x0, y0] = stem(i / 12.0);
        const auto [x1, y1] = stem((i + 1) / 12.0);
        canvas.Add([=](double x, double y) { return Segment(x, y, x0, y0, x1, y1) < 0.026 - 0.001 * i ? 0.9 : 0.0; });
    }
    for (int i = 0; i < 9; i++) {
        const double t = i == 8 ? 0.98 : 0.16 + 0.105 * i;
        const auto [x0, y0] = stem(t);
        const Turn turn(i == 8 ? 52 : 50 + (i % 2 ? -52 : 52));
        const double dLength = i == 8 ? 0.34 : 0.56 - 0.028 * i;
        canvas.Add([=](double x, double y) { return Blade(turn.Along(x - x0, y - y0) / dLength, turn.Across(x - x0, y - y0) / dLength, 0.24); });
    }
    return canvas.Entry();
}

BrushEntry Petal(int nSide, double dAngle)
{
    CCanvas canvas(nSide);
    const Turn turn(dAngle);
    canvas.Add([=](double x, double y) {
        const double u = (turn.Along(x, y) + 0.9) / 1.8, v = turn.Across(x, y);
        if (u < 0 || u > 1)
            return 0.0;
        const double dNotch = Ramp(0.2, 0.0, std::fabs(v)) * 0.14; // the tip is heart-shaped
        const double dHalf = 0.62 * std::pow(std::sin(c_dPi * std::pow(u, 1.35)), 0.75);
        return std::fabs(v) < dHalf && u < 1 - dNotch ? 0.55 + 0.4 * u : 0.0;
    });
    return canvas.Entry();
}

BrushEntry Blossom(int nSide)
{
    CCanvas canvas(nSide);
    for (int i = 0; i < 5; i++) {
        const Turn turn(90 + 72 * i);
        canvas.Add([=](double x, double y) {
            const double u = (turn.Along(x, y) - 0.12) / 0.84, v = turn.Across(x, y);
            if (u < 0 || u > 1)
                return 0.0;
            const double dNotch = Ramp(0.12, 0.0, std::fabs(v)) * 0.16;
            const double dHalf = 0.38 * std::pow(std::sin(c_dPi * std::pow(u, 1.2)), 0.7);
            if (std::fabs(v) > dHalf || u > 1 - dNotch)
                return 0.0;
            return 0.5 + 0.45 * Ramp(0.0, 0.7, u);
        });
        for (const int nSpread : {-14, 14}) { // stamens
            const Turn ray(90 + 72 * i + nSpread);
            const double dEnd = 0.3 + (nSpread > 0 ? 0.06 : 0);
            canvas.Add([=](double x, double y) { return Segment(x, y, 0, 0, dEnd * ray.c, -dEnd * ray.s) < 0.014 ? 0.95 : 0.0; });
            canvas.Disc(dEnd * ray.c, -dEnd * ray.s, 0.035, 1);
        }
    }
    canvas.Disc(0, 0, 0.07, 1);
    return canvas.Entry();
}

BrushEntry Grass(int nSide)
{
    CCanvas canvas(nSide);
    CDice dice(static_cast<std::uint32_t>(20000 + nSide));
    for (int i = 0; i < 11 + nSide / 6; i++) {
        const double x0 = dice.Roll(-0.5, 0.5), dLean = x0 * 0.5 + dice.Roll(-0.45, 0.45), dHeight = dice.Roll(1.0, 1.85), dWidth = dice.Roll(0.03, 0.06), dTone = dice.Roll(0.45, 1);
        // Roots at uneven depths and drawn thin: tufts side by side have no common edge below.
        const double dRoot = 0.96 - 0.12 * std::fabs(x0) - dice.Roll(0, 0.32);
        canvas.Add([=](double x, double y) {
            const double t = (dRoot - y) / dHeight;
            if (t < 0 || t > 1)
                return 0.0;
            return std::fabs(x - x0 - dLean * t * t) < dWidth * (1 - t) * std::min(1.0, 0.15 + 5 * t) ? dTone : 0.0;
        });
    }
    return canvas.Entry();
}

BrushEntry Snow(int nSide)
{
    CCanvas canvas(nSide);
    const double dThick = 0.022 + 0.45 / nSide;
    canvas.Add([=](double x, double y) {
        // One sixth of the plane stands for all.
        double dAngle = std::fmod(std::atan2(y, x) + 4 * c_dPi, c_dPi / 3);
        dAngle = std::min(dAngle, c_dPi / 3 - dAngle);
        const double r = std::hypot(x, y), u = r * std::cos(dAngle), v = r * std::sin(dAngle);
        double d = Segment(u, v, 0, 0, 0.92, 0);
        for (const double dAt : {0.34, 0.56, 0.74})
            d = std::min(d, Segment(u, v, dAt, 0, dAt + 0.34 * (1.02 - dAt) + 0.06, (0.34 * (1.02 - dAt) + 0.06) * 1.2));
        return d < dThick ? 0.95 : 0.0;
    });
    canvas.Disc(0, 0, 0.09, 0.95);
    return canvas.Entry();
}
