#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrune {

/// True when the bytes begin as a gzip file does.
bool IsGzip(std::span<const std::uint8_t> file);

/// Unpacks a gzip file of one member; nothing when it is damaged or unpacks to more than `nMost` bytes.
std::optional<std::vector<std::uint8_t>> Gunzip(std::span<const std::uint8_t> file, std::size_t nMost);

} // namespace kestrune
