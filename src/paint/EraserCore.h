#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// The eraser: paints with the background colour, or takes pixels out of the float's mask.
class EraserCore : public PaintCore {
public:
    using PaintCore::PaintCore;

    void Begin(unsigned nFlags, double x, double y) override;

protected:
    void Dab() override;
};

} // namespace kestrune
