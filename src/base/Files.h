#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrune {

using Bytes = std::vector<std::uint8_t>;

/// The whole file, or nothing when it cannot be read or is larger than `nLimit` bytes. Errors go to `pError` if given.
std::optional<Bytes> ReadWholeFile(const std::filesystem::path& path, std::uint64_t nLimit, std::string* pError = nullptr);

/// The one function that puts bytes on disk: written beside the target, flushed to the device, checked, then renamed over it,
/// with the permissions that the target had. An error text on failure, and then the target is untouched and nothing is left beside it.
std::optional<std::string> WriteFileDurably(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

} // namespace kestrune
