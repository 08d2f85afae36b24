#include "resources/gui/BrushFileDialog.h"

#include "base/StringTable.h"
#include "ui/DialogRows.h"

#include <QFile>
#include <QFileInfo>

namespace kestrune {

CBrushFileDialog::CBrushFileDialog(CProfile& profile, Kind kind, QWidget* pParent)
    : CFileDialogFrame(profile, kind, TextOf(kind == OpenFiles ? IDS_OPEN_BUTTON : IDS_SAVE_BUTTON), pParent)
    , m_bSave(kind == SaveFile)
{
    setWindowTitle(TextOf(kind == OpenFiles ? IDS_BRUSH_OPEN_TITLE : IDS_BRUSH_SAVE_TITLE));
    SetFilters({{TextOf(IDS_BRUSH_FILTER), QStringLiteral("*.pbr")}});
    if (kind == OpenFiles)
        Browser().setFileMode(QFileDialog::ExistingFile);
    Browser().setDefaultSuffix(QStringLiteral("pbr"));
}

QString CBrushFileDialog::CompleteName(const QString& strPath) const
{
    return !m_bSave || QFileInfo(strPath).fileName().contains(u'.') ? strPath : strPath + QStringLiteral(".pbr");
}

std::filesystem::path CBrushFileDialog::BrushFile() const
{
    const QString strPath = QFile::decodeName(Path().c_str());
    return strPath.isEmpty() ? std::filesystem::path() : std::filesystem::path(QFile::encodeName(CompleteName(strPath)).toStdString());
}

void CBrushFileDialog::SetFirstFolder(CProfile& profile, const std::filesystem::path& folder)
{
    for (const char* pszKey : {"Open Folder", "Save Folder"})
        if (profile.GetString("Files", pszKey, "").empty())
            profile.WriteString("Files", pszKey, folder.string());
}

} // namespace kestrune
