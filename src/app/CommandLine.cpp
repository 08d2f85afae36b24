#include "app/CommandLine.h"

#include <charconv>

namespace kestrune {

namespace {

/// Reads one option that stands at `i`, moving `i` onto its value. False when the word is no option.
bool ParseOption(const std::vector<std::string>& words, std::size_t& i, CPaintCommandLineInfo& info)
{
    const std::string& strWord = words[i];
    const auto value = [&]() -> std::string {
        if (i + 1 >= words.size()) {
            info.strError = strWord + ": 값이 없습니다.";
            return {};
        }
        return words[++i];
    };
    if (strWord == "--settings")
        info.pathSettings = value();
    else if (strWord == "--install")
        info.pathInstall = value();
    else if (strWord == "-t")
        info.bTest = true;
    else if (strWord == "--help" || strWord == "-h")
        info.bHelp = true;
    else if (strWord == "--seed") {
        const std::string strNumber = value();
        std::uint32_t nSeed = 0;
        const auto [pEnd, error] = std::from_chars(strNumber.data(), strNumber.data() + strNumber.size(), nSeed);
        if (error != std::errc{} || pEnd != strNumber.data() + strNumber.size())
            info.strError = "--seed: 수가 아닙니다.";
        info.nSeed = nSeed;
    } else
        return false;
    return true;
}

} // namespace

CPaintCommandLineInfo ParseCommandLine(const std::vector<std::string>& words)
{
    CPaintCommandLineInfo info;
    bool bOptions = true;
    for (std::size_t i = 0; i < words.size() && info.strError.empty(); i++) {
        if (bOptions && words[i] == "--") {
            bOptions = false;
            continue;
        }
        if (bOptions && ParseOption(words, i, info))
            continue;
        if (bOptions && words[i].size() > 1 && words[i].front() == '-')
            info.strError = words[i] + ": 알 수 없는 옵션입니다.";
        else
            info.files.emplace_back(words[i]);
    }
    return info;
}

std::string UsageText()
{
    return "사용법: kestrune [FILE ...]\n"
           "        kestrune --script FILE [ARG ...]\n"
           "  --script FILE   스크립트를 실행합니다. FILE이 -이면 표준 입력에서 읽습니다.\n"
           "  --show          스크립트를 실행할 때 창을 보여 줍니다.\n"
           "  --settings DIR  설정을 DIR에 보관합니다.\n"
           "  --install DIR   브러시와 그레디언트 등의 폴더가 있는 곳입니다.\n"
           "  --seed N        시계에서 얻는 난수의 씨앗을 N으로 고정합니다.\n";
}

std::filesystem::path FindInstallFolder(const std::filesystem::path& given, const std::filesystem::path& program)
{
    if (!given.empty())
        return given;
    const std::filesystem::path folder = program.parent_path();
    std::error_code error;
    for (const std::filesystem::path& candidate :
         {folder / "install", folder.parent_path() / "install", folder.parent_path() / "share" / "kestrune"})
        if (std::filesystem::is_directory(candidate, error))
            return candidate;
    return {};
}

} // namespace kestrune
