#pragma once

#include "resources/BrushEntry.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace kestrune {

/// Brushes that one file may hold, and the longest side of a mask, whatever the file claims.
inline constexpr int c_nMaxBrushes = 4096;
inline constexpr int c_nMaxBrushSide = 8192;

/// The files `Brushes/*.pbr` below an install folder, sorted by name so that the first is the same on every disk.
std::vector<std::filesystem::path> FindBrushFiles(const std::filesystem::path& pathInstall);

/// Reads the bytes of a *.pbr file: a count, then for each brush spacing, second value, width, height (32 bits, low byte first)
/// and the mask. The format has no mark by which to know it, so every number is held against what follows: reading ends at
/// the first record that is cut short or claims an impossible size, and what stands before it is kept. A record without
/// pixels is passed over. Nothing is ever reserved by the count alone.
std::vector<BrushEntry> ParseBrushes(std::span<const std::uint8_t> bytes);
/// The same list as a file's bytes. Axes and the generator's numbers have no place in it.
std::vector<std::uint8_t> EncodeBrushes(std::span<const BrushEntry> brushes);

/// The brushes of a file; empty when it cannot be read.
std::vector<BrushEntry> ReadBrushFile(const std::filesystem::path& path);
/// Writes the list; false when the disk refuses, with the old file as it was.
bool WriteBrushFile(const std::filesystem::path& path, std::span<const BrushEntry> brushes);

} // namespace kestrune
