#include "resources/Textures.h"

#include "doc/Bitmap.h"
#include "doc/files/ImageFile.h"

#include <algorithm>
#include <new>

namespace kestrune {

std::filesystem::path BrushTextureFolder(const std::filesystem::path& pathInstall)
{
    return pathInstall / "BrushTexture";
}

std::filesystem::path PatternFolder(const std::filesystem::path& pathInstall)
{
    return pathInstall / "Textures";
}

std::vector<std::filesystem::path> ScanTextureFolder(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::directory_iterator it(folder, error);
    for (; !error && it != std::filesystem::directory_iterator(); it.increment(error)) {
        std::error_code kindError;
        if (!it->is_regular_file(kindError))
            continue;
        const std::string strExtension = ExtensionOf(it->path());
        if (strExtension == "bmp" || strExtension == "jpg" || strExtension == "tif")
            files.push_back(it->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool LoadTextureBitmap(const std::filesystem::path& path, LBitmapBase& bitmap)
{
    try {
        bitmap.SetFileName(path);
        return bitmap.Load() == IMG_SUCCESS && bitmap.ColorRes(24, CRF_TRUECOLOR);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

BrushTexture MakeBrushTexture(const LBitmapBase& bitmap)
{
    BrushTexture texture{{}, bitmap.GetWidth(), bitmap.GetHeight()};
    texture.aBytes.resize(static_cast<std::size_t>(texture.nWidth) * texture.nHeight);
    std::uint8_t* pOut = texture.aBytes.data();
    for (int y = 0; y < texture.nHeight; y++) {
        const std::uint8_t* pRow = bitmap.Row(y);
        for (int x = 0; x < texture.nWidth; x++)
            *pOut++ = pRow[3 * x + 2];
    }
    return texture;
}

PaintPattern MakePattern(const LBitmapBase& bitmap, int nPercent)
{
    PaintPattern pattern{{}, bitmap.GetWidth(), bitmap.GetHeight(), nPercent};
    pattern.aPixels.resize(static_cast<std::size_t>(pattern.nWidth) * pattern.nHeight * 3);
    std::uint8_t* pOut = pattern.aPixels.data();
    for (int y = 0; y < pattern.nHeight; y++) {
        const std::uint8_t* pRow = bitmap.Row(y);
        for (int x = 0; x < pattern.nWidth; x++, pRow += 3, pOut += 3) {
            pOut[0] = pRow[2];
            pOut[1] = pRow[1];
            pOut[2] = pRow[0];
        }
    }
    return pattern;
}

} // namespace kestrune
