#include "base/Random.h"

#include <ctime>
#include <optional>

namespace kestrune {

namespace {
std::uint32_t g_nState = 1;
std::optional<std::uint32_t> g_nFixedClock;
} // namespace

void Srand(std::uint32_t nSeed)
{
    g_nState = nSeed;
}

int Rand()
{
    g_nState = g_nState * 214013u + 2531011u;
    return static_cast<int>(g_nState >> 16 & 0x7fff);
}

void SkipRand(std::uint64_t nDraws)
{
    // One step is x -> a x + c; two steps are one of the same shape, and so on by doubling.
    std::uint32_t a = 214013u;
    std::uint32_t c = 2531011u;
    for (; nDraws; nDraws >>= 1) {
        if (nDraws & 1)
            g_nState = g_nState * a + c;
        c = c * (a + 1);
        a = a * a;
    }
}

std::uint32_t ClockSeed()
{
    return g_nFixedClock ? *g_nFixedClock : static_cast<std::uint32_t>(std::time(nullptr));
}

void SetClockSeed(std::uint32_t nSeed)
{
    g_nFixedClock = nSeed;
}

} // namespace kestrune
