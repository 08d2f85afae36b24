#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kestrune {

/// Expands the byte-run coding in which a count of 0..127 precedes count + 1 literal bytes and -1..-127 repeats the
/// next byte 1 - count times. False when the coding does not fill `out`; what it has beyond is ignored.
bool UnpackBits(std::span<const std::uint8_t> coded, std::span<std::uint8_t> out);

/// Appends the coding of one row.
void AppendPackBits(std::span<const std::uint8_t> row, std::vector<std::uint8_t>& out);

} // namespace kestrune
