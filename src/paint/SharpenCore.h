#pragma once

#include "paint/ConvolveCore.h"

namespace kestrune {

/// The sharpen tool. The centre is negative and so is the sum of all weights: the signs cancel.
class SharpenCore : public ConvolveCore {
public:
    using ConvolveCore::ConvolveCore;

protected:
    double Center(double s) const override { return 448 * s - 512; }
};

} // namespace kestrune
