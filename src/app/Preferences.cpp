#include "app/Preferences.h"

#include "doc/ColorState.h"

#include <stdexcept>

namespace kestrune {

namespace {

constexpr auto P = SettingOwner::Program;
constexpr auto F = SettingOwner::Filter;

// clang-format off
constexpr SettingRow c_aSettings[] = {
    {P, "Preference", "ThumbBtn Color", 0, "128 128 255"},
    {P, "Preference", "ThumbBtn Width", 72},
    {P, "Preference", "ThumbBtn Height", 72},
    {P, "Preference", "Guide Color", 0, "  0 128 255"},
    {P, "Preference", "Guide No", 0},
    {P, "Preference", "Grid Color", 0, "255   0   0"},
    {P, "Preference", "Grid No", 0},

    {P, "Capture", "Hot Key", 122}, {P, "Capture", "Modifier", 0}, {P, "Capture", "Cancel Key", 0}, {P, "Capture", "Delay", 10},
    {P, "Capture", "Area Type", 3}, {P, "Capture", "Width", 100}, {P, "Capture", "Height", 50}, {P, "Capture", "Back Color", 1},

    {P, "General", "History", 20}, {P, "General", "Unit", 0}, {P, "General", "Text Unit", 0},

    {P, "Image", "Width", 100}, {P, "Image", "Height", 100}, {P, "Image", "Kind", 2}, {P, "Image", "Color", 0},

    {P, "Color Value", "RedPen", 0}, {P, "Color Value", "GreenPen", 0}, {P, "Color Value", "BluePen", 0},
    {P, "Color Value", "RedBr", 255}, {P, "Color Value", "GreenBr", 255}, {P, "Color Value", "BlueBr", 255},

    {P, "Browser", "Path", 0, "  "},

    {F, "Blend", "Percent", 100},
    {F, "Bumpmap", "Ambient", 140}, {F, "Bumpmap", "Angle", 135}, {F, "Bumpmap", "Depth", 7}, {F, "Bumpmap", "Elevation", 15},
    {F, "Color Emboss", "Angle", 0}, {F, "Color Emboss", "Elevation", 400}, {F, "Color Emboss", "Depth", 20},
    {F, "Fill", "Opacity", 100},
    {F, "Color Shade", "Azimuth", 20}, {F, "Color Shade", "Elevation", 30},
    {F, "Deinterlace", "Type", 0},
    // "Max" is read from a misspelt section, and written to the other: files of all versions have it so.
    {F, "DeNoiser", "Amount", 5}, {F, "DeNoiserr", "Max", 50},
    {F, "Emboss", "Angle", 0}, {F, "Emboss", "Elevation", 90}, {F, "Emboss", "Depth", 50},
    {F, "Gaussian Blur", "Value", 5},
    {F, "Glass Tile", "X", 10}, {F, "Glass Tile", "Y", 10},
    {F, "Cubism", "Size", 10},
    {F, "Maximum", "Value", 3},
    {F, "Median", "Value", 3},
    {F, "Motion Blur", "Angle", 45}, {F, "Motion Blur", "Length", 10},
    {F, "Noise", "Red", 50}, {F, "Noise", "Green", 50}, {F, "Noise", "Blue", 50}, {F, "Noise", "Flag", 1},
    {F, "Pixelate", "Width", 10}, {F, "Pixelate", "Height", 10},
    {F, "Posterize", "Level", 3},
    {F, "RGB Shift", "RedX", 0}, {F, "RGB Shift", "RedY", 0}, {F, "RGB Shift", "GreenX", 0}, {F, "RGB Shift", "GreenY", 0},
    {F, "RGB Shift", "BlueX", 0}, {F, "RGB Shift", "BlueY", 0},
    {F, "Shade", "Azimuth", 20}, {F, "Shade", "Elevation", 30},
    {F, "Sharpen", "Sharpness", 10},
    {F, "Shift", "Amount", 20}, {F, "Shift", "Type", 0},
    {F, "Solarize", "Threshold", 127},
    {F, "Spread", "X", 20}, {F, "Spread", "Y", 20},
    {F, "Texture Fill", "Azimuth", 13500}, {F, "Texture Fill", "Elevation", 5500}, {F, "Texture Fill", "Ambient", 30},
    {F, "Texture Fill", "Depth", 10}, {F, "Texture Fill", "Resize", 100},
    {F, "Threshold", "Amount", 128},
    {F, "Unsharp Mask", "Radius", 100}, {F, "Unsharp Mask", "Amount", 5}, {F, "Unsharp Mask", "Threshold", 0},
    {F, "Wind", "Threshold", 10}, {F, "Wind", "Strength", 10}, {F, "Wind", "Style", 0}, {F, "Wind", "Direction", 0},
    {F, "Wind", "Edge Effect", 1},
};
// clang-format on

constexpr bool AreSettingsSane()
{
    for (std::size_t i = 0; i < std::size(c_aSettings); i++)
        for (std::size_t j = 0; j < i; j++)
            if (c_aSettings[i].section == c_aSettings[j].section && c_aSettings[i].key == c_aSettings[j].key)
                return false;
    return true;
}
static_assert(AreSettingsSane(), "a setting stands twice");

std::size_t IndexOf(std::string_view section, std::string_view key)
{
    const SettingRow* pRow = FindSetting(section, key);
    if (!pRow)
        throw std::out_of_range("no such setting: " + std::string(section) + ", " + std::string(key));
    return static_cast<std::size_t>(pRow - c_aSettings);
}

} // namespace

std::span<const SettingRow> Settings()
{
    return c_aSettings;
}

const SettingRow* FindSetting(std::string_view section, std::string_view key)
{
    for (const SettingRow& row : c_aSettings)
        if (row.section == section && row.key == key)
            return &row;
    return nullptr;
}

int ReadSetting(const CProfile& profile, std::string_view section, std::string_view key)
{
    const SettingRow& row = c_aSettings[IndexOf(section, key)];
    return profile.GetInt(std::string(section), std::string(key), row.nDefault);
}

CPreferences::CPreferences()
{
    for (const SettingRow& row : c_aSettings)
        m_current.push_back({row.nDefault, row.pszDefault ? row.pszDefault : ""});
}

int CPreferences::Int(std::string_view section, std::string_view key) const
{
    return m_current[IndexOf(section, key)].nValue;
}

const std::string& CPreferences::Text(std::string_view section, std::string_view key) const
{
    return m_current[IndexOf(section, key)].strValue;
}

COLORREF CPreferences::Color(std::string_view section, std::string_view key) const
{
    return ParseColorText(Text(section, key));
}

void CPreferences::SetInt(std::string_view section, std::string_view key, int nValue)
{
    m_current[IndexOf(section, key)].nValue = nValue;
}

void CPreferences::SetText(std::string_view section, std::string_view key, std::string strValue)
{
    m_current[IndexOf(section, key)].strValue = std::move(strValue);
}

void CPreferences::SetColor(std::string_view section, std::string_view key, COLORREF cr)
{
    SetText(section, key, FormatColorText(cr));
}

void CPreferences::Load(const CProfile& profile, std::string_view section)
{
    for (std::size_t i = 0; i < std::size(c_aSettings); i++) {
        const SettingRow& row = c_aSettings[i];
        if (row.section != section)
            continue;
        const std::string strSection(row.section), strKey(row.key);
        if (row.pszDefault)
            m_current[i].strValue = profile.GetString(strSection, strKey, row.pszDefault);
        else
            m_current[i].nValue = profile.GetInt(strSection, strKey, row.nDefault);
    }
}

void CPreferences::Save(CProfile& profile, std::string_view section) const
{
    for (std::size_t i = 0; i < std::size(c_aSettings); i++) {
        const SettingRow& row = c_aSettings[i];
        if (row.section != section)
            continue;
        const std::string strSection(row.section), strKey(row.key);
        if (row.pszDefault)
            profile.WriteString(strSection, strKey, m_current[i].strValue);
        else
            profile.WriteInt(strSection, strKey, m_current[i].nValue);
    }
}

void CPreferences::LoadAll(const CProfile& profile)
{
    for (const char* pszSection : {"Preference", "Capture", "General", "Image"})
        Load(profile, pszSection);
}

void CPreferences::SaveAll(CProfile& profile) const
{
    for (const char* pszSection : {"Preference", "General", "Image"})
        Save(profile, pszSection);
}

void LoadColors(const CProfile& profile)
{
    const auto read = [&](const char* pszKey) { return ReadSetting(profile, "Color Value", pszKey); };
    g_crBackground = Rgb(read("RedPen"), read("GreenPen"), read("BluePen"));
    g_crForeground = Rgb(read("RedBr"), read("GreenBr"), read("BlueBr"));
}

void SaveColors(CProfile& profile)
{
    const auto write = [&](const char* pszKey, int nValue) { profile.WriteInt("Color Value", pszKey, nValue); };
    write("RedPen", RedOf(g_crBackground));
    write("GreenPen", GreenOf(g_crBackground));
    write("BluePen", BlueOf(g_crBackground));
    write("RedBr", RedOf(g_crForeground));
    write("GreenBr", GreenOf(g_crForeground));
    write("BlueBr", BlueOf(g_crForeground));
}

} // namespace kestrune
