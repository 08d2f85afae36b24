#pragma once

#include <QMdiArea>

#include <vector>

namespace kestrune {

/// Rectangles for `nCount` windows that share an area without overlap. `bHorizontal` prefers wide ones above each other, else
/// tall ones side by side; the last columns (or rows) take one more when they don't come out even.
std::vector<QRect> TileRects(const QRect& area, int nCount, bool bHorizontal);
/// Rectangles that overlap, each with the captions before it in sight; they start anew at the corner when the area is full.
std::vector<QRect> CascadeRects(const QRect& area, int nCount, int nStep);

/// The space where the child frames stand. While no document is open it shows how to open one.
class CMdiWorkspace : public QMdiArea {
    Q_OBJECT
public:
    explicit CMdiWorkspace(QWidget* pParent = nullptr);

    void Tile(bool bHorizontal);
    void Cascade();
    /// Minimised child frames in rows along the bottom.
    void ArrangeIcons();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    void PaintHint(QPainter& painter) const;
    std::vector<QMdiSubWindow*> Arrangeable() const;
};

} // namespace kestrune
