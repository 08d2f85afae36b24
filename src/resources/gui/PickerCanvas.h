#pragma once

#include "doc/Bitmap.h"
#include "resources/PickerField.h"

#include <QWidget>

namespace kestrune {

/// The square field of the colour picker, or its strip: a picture with a mark at the present colour. A press or drag, and the
/// arrow keys, move the mark.
class CPickerCanvas : public QWidget {
    Q_OBJECT
public:
    enum Kind { FIELD, STRIP };
    CPickerCanvas(Kind kind, QWidget* pParent = nullptr);

    /// Shows the colour with `onStrip` on the strip; the picture is drawn anew only when that changes it.
    void ShowColor(PickerComponent onStrip, const CPickerColor& color);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The mark moved by hand: the component along x (field only) and that along y, in the sliders' units.
    void Moved(int nX, int nY);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    PickerComponent ComponentX() const;
    PickerComponent ComponentY() const;
    bool NeedsPicture(PickerComponent onStrip, const CPickerColor& color) const;
    void MoveTo(QPoint pt);

    Kind m_kind;
    PickerComponent m_onStrip = PICK_COUNT;
    CPickerColor m_color;
    LBitmapBase m_bitmap;
};

} // namespace kestrune
