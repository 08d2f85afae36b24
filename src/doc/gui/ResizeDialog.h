#pragma once

#include "doc/gui/PictureSizeDialog.h"

#include <QCheckBox>
#include <QComboBox>

namespace kestrune {

/// The size of a picture that the Resize dialog starts with.
struct ResizeParams {
    CSize size;
    int nBitsPerPixel = 24;
    int nXResolution = 0; ///< dots per inch; 0 when the picture does not say
    int nYResolution = 0;
};

/// Asks for a new size and the method of resampling. Pixels and print size follow each other, at the picture's resolution.
/// Keys: those of the base, `PrintWidth` `PrintHeight` (centimetres), `Proportions` (0, 1; 1 at first), `Method` (`SizeFlags`).
class CResizeDialog : public CPictureSizeDialog {
    Q_OBJECT
public:
    explicit CResizeDialog(const ResizeParams& params, QWidget* pParent = nullptr);

    /// `SizeFlags`.
    int Method() const { return m_pMethod->currentIndex(); }

protected:
    CSize SizeAfter(Side side, int nValue) const override;
    void SideTyped(Side side) override;
    void SizeChanged() override;

private:
    void AddPrintRows(CDialogRows& rows);
    void PrintEdited(Side side);
    void ProportionsToggled(bool bKeep);

    const int m_aResolution[2]; ///< dots per inch, across and down
    CNumEdit* m_aPrint[2] = {};
    QCheckBox* m_pProportions;
    QComboBox* m_pMethod;
    CSize m_sizeTyped; ///< what was typed into each box; 0 where nothing was
    Side m_sideTyped = SIDE_WIDTH; ///< the last one
};

} // namespace kestrune
