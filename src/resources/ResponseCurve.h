#pragma once

#include "base/Geometry.h"

#include <array>
#include <cstdint>
#include <span>

namespace kestrune {

/// The table of a curve: for each of 256 coverages the coverage that comes out, 0..255.
using ResponseTable = std::array<int, 256>;

ResponseTable IdentityResponse();

/// Runs a smooth curve through the points (0..255 each, ascending in x) into the table: a Catmull-Rom cubic between
/// neighbours, the end points doubled, walked by forward differences in 1000 steps; both coordinates are truncated and the last
/// step that falls in a column wins. Up to the first point and after the last the curve stays level. No point: no change.
void PlotCurve(std::span<const CPoint> points, ResponseTable& table);

/// The table read between its entries: 0..1 in and out, ends held.
double EvaluateResponse(const ResponseTable& table, double x);
/// The map from coverage byte to coverage byte that a table stands for.
std::array<std::uint8_t, 256> ResponseMap(const ResponseTable& table);

/// The points of a response curve under the hand: 17 slots, slot k for a point near x = 16 k, and the table that follows them.
class CResponseCurve {
public:
    static constexpr int c_nSlots = 17;
    static constexpr int c_nCatch = 8; ///< how far from a point in x a press takes hold of it

    CResponseCurve() { Reset(); }

    /// Back to the straight line between its two end points.
    void Reset();
    bool IsUsed(int iSlot) const { return Slot(iSlot).x >= 0; }
    CPoint Point(int iSlot) const { return Slot(iSlot); }
    /// Takes hold of the point nearest in x, or makes one, and moves it there. Its slot.
    int Press(int x, int y);
    /// Moves a point, kept between its neighbours in x and inside the field.
    void Drag(int iSlot, int x, int y);
    /// Takes an inner point away; the two ends stay. False when there is none to take.
    bool Remove(int iSlot);
    const ResponseTable& Table() const { return m_table; }

private:
    const CPoint& Slot(int iSlot) const { return m_aSlots[static_cast<std::size_t>(iSlot)]; }
    int NeighbourX(int iSlot, int nStep, int nNone) const;
    void Rebuild();

    std::array<CPoint, c_nSlots> m_aSlots; ///< x -1: the slot is empty
    ResponseTable m_table;
};

} // namespace kestrune
