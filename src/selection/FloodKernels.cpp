// How much each pixel of a row belongs to a flood: this file is compiled once for each kind of processor, the best is chosen at run time.
#include "selection/FloodKernels.h"

#include <algorithm>
#include <cstdlib>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "selection/FloodKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

void Row(const FloodTest& test, const std::uint8_t* pPixels, int nCount, std::uint8_t* pAlpha)
{
    const auto Slowly = [&](int x0, int x1) {
        for (int x = x0; x < x1; x++) {
            const std::uint8_t* p = pPixels + 3 * static_cast<std::ptrdiff_t>(x);
            pAlpha[x] = test.alpha[std::max({std::abs(p[0] - test.aSeed[0]), std::abs(p[1] - test.aSeed[1]), std::abs(p[2] - test.aSeed[2])})];
        }
    };
    int x = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<std::uint8_t> d;
    const int nLanes = static_cast<int>(hn::Lanes(d));
    const auto seed0 = hn::Set(d, test.aSeed[0]), seed1 = hn::Set(d, test.aSeed[1]), seed2 = hn::Set(d, test.aSeed[2]);
    const auto full = hn::Set(d, static_cast<std::uint8_t>(test.nFull));
    const auto last = hn::Set(d, static_cast<std::uint8_t>(test.nNone - 1)); // the largest difference that is not nothing
    const auto Difference = [](auto a, auto b) { return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a)); };
    for (; x + nLanes <= nCount; x += nLanes) {
        hn::Vec<decltype(d)> a, b, c;
        hn::LoadInterleaved3(d, pPixels + 3 * static_cast<std::ptrdiff_t>(x), a, b, c);
        const auto largest = hn::Max(hn::Max(Difference(a, seed0), Difference(b, seed1)), Difference(c, seed2));
        const auto all = hn::Eq(hn::Max(largest, full), full);
        const auto some = hn::Eq(hn::Max(largest, last), last);
        if (hn::AllTrue(d, hn::Or(all, hn::Not(some))))
            hn::StoreU(hn::VecFromMask(d, all), d, pAlpha + x);
        else
            Slowly(x, x + nLanes); // some are partly in
    }
#endif
    Slowly(x, nCount);
}

FloodRow Kernel()
{
    return Row;
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

namespace {
HWY_EXPORT(Kernel);
}

FloodRow BestFloodRow()
{
    return HWY_DYNAMIC_DISPATCH(Kernel)();
}

} // namespace kestrune
#endif
