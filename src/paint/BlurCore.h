#pragma once

#include "paint/ConvolveCore.h"

namespace kestrune {

/// The blur tool.
class BlurCore : public ConvolveCore {
public:
    using ConvolveCore::ConvolveCore;

protected:
    double Center(double s) const override { return 64 - 63.75 * s; }
};

} // namespace kestrune
