#pragma once

#include "base/Color.h"
#include "base/Units.h"
#include "doc/PaintDoc.h"
#include "ui/Dialog.h"

#include <QComboBox>
#include <QLabel>

namespace kestrune {

class CNumEdit;

/// The dialog that asks for size, background and picture type of a new picture.
/// Keys: `Width` `Height` (in the unit shown), `Unit` (`LengthUnit`), `Kind` (`FillKind`), `Color` (`ColorKind`).
class CNewImageDialog : public CPaintDialog {
    Q_OBJECT
public:
    /// Starts with `params` shown in `unit`; a size outside 1..5000 pixels is brought inside.
    CNewImageDialog(const NewImageParams& params, LengthUnit unit, QWidget* pParent = nullptr);

    /// The sides are whole pixels, 1..5000, whatever the unit.
    NewImageParams Params() const;

private:
    void AddSizeRows(class CDialogRows& rows);
    void UnitChanged();
    void SizeEdited();
    void ShowMemory();

    CNumEdit* m_pWidth;
    CNumEdit* m_pHeight;
    QComboBox* m_pUnit;
    QComboBox* m_pKind;
    QComboBox* m_pColor;
    QLabel* m_pMemory;
    CSize m_size; ///< pixels: what the boxes show is this, in the unit
    LengthUnit m_unit = UNIT_PIXEL;
};

} // namespace kestrune
