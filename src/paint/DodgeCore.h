#pragma once

#include "paint/CoverageMap.h"
#include "paint/PaintCore.h"

#include <array>

namespace kestrune {

/// Makes places lighter by a curve over each channel. Capped: a stroke never acts twice beyond its coverage.
class DodgeCore : public PaintCore {
public:
    using PaintCore::PaintCore;
    void Begin(unsigned nFlags, double x, double y) override;

    enum Curve { CURVE_HIGHLIGHTS = 0, CURVE_MIDTONES = 1, CURVE_SHADOWS = 2 };
    /// The table of a curve; the exposure is -1..1, below 0 it darkens.
    static std::array<std::uint8_t, 256> MakeTable(int nCurve, double fExposure);

protected:
    virtual double Sign() const { return 1; }
    void Dab() override;

private:
    void LookUp(int y, int nFirst, int nLast);

    std::array<std::uint8_t, 256> m_aTable{};
    CoverageMap m_ink;  ///< the canvas through the table, 3 bytes a pixel, as far as dabs came
    CoverageMap m_done; ///< which of its blocks are
};

} // namespace kestrune
