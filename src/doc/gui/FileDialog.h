#pragma once

#include "base/Profile.h"
#include "ui/Dialog.h"

#include <QComboBox>
#include <QFileDialog>

#include <filesystem>
#include <optional>
#include <vector>

namespace kestrune {

/// One row of a file dialog's list of file types.
struct FileFilter {
    QString strText;  ///< what the list shows, "JPEG 사진 (*.JPG)"
    QString strMatch; ///< the patterns that the row lets through, parted by blanks, case-blind
};

/// A file dialog that a script can fill in: the toolkit's own file browser with room for a pane of ours at its right.
/// Keys: `Path`, `Filter` (the row, from 0). The folder of the last file, and the look of the browser, are kept in the profile.
class CFileDialogFrame : public CPaintDialog {
    Q_OBJECT
public:
    enum Kind { OpenFiles, SaveFile };

    CFileDialogFrame(CProfile& profile, Kind kind, const QString& strAcceptText, QWidget* pParent);

    std::vector<std::filesystem::path> Paths() const;
    /// The first of them, or an empty path.
    std::filesystem::path Path() const;
    /// The chosen row of the filter list, from 0.
    int FilterRow() const;
    void SetFilterRow(int nRow);
    /// Puts a name into the name box; a relative one stays in the folder shown.
    void SetName(const std::filesystem::path& path);

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;
    void accept() override;
    QSize sizeHint() const override;

protected:
    void SetFilters(const QList<FileFilter>& filters);
    /// The pane at the right of the browser.
    void SetPane(QWidget* pPane);
    QFileDialog& Browser() const { return *m_pBrowser; }
    void showEvent(QShowEvent* pEvent) override;
    void done(int nResult) override;

    /// The file that a name stands for, in a dialog that saves: a chance to add an extension before it is asked whether
    /// to replace an old file.
    virtual QString CompleteName(const QString& strPath) const { return strPath; }

private:
    bool MayReplace(const QString& strPath);

    CProfile& m_profile;
    Kind m_kind;
    QFileDialog* m_pBrowser;
    QComboBox* m_pTypes; ///< the browser's list of file types
    QStringList m_strTypedPaths; ///< what a script typed; a person's choice stands in the browser
    QStringList m_filters;
};

} // namespace kestrune
