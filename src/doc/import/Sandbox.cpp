#include "doc/import/Sandbox.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace kestrune::import {

namespace {

void Limit(__rlimit_resource resource, std::uint64_t nMost)
{
    rlimit limit{};
    ::getrlimit(resource, &limit);
    if (limit.rlim_max == RLIM_INFINITY || nMost < limit.rlim_max)
        limit.rlim_max = nMost;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(resource, &limit);
}

} // namespace

void Enter(const Bounds& bounds)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::prctl(PR_SET_DUMPABLE, 0);
    Limit(RLIMIT_CORE, 0);
#ifndef __SANITIZE_ADDRESS__ // whose shadow alone is larger than any sensible bound
    Limit(RLIMIT_AS, bounds.nBytes);
#endif
    Limit(RLIMIT_CPU, bounds.nSeconds);
    Limit(RLIMIT_FSIZE, bounds.nBytes);
    Limit(RLIMIT_NOFILE, 64);
    // No handler: the signal ends the process wherever it is.
    std::signal(SIGALRM, SIG_DFL);
    ::alarm(bounds.nSeconds);
}

} // namespace kestrune::import
