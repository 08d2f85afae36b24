#include "doc/gui/CanvasSizeDialog.h"

#include "base/StringTable.h"
#include "doc/gui/AnchorGrid.h"
#include "doc/gui/CanvasPreview.h"
#include "ui/DialogRows.h"

namespace kestrune {

CCanvasSizeDialog::CCanvasSizeDialog(const LBitmapBase& bitmap, int nBitsPerPixel, COLORREF crRest, QWidget* pParent)
    : CPictureSizeDialog({bitmap.GetWidth(), bitmap.GetHeight()}, nBitsPerPixel, pParent)
    , m_pAnchor(new CAnchorGrid)
    , m_pPreview(new CCanvasPreview(bitmap, crRest))
{
    setWindowTitle(TextOf(IDS_CANVAS_TITLE));
    m_pPreview->setAccessibleName(TextOf(IDS_CANVAS_PREVIEW));
    m_pPreview->setToolTip(TextOf(IDS_CANVAS_PREVIEW));
    Body()->addWidget(m_pPreview, 0, Qt::AlignTop);
    auto* pRows = new CDialogRows;
    pRows->AddFigure(TextOf(IDS_CANVAS_OLD), TextOf(IDS_CANVAS_OLD_VALUE).arg(m_sizeOld.cx).arg(m_sizeOld.cy));
    AddSizeRows(*pRows, IDS_CANVAS_WIDTH_TIP, IDS_CANVAS_HEIGHT_TIP);
    AddMemory(*pRows);
    pRows->AddGap();
    pRows->AddRow(TextOf(IDS_CANVAS_ANCHOR), m_pAnchor, TextOf(IDS_CANVAS_ANCHOR_TIP));
    auto* pColumn = new QVBoxLayout;
    pColumn->addLayout(pRows);
    pColumn->addStretch(1);
    Body()->addLayout(pColumn);

    RegisterKey(QStringLiteral("Anchor"), m_pAnchor->Buttons());
    connect(m_pAnchor, &CAnchorGrid::AnchorChanged, this, &CCanvasSizeDialog::SizeChanged);
    SizeChanged();
    StartWithWidth();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

int CCanvasSizeDialog::Anchor() const
{
    return m_pAnchor->Anchor();
}

void CCanvasSizeDialog::SizeChanged()
{
    CPictureSizeDialog::SizeChanged();
    m_pPreview->SetCanvas(PictureSize(), Anchor());
}

} // namespace kestrune
