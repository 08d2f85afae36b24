#pragma once

#include "doc/files/DecodedImage.h"

class QByteArray;

namespace kestrune {

/// SVG, plain or packed: drawn at its own size over white, 24 bits. What lies outside the file is never read, links that lead in
/// a circle are cut, and a drawing that repeats parts of itself without end is refused.
int ReadSvg(std::span<const std::uint8_t> file, LBitmapBase& bitmap);

/// Registers the reader with the core, which draws no vectors itself. Called once at start.
void RegisterSvgReader();

/// The drawing without what the reader must not follow: links out of the file, style sheets, document types, scripts.
/// Empty when it is no well-formed drawing or is too deep or too repetitive to draw. For tests.
QByteArray CleanSvg(const QByteArray& svg);

} // namespace kestrune
