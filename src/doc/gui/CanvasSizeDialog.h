#pragma once

#include "doc/Bitmap.h"
#include "doc/gui/PictureSizeDialog.h"

namespace kestrune {

class CAnchorGrid;
class CCanvasPreview;

/// Asks for the size of a new canvas and the place of the picture on it, with a preview.
/// Keys: those of the base, `Anchor` (0 to 8, row by row; 4 at first).
class CCanvasSizeDialog : public CPictureSizeDialog {
    Q_OBJECT
public:
    /// `nBitsPerPixel` is the depth as the user knows it, `crRest` what fills the canvas beyond the picture.
    CCanvasSizeDialog(const LBitmapBase& bitmap, int nBitsPerPixel, COLORREF crRest, QWidget* pParent = nullptr);

    int Anchor() const;

protected:
    void SizeChanged() override;

private:
    CAnchorGrid* m_pAnchor;
    CCanvasPreview* m_pPreview;
};

} // namespace kestrune
