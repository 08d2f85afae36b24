#pragma once

#include "base/Files.h"
#include "doc/PaintImage.h"

#include <span>
#include <string_view>

namespace kestrune {

/// What an exported file may be asked for; each format heeds some of it.
struct ExportOptions {
    int nQuality = 90;      ///< 1..100
    bool bLossless = false; ///< nothing of the pixels is lost
    bool bPalette = true;   ///< a picture of at most 256 colours keeps its palette and depth
    int nPacking = 1;       ///< how it is packed without loss: 0 not at all, 1 LZW, 2 ZIP
    bool bDither = true;    ///< when colours have to be reduced
};

/// The options that a format heeds.
enum ExportOption : unsigned { EXPORT_QUALITY = 1, EXPORT_LOSSLESS = 2, EXPORT_PALETTE = 4, EXPORT_PACKING = 8, EXPORT_DITHER = 16 };

/// One format of the Export dialog.
struct ExportFormat {
    std::string_view text;       ///< "PNG 이미지"
    std::string_view extensions; ///< lower case, parted by blanks; the first is the usual one
    unsigned nOptions;           ///< `ExportOption`s
    /// Encodes what the picture shows now: 1, or an error of `ImageFileError`.
    int (*encode)(const CPaintImage& image, const ExportOptions& options, Bytes& out);
};

std::span<const ExportFormat> ExportFormats();
/// The row of a file name's extension, in any case; -1 when it is none of them.
int ExportFormatOfPath(const std::filesystem::path& path);

/// Writes an indexed bitmap as a GIF of one picture. 1, or an error of `ImageFileError`.
int WriteGif(const LBitmapBase& bitmap, Bytes& out);

} // namespace kestrune
