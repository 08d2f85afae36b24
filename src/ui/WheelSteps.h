#pragma once

#include <QWheelEvent>

namespace kestrune {

/// Counts the steps of a wheel. Fine wheels and touch pads send parts of a step, which add up until they make one; a turn
/// the other way begins anew.
class CWheelSteps {
public:
    /// Whole steps, positive away from the user; what is left waits for the next event.
    int Take(const QWheelEvent& event)
    {
        const QPoint delta = event.angleDelta();
        const int nTurn = delta.y() != 0 ? delta.y() : delta.x(); // with Alt held the wheel turns sideways
        if ((nTurn > 0) != (m_nRest > 0))
            m_nRest = 0;
        m_nRest += nTurn;
        const int nSteps = m_nRest / c_nNotch;
        m_nRest -= nSteps * c_nNotch;
        return nSteps;
    }

private:
    static constexpr int c_nNotch = 120; ///< eighths of a degree
    int m_nRest = 0;
};

} // namespace kestrune
