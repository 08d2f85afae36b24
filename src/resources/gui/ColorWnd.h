#pragma once

#include "resources/SwatchTable.h"

#include <QAbstractScrollArea>

namespace kestrune {

/// The swatch grid: 257 cells of 14 x 14 pixels in as many columns as fit.
///
/// A left press selects a cell and tells its colour; a right press puts the owner's current colour into the cell. With the
/// keyboard the arrows move the selection, Space and Enter tell it, Insert puts the current colour.
class CColorWnd : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int c_nColors = c_nSwatches;
    static constexpr int c_nCell = 14;
    using Colors = SwatchColors;

    explicit CColorWnd(QWidget* pParent = nullptr);

    void SetColors(const Colors& colors);
    const Colors& GetColors() const { return m_aColors; }
    /// The colour that a right press puts into a cell.
    void SetCurrentColor(COLORREF cr) { m_crCurrent = cr; }
    int GetSelected() const { return m_iSelected; }
    int GetColumns() const;
    /// The cell at a point of the viewport, or -1.
    int CellAt(QPoint pt) const;

Q_SIGNALS:
    void ColorChosen(kestrune::COLORREF cr);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void leaveEvent(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;

private:
    QRect CellRect(int iCell) const;
    void Select(int iCell);
    void Choose(int iCell);
    void Store(int iCell);
    void Hover(int iCell);
    void UpdateScrollBar();

    Colors m_aColors{};
    int m_iSelected = 0;
    int m_iHover = -1;
    COLORREF m_crCurrent = 0;
};

} // namespace kestrune
