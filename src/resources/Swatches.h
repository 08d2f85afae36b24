#pragma once

#include "resources/SwatchTable.h"

#include <filesystem>

namespace kestrune {

/// Where the swatches that ship lie below an install folder.
std::filesystem::path DefaultSwatchPath(const std::filesystem::path& pathInstall);

/// Reads the swatches: 257 colours of 32 bits, red in the low byte, no header; the spare byte is dropped.
///
/// A file that does not exist: a message, `colors` stays. No file handles left: a message, `colors` stays. Any other
/// failure: the built-in swatches, no message. Of a file that is too short the colours that it holds are taken, of one
/// that is too long the first 257. A grid begins with the built-in swatches, so that it is never without colours.
void LoadSwatches(const std::filesystem::path& path, SwatchColors& colors);

} // namespace kestrune
