#pragma once

#include "acquire/ClipboardPicture.h"

#include <optional>

namespace kestrune {

/// True while the clipboard offers a picture in one of `ClipboardFormats`. Asked of its owner once, and again when the clipboard has changed:
/// an owner that does not answer must not hold up every menu.
bool ClipboardHasPicture();
/// True while the clipboard holds anything at all.
bool ClipboardHasContents();

/// Puts a 24-bit picture on the clipboard; false when that failed. The pixels are shared and encoded when somebody asks.
bool PutOnClipboard(const LBitmapBase& bitmap);
/// The picture on the clipboard; nothing when there is none, or none that can be read.
std::optional<ClipboardPicture> TakeFromClipboard();
void EmptyClipboard();

} // namespace kestrune
