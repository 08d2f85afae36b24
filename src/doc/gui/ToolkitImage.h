#pragma once

#include "doc/Bitmap.h"

#include <QImage>

namespace kestrune {

/// A copy of a bitmap of any depth as the toolkit's image: 24 bits as BGR888, fewer with their palette as Indexed8. Resolution
/// comes along. Null when memory does not suffice.
QImage ToToolkitImage(const LBitmapBase& bitmap);

} // namespace kestrune
