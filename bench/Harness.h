#pragma once

#include <functional>
#include <string>

namespace kestrune::bench {

/// One bar: `work` and `base` run in turn in the same process, many times, and the ratio of their medians is compared with
/// the bar. The library for micro benchmarks has no notion of a ratio between two interleaved runs, which is what makes a
/// figure comparable from machine to machine.
struct Bar {
    std::string strName;
    double fAtMost;               ///< work / base must not exceed this
    std::function<void()> work;
    std::function<void()> base;
    std::function<void()> prepare = {}; ///< before each run of `work`, not timed
    std::function<void()> between = {}; ///< the same before each run of `base`
};

/// Adds a bar to the program; `--filter TEXT` and `--runs N` choose what runs. Figures go to standard output as a table.
void Register(Bar bar);
/// A group of bars that is built only when it runs (large pictures). `build` calls `Register`.
struct Group {
    Group(std::string strName, std::function<void()> build);
};

} // namespace kestrune::bench
