#pragma once

#include "resources/PaintSources.h"
#include "resources/ResponseCurve.h"

#include <QAbstractButton>
#include <QFrame>

namespace kestrune {

/// The prepared brush in a square of 48 by 48 with its width; a press shows it whole, in a frame of its own.
class CBrushPreview : public QAbstractButton {
    Q_OBJECT
public:
    explicit CBrushPreview(QWidget* pParent = nullptr);

    /// `nShownWidth` is the number printed: the brush's own width, without the room for its soft edge.
    void SetBrush(const ActiveBrush& brush, int nShownWidth);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;

private:
    void ShowWhole();

    ActiveBrush m_brush;
    int m_nShownWidth = 0;
};

/// The brush in its own size while it is looked at: closes on a press, on Escape and when the focus goes. One that is larger
/// than a quarter of the screen is made smaller.
class CBrushPopup : public QFrame {
    Q_OBJECT
public:
    CBrushPopup(const ActiveBrush& brush, QWidget* pParent);

protected:
    void mousePressEvent(QMouseEvent*) override { close(); }
    void keyPressEvent(QKeyEvent*) override { close(); }
};

/// The 256 steps of the response table from nothing to full paint; a press opens the curve.
class CResponseStrip : public QAbstractButton {
    Q_OBJECT
public:
    explicit CResponseStrip(QWidget* pParent = nullptr);

    void SetTable(const ResponseTable& table);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    ResponseTable m_table = IdentityResponse();
};

} // namespace kestrune
