#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kestrune {

/// What the program was started with.
struct CPaintCommandLineInfo {
    std::vector<std::filesystem::path> files; ///< pictures to open
    bool bTest = false;                       ///< the switch "t"

    std::filesystem::path pathSettings;   ///< --settings DIR
    std::filesystem::path pathInstall;    ///< --install DIR
    std::optional<std::uint32_t> nSeed;   ///< --seed N
    bool bHelp = false;
    std::string strError; ///< not empty: a usage error
};

/// Parses the words behind the program's name. A script's command line is read elsewhere; options of the toolkit
/// ("-platform offscreen" and such) have been taken out.
CPaintCommandLineInfo ParseCommandLine(const std::vector<std::string>& words);

std::string UsageText();

/// The folder with the resource folders: `given` if not empty, else "install" beside the program or above it (a build tree),
/// else "../share/kestrune". Empty when none is there.
std::filesystem::path FindInstallFolder(const std::filesystem::path& given, const std::filesystem::path& program);

} // namespace kestrune
