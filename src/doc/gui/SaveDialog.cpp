#include "doc/gui/SaveDialog.h"

#include "base/StringTable.h"

#include <QFileInfo>

#include <iterator>

namespace kestrune {

namespace {

struct SaveRow {
    const char* strExtension;
    FileFilter filter;
};
// In the order of the save table: the row's number plus 2 is the format index.
constexpr SaveRow c_aRows[] = {
    {"jpg", {"JPEG 이미지 (*.jpg)", "*.jpg"}},
    {"bmp", {"윈도우 비트맵 (*.bmp)", "*.bmp"}},
    {"psd", {"PSD 이미지 (*.psd)", "*.psd"}},
    {"tif", {"TIFF 이미지 (*.tif)", "*.tif"}},
    {"cut", {"CUT 이미지 (*.cut)", "*.cut"}},
    {"pct", {"PICT 이미지 (*.pct)", "*.pct"}},
    {"sgi", {"SGI 이미지 (*.sgi)", "*.sgi"}},
    {"wpg", {"WPG 이미지 (*.wpg)", "*.wpg"}},
    {"pcx", {"PCX 이미지 (*.pcx)", "*.pcx"}},
};

} // namespace

CSaveDialog::CSaveDialog(CProfile& profile, bool bSaveAs, QWidget* pParent)
    : CFileDialogFrame(profile, SaveFile, TextOf(IDS_SAVE_BUTTON), pParent)
{
    setWindowTitle(TextOf(bSaveAs ? IDS_SAVEAS_TITLE : IDS_SAVE_TITLE));
    std::vector<FileFilter> filters;
    for (const SaveRow& row : c_aRows)
        filters.push_back(row.filter);
    SetFilters(filters);
}

void CSaveDialog::Suggest(const std::string& strName, int nFilterIndex)
{
    const QString strExtension = QFileInfo(QString::fromStdString(strName)).suffix().toLower();
    int nRow = 0;
    for (int i = 0; i < static_cast<int>(std::size(c_aRows)); i++)
        if (strExtension == QLatin1String(c_aRows[i].strExtension))
            nRow = i;
    if (nFilterIndex >= c_nFirstFormatIndex && nFilterIndex < c_nFirstFormatIndex + static_cast<int>(std::size(c_aRows)))
        nRow = nFilterIndex - c_nFirstFormatIndex;
    SetFilterRow(nRow);
    SetName(strName);
}

QString CSaveDialog::CompleteName(const QString& strPath) const
{
    // A name without a dot gets the extension of the chosen row when it is saved.
    if (QFileInfo(strPath).fileName().contains(u'.'))
        return strPath;
    return strPath + u'.' + QLatin1String(c_aRows[FilterRow()].strExtension);
}

} // namespace kestrune
