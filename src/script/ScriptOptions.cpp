#include "script/ScriptOptions.h"

#include <charconv>
#include <filesystem>

namespace fs = std::filesystem;

namespace kestrune {

namespace {

using Error = std::optional<std::string>;

struct OptionRow {
    std::string_view name;
    bool bTakesWord;
    Error (*put)(ScriptOptions&, const std::string& strWord);
};

Error PutFile(ScriptOptions& options, const std::string& strWord)
{
    if (!options.strFile.empty())
        return "--script stands twice";
    options.strFile = strWord;
    return strWord.empty() ? Error("--script needs a file") : Error{};
}

Error PutSettings(ScriptOptions& options, const std::string& strWord)
{
    std::error_code error;
    options.strSettings = strWord; // made when it does not exist
    const bool bFolder = !strWord.empty() && (!fs::exists(strWord, error) || fs::is_directory(strWord, error));
    return bFolder ? Error{} : Error("--settings needs a folder, not \"" + strWord + "\"");
}

Error PutInstall(ScriptOptions& options, const std::string& strWord)
{
    std::error_code error;
    options.strInstall = strWord;
    return fs::is_directory(strWord, error) ? Error{} : Error("--install needs a folder, not \"" + strWord + "\"");
}

Error PutSeed(ScriptOptions& options, const std::string& strWord)
{
    std::uint32_t nSeed = 0;
    const char* pLast = strWord.data() + strWord.size();
    const auto [pEnd, error] = std::from_chars(strWord.data(), pLast, nSeed);
    if (error != std::errc{} || pEnd != pLast)
        return "--seed needs a number from 0 to 4294967295, not \"" + strWord + "\"";
    options.nSeed = nSeed;
    return {};
}

Error PutShow(ScriptOptions& options, const std::string&)
{
    options.bShow = true;
    return {};
}

constexpr OptionRow c_aOptions[] = {
    {"--script", true, PutFile},     {"--settings", true, PutSettings}, {"--seed", true, PutSeed},
    {"--install", true, PutInstall}, {"--show", false, PutShow},
};

const OptionRow* FindOption(const std::string& strWord)
{
    for (const OptionRow& row : c_aOptions)
        if (strWord == row.name)
            return &row;
    return nullptr;
}

} // namespace

bool IsScriptCommandLine(const std::vector<std::string>& words)
{
    for (std::size_t i = 0; i < words.size(); i++) {
        const OptionRow* pRow = FindOption(words[i]);
        if (pRow && pRow->put == PutFile)
            return true;
        if (!pRow && !words[i].starts_with('-'))
            return false; // a picture to open
        i += pRow && pRow->bTakesWord;
    }
    return false;
}

std::optional<ScriptOptions> ParseScriptOptions(const std::vector<std::string>& words, std::string& strError)
{
    ScriptOptions options;
    std::size_t i = 0;
    for (; i < words.size(); i++) {
        const OptionRow* pRow = FindOption(words[i]);
        if (!pRow)
            break;
        if (pRow->bTakesWord && ++i == words.size()) {
            strError = std::string(pRow->name) + " needs a word behind it";
            return std::nullopt;
        }
        if (const Error error = pRow->put(options, pRow->bTakesWord ? words[i] : std::string())) {
            strError = *error;
            return std::nullopt;
        }
    }
    if (options.strFile.empty()) {
        strError = i < words.size() ? "unknown option \"" + words[i] + "\"" : "--script FILE is missing";
        return std::nullopt;
    }
    if (i < words.size() && words[i] == "--")
        i++;
    options.args.assign(words.begin() + static_cast<std::ptrdiff_t>(i), words.end());
    return options;
}

} // namespace kestrune
