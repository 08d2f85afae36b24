#pragma once

#include <cstdint>

namespace kestrune {

/// What the editor and `kestrune-import` say to each other, over pipes, in this machine's byte order.
///
///   kestrune-import decode FORMAT most-pixels most-side seconds bytes
///     in: the file.  out: ImportPicture; when its result is 1, its palette (RGBQUAD) and its rows: BGR, or one index a byte.
///   kestrune-import encode FORMAT most-pixels most-side seconds bytes
///     in: ImportPicture of 24 bits and its rows.  out: ImportFile; when its result is 1, the file.
///
/// The program is given untrusted files, so what comes back is untrusted as well: the editor checks every number.
struct ImportPicture {
    std::uint32_t dwMark;
    std::int32_t nResult; ///< `ImageFileError`
    std::uint32_t nWidth, nHeight;
    std::uint32_t nBits; ///< 1, 4, 8 or 24
    std::uint32_t nXResolution, nYResolution; ///< dots per inch, 0 when not said
    std::uint32_t nColors; ///< entries of the palette, 0 at 24 bits
};

struct ImportFile {
    std::uint32_t dwMark;
    std::int32_t nResult;
    std::uint64_t nBytes;
};

inline constexpr std::uint32_t c_dwImportMark = 0x4B494D31;

} // namespace kestrune
