#pragma once

#include "paint/DodgeCore.h"

namespace kestrune {

/// The same as dodge, darkening.
class BurnCore : public DodgeCore {
public:
    using DodgeCore::DodgeCore;

protected:
    double Sign() const override { return -1; }
};

} // namespace kestrune
