#include "resources/gui/BrushWnd.h"

#include "base/StringTable.h"
#include "resources/gui/BrushOptionsDialog.h"
#include "resources/gui/BrushPicture.h"
#include "ui/Dialog.h"

#include <QPainter>

#include <algorithm>

namespace kestrune {

namespace {
constexpr int c_nCell = 34;
constexpr int c_nThumbnail = 30;
} // namespace

CBrushWnd::CBrushWnd(QWidget* pParent)
    : CCellGrid(c_nCell, pParent)
{
    setAccessibleName(TextOf(IDS_BRUSH_LIST));
    connect(this, &CCellGrid::CellDoubleClicked, this, &CBrushWnd::EditBrush);
}

const BrushEntry* CBrushWnd::SelectedBrush() const
{
    return Selected() < 0 ? nullptr : &m_brushes[static_cast<std::size_t>(Selected())];
}

void CBrushWnd::SetBrushes(std::vector<BrushEntry> brushes, int iSelect)
{
    m_brushes = std::move(brushes);
    m_thumbnails.assign(m_brushes.size(), QPixmap());
    SetCount(static_cast<int>(m_brushes.size()));
    Select(iSelect);
}

void CBrushWnd::Append(BrushEntry entry)
{
    m_brushes.push_back(std::move(entry));
    m_thumbnails.emplace_back();
    SetCount(static_cast<int>(m_brushes.size()));
    Select(Count() - 1);
}

void CBrushWnd::RemoveSelected()
{
    const int iBrush = Selected();
    if (iBrush < 0)
        return;
    m_brushes.erase(m_brushes.begin() + iBrush);
    m_thumbnails.erase(m_thumbnails.begin() + iBrush);
    SetCount(static_cast<int>(m_brushes.size()));
    Select(0);
}

void CBrushWnd::EditBrush(int iBrush)
{
    CDlgBrushOptions dialog(window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    const std::size_t i = static_cast<std::size_t>(iBrush);
    m_brushes[i] = dialog.Brush();
    m_thumbnails[i] = {};
    Select(iBrush);
    Q_EMIT BrushEdited(iBrush);
}

void CBrushWnd::DrawCell(QPainter& painter, int iCell, const QRect& rc)
{
    const BrushEntry& brush = m_brushes[static_cast<std::size_t>(iCell)];
    QPixmap& thumbnail = m_thumbnails[static_cast<std::size_t>(iCell)];
    const double fScale = painter.device()->devicePixelRatioF();
    if (thumbnail.isNull() || thumbnail.devicePixelRatioF() != fScale)
        thumbnail = QPixmap::fromImage(BrushPicture(brush.m_pMask, brush.m_nWidth, brush.m_nHeight, c_nThumbnail, fScale));
    painter.drawPixmap(rc.topLeft(), thumbnail);
    DrawBrushWidth(painter, rc, brush.m_nWidth);
}

QString CBrushWnd::CellText(int iCell) const
{
    const BrushEntry& brush = m_brushes[static_cast<std::size_t>(iCell)];
    return TextOf(IDS_BRUSH_CELL).arg(iCell + 1).arg(brush.m_nWidth).arg(brush.m_nHeight).arg(brush.m_nSpacing);
}

} // namespace kestrune
