#include "ui/Style.h"

#include "ui/Icons.h"

namespace kestrune {

CStyle::CStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

QIcon CStyle::standardIcon(StandardPixmap icon, const QStyleOption* pOption, const QWidget* pWidget) const
{
    // Every toolbar asks for these when it is made. The toolkit's are files: the first one makes it look through all its
    // picture plug-ins, a tenth of the time to the first window.
    if (icon == SP_ToolBarHorizontalExtensionButton)
        return LoadIcon(QStringLiteral("widgets/arrow-right"));
    if (icon == SP_ToolBarVerticalExtensionButton)
        return LoadIcon(QStringLiteral("widgets/arrow-down"));
    return QProxyStyle::standardIcon(icon, pOption, pWidget);
}

} // namespace kestrune
