#pragma once

#include "doc/files/ImageFile.h"

namespace kestrune {

/// What of a file goes to the helper process: of an EPS file with a preview its program part; of a metafile with a frame
/// the file with its frame said in records as well, because the decoder there stretches what is drawn to the whole size.
/// `scratch` holds what had to be made anew.
std::span<const std::uint8_t> HelperInput(ImageFormat format, std::span<const std::uint8_t> file, Bytes& scratch);

} // namespace kestrune
