#pragma once

#include <QImage>

#include <cstdint>
#include <vector>

class QPainter;

namespace kestrune {

/// The picture of a mask in a square of `nSide` units of the toolkit, for a screen of that scale: black paint on white.
QImage BrushPicture(const std::vector<std::uint8_t>& mask, int nWidth, int nHeight, int nSide, double fScale);

/// Prints a brush's width into the lower right corner of its picture.
void DrawBrushWidth(QPainter& painter, const QRect& rc, int nWidth);

} // namespace kestrune
