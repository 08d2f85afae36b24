#pragma once

#include "base/Files.h"
#include "doc/files/DecodedImage.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kestrune {

/// Every picture format the program knows, in the order of the Open dialog; those from `WebP` on stand below its list.
enum class ImageFormat : int {
    Bmp, Clp, Cut, Dib, Dcx, Eps, Gif, Ico, Jpeg, Pntg, Msp, Pcd, Pcx, Pict, Png, Psd, Sgi, Tga, Tiff, Wmf, Wpg,
    WebP, Avif, Heic, JpegXl, Svg, Count
};

/// What the program knows about one format. Open and Save As dialogs, loader and writer follow from the row.
struct ImageFormatRow {
    ImageFormat format;
    std::string_view name;        ///< as the user reads it: "JPEG"
    std::string_view description; ///< Korean, for the file dialogs
    std::string_view extensions;  ///< lower case, parted by blanks; the first is the usual one
    bool (*isContent)(std::span<const std::uint8_t> file); ///< tells the format by its content; null where nothing tells it
    ReaderFunction reader;        ///< null when the helper process reads it, or the shell registers a reader
    const char* pszHelperName;    ///< the helper's name of the format, or null: see `ReadsInHelper`
    WriterFunction writer;        ///< null when the program does not write it
    std::string_view saveExtension; ///< the extension of the Save dialog's row, empty when it has none
    int nSaveCode;    ///< format code of `LBitmapBase::Save`; 0 when the format has no row there
    int nSaveBits;    ///< depth that the file gets
    int nSaveQuality; ///< quality factor
    int nSaveIndex;   ///< index of the Save As dialog's row, 2 to 10; 0 when it has none

    /// True when a process of its own decodes it, under limits of time and memory.
    bool ReadsInHelper() const { return pszHelperName != nullptr; }
};

/// All rows; `ImageFormats()[int(format)]` is the format's own.
std::span<const ImageFormatRow> ImageFormats();

/// The format whose content test takes the bytes, or null.
const ImageFormatRow* FindFormatByContent(std::span<const std::uint8_t> file);
/// The format of an extension, given without the dot in any case, or null.
const ImageFormatRow* FindFormatByExtension(std::string_view extension);
/// The row of a save-table format code, or null.
const ImageFormatRow* FindFormatBySaveCode(int nCode);
/// The row of the Save As dialog with that index (2 to 10), or null.
const ImageFormatRow* FindFormatBySaveIndex(int nIndex);
/// The index of the Save As dialog (2 to 10) that the path's extension maps to; 2, JPEG, for any other or none.
int SaveIndexOfPath(const std::filesystem::path& path);

/// Sets the reader of a format that needs what the core has not (the toolkit draws SVG). Called once at start.
void RegisterReader(ImageFormat format, ReaderFunction reader);

/// Decodes a file held in memory: recognised by content first; when no format knows the content, by the extension.
/// `pUsed` receives the format that was read, null when none was found. IMG_SUCCESS or an error; the bitmap changes on success only.
int DecodeImage(std::span<const std::uint8_t> file, std::string_view extension, LBitmapBase& bitmap,
                const ImageFormatRow** pUsed = nullptr);

/// Encodes a 24-bit bitmap in that format with that quality factor, 2 (best) to 255; 0 takes the row's own.
int EncodeImage(ImageFormat format, const LBitmapBase& bitmap, int nQuality, Bytes& out);

/// The extension after the last "." of the name, lower case, without the dot.
std::string ExtensionOf(const std::filesystem::path& path);

/// The quality factor of the save table (2 best, 255 smallest) that stands for a quality of 1 to 100 percent, and back.
/// Factor 2 is quality 100, 30 (the save table's) is 92, 255 is 1; straight lines between. At 92 a photograph shows no
/// difference at a glance, also after being saved a few times.
int FactorOfQuality(int nPercent);
int QualityOfFactor(int nFactor);

} // namespace kestrune
