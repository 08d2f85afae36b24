#pragma once

#include <cstdint>

namespace kestrune {

/// The program's own random source, so that a picture made with a given seed is the same everywhere.
/// One state for the process, at seed 1 when the program starts; drawn from on one thread only.
void Srand(std::uint32_t nSeed);

/// The next number, 0..32767.
int Rand();

/// Moves on as if `nDraws` numbers had been drawn, at once.
void SkipRand(std::uint64_t nDraws);

/// The number that the clock gives wherever the clock seeds, or the fixed one of `SetClockSeed`.
std::uint32_t ClockSeed();

/// Makes `ClockSeed` return `nSeed` from now on (for scripts that must repeat exactly).
void SetClockSeed(std::uint32_t nSeed);

} // namespace kestrune
