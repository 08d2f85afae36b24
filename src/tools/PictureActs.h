#pragma once

#include "doc/PaintImage.h"
#include "doc/PictureTurn.h"

#include <cstdint>

// The commands that change a picture as a whole, without their dialogs: each pushes its record, acts, and tells the picture's
// surroundings. What may run out of memory is done before anything changes: on std::bad_alloc picture and history are as they were.

namespace kestrune {

/// The picture becomes `bitmap` (24 bits, any size) with one whole-picture record. The selection is gone afterwards, and so is a pending
/// crop or transform: they speak of the old picture.
void ReplacePicture(CPaintImage& image, LBitmapBase bitmap, std::uint32_t nKind);

/// Resamples the picture (`SizeFlags`). A size that is not positive changes nothing.
void ResizePicture(CPaintImage& image, int nWidth, int nHeight, int nFlags);
/// Places the picture on a canvas of another size (`CanvasOffset`), the rest in the background colour.
void ResizeCanvas(CPaintImage& image, int nWidth, int nHeight, int nAnchor);
void TurnPicture(CPaintImage& image, PictureTurn turn);
/// Leaves the part of the picture that lies in the rectangle, whose sides may be crossed. Nothing when no part does.
void CropPicture(CPaintImage& image, CRect rc);

/// Mirrors (`PictureTurn::Mirror`) or flips the float and its mask in place, and writes it back through the mask. A float that was
/// lifted stays so. False, with nothing changed, without a float.
bool TurnSelection(CPaintImage& image, PictureTurn turn);

/// Fills the picture with the background colour; with a float, erases the selected pixels by the mask, or drops the pixels that were
/// lifted. The selection stays.
void ClearPicture(CPaintImage& image);

/// Converts to a colour mode (`ColorMode`). It leaves no record: it is final. `dwFlags` are the flags of `ColorRes` for 16 and 256 colours.
/// The picture must be the active one, whose palette the colours follow.
void ChangeColorMode(CPaintImage& image, int nColorMode, std::uint32_t dwFlags = 0);

/// Makes the picture `pasted` (24 bits) a lifted float at the upper left corner, wholly selected. What floated before is committed.
void PasteAsFloat(CPaintImage& image, const LBitmapBase& pasted);

/// The pixels that Copy takes: the bounding rectangle of the selection, or the whole picture without one.
LBitmapBase CopiedPixels(CPaintImage& image);

} // namespace kestrune
