#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// The pencil: the foreground colour, snapped in pictures of few colours, with hard edges while the brush is tiny.
class PencilCore : public PaintCore {
public:
    using PaintCore::PaintCore;

    void Begin(unsigned nFlags, double x, double y) override;

protected:
    void Dab() override;
};

} // namespace kestrune
