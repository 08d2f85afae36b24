#pragma once

#include "base/Geometry.h"
#include "doc/Bitmap.h"

#include <QImage>
#include <QWidget>

namespace kestrune {

/// Shows how a picture stands on a new canvas: the canvas in its colour, the picture on it, and faintly what is cut off.
class CCanvasPreview : public QWidget {
    Q_OBJECT
public:
    /// `crRest` fills the canvas beyond the picture.
    CCanvasPreview(const LBitmapBase& bitmap, COLORREF crRest, QWidget* pParent = nullptr);

    void SetCanvas(CSize canvas, int nAnchor);
    QSize sizeHint() const override { return {190, 190}; }

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QImage m_thumbnail;
    CSize m_sizePicture;
    CSize m_canvas;
    int m_nAnchor = 0;
    QColor m_crRest;
};

} // namespace kestrune
