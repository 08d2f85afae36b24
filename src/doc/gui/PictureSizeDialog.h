#pragma once

#include "base/Geometry.h"
#include "ui/Dialog.h"

#include <QLabel>

namespace kestrune {

class CDialogRows;
class CNumEdit;

/// The shared part of the dialogs that give a picture another size: width and height in whole pixels and the memory that they need.
/// A side of 5000 or more is refused at the keystroke with a message, and the box goes back to what it held.
/// Keys: `Width` `Height`.
class CPictureSizeDialog : public CPaintDialog {
    Q_OBJECT
public:
    ~CPictureSizeDialog() override;

    /// The size wanted, in pixels.
    CSize PictureSize() const { return m_size; }

    /// A side that the dialog refuses is an error too.
    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;

protected:
    /// Starts with the picture's own size; `nBitsPerPixel` is its depth as the user knows it.
    CPictureSizeDialog(CSize size, int nBitsPerPixel, QWidget* pParent);

    void AddSizeRows(CDialogRows& rows, int nWidthTip, int nHeightTip);
    void AddMemory(CDialogRows& rows);
    /// Gives the width the keyboard. At the end of a dialog's making: a box that lies in no window yet loses it again.
    void StartWithWidth();

    enum Side { SIDE_WIDTH, SIDE_HEIGHT };
    /// What a new value of one side makes of the whole size.
    virtual CSize SizeAfter(Side side, int nValue) const;
    /// The user has given a side a value, and it was taken.
    virtual void SideTyped(Side) {}
    /// The size has changed: what follows from it is shown anew.
    virtual void SizeChanged();
    /// Takes a size that follows from a change of `side`; false, after a message, when a side that changes is too large.
    bool TrySize(CSize size, Side side);

    const CSize m_sizeOld;

private:
    void OnEdited(Side side);
    void ShowSize(CSize size);
    QString MemoryText(CSize size) const;

    CSize m_size;
    int m_nBitsPerPixel;
    CNumEdit* m_aBoxes[2] = {};
    QLabel* m_pMemory = nullptr;
    bool m_bRefused = false;
};

} // namespace kestrune
