#pragma once

#include "filters/FilterValues.h"

#include <cstdint>
#include <vector>

// Every filter in its plainest form, step after step, on one array: what the fast forms are held against.

namespace kestrune::plain {

/// Rows of blue, green, red, from the top.
struct Picture {
    int w = 0;
    int h = 0;
    std::vector<std::uint8_t> bytes;

    Picture() = default;
    Picture(int nWidth, int nHeight)
        : w(nWidth)
        , h(nHeight)
        , bytes(static_cast<std::size_t>(nWidth) * nHeight * 3)
    {
    }
    std::uint8_t& At(int x, int y, int c) { return bytes[(static_cast<std::size_t>(y) * w + x) * 3 + c]; }
    std::uint8_t At(int x, int y, int c) const { return bytes[(static_cast<std::size_t>(y) * w + x) * 3 + c]; }
    bool operator==(const Picture&) const = default;
};

/// What a filter makes of a rectangle. `nSourceHeight` is the height of the picture that it was cut from.
struct PlainRun {
    const Picture& in;
    const FilterValues& values;
    int nSourceHeight;
};
using PlainFilter = Picture (*)(const PlainRun&);

/// Null for a command without one.
PlainFilter FindPlainFilter(int nCommand);

Picture PlainBlur(const PlainRun& run);
Picture PlainGaussian(const PlainRun& run);
Picture PlainMotionBlur(const PlainRun& run);
Picture PlainSharpen(const PlainRun& run);
Picture PlainUnsharp(const PlainRun& run);
Picture PlainMedian(const PlainRun& run);
Picture PlainMaximum(const PlainRun& run);
Picture PlainMinimum(const PlainRun& run);
Picture PlainMatrix(const PlainRun& run);

} // namespace kestrune::plain
