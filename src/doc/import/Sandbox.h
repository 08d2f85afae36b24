#pragma once

#include <cstdint>

namespace kestrune::import {

/// What the process may use. The editor hands the figures over as arguments.
struct Bounds {
    std::uint64_t nMostPixels = 0;
    std::uint64_t nMostSide = 0;
    unsigned nSeconds = 0; ///< of processor time, and of time on the wall
    std::uint64_t nBytes = 0;
};

/// Sets the system's limits: memory, processor time, size of temporary files, no core files. The process ends with its parent,
/// and by itself when the time is up.
void Enter(const Bounds& bounds);

} // namespace kestrune::import
