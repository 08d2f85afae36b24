#include "app/SettingsProfile.h"

#include "base/Files.h"
#include "base/Log.h"

#include <charconv>
#include <cstdlib>

namespace kestrune {

namespace {

constexpr std::uint64_t c_nLargestSettingsFile = 16u << 20;

std::string Quoted(std::string_view text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        if (c == '\n')
            result += "\\n";
        else
            result += c;
    }
    return result + '"';
}

std::optional<std::string> Unquoted(std::string_view text)
{
    if (text.size() < 2 || text.front() != '"' || text.back() != '"')
        return std::nullopt;
    text = text.substr(1, text.size() - 2);
    std::string result;
    for (std::size_t i = 0; i < text.size(); i++) {
        if (text[i] == '"')
            return std::nullopt;
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        if (++i == text.size())
            return std::nullopt;
        result += text[i] == 'n' ? '\n' : text[i];
    }
    return result;
}

std::optional<std::vector<std::uint8_t>> FromHex(std::string_view text)
{
    if (text.size() % 2 != 0)
        return std::nullopt;
    std::vector<std::uint8_t> bytes(text.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i++) {
        const char* pFirst = text.data() + i * 2;
        const auto [pEnd, error] = std::from_chars(pFirst, pFirst + 2, bytes[i], 16);
        if (error != std::errc{} || pEnd != pFirst + 2)
            return std::nullopt;
    }
    return bytes;
}

bool ParseLine(std::string_view line, const std::string& strSection, CMemoryProfile& profile)
{
    const std::size_t nEqual = line.find('=');
    if (nEqual == std::string_view::npos || nEqual == 0)
        return false;
    const std::string strKey(line.substr(0, nEqual));
    const std::string_view value = line.substr(nEqual + 1);
    if (value.starts_with("hex:")) {
        const auto bytes = FromHex(value.substr(4));
        if (bytes)
            profile.WriteBinary(strSection, strKey, *bytes);
        return bytes.has_value();
    }
    if (value.starts_with('"')) {
        const auto text = Unquoted(value);
        if (text)
            profile.WriteString(strSection, strKey, *text);
        return text.has_value();
    }
    int nValue = 0;
    const auto [pEnd, error] = std::from_chars(value.data(), value.data() + value.size(), nValue);
    if (error != std::errc{} || pEnd != value.data() + value.size())
        return false;
    profile.WriteInt(strSection, strKey, nValue);
    return true;
}

/// Reads the file into an empty store; a missing file is an empty store, false means that it is there but unusable.
bool ReadSettings(const std::filesystem::path& path, CMemoryProfile& profile)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        return true;
    const auto bytes = ReadWholeFile(path, c_nLargestSettingsFile);
    if (!bytes)
        return false;
    CMemoryProfile read;
    if (!ParseSettings({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, read))
        return false;
    profile = read;
    return true;
}

} // namespace

std::string FormatSettings(const CMemoryProfile& profile)
{
    std::string result;
    std::string_view section;
    bool bFirst = true;
    for (const auto& [name, value] : profile.Values()) {
        if (bFirst || name.first != section) {
            result += (bFirst ? "[" : "\n[") + name.first + "]\n";
            section = name.first;
            bFirst = false;
        }
        result += name.second + '=';
        if (const int* pInt = std::get_if<int>(&value))
            result += std::to_string(*pInt);
        else if (const std::string* pText = std::get_if<std::string>(&value))
            result += Quoted(*pText);
        else {
            constexpr char c_szDigits[] = "0123456789abcdef";
            result += "hex:";
            for (const std::uint8_t byte : std::get<std::vector<std::uint8_t>>(value)) {
                result += c_szDigits[byte >> 4];
                result += c_szDigits[byte & 15];
            }
        }
        result += '\n';
    }
    return result;
}

bool ParseSettings(std::string_view text, CMemoryProfile& profile)
{
    std::string strSection;
    bool bInSection = false;
    while (!text.empty()) {
        const std::size_t nEnd = text.find('\n');
        const std::string_view line = text.substr(0, nEnd);
        // A file cut off in the middle has no line end at its end.
        if (nEnd == std::string_view::npos)
            return false;
        text.remove_prefix(nEnd + 1);
        if (line.empty())
            continue;
        if (line.front() == '[') {
            if (line.back() != ']')
                return false;
            strSection = line.substr(1, line.size() - 2);
            bInSection = true;
            continue;
        }
        if (!bInSection || line.find('\0') != std::string_view::npos || !ParseLine(line, strSection, profile))
            return false;
    }
    return true;
}

CSettingsProfile::CSettingsProfile(std::filesystem::path path)
    : m_path(std::move(path))
{
    CMemoryProfile read;
    if (ReadSettings(m_path, read)) {
        static_cast<CMemoryProfile&>(*this) = read;
        return;
    }
    m_bCorrupt = true;
    std::filesystem::path aside = m_path;
    aside += ".corrupt";
    std::error_code error;
    std::filesystem::rename(m_path, aside, error);
    LogWarning("the settings file is corrupt and was put aside as " + aside.string());
}

void CSettingsProfile::WriteInt(const std::string& strSection, const std::string& strKey, int nValue)
{
    CMemoryProfile::WriteInt(strSection, strKey, nValue);
    m_changed.insert({strSection, strKey});
}

void CSettingsProfile::WriteString(const std::string& strSection, const std::string& strKey, const std::string& strValue)
{
    CMemoryProfile::WriteString(strSection, strKey, strValue);
    m_changed.insert({strSection, strKey});
}

void CSettingsProfile::WriteBinary(const std::string& strSection, const std::string& strKey, std::span<const std::uint8_t> value)
{
    CMemoryProfile::WriteBinary(strSection, strKey, value);
    m_changed.insert({strSection, strKey});
}

bool CSettingsProfile::Flush()
{
    if (m_changed.empty())
        return true;
    CMemoryProfile onDisk;
    if (!ReadSettings(m_path, onDisk))
        onDisk = *this;
    for (const auto& name : m_changed)
        onDisk.SetValue(name, Values().at(name));

    std::error_code error;
    std::filesystem::create_directories(m_path.parent_path(), error);
    const std::string text = FormatSettings(onDisk);
    const auto failure = WriteFileDurably(m_path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    if (failure) {
        LogWarning("settings not written: " + *failure);
        return false;
    }
    m_changed.clear();
    return true;
}

std::filesystem::path UserSettingsPath()
{
    const char* pszConfig = std::getenv("XDG_CONFIG_HOME");
    std::filesystem::path folder;
    if (pszConfig && *pszConfig == '/')
        folder = pszConfig;
    else if (const char* pszHome = std::getenv("HOME"))
        folder = std::filesystem::path(pszHome) / ".config";
    else
        folder = "/tmp";
    return folder / "kestrune" / "settings.ini";
}

} // namespace kestrune
