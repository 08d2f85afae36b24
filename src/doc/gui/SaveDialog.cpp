#include "doc/gui/SaveDialog.h"

#include "base/StringTable.h"
#include "doc/files/ImageFile.h"

#include <QFileInfo>

#include <string_view>

namespace kestrune {

namespace {

constexpr int c_nFirstFormatIndex = 2;
constexpr int c_nLastFormatIndex = 10;

QString ExtensionOfIndex(int nFormatIndex)
{
    const std::string_view text = FindFormatBySaveIndex(nFormatIndex)->saveExtension;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

CSaveDialog::CSaveDialog(CProfile& profile, bool bSaveAs, QWidget* pParent)
    : CFileDialogFrame(profile, SaveFile, TextOf(IDS_SAVE_BUTTON), pParent)
{
    setWindowTitle(TextOf(bSaveAs ? IDS_SAVEAS_TITLE : IDS_SAVE_TITLE));
    QList<FileFilter> filters;
    for (int nIndex = c_nFirstFormatIndex; nIndex <= c_nLastFormatIndex; nIndex++) {
        const std::string_view text = FindFormatBySaveIndex(nIndex)->description;
        const QString strPattern = QStringLiteral("*.") + ExtensionOfIndex(nIndex);
        filters << FileFilter{QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())) + QStringLiteral(" (") + strPattern + u')',
                              strPattern};
    }
    SetFilters(filters);
}

int CSaveDialog::FilterIndex() const
{
    return FilterRow() + c_nFirstFormatIndex;
}

void CSaveDialog::Suggest(const std::string& strName, int nFilterIndex)
{
    const bool bGiven = nFilterIndex >= c_nFirstFormatIndex && nFilterIndex <= c_nLastFormatIndex;
    SetFilterRow((bGiven ? nFilterIndex : SaveIndexOfPath(strName)) - c_nFirstFormatIndex);
    SetName(strName);
}

QString CSaveDialog::CompleteName(const QString& strPath) const
{
    // A name without a dot gets the extension of the chosen row when it is saved.
    if (QFileInfo(strPath).fileName().contains(u'.'))
        return strPath;
    return strPath + u'.' + ExtensionOfIndex(FilterIndex());
}

} // namespace kestrune
