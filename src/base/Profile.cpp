#include "base/Profile.h"

#include "base/Color.h"

#include <cstdio>
#include <cstdlib>

namespace kestrune {

int CProfile::GetInt(const std::string& strSection, const std::string& strKey, int nDefault) const
{
    return FindInt(strSection, strKey).value_or(nDefault);
}

std::string CProfile::GetString(const std::string& strSection, const std::string& strKey, const std::string& strDefault) const
{
    return FindString(strSection, strKey).value_or(strDefault);
}

std::vector<std::uint8_t> CProfile::GetBinary(const std::string& strSection, const std::string& strKey) const
{
    return FindBinary(strSection, strKey).value_or(std::vector<std::uint8_t>{});
}

const CMemoryProfile::Value* CMemoryProfile::Find(const std::string& strSection, const std::string& strKey) const
{
    const auto it = m_mapValues.find({strSection, strKey});
    return it == m_mapValues.end() ? nullptr : &it->second;
}

std::optional<int> CMemoryProfile::FindInt(const std::string& strSection, const std::string& strKey) const
{
    const Value* pValue = Find(strSection, strKey);
    if (!pValue)
        return std::nullopt;
    if (const int* pInt = std::get_if<int>(pValue))
        return *pInt;
    if (const std::string* pText = std::get_if<std::string>(pValue))
        return ParseProfileInt(*pText);
    return std::nullopt;
}

std::optional<std::string> CMemoryProfile::FindString(const std::string& strSection, const std::string& strKey) const
{
    const Value* pValue = Find(strSection, strKey);
    if (!pValue)
        return std::nullopt;
    if (const std::string* pText = std::get_if<std::string>(pValue))
        return *pText;
    if (const int* pInt = std::get_if<int>(pValue))
        return std::to_string(*pInt);
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> CMemoryProfile::FindBinary(const std::string& strSection, const std::string& strKey) const
{
    const Value* pValue = Find(strSection, strKey);
    if (const auto* pBytes = pValue ? std::get_if<std::vector<std::uint8_t>>(pValue) : nullptr)
        return *pBytes;
    return std::nullopt;
}

void CMemoryProfile::WriteInt(const std::string& strSection, const std::string& strKey, int nValue)
{
    m_mapValues[{strSection, strKey}] = nValue;
}

void CMemoryProfile::WriteString(const std::string& strSection, const std::string& strKey, const std::string& strValue)
{
    m_mapValues[{strSection, strKey}] = strValue;
}

void CMemoryProfile::WriteBinary(const std::string& strSection, const std::string& strKey, std::span<const std::uint8_t> value)
{
    m_mapValues[{strSection, strKey}] = std::vector<std::uint8_t>(value.begin(), value.end());
}

int ParseProfileInt(const std::string& strText)
{
    return static_cast<int>(std::strtol(strText.c_str(), nullptr, 10));
}

std::string FormatColorText(std::uint32_t cr)
{
    char text[16];
    std::snprintf(text, sizeof text, "%03d %03d %03d", RedOf(cr), GreenOf(cr), BlueOf(cr));
    return text;
}

std::uint32_t ParseColorText(const std::string& strText)
{
    int channels[3] = {};
    for (std::size_t i = 0; i < 3; i++)
        if (strText.size() > i * 4)
            channels[i] = ParseProfileInt(strText.substr(i * 4));
    return Rgb(channels[0], channels[1], channels[2]);
}

} // namespace kestrune
