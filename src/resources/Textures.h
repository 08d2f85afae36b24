#pragma once

#include "resources/PaintSources.h"

#include <filesystem>
#include <vector>

namespace kestrune {

class LBitmapBase;

/// Where the textures of the brushes and the background patterns lie.
std::filesystem::path BrushTextureFolder(const std::filesystem::path& pathInstall);
std::filesystem::path PatternFolder(const std::filesystem::path& pathInstall);

/// The files of a folder that count as textures, by name: what stands behind the last point is "bmp", "jpg" or "tif", in
/// any case. Empty for a folder that cannot be read.
std::vector<std::filesystem::path> ScanTextureFolder(const std::filesystem::path& folder);

/// Reads an image file at 24 bits. False when it is none, or too large for memory.
bool LoadTextureBitmap(const std::filesystem::path& path, LBitmapBase& bitmap);

/// The bytes of a texture, the red channel of a 24-bit bitmap: a grey picture's brightness.
BrushTexture MakeBrushTexture(const LBitmapBase& bitmap);
/// The pixels of a pattern, from a 24-bit bitmap.
PaintPattern MakePattern(const LBitmapBase& bitmap, int nPercent);

} // namespace kestrune
