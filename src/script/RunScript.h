#pragma once

#include <string>
#include <vector>

namespace kestrune {

class CPaintApp;

/// Runs a batch script over the started application and closes it: settings are written as at any exit, pictures that the script did
/// not save are dropped. `strFile` is a path, or "-" for standard input; `args` are $1, $2, ...
/// The exit status: 0 when every line ran, 1 at the first that failed, 2 when the script cannot be read.
int RunScript(CPaintApp& app, const std::string& strFile, const std::vector<std::string>& args);

} // namespace kestrune
