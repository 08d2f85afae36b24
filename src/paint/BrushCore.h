#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// The brush: the foreground colour as picked, which may fade out on the way from the press point.
class BrushCore : public PaintCore {
public:
    using PaintCore::PaintCore;

    void Begin(unsigned nFlags, double x, double y) override;

protected:
    void Dab() override;

private:
    int FadeAlpha() const;
};

} // namespace kestrune
