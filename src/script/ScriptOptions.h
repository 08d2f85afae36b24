#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// What the command line of a batch script says.
struct ScriptOptions {
    std::string strFile;           ///< a path, or "-" for standard input
    std::vector<std::string> args; ///< $1, $2, ...
    std::string strSettings;       ///< folder of a persistent settings store; empty: defaults in memory
    std::string strInstall;        ///< folder of the resource folders; empty: the program's own
    std::optional<std::uint32_t> nSeed; ///< what the clock gives wherever the clock seeds
    bool bShow = false;                 ///< show the window on the display
};

/// True when the words behind the program's name ask for a script.
bool IsScriptCommandLine(const std::vector<std::string>& words);

/// Reads `--script FILE`, `--settings DIR`, `--seed N`, `--install DIR` and `--show`, in any order. From the first word that is
/// none of them, or behind "--", all words are the script's own. On a usage error nothing, with the reason in `strError`.
std::optional<ScriptOptions> ParseScriptOptions(const std::vector<std::string>& words, std::string& strError);

} // namespace kestrune
