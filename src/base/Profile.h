#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace kestrune {

/// The settings store: sections of named integers, texts and binaries. A missing key yields the caller's default.
class CProfile {
public:
    virtual ~CProfile() = default;

    virtual std::optional<int> FindInt(const std::string& strSection, const std::string& strKey) const = 0;
    virtual std::optional<std::string> FindString(const std::string& strSection, const std::string& strKey) const = 0;
    virtual std::optional<std::vector<std::uint8_t>> FindBinary(const std::string& strSection, const std::string& strKey) const = 0;

    virtual void WriteInt(const std::string& strSection, const std::string& strKey, int nValue) = 0;
    virtual void WriteString(const std::string& strSection, const std::string& strKey, const std::string& strValue) = 0;
    virtual void WriteBinary(const std::string& strSection, const std::string& strKey, std::span<const std::uint8_t> value) = 0;

    /// Puts what was written on disk. False when that failed; what is in memory stays. A memory store always succeeds.
    virtual bool Flush() { return true; }

    int GetInt(const std::string& strSection, const std::string& strKey, int nDefault) const;
    std::string GetString(const std::string& strSection, const std::string& strKey, const std::string& strDefault) const;
    std::vector<std::uint8_t> GetBinary(const std::string& strSection, const std::string& strKey) const;
};

/// A store that lives in memory: for tests and scripts.
class CMemoryProfile : public CProfile {
public:
    std::optional<int> FindInt(const std::string& strSection, const std::string& strKey) const override;
    std::optional<std::string> FindString(const std::string& strSection, const std::string& strKey) const override;
    std::optional<std::vector<std::uint8_t>> FindBinary(const std::string& strSection, const std::string& strKey) const override;
    void WriteInt(const std::string& strSection, const std::string& strKey, int nValue) override;
    void WriteString(const std::string& strSection, const std::string& strKey, const std::string& strValue) override;
    void WriteBinary(const std::string& strSection, const std::string& strKey, std::span<const std::uint8_t> value) override;

    /// Section and key.
    using Name = std::pair<std::string, std::string>;
    using Value = std::variant<int, std::string, std::vector<std::uint8_t>>;
    /// All values, by section and key.
    const std::map<Name, Value>& Values() const { return m_mapValues; }
    void SetValue(const Name& name, const Value& value) { m_mapValues[name] = value; }

private:
    const Value* Find(const std::string& strSection, const std::string& strKey) const;

    std::map<Name, Value> m_mapValues;
};

/// The integer that a text setting means, or the text of an integer one: the stores keep what was written, readers may differ.
int ParseProfileInt(const std::string& strText);

/// A colour kept as text, "%03d %03d %03d" in the order red, green, blue: three fields of three digits at 0, 4 and 8.
std::string FormatColorText(std::uint32_t cr);
/// Reads such a text; a field that is missing or not a number counts as 0.
std::uint32_t ParseColorText(const std::string& strText);

} // namespace kestrune
