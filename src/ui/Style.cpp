#include "ui/Style.h"

#include "ui/Icons.h"

#include <QPainter>
#include <QStyleOptionMenuItem>

namespace kestrune {

CStyle::CStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

void CStyle::drawControl(ControlElement element, const QStyleOption* pOption, QPainter* pPainter, const QWidget* pWidget) const
{
    const auto* pItem = qstyleoption_cast<const QStyleOptionMenuItem*>(pOption);
    const bool bLit = pItem && element == CE_MenuItem && pItem->state & State_Selected && pItem->state & State_Enabled;
    if (!bLit || pItem->icon.isNull())
        return QProxyStyle::drawControl(element, pOption, pPainter, pWidget);
    // The toolkit draws the icon of the lit row in the ink of the others, dark on the accent.
    QStyleOptionMenuItem item(*pItem);
    const int nSize = pixelMetric(PM_SmallIconSize, pOption, pWidget);
    item.icon = QIcon(pItem->icon.pixmap({nSize, nSize}, pPainter->device()->devicePixelRatioF(), QIcon::Selected));
    QProxyStyle::drawControl(element, &item, pPainter, pWidget);
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
