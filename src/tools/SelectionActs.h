#pragma once

#include "doc/PaintImage.h"
#include "selection/MaskPlane.h"

#include <cstdint>
#include <functional>

// What changes the selection of a picture as a whole. The functions above the line are the parts that every act on selection and
// float is made of; those below it are the commands of the Select menu without their dialogs, each with its record.

namespace kestrune {

/// The mask with every byte written, to be read and written: one that is known to be empty may never have been. `PushMask` has the
/// same effect. Whoever writes to it calls `InvalidateMaskBounds` afterwards (`FinishSelection` does).
MaskPlane WritableMask(CPaintImage& image);

/// The end of every act that has changed the mask: the picture as it stands is committed, the float is captured anew from the mask's
/// bounds (the whole picture when the mask came out empty), the selection is live, the view repaints.
void FinishSelection(CPaintImage& image);
/// Captures the float of a rectangle that is not the mask's bounds: the end of an outline's move, whose float is larger by the feather.
void FinishSelection(CPaintImage& image, const CRect& rcFloat);

/// Commits what floats: the picture as it is shown becomes the base bitmap, the float is released. The mask stays.
void CommitFloat(CPaintImage& image);

/// Nothing is selected: the mask is cleared, a float is committed and released, the three flags fall. No record; the view repaints.
void DropSelection(CPaintImage& image);

/// The mask becomes what of the float's mask lies in the picture (at `m_nFloatX`, `m_nFloatY`), nothing elsewhere. Bounds count as
/// unknown. Without a float nothing changes.
void MaskFromFloat(CPaintImage& image);

// ---------------------------------------------------------------------------------------------------------------------------

void SelectAll(CPaintImage& image);    ///< kind 13
void SelectNone(CPaintImage& image);   ///< kind 14; also what a click with a selection tool does
void InvertSelection(CPaintImage& image); ///< kind 15; ends like `SelectNone` when everything was selected

/// A radius that is 0 or less changes nothing, not even the history.
void FeatherSelection(CPaintImage& image, double fRadius); ///< kind 16
/// A negative width says so and changes nothing.
void BorderSelection(CPaintImage& image, int nWidth); ///< kind 17
void GrowSelection(CPaintImage& image, int nRadius);   ///< kind 18
void ShrinkSelection(CPaintImage& image, int nRadius); ///< kind 19
/// Moves the mask, not the pixels; what leaves the picture is lost. The caller ends the act with `FinishSelection`.
void MoveSelectionMask(CPaintImage& image, int dx, int dy); ///< kind 20

// ---------------------------------------------------------------------------------------------------------------------------

/// How a shape becomes part of the selection.
struct SelectShapeParams {
    SelectMode mode = SelectMode::New;
    int nFeather = 0; ///< pixels, 0..250
    std::uint32_t nKind = 0;
    /// Rectangles and ellipses are written column by column, which the feather puts right again. Without a feather they come out
    /// mirrored on the picture's main diagonal: pictures made with feather 0 depend on it.
    bool bColumns = false;
};

/// Draws a shape into a plane of zeros that stands for a part of the picture, whose place is given.
using ShapeDrawer = std::function<void(const MaskPlane& plane, const CRect& rcPart)>;

/// The whole act of a selection tool: record, shape, feather, combination with the mask, new float. `rcShape` holds all of the shape; only
/// that part, with room for the feather, is drawn and blurred.
void SelectShape(CPaintImage& image, const CRect& rcShape, const ShapeDrawer& draw, const SelectShapeParams& params);

} // namespace kestrune
