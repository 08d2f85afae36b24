#include "resources/BrushFile.h"

#include "base/Files.h"
#include "base/Log.h"

#include <algorithm>
#include <optional>

namespace kestrune {

namespace {

/// Far over any real collection; a file beyond it is something else.
constexpr std::uint64_t c_nMaxFileBytes = 256u << 20;

class CByteReader {
public:
    explicit CByteReader(std::span<const std::uint8_t> bytes)
        : m_rest(bytes)
    {
    }

    std::optional<std::int32_t> Int()
    {
        if (m_rest.size() < 4)
            return {};
        std::uint32_t n = 0;
        for (std::size_t i = 0; i < 4; i++)
            n |= std::uint32_t{m_rest[i]} << (8 * i);
        m_rest = m_rest.subspan(4);
        return static_cast<std::int32_t>(n);
    }

    std::optional<std::span<const std::uint8_t>> Take(std::size_t nBytes)
    {
        if (m_rest.size() < nBytes)
            return {};
        const auto head = m_rest.first(nBytes);
        m_rest = m_rest.subspan(nBytes);
        return head;
    }

private:
    std::span<const std::uint8_t> m_rest;
};

bool IsSide(std::int32_t n)
{
    return n >= 0 && n <= c_nMaxBrushSide;
}

/// Reads the next record; false where the file cannot be followed any further.
bool NextBrush(CByteReader& reader, BrushEntry& entry)
{
    const auto nSpacing = reader.Int(), nSecond = reader.Int(), nWidth = reader.Int(), nHeight = reader.Int();
    if (!nHeight || !IsSide(*nWidth) || !IsSide(*nHeight))
        return false;
    const auto mask = reader.Take(static_cast<std::size_t>(*nWidth) * static_cast<std::size_t>(*nHeight));
    if (!mask)
        return false;
    entry.m_nSpacing = *nSpacing;
    entry.m_nSecondValue = *nSecond;
    entry.m_nWidth = *nWidth;
    entry.m_nHeight = *nHeight;
    entry.m_xAxis[0] = *nWidth / 2.0;
    entry.m_yAxis[1] = *nHeight / 2.0;
    entry.m_pMask.assign(mask->begin(), mask->end());
    return true;
}

void PutInt(Bytes& bytes, std::int32_t n)
{
    for (int i = 0; i < 4; i++)
        bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(n) >> (8 * i)));
}

} // namespace

std::vector<std::filesystem::path> FindBrushFiles(const std::filesystem::path& pathInstall)
{
    std::vector<std::filesystem::path> files;
    std::error_code error;
    // A folder has no order that a user could know: sorted by name, the list and the brush at the start are the same everywhere.
    for (std::filesystem::directory_iterator it(pathInstall / "Brushes", error), end; !error && it != end; it.increment(error)) {
        std::string strExtension = it->path().extension().string();
        std::transform(strExtension.begin(), strExtension.end(), strExtension.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        std::error_code ignored;
        if (strExtension == ".pbr" && it->is_regular_file(ignored))
            files.push_back(it->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<BrushEntry> ParseBrushes(std::span<const std::uint8_t> bytes)
{
    CByteReader reader(bytes);
    const std::int32_t nCount = std::min(reader.Int().value_or(0), c_nMaxBrushes);
    std::vector<BrushEntry> brushes;
    for (std::int32_t i = 0; i < nCount; i++) {
        const bool bWhole = NextBrush(reader, brushes.emplace_back());
        if (brushes.back().m_pMask.empty())
            brushes.pop_back();
        if (!bWhole)
            break;
    }
    return brushes;
}

std::vector<std::uint8_t> EncodeBrushes(std::span<const BrushEntry> brushes)
{
    Bytes bytes;
    PutInt(bytes, static_cast<std::int32_t>(brushes.size()));
    for (const BrushEntry& entry : brushes) {
        PutInt(bytes, entry.m_nSpacing);
        PutInt(bytes, entry.m_nSecondValue);
        PutInt(bytes, entry.m_nWidth);
        PutInt(bytes, entry.m_nHeight);
        bytes.insert(bytes.end(), entry.m_pMask.begin(), entry.m_pMask.end());
    }
    return bytes;
}

std::vector<BrushEntry> ReadBrushFile(const std::filesystem::path& path)
{
    std::string strError;
    const std::optional<Bytes> bytes = ReadWholeFile(path, c_nMaxFileBytes, &strError);
    if (!bytes) {
        LogWarning("brushes: " + path.string() + ": " + strError);
        return {};
    }
    return ParseBrushes(*bytes);
}

bool WriteBrushFile(const std::filesystem::path& path, std::span<const BrushEntry> brushes)
{
    const std::optional<std::string> error = WriteFileDurably(path, EncodeBrushes(brushes));
    if (error)
        LogWarning("brushes: " + path.string() + ": " + *error);
    return !error;
}

} // namespace kestrune
