#pragma once

#include <QAbstractScrollArea>

namespace kestrune {

/// A scrolling field of square cells of which one is selected: the list of brushes, of textures, of tiles.
///
/// A press selects a cell and chooses it, arrow keys too, Enter is a double click. What a cell shows, and what choosing means, is
/// the derived class's.
class CCellGrid : public QAbstractScrollArea {
    Q_OBJECT
public:
    CCellGrid(int nCell, QWidget* pParent);

    int Count() const { return m_nCount; }
    /// -1 without cells.
    int Selected() const { return m_nCount ? m_iSelected : -1; }
    /// Moves the selection frame, and scrolls it into sight; limited to the cells there are.
    void Select(int iCell);
    /// How many cells stand side by side: what fits beside a scroll bar, at least one.
    int GetColumns() const;
    QRect CellRect(int iCell) const;
    /// The cell at a point of the viewport; -1 where there is none.
    int CellAt(QPoint pt) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// A click on a cell, or its like by keyboard; it is selected already.
    void CellClicked(int iCell);
    void CellDoubleClicked(int iCell);

protected:
    void SetCount(int nCount);
    /// Draws the inside of a cell. `rc` is the cell without the frame around it and the gap between two: 4 pixels less.
    virtual void DrawCell(QPainter& painter, int iCell, const QRect& rc) = 0;
    /// What a tip over the cell, and a screen reader at its selection, say.
    virtual QString CellText(int iCell) const = 0;

    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;

private:
    void UpdateScrollBar();
    int Target(int nKey) const;

    int m_nCell;
    int m_nCount = 0;
    int m_iSelected = 0;
};

} // namespace kestrune
