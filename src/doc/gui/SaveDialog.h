#pragma once

#include "doc/gui/FileDialog.h"

namespace kestrune {

/// The dialog that asks for a name to save under: Save (a picture without a file) and Save As.
class CSaveDialog : public CFileDialogFrame {
    Q_OBJECT
public:
    CSaveDialog(CProfile& profile, bool bSaveAs, QWidget* pParent = nullptr);

    /// The name to start with, and the format index (2..10) of the filter row; any other index leaves the row of the
    /// name's extension, else the first.
    void Suggest(const std::string& strName, int nFilterIndex);

    /// The format index of the chosen row: 2..10, the row of the save table plus 2.
    int FilterIndex() const;

protected:
    QString CompleteName(const QString& strPath) const override;
};

} // namespace kestrune
