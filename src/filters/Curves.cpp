#include "filters/Curves.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

using Four = std::array<double, 4>;

/// Position and the three forward differences of one coordinate of a segment.
Four ForwardDifferences(double p0, double p1, double p2, double p3)
{
    constexpr double d = 0.001;
    constexpr double d2 = d * d;
    constexpr double d3 = d * d * d;
    constexpr double aDifferences[4][4] = {{0, 0, 0, 1}, {d3, d2, d, 0}, {6 * d3, 2 * d2, 0, 0}, {6 * d3, 0, 0, 0}};
    constexpr double aBasis[4][4] = {{-0.5, 1.5, -1.5, 0.5}, {1, -2.5, 2, -0.5}, {-0.5, 0, 0.5, 0}, {0, 1, 0, 0}};
    const double aPoints[4] = {p0, p1, p2, p3};
    Four cubic{};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            cubic[i] += aBasis[i][j] * aPoints[j];
    Four result{};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            result[i] += aDifferences[i][j] * cubic[j];
    return result;
}

void Step(Four& f)
{
    f[0] += f[1];
    f[1] += f[2];
    f[2] += f[3];
}

void DrawSegment(std::array<std::int32_t, 256>& curve, const std::array<const CurvePoint*, 4>& p)
{
    Four x = ForwardDifferences(p[0]->x, p[1]->x, p[2]->x, p[3]->x);
    Four y = ForwardDifferences(p[0]->y, p[1]->y, p[2]->y, p[3]->y);
    for (int n = 0; n < 1000; ++n) {
        Step(x);
        Step(y);
        const int nX = static_cast<int>(std::clamp(x[0], 0.0, 255.0));
        curve[nX] = static_cast<std::int32_t>(std::clamp(y[0], 0.0, 255.0)); // the last step of a column wins
    }
}

/// A curve at x, 0..1, as 0..1.
double CurveAt(const std::array<std::int32_t, 256>& curve, double x)
{
    double y;
    if (x < 0)
        y = curve[0];
    else if (x >= 1)
        y = curve[255];
    else {
        const double u = x * 255;
        const int i = static_cast<int>(std::floor(u));
        const double f = u - i;
        y = (1.0 - f) * curve[i] + f * curve[i + 1];
    }
    return y / 255;
}

double LevelAt(const LevelsChannel& c, double x)
{
    double v = 255 * x;
    if (c.fWhite != c.fBlack)
        v = (v - c.fBlack) / (c.fWhite - c.fBlack);
    else
        v = v - c.fBlack;
    if (c.fGamma != 0)
        v = v >= 0 ? std::pow(v, 1 / c.fGamma) : -std::pow(-v, 1 / c.fGamma);
    if (c.fOutWhite >= c.fOutBlack)
        v = (c.fOutWhite - c.fOutBlack) * v + c.fOutBlack;
    else
        v = c.fOutBlack - (c.fOutBlack - c.fOutWhite) * v;
    return v / 255;
}

} // namespace

CurvesValues& ProgramCurves()
{
    static CurvesValues s_curves = [] {
        CurvesValues values;
        for (int c = 0; c < 4; ++c)
            ResetCurve(values, c);
        return values;
    }();
    return s_curves;
}

void ResetCurve(CurvesValues& values, int nChannel)
{
    for (int i = 0; i < 256; ++i)
        values.curve[nChannel][i] = i;
    values.points[nChannel].fill({});
    values.points[nChannel].front() = {0, 0};
    values.points[nChannel].back() = {255, 255};
}

void TakeCurvePoints(CurvesValues& values)
{
    for (int c = 0; c < 4; ++c)
        for (int i = 0; i <= 8; ++i) {
            const int x = std::min(i * 32, 255);
            values.points[c][2 * i] = {x, values.curve[c][x]};
        }
}

int CurveSlot(int x) { return std::clamp((x + 8) / 16, 0, c_nCurvePoints - 1); }

void RebuildCurve(CurvesValues& values, int nChannel)
{
    std::array<const CurvePoint*, c_nCurvePoints> used;
    int n = 0;
    for (const CurvePoint& p : values.points[nChannel])
        if (p.x != -1)
            used[n++] = &p;
    if (n == 0)
        return;
    auto& curve = values.curve[nChannel];
    for (int x = 0; x < std::clamp(used[0]->x, 0, 256); ++x)
        curve[x] = used[0]->y;
    for (int x = std::max(used[n - 1]->x, -1) + 1; x < 256; ++x)
        curve[x] = used[n - 1]->y;
    // The steps are meant to end on the last point, yet their sum may stop a hair before its column: white would keep its old value
    // when the curve's end is pulled down.
    std::int32_t& nEnd = curve[std::clamp(used[n - 1]->x, 0, 255)];
    constexpr std::int32_t c_nNotReached = -1;
    nEnd = c_nNotReached;
    for (int i = 0; i + 1 < n; ++i)
        DrawSegment(curve, {used[std::max(i - 1, 0)], used[i], used[i + 1], used[std::min(i + 2, n - 1)]});
    if (nEnd == c_nNotReached)
        nEnd = used[n - 1]->y;
}

ChannelTables CurveTables(const CurvesValues& values)
{
    ChannelTables tables;
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 256; ++i) {
            const double f = CurveAt(values.curve[0], CurveAt(values.curve[c + 1], i / 255.0));
            tables[2 - c][i] = static_cast<std::uint8_t>(static_cast<int>(f * 255));
        }
    return tables;
}

ChannelTables LevelsTables(const LevelsValues& values)
{
    ChannelTables tables;
    for (int t = 0; t < 3; ++t)
        for (int i = 0; i < 256; ++i) {
            const double f = LevelAt(values.channels[0], LevelAt(values.channels[t + 1], i / 255.0)) * 255;
            tables[t][i] = static_cast<std::uint8_t>(f >= 255 ? 255 : f >= 0 ? static_cast<int>(f) : 0);
        }
    return tables;
}

} // namespace kestrune
