#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// Blur and sharpen: each dab runs a kernel of 5 x 5 (a ring of ones around a centre, zeros around that) over its part of the
/// picture. Stacked, so that a place that is rubbed longer changes more.
class ConvolveCore : public PaintCore {
public:
    void Begin(unsigned nFlags, double x, double y) override;

protected:
    using PaintCore::PaintCore;
    /// The centre's weight at strength `s`, 0..1.
    virtual double Center(double s) const = 0;
    void Dab() override;

private:
    int m_nCenter = 0; ///< in ten thousandths of the ring's weight
};

} // namespace kestrune
