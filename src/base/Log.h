#pragma once

#include <functional>
#include <string>

namespace kestrune {

/// One line of the log category "kestrune": what the user need not be told, but a developer may want to know.
void LogWarning(const std::string& strText);

/// Where the lines go; standard error until a sink is set. The application routes them to the toolkit's logging.
void SetLogSink(std::function<void(const std::string&)> sink);

} // namespace kestrune
