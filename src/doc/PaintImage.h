#pragma once

#include "base/Geometry.h"
#include "base/Matrix3.h"
#include "doc/Bitmap.h"
#include "doc/ColorState.h"
#include "doc/ImageSite.h"
#include "doc/MetaFile.h"
#include "selection/BoundaryTracer.h"

#include <cstdint>
#include <filesystem>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrune {

struct UndoRecord;

/// `m_nColorMode`.
enum ColorMode { MODE_BITMAP = 0, MODE_16COLORS = 1, MODE_256COLORS = 2, MODE_GRAY = 3, MODE_RGB = 4 };
/// Fill kinds of `Create`.
enum FillKind { FILL_WHITE = 0, FILL_BLACK = 1, FILL_BACKGROUND = 2 };
/// Colour kinds of `Create`.
enum ColorKind { COLOR_BITMAP = 0, COLOR_GRAY = 1, COLOR_RGB = 2 };

/// A float by itself: 24-bit pixels, as many mask bytes, and where it lies in the picture.
struct FloatPixels {
    LBitmapBase bitmap;
    std::unique_ptr<std::uint8_t[]> pMask;
    CRect rc;
};

/// The message of a failed load, with the error's number behind it.
std::string LoadErrorText(int nError);

/// The picture of one document in memory: bitmaps, selection mask, float, undo lists, crop and transform state.
/// It knows no window; what it asks of its surroundings goes through `CImageSite`.
///
/// Between user acts `m_Bitmap` equals `m_BaseBitmap` unless `m_bFloating` is set. A new image has a known-empty mask:
/// the mask's memory is never read until something selects (`m_bMaskEmpty` and `m_bMaskBoundsValid` guard it).
class CPaintImage {
public:
    CPaintImage();
    virtual ~CPaintImage();
    CPaintImage(const CPaintImage&) = delete;
    CPaintImage& operator=(const CPaintImage&) = delete;

    /// The surroundings; never null (a site that does nothing until one is set, which is not owned).
    CImageSite& Site() const { return *m_pSite; }
    void SetSite(CImageSite* pSite);

    /// Loads a file. False after a message (`LoadErrorText`), and the image is not to be used then.
    bool Load(const std::filesystem::path& path);
    /// Makes a new picture.
    void Create(int nWidth, int nHeight, int nFillKind, int nColorKind);
    /// Takes a bitmap that paste, capture or scan has filled: its pixels, with the depth and mode that go with it.
    void CreateFromClipboardBitmap(const LBitmapBase& holding, int nBitsPerPixel, int nColorMode);

    /// Takes the pixels and the mask of a rectangle into the float bitmap and mask. What lies outside the picture is black
    /// and outside the mask. A rectangle without size releases the float.
    void CaptureFloat(int x, int y, int w, int h);
    /// Makes the base bitmap the picture with the selection erased to the background colour (the nearest of the palette that a picture
    /// of few colours has), by the mask's bytes; nothing in move mode "copy".
    void CutFloatHole();
    /// Rebuilds `m_Bitmap`: the base bitmap with the float over it, at the site's opacity, and repaints what the float left and
    /// what it covers. The float's corner stands at (`m_nFloatX`, `m_nFloatY`); what of it lies in `m_rcFloat` is seen. `dx` and `dy`
    /// are the way it was moved, already in those; `nMaskStride` is the length of the float mask's rows.
    void CompositeFloat(int dx, int dy, int nMaskStride);
    /// What the composite of a moved float starts from: the base bitmap for all of the picture, or, when nobody has written to
    /// either bitmap since the last composite, just what the float leaves and covers, whatever the picture's size.
    enum class CompositeFrom { Base, LastStep };
    /// Puts the float's corner there: `m_rcFloat` becomes the part inside the picture, a pending transform moves along, and the
    /// float is composited.
    void MoveFloatTo(int x, int y, CompositeFrom from);
    /// The float resampled through a map of picture points to picture points; its rectangle is the bounding box of the mapped
    /// corners. Nothing when no pixel would be left, or more than memory should hold. Throws std::bad_alloc.
    std::optional<FloatPixels> TransformedFloat(const Matrix3& transform) const;
    /// Puts other pixels in the float's place and composites them over the base bitmap: the float must have been lifted.
    /// The mask is the caller's to rebuild, and the selection counts as not live.
    void ReplaceFloat(FloatPixels pixels);
    /// Writes a float that was not lifted into the picture through its mask alone: the bar's opacity is that of what floats above it.
    void WriteFloatBack();
    /// The corners of the float's rectangle in the picture.
    Quad FloatCorners() const;
    /// Releases the float bitmap and mask.
    void ReleaseFloat();

    /// Fills in the mask's bounding box, right and bottom exclusive; true when the mask is not empty (else the whole picture).
    bool GetMaskBounds(int& x1, int& y1, int& x2, int& y2);
    /// To be called after every change of the mask's bytes: bounds and boundary are found anew when they are asked for.
    void InvalidateMaskBounds()
    {
        m_bMaskBoundsValid = false;
        m_nMaskSerial++;
    }
    /// Brings `m_pBoundaryAll` and `m_pBoundary` up to date and returns the latter: the boundary of the mask, limited to the mask's
    /// bounds. Traced only when the mask has changed since; empty, after a message, when memory is short.
    std::span<const MaskSegment> GetBoundary();
    /// True when the pixel's mask byte is over 127; false outside the picture.
    bool IsInMask(int x, int y) const;
    /// Moves the mask; what leaves the picture is lost. Its record in the history is the caller's, before the call.
    void MoveMask(int dx, int dy);

    /// Hardening applies to every alpha that blends into this picture: at most 256 colours and not 8-bit grey.
    bool IsHardAlpha() const { return g_nColors <= 256 && (m_bPaletteMode || m_nBitsPerPixel != 8); }

    /// Makes `g_nColors` and `g_pPalette` follow this picture, as on activation of its view.
    void Activate() const;
    /// Back to "no limit", as on deactivation.
    static void Deactivate();

    /// Makes the palette that goes with the mode (two entries, grey ramp, or the bitmap's own), sets `m_pPalette` and lets
    /// `g_pPalette` look at it. In mode 4 there is none.
    void MakePalette(const LBitmapBase& source);
    /// Makes the mask's memory for the present size, contents undefined, and the picture's mask known to be empty.
    void AllocateMask();

    CPaintMetaFile m_Metafile;
    LBitmapBase m_Bitmap;      ///< the working bitmap, always 24 bits after creation or load
    LBitmapBase m_BaseBitmap;  ///< the last committed picture without any float
    LBitmapBase m_FloatBitmap; ///< the pixels of the selection's bounding rectangle; unallocated without a selection
    std::uint32_t m_dwColorResFlags = 0;
    std::unique_ptr<std::vector<RGBQUAD>> m_pPalette; ///< palette of a picture of at most 256 colours; `g_pPalette` looks at it
    int m_nWidth = 0;
    int m_nHeight = 0;
    int m_nBitsPerPixel = 0; ///< depth as the user knows it: 1, 4, 8 or 24 (or the file's), not that of `m_Bitmap`
    int m_nColorMode = 0;
    bool m_bPaletteMode = false;
    std::unique_ptr<std::uint8_t[]> m_pMask;      ///< m_nWidth x m_nHeight bytes, 0 outside, 255 inside
    std::unique_ptr<std::uint8_t[]> m_pFloatMask; ///< the float bitmap's size; null when there is no float
    std::filesystem::path m_strPathName;          ///< the file as loaded; empty for a new image
    bool m_bSelection = false;
    CRect m_rcFloat;
    CRect m_rcFloatStart;
    bool m_bFloatReady = false;
    bool m_bFloating = false;
    int m_nFloatX = 0, m_nFloatY = 0, m_nFloatW = 0, m_nFloatH = 0;
    std::list<UndoRecord*> m_UndoList; ///< newest at the head
    std::list<UndoRecord*> m_RedoList; ///< newest at the head
    void (*m_pfnFreeHistory)(CPaintImage&) = nullptr; ///< set by whoever adds records; the destructor calls it
    std::uint32_t m_nUndoBytes = 0;
    int m_nUndoDepth = 0;
    int m_nGroupDepth = 0;
    int m_nHistoryIndex = 0;
    std::uint32_t m_nGroupKind = 0;
    bool m_bTransforming = false; ///< corners and matrix of a transform stand that was not applied yet; of the float as it is
    Quad m_Corner{};              ///< where a pending transform shows the float's corners, in the picture
    Matrix3 m_Transform;          ///< the pending transform, picture points to picture points
    CRect m_rcCrop;
    CPoint m_ptCropDrag;
    bool m_bCropActive = false;
    std::vector<MaskSegment> m_pBoundaryAll;  ///< the mask's boundary as `GetBoundary` last traced it
    std::span<const MaskSegment> m_pBoundary; ///< of it what lies in the mask's bounds, which is all
    std::uint32_t m_nMaskSerial = 0;          ///< another number after each change of the mask
    bool m_bMaskEmpty = true;
    bool m_bMaskBoundsValid = true;
    int m_nMaskX1 = 0, m_nMaskX2 = 0, m_nMaskY1 = 0, m_nMaskY2 = 0;

    int m_nLoadError = 1; ///< what the last `Load` of the bitmap returned (`ImageFileError`)

private:
    void ClassifyLoaded();
    bool ReadMetafileSize(const std::filesystem::path& path, CSize& size);
    void FinishCreation();
    MaskPlane Mask() const { return {m_pMask.get(), m_nWidth, m_nHeight}; }

    std::uint32_t m_nTracedSerial = 0; ///< the mask's number when its boundary was traced
    CRect FloatTarget(int nMaskStride) const;
    void BlendFloat(const CRect& rc, int nMaskStride, int nPercent);
    void RestoreBase(const CRect& rc, const CRect& rcExcept);
    void RepaintComposite(const CRect& rc);

    CImageSite* m_pSite;
    CRect m_rcComposited; ///< where the float was last put into `m_Bitmap`; empty before the first time
};

} // namespace kestrune
