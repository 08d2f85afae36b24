#include "resources/Swatches.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "resources/PaletteBytes.h"

#include <cerrno>

namespace kestrune {

std::filesystem::path DefaultSwatchPath(const std::filesystem::path& pathInstall)
{
    return pathInstall / "Swatch Libraries" / "Default.pal";
}

void LoadSwatches(const std::filesystem::path& path, SwatchColors& colors)
{
    const FileHead head = ReadFileHead(path, c_nSwatches * 4);
    switch (head.nOpenError) {
    case 0:
        break;
    case ENOENT:
    case ENOTDIR:
        return SayMessage(IDS_SWATCHES_NOT_FOUND);
    case EMFILE:
    case ENFILE:
        return SayMessage(IDS_NO_FILE_HANDLES);
    default:
        colors = c_aBuiltInSwatches;
        return;
    }
    const std::uint8_t* p = head.bytes.data();
    for (std::size_t i = 0; i < head.bytes.size() / 4; i++, p += 4)
        colors[i] = Rgb(p[0], p[1], p[2]);
}

} // namespace kestrune
