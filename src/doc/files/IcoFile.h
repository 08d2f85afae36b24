#pragma once

#include "doc/files/DecodedImage.h"

namespace kestrune {

/// Reads icon and cursor files: the largest picture of those in the file, of equally large ones the deepest. What its
/// mask or its alpha makes transparent is shown over white.
int ReadIco(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// The picture that `ReadIco` chooses, as a part of the file: a whole PNG file, or a DIB with its mask. Empty when
/// there is none.
std::span<const std::uint8_t> ChooseIcoEntry(std::span<const std::uint8_t> file);

} // namespace kestrune
