#include "base/Log.h"

#include <cstdio>
#include <utility>

namespace kestrune {

namespace {
std::function<void(const std::string&)>& Sink()
{
    static std::function<void(const std::string&)> s_sink;
    return s_sink;
}
} // namespace

void LogWarning(const std::string& strText)
{
    if (Sink())
        Sink()(strText);
    else
        std::fprintf(stderr, "kestrune: %s\n", strText.c_str());
}

void SetLogSink(std::function<void(const std::string&)> sink)
{
    Sink() = std::move(sink);
}

} // namespace kestrune
