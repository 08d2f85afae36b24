#pragma once

#include "doc/Bitmap.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kestrune {

/// A coding in which pictures go over the clipboard and by drag and drop.
struct ClipboardFormat {
    std::string_view mimeType;
    int (*read)(std::span<const std::uint8_t> bytes, LBitmapBase& bitmap);
    /// Null for the further names under which some programs offer the same bytes.
    int (*write)(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out);
    int nQuality;
};

/// The device-independent bitmap first (header, colour table where there is one, rows from the bottom up), then PNG. What is
/// offered as `image/bmp` has the header of a file before it, as other programs of today's desktops expect; it is taken with or without.
std::span<const ClipboardFormat> ClipboardFormats();
/// The row of a type, or null.
const ClipboardFormat* FindClipboardFormat(std::string_view mimeType);

/// The bytes of a 24-bit picture in that coding; empty when it cannot hold the picture.
std::vector<std::uint8_t> EncodeClipboard(const LBitmapBase& bitmap, const ClipboardFormat& format);

/// A picture from outside, and what it is to the user.
struct ClipboardPicture {
    LBitmapBase bitmap; ///< at its own depth, 1, 4, 8 or 24, with its colour table
    int nColorMode = 0;
    int nBitsPerPixel = 0;
};

/// Depth and colour mode follow from the bitmap.
ClipboardPicture ClassifyPicture(LBitmapBase bitmap);
/// Decodes what another program offers. False, with `picture` as it was, for bytes that are no picture in that coding, are cut short,
/// or claim more than memory or the limits of files allow.
bool DecodeClipboard(std::span<const std::uint8_t> bytes, const ClipboardFormat& format, ClipboardPicture& picture);

} // namespace kestrune
