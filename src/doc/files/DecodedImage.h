#pragma once

#include "base/Profile.h"
#include "doc/Bitmap.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kestrune {

/// What `LBitmapBase::Load` and `Save` return: 1 on success, else one of these, which the load message shows.
enum ImageFileError : int {
    IMG_SUCCESS = 1,
    IMG_ERROR_MEMORY = -1,        ///< memory exhausted, or the picture is larger than the greatest size
    IMG_ERROR_FILE_FORMAT = -9,   ///< no reader recognises the file
    IMG_ERROR_FILE_OPEN = -14,    ///< the file cannot be opened (also an empty name)
    IMG_ERROR_FILE_READ = -15,    ///< the file is damaged or cut short
    IMG_ERROR_FILE_CREATE = -16,  ///< the target cannot be created
    IMG_ERROR_FILE_WRITE = -17,   ///< writing failed (a full disk, say)
    IMG_ERROR_BITS = -20,         ///< a depth or colour kind that is not supported
    IMG_ERROR_HELPER = -30,       ///< the helper process is missing, crashed, or ran over its limits
    IMG_ERROR_CANCELLED = -100
};

/// Limits that every reader keeps.
struct ReadLimits {
    std::int64_t nMaxPixels = 400'000'000; ///< greatest width x height
    int nMaxSide = 65500;
    std::uint64_t nMaxFileBytes = std::uint64_t{2} << 30;
    int nHelperSeconds = 60;                               ///< processor time that the helper process may use
    std::uint64_t nHelperBytes = std::uint64_t{3} << 30;   ///< memory that the helper process may use
};
/// The limits in force (settings section "Files": "Max Megapixels").
ReadLimits& Limits();

/// Takes the limits from the settings.
void TakeLimits(const CProfile& profile);

/// True when a picture of that size may be made under `limits`.
bool IsSaneSize(std::int64_t nWidth, std::int64_t nHeight, const ReadLimits& limits);

/// A reader takes the file's bytes and fills in the bitmap at the file's own depth: 1, 4 or 8 bits with its palette, or 24.
/// It returns IMG_SUCCESS or an error, never faults and never throws but std::bad_alloc.
using ReaderFunction = int (*)(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// A writer takes a 24-bit bitmap and appends the file to `out`. `nQuality` is the save table's quality factor.
using WriterFunction = int (*)(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);

} // namespace kestrune
