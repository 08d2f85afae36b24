#pragma once

#include "doc/Bitmap.h"
#include "ui/Dialog.h"

#include <QComboBox>
#include <QPoint>

namespace kestrune {

class CPanPane;

/// Asks how a picture is to be brought to 16 or 256 colours, with a part of it before and after side by side.
/// Keys: `Palette` (0 fitted to the picture, then the fixed ones in the order shown), `Dither` (0 none, 1 error diffusion, 2 pattern).
class CIndexColorDialog : public CPaintDialog {
    Q_OBJECT
public:
    /// `nBits` is 4 or 8; `bitmap` has 24 bits.
    CIndexColorDialog(const LBitmapBase& bitmap, int nBits, QWidget* pParent = nullptr);

    /// `ColorResFlags`: palette and dither or-ed together.
    std::uint32_t Flags() const;

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    QLayout* MakePane(CPanPane& pane, int nTextId);
    void ShowPart();

    LBitmapBase m_bitmap;
    LBitmapBase m_sample; ///< small enough to fit a palette to at every turn of the list
    int m_nBits;
    QPoint m_ptPart; ///< the upper left corner of the part shown
    CPanPane* m_pBefore;
    CPanPane* m_pAfter;
    QComboBox* m_pPalette;
    QComboBox* m_pDither;
};

} // namespace kestrune
