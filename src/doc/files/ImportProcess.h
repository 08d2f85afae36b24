#pragma once

#include "doc/files/DecodedImage.h"

#include <filesystem>

namespace kestrune {

/// The program that decodes rare formats in a process of its own: `kestrune-import` beside this program, or in the library
/// folder of an installation, unless another was set (tests set one that misbehaves).
std::filesystem::path ImportProgram();
/// Sets the program; an empty path returns to the usual one.
void SetImportProgram(const std::filesystem::path& path);

/// Has the program decode a file of that format (its own name of the format). A crash, a hang, too much memory or an answer
/// that makes no sense is IMG_ERROR_HELPER; a file that it finds damaged is IMG_ERROR_FILE_READ.
int DecodeInHelper(const char* pszFormat, std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// Has the program encode a 24-bit bitmap and appends the file.
int EncodeInHelper(const char* pszFormat, const LBitmapBase& bitmap, std::vector<std::uint8_t>& out);

/// The writer of the format table that the program serves. The format has no quality.
int WriteSgi(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
