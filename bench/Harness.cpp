#include "Harness.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace kestrune::bench {

namespace {

std::vector<std::pair<std::string, std::function<void()>>>& Groups()
{
    static std::vector<std::pair<std::string, std::function<void()>>> s_groups;
    return s_groups;
}

std::vector<Bar> g_aBars;

double Seconds(const std::function<void()>& work)
{
    const auto t0 = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

double Median(std::vector<double> a)
{
    std::nth_element(a.begin(), a.begin() + a.size() / 2, a.end());
    return a[a.size() / 2];
}

bool RunBar(const Bar& bar, int nRuns)
{
    std::vector<double> work, base;
    for (int i = 0; i <= nRuns; i++) {
        if (bar.prepare)
            bar.prepare();
        const double fWork = Seconds(bar.work);
        if (bar.between)
            bar.between();
        const double fBase = Seconds(bar.base);
        if (i > 0) { // the first pair warms caches and memory
            work.push_back(fWork);
            base.push_back(fBase);
        }
    }
    const double fRatio = Median(work) / Median(base);
    const bool bOk = fRatio <= bar.fAtMost;
    std::printf("%-62s %10.3f ms %10.3f ms %8.3f  <= %-7g %s\n", bar.strName.c_str(), Median(work) * 1e3, Median(base) * 1e3,
                fRatio, bar.fAtMost, bOk ? "ok" : "OVER");
    std::fflush(stdout);
    return bOk;
}

} // namespace

void Register(Bar bar)
{
    g_aBars.push_back(std::move(bar));
}

Group::Group(std::string strName, std::function<void()> build)
{
    Groups().emplace_back(std::move(strName), std::move(build));
}

int RunAll(int argc, char** argv)
{
    const char* pszFilter = "";
    int nRuns = 15;
    for (int i = 1; i + 1 < argc; i += 2) {
        if (!std::strcmp(argv[i], "--filter"))
            pszFilter = argv[i + 1];
        else if (!std::strcmp(argv[i], "--runs"))
            nRuns = std::max(1, std::atoi(argv[i + 1]));
    }
    std::printf("%-62s %13s %13s %8s\n", "bar", "work", "base", "ratio");
    int nOver = 0;
    for (const auto& [strName, build] : Groups()) {
        if (strName.find(pszFilter) == std::string::npos)
            continue;
        g_aBars.clear();
        build();
        for (const Bar& bar : g_aBars)
            nOver += !RunBar(bar, nRuns);
    }
    g_aBars.clear();
    std::printf("%d over\n", nOver);
    return nOver ? 1 : 0;
}

} // namespace kestrune::bench
