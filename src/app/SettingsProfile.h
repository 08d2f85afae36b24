#pragma once

#include "base/Profile.h"

#include <filesystem>
#include <set>

namespace kestrune {

/// The settings store in a file of the user's configuration folder.
///
/// The file is UTF-8 text: "[section]" lines, and "key=value" lines whose value is an integer, a text in double quotes
/// (\" \\ \n inside) or "hex:" and pairs of digits. Whatever else stands in it makes the file corrupt: then the defaults
/// are in force and the old file is kept beside it, with ".corrupt" after its name.
class CSettingsProfile final : public CMemoryProfile {
public:
    explicit CSettingsProfile(std::filesystem::path path);

    void WriteInt(const std::string& strSection, const std::string& strKey, int nValue) override;
    void WriteString(const std::string& strSection, const std::string& strKey, const std::string& strValue) override;
    void WriteBinary(const std::string& strSection, const std::string& strKey, std::span<const std::uint8_t> value) override;

    /// Writes the file durably when something changed. What another running instance has written meanwhile stays,
    /// but for the keys that this one changed. False when the file could not be written.
    bool Flush() override;

    const std::filesystem::path& Path() const { return m_path; }
    /// True when the file at start was corrupt and has been put aside.
    bool WasCorrupt() const { return m_bCorrupt; }

private:
    std::filesystem::path m_path;
    std::set<std::pair<std::string, std::string>> m_changed;
    bool m_bCorrupt = false;
};

/// "settings.ini" in the folder for this program's settings: $XDG_CONFIG_HOME/kestrune, else ~/.config/kestrune.
std::filesystem::path UserSettingsPath();

/// The text form of a store, and its reading; false for a text that is none (the store then holds what stood before the fault).
std::string FormatSettings(const CMemoryProfile& profile);
bool ParseSettings(std::string_view text, CMemoryProfile& profile);

} // namespace kestrune
