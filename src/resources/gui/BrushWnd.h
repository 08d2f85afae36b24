#pragma once

#include "resources/BrushEntry.h"
#include "ui/CellGrid.h"

#include <QPixmap>

#include <vector>

namespace kestrune {

/// The list of brushes, each as a thumbnail with its width. A double click changes a brush for one made anew.
class CBrushWnd : public CCellGrid {
    Q_OBJECT
public:
    /// The brush that is selected first, in a list just loaded: the fourth.
    static constexpr int c_nFirstSelected = 3;

    explicit CBrushWnd(QWidget* pParent = nullptr);

    const std::vector<BrushEntry>& Brushes() const { return m_brushes; }
    /// The selected brush; null in an empty list.
    const BrushEntry* SelectedBrush() const;
    /// Replaces the whole list; a selection past its end goes to the last.
    void SetBrushes(std::vector<BrushEntry> brushes, int iSelect);
    /// Adds a brush at the end and selects it.
    void Append(BrushEntry entry);
    /// Takes the selected brush away; the first is selected then.
    void RemoveSelected();

Q_SIGNALS:
    /// A brush of the list was replaced by the options dialog.
    void BrushEdited(int iBrush);

protected:
    void DrawCell(QPainter& painter, int iCell, const QRect& rc) override;
    QString CellText(int iCell) const override;

private:
    void EditBrush(int iBrush);

    std::vector<BrushEntry> m_brushes;
    std::vector<QPixmap> m_thumbnails; ///< one for each brush, made when first drawn
};

} // namespace kestrune
