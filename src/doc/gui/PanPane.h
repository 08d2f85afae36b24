#pragma once

#include <QImage>
#include <QWidget>

namespace kestrune {

/// Shows a part of a picture pixel by pixel of the screen. Dragging, or the arrow keys, asks for another part.
class CPanPane : public QWidget {
    Q_OBJECT
public:
    explicit CPanPane(QSize size, QWidget* pParent = nullptr);

    /// The pixels of the screen that the pane shows.
    QSize PixelSize() const { return (QSizeF(size()) * devicePixelRatioF()).toSize(); }
    /// Smaller than the pane: it stands in the middle.
    void ShowImage(const QImage& image);

Q_SIGNALS:
    /// The picture was dragged so many pixels of the screen to the right and down.
    void Dragged(QPoint by);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    QImage m_image;
    QPointF m_ptLast;
};

} // namespace kestrune
