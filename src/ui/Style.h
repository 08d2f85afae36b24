#pragma once

#include <QProxyStyle>

namespace kestrune {

/// The toolkit's quiet style, but for what this program draws in its own way.
class CStyle : public QProxyStyle {
    Q_OBJECT
public:
    CStyle();

    void drawControl(ControlElement element, const QStyleOption* pOption, QPainter* pPainter, const QWidget* pWidget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* pOption, const QWidget* pWidget) const override;
};

} // namespace kestrune
