#pragma once

#include "doc/gui/FileDialog.h"

namespace kestrune {

/// Chooses a *.pbr file to open or to save. A name without an extension gets it.
class CBrushFileDialog : public CFileDialogFrame {
    Q_OBJECT
public:
    /// `profile` remembers the folder and the look for brushes; pictures have their own.
    CBrushFileDialog(CProfile& profile, Kind kind, QWidget* pParent);

    /// The chosen file, its name complete.
    std::filesystem::path BrushFile() const;
    /// Where a profile that knows no folder yet begins.
    static void SetFirstFolder(CProfile& profile, const std::filesystem::path& folder);

protected:
    QString CompleteName(const QString& strPath) const override;

private:
    bool m_bSave;
};

} // namespace kestrune
