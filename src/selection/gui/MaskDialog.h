#pragma once

#include "ui/Dialog.h"

namespace kestrune {

class CNumEdit;

/// What one of the Select menu's dialogs asks for: a single number, in pixels.
struct MaskDialogRow {
    int nCommand;
    int nTitleId, nLabelId, nTipId;
    const char* strKey; ///< for scripts
    float fDefault, fMin, fMax;
    int nDecimals;
};
/// The row of a command; null for one without a dialog.
const MaskDialogRow* FindMaskDialog(int nCommand);

/// The dialogs of feather, border, grow and shrink. Each begins with the number of the last time.
class CMaskDialog : public CPaintDialog {
    Q_OBJECT
public:
    explicit CMaskDialog(const MaskDialogRow& row, QWidget* pParent = nullptr);

    /// Runs it; the number, or nothing after Cancel.
    std::optional<double> Ask();

private:
    const MaskDialogRow& m_row;
    CNumEdit* m_pNumber;
};

} // namespace kestrune
