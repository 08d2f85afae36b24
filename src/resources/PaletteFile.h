#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

namespace kestrune {

/// One colour of the table of sixteen, in the order of its file.
struct PaletteEntry {
    std::uint8_t nRed = 0;
    std::uint8_t nGreen = 0;
    std::uint8_t nBlue = 0;
    bool operator==(const PaletteEntry&) const = default;
};

inline constexpr int c_nPaletteEntries = 16;
using PaletteTable = std::array<PaletteEntry, c_nPaletteEntries>;

/// What the table of sixteen starts as.
inline constexpr PaletteTable c_aStartPalette = {{
    {0x00, 0x00, 0xFE},
    {0x56, 0xFE, 0x56},
    {0xFE, 0xA8, 0x56},
    {0x5C, 0x00, 0x00},
    {0xFE, 0xFE, 0x00},
    {0x00, 0x70, 0x70},
    {0xFE, 0xFE, 0xFE},
    {0xAE, 0xAE, 0xAE},
    {0x8A, 0x6E, 0xE9},
    {0x00, 0x65, 0x00},
    {0x00, 0xFE, 0xFE},
    {0xFE, 0x00, 0x00},
    {0xFE, 0xFE, 0x00},
    {0xB2, 0x00, 0xB2},
    {0xFE, 0xFE, 0xFE},
    {0x00, 0x00, 0x00},
}};

/// The table that the editor of sixteen colours works on; one for the program.
extern PaletteTable g_aPaletteTable;

/// Reads a *.PAL file: sixteen times red, green, blue, one byte each, no header; what follows is not looked at. False
/// after a message when it cannot be opened or ends too early, with the table as it was.
bool ReadPaletteFile(const std::filesystem::path& path, PaletteTable& table);
/// Writes such a file, 48 bytes. False after a message, with the file as it was.
bool WritePaletteFile(const std::filesystem::path& path, const PaletteTable& table);

/// The editor parts 256 levels into `nCount` bands of equal width; the band at a level, or -1 past the last whole one.
/// A count under 1 counts as 1, one over 256 as 256.
int PaletteBandAt(int nLevel, int nCount);
/// The width of a band: 256 / count in whole numbers.
int PaletteBandWidth(int nCount);

} // namespace kestrune
