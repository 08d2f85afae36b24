#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// The air brush: paint that builds up where dabs overlap, and flows on while the mouse rests.
class AirBrushCore : public PaintCore {
public:
    using PaintCore::PaintCore;

    void Begin(unsigned nFlags, double x, double y) override;

protected:
    void Dab() override;
};

} // namespace kestrune
