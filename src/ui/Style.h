#pragma once

#include <QProxyStyle>

namespace kestrune {

/// The toolkit's quiet style, but for what this program draws in its own way.
class CStyle : public QProxyStyle {
    Q_OBJECT
public:
    CStyle();

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* pOption, const QWidget* pWidget) const override;
};

} // namespace kestrune
