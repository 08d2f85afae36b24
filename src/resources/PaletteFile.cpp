#include "resources/PaletteFile.h"

#include "base/Files.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "resources/PaletteBytes.h"

#include <algorithm>

namespace kestrune {

namespace {
constexpr std::size_t c_nFileBytes = c_nPaletteEntries * 3;
}

PaletteTable g_aPaletteTable = c_aStartPalette;

bool ReadPaletteFile(const std::filesystem::path& path, PaletteTable& table)
{
    const FileHead head = ReadFileHead(path, c_nFileBytes);
    if (head.nOpenError || head.bytes.size() < c_nFileBytes) {
        SayMessage(head.nOpenError ? IDS_PALETTE_CANNOT_OPEN : IDS_PALETTE_CANNOT_READ);
        return false;
    }
    for (std::size_t i = 0; i < table.size(); i++)
        table[i] = {head.bytes[i * 3], head.bytes[i * 3 + 1], head.bytes[i * 3 + 2]};
    return true;
}

bool WritePaletteFile(const std::filesystem::path& path, const PaletteTable& table)
{
    Bytes bytes;
    for (const PaletteEntry& entry : table)
        bytes.insert(bytes.end(), {entry.nRed, entry.nGreen, entry.nBlue});
    if (WriteFileDurably(path, bytes)) {
        SayMessage(IDS_PALETTE_CANNOT_WRITE);
        return false;
    }
    return true;
}

int PaletteBandWidth(int nCount) { return 256 / std::clamp(nCount, 1, 256); }

int PaletteBandAt(int nLevel, int nCount)
{
    const int iBand = nLevel / PaletteBandWidth(nCount);
    return nLevel >= 0 && iBand < std::clamp(nCount, 1, 256) ? iBand : -1;
}

} // namespace kestrune
