#pragma once

#include "base/Color.h"
#include "base/Profile.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// Who reads and writes a setting.
enum class SettingOwner { Program, Filter };

/// One setting: where it is kept and its default. Text settings have `pszDefault`, integer ones `nDefault`.
struct SettingRow {
    SettingOwner owner;
    std::string_view section;
    std::string_view key;
    int nDefault = 0;
    const char* pszDefault = nullptr;
};

/// Every setting of the program and its filters (those of the tools stand in `tools/ToolOptions`); keys of one section stand together.
std::span<const SettingRow> Settings();
/// The row of a setting; null for an unknown one.
const SettingRow* FindSetting(std::string_view section, std::string_view key);
/// The stored value, or the row's default. For rows of the table only.
int ReadSetting(const CProfile& profile, std::string_view section, std::string_view key);

/// The program's own settings in force: a block of defaults (the table) and a block of current values.
class CPreferences {
public:
    CPreferences();

    int Int(std::string_view section, std::string_view key) const;
    const std::string& Text(std::string_view section, std::string_view key) const;
    /// A text setting of the form "%03d %03d %03d".
    COLORREF Color(std::string_view section, std::string_view key) const;
    void SetInt(std::string_view section, std::string_view key, int nValue);
    void SetText(std::string_view section, std::string_view key, std::string strValue);
    void SetColor(std::string_view section, std::string_view key, COLORREF cr);

    /// Loads one section: a missing key yields its default.
    void Load(const CProfile& profile, std::string_view section);
    void Save(CProfile& profile, std::string_view section) const;

    /// The four loaders of the start and the three savers of the exit, each in its order.
    /// "Capture" is not saved here: its dialog does.
    void LoadAll(const CProfile& profile);
    void SaveAll(CProfile& profile) const;

private:
    struct Value {
        int nValue = 0;
        std::string strValue;
    };
    std::vector<Value> m_current; ///< beside the rows of the table
};

/// The two colours in the section "Color Value". Its "Pen" keys hold the background colour and its "Br" keys the
/// foreground colour, the reverse of what the words say: files of all versions have them so.
void LoadColors(const CProfile& profile);
void SaveColors(CProfile& profile);

} // namespace kestrune
