#include "resources/ResponseCurve.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <vector>

namespace kestrune {

namespace {

constexpr int c_nMax = 255;
constexpr int c_nWalk = 1000;

/// The value of a cubic and its first three differences from one step to the next.
class CDifferences {
public:
    /// Through p1 and p2, leaving them in the directions from p0 and to p3.
    CDifferences(double p0, double p1, double p2, double p3)
    {
        const double a = -0.5 * p0 + 1.5 * p1 - 1.5 * p2 + 0.5 * p3;
        const double b = p0 - 2.5 * p1 + 2 * p2 - 0.5 * p3;
        const double c = -0.5 * p0 + 0.5 * p2;
        constexpr double d = 0.001, d2 = d * d, d3 = d * d * d;
        m_dValue = p1;
        m_dFirst = d3 * a + d2 * b + d * c;
        m_dSecond = 6 * d3 * a + 2 * d2 * b;
        m_dThird = 6 * d3 * a;
    }

    /// The value after the next step, cut to 0..255 and truncated.
    int Step()
    {
        m_dValue += m_dFirst;
        m_dFirst += m_dSecond;
        m_dSecond += m_dThird;
        return static_cast<int>(std::clamp(m_dValue, 0.0, static_cast<double>(c_nMax)));
    }

private:
    double m_dValue;
    double m_dFirst;
    double m_dSecond;
    double m_dThird;
};

} // namespace

ResponseTable IdentityResponse()
{
    ResponseTable table;
    for (int i = 0; i <= c_nMax; i++)
        table[static_cast<std::size_t>(i)] = i;
    return table;
}

void PlotCurve(std::span<const CPoint> points, ResponseTable& table)
{
    if (points.empty())
        return;
    // The last point's own column too: the walk may stop a hair short of it.
    std::fill_n(table.begin(), std::clamp(points.front().x, 0, c_nMax) + 1, std::clamp(points.front().y, 0, c_nMax));
    std::fill(table.begin() + std::clamp(points.back().x, 0, c_nMax), table.end(), std::clamp(points.back().y, 0, c_nMax));
    for (std::size_t i = 0; i + 1 < points.size(); i++) {
        const CPoint &p0 = points[i > 0 ? i - 1 : i], &p1 = points[i], &p2 = points[i + 1], &p3 = points[i + 2 < points.size() ? i + 2 : i + 1];
        CDifferences x(p0.x, p1.x, p2.x, p3.x), y(p0.y, p1.y, p2.y, p3.y);
        for (int n = 0; n < c_nWalk; n++) {
            const int nColumn = x.Step();
            table[static_cast<std::size_t>(nColumn)] = y.Step();
        }
    }
}

double EvaluateResponse(const ResponseTable& table, double x)
{
    if (x < 0)
        return table[0] / 255.0;
    if (x >= 1)
        return table[c_nMax] / 255.0;
    const double t = x * 255.0;
    const double f = std::floor(t);
    const std::size_t i = static_cast<std::size_t>(std::min(f, c_nMax - 1.0));
    return ((1 - (t - f)) * table[i] + (t - f) * table[i + 1]) / 255.0;
}

std::array<std::uint8_t, 256> ResponseMap(const ResponseTable& table)
{
    std::array<std::uint8_t, 256> map;
    for (int i = 0; i <= c_nMax; i++)
        map[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(EvaluateResponse(table, i / 255.0) * 255.0);
    return map;
}

void CResponseCurve::Reset()
{
    m_aSlots.fill({-1, -1});
    m_aSlots.front() = {0, 0};
    m_aSlots.back() = {c_nMax, c_nMax};
    m_table = IdentityResponse();
}

int CResponseCurve::NeighbourX(int iSlot, int nStep, int nNone) const
{
    for (int i = iSlot + nStep; i >= 0 && i < c_nSlots; i += nStep)
        if (IsUsed(i))
            return Slot(i).x - nStep; // beside it: two points in one column have no curve between them
    return nNone;
}

int CResponseCurve::Press(int x, int y)
{
    x = std::clamp(x, 0, c_nMax);
    int iNearest = 0, nBest = 32767;
    for (int i = 0; i < c_nSlots; i++) {
        const int nDistance = std::abs(x - Slot(i).x);
        if (IsUsed(i) && nDistance < nBest) {
            nBest = nDistance;
            iNearest = i;
        }
    }
    const int iSlot = nBest > c_nCatch ? (x + 8) >> 4 : iNearest;
    Drag(iSlot, x, y);
    return iSlot;
}

void CResponseCurve::Drag(int iSlot, int x, int y)
{
    const int nLow = NeighbourX(iSlot, -1, 0), nHigh = NeighbourX(iSlot, 1, c_nMax);
    // Neighbours that were dragged together leave a point between them no column of its own: it shares the left one's.
    x = nLow <= nHigh ? std::clamp(x, nLow, nHigh) : std::max(0, nLow - 1);
    m_aSlots[static_cast<std::size_t>(iSlot)] = {x, std::clamp(y, 0, c_nMax)};
    Rebuild();
}

bool CResponseCurve::Remove(int iSlot)
{
    if (iSlot <= 0 || iSlot >= c_nSlots - 1 || !IsUsed(iSlot))
        return false;
    m_aSlots[static_cast<std::size_t>(iSlot)] = {-1, -1};
    Rebuild();
    return true;
}

void CResponseCurve::Rebuild()
{
    std::vector<CPoint> points;
    std::copy_if(m_aSlots.begin(), m_aSlots.end(), std::back_inserter(points), [](const CPoint& pt) { return pt.x >= 0; });
    PlotCurve(points, m_table);
}

} // namespace kestrune
