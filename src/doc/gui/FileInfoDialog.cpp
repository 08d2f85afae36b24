#include "doc/gui/FileInfoDialog.h"

#include "base/StringTable.h"
#include "ui/DialogRows.h"

#include <QDir>

namespace kestrune {

namespace {
QString ResolutionText(int nDotsPerInch)
{
    return nDotsPerInch > 0 ? TextOf(IDS_INFO_DPI_VALUE).arg(nDotsPerInch) : TextOf(IDS_INFO_DPI_NONE);
}
} // namespace

CFileInfoDialog::CFileInfoDialog(const PreviewResult& result, QWidget* pParent)
    : CPaintDialog(pParent)
{
    setWindowTitle(TextOf(IDS_INFO_TITLE));
    auto* pRows = new CDialogRows;
    QLabel* pPath = pRows->AddFigure(TextOf(IDS_INFO_PATH), QDir::toNativeSeparators(result.strPath));
    pPath->setWordWrap(true);
    pPath->setMinimumWidth(280);
    QLabel* const aFigures[] = {
        pPath,
        pRows->AddFigure(TextOf(IDS_INFO_BITS), TextOf(IDS_INFO_BITS_VALUE).arg(result.nBitsPerPixel)),
        pRows->AddFigure(TextOf(IDS_INFO_WIDTH), TextOf(IDS_INFO_PIXELS_VALUE).arg(result.nWidth)),
        pRows->AddFigure(TextOf(IDS_INFO_HEIGHT), TextOf(IDS_INFO_PIXELS_VALUE).arg(result.nHeight)),
        pRows->AddFigure(TextOf(IDS_INFO_XRES), ResolutionText(result.nXResolution)),
        pRows->AddFigure(TextOf(IDS_INFO_YRES), ResolutionText(result.nYResolution)),
    };
    for (QLabel* pFigure : aFigures) // so that a path or a figure can be copied
        pFigure->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Body()->addLayout(pRows);
    CancelButton()->hide(); // there is nothing to take back
}

} // namespace kestrune
