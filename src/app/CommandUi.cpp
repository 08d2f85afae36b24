#include "app/CommandUi.h"

#include "ui/Icons.h"

#include <QToolButton>

namespace kestrune {

namespace {

constexpr char c_szId[] = "CommandId";
constexpr char c_szText[] = "CommandText";
constexpr char c_szFilled[] = "ItemsFilled";
constexpr char c_szPlaceOf[] = "PlaceOf";
constexpr char c_szMadeAnew[] = "MadeAnew";

/// How many items lie inside the submenu whose first item inside stands at `nBegin`.
std::size_t LengthOfLevel(std::span<const MenuItem> items, std::size_t nBegin)
{
    int nDepth = 0;
    for (std::size_t i = nBegin; i < items.size(); i++) {
        if (items[i].kind == MenuItemKind::Submenu)
            nDepth++;
        if (items[i].kind == MenuItemKind::End && nDepth-- == 0)
            return i - nBegin;
    }
    return items.size() - nBegin;
}

} // namespace

QString ToQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

QString PlainText(std::string_view text)
{
    QString strText = ToQString(text);
    const qsizetype nMnemonic = strText.indexOf(QLatin1String("(&"));
    if (nMnemonic >= 0)
        strText.remove(nMnemonic, 4);
    strText.remove(QLatin1String("..."));
    return strText;
}

QString TipOf(const CommandRow& row)
{
    QString strTip = row.tip.empty() ? PlainText(row.text) : ToQString(row.tip);
    const QString strShortcut = ToQString(row.shortcut);
    if (!strShortcut.isEmpty() && !strTip.endsWith(u'(' + strShortcut + u')'))
        strTip += QStringLiteral(" (") + strShortcut + u')';
    return strTip;
}

int CommandOfAction(const QAction& action)
{
    return action.property(c_szId).toInt();
}

CCommandUi::CCommandUi(Route route, QObject* pParent)
    : QObject(pParent)
    , m_route(std::move(route))
{
}

QAction* CCommandUi::MakeAction(const CommandRow& row, std::string_view text, QObject* pParent)
{
    auto* pAction = new QAction(pParent);
    QString strText = ToQString(text.empty() ? row.text : text);
    if (!row.shortcut.empty())
        strText += u'\t' + ToQString(row.shortcut);
    pAction->setText(strText);
    pAction->setToolTip(TipOf(row));
    pAction->setStatusTip(ToQString(row.prompt));
    pAction->setProperty(c_szId, row.nId);
    pAction->setProperty(c_szText, strText);
    pAction->setMenuRole(QAction::NoRole);
    connect(pAction, &QAction::triggered, this, [this, nId = row.nId] { m_route.execute(nId); });
    return pAction;
}

void CCommandUi::ShowState(QAction& action) const
{
    const int nId = CommandOfAction(action);
    if (!nId)
        return;
    const CommandState state = m_route.query(nId);
    action.setEnabled(state.bEnabled);
    action.setCheckable(state.bChecked);
    action.setChecked(state.bChecked);
    action.setIconVisibleInMenu(!state.bChecked); // its place is the check mark's, the same for rows with and without a drawing
    const QString strText = state.strText.empty() ? action.property(c_szText).toString() : QString::fromStdString(state.strText);
    if (action.text() != strText)
        action.setText(strText);
}

std::vector<QMenu*> CCommandUi::MakeMenus(std::span<const MenuItem> items, QWidget* pParent)
{
    std::vector<QMenu*> menus;
    for (std::size_t i = 0; i < items.size(); i++) {
        if (items[i].kind != MenuItemKind::Submenu)
            continue;
        const std::size_t nCount = LengthOfLevel(items, i + 1);
        auto* pMenu = new QMenu(ToQString(items[i].text), pParent);
        if (!items[i].icon.empty())
            pMenu->setIcon(LoadIcon(ToQString(items[i].icon)));
        const std::span<const MenuItem> inside = items.subspan(i + 1, nCount);
        connect(pMenu, &QMenu::aboutToShow, this, [this, pMenu, inside] {
            if (!pMenu->property(c_szFilled).toBool()) {
                pMenu->setProperty(c_szFilled, true);
                Fill(*pMenu, inside);
            }
            UpdateMenu(*pMenu);
        });
        menus.push_back(pMenu);
        i += nCount + 1;
    }
    return menus;
}

QMenu* CCommandUi::MakeContextMenu(std::span<const MenuItem> items, QWidget* pParent)
{
    auto* pMenu = new QMenu(pParent);
    Fill(*pMenu, items);
    UpdateMenu(*pMenu);
    return pMenu;
}

void CCommandUi::Fill(QMenu& menu, std::span<const MenuItem> items)
{
    for (std::size_t i = 0; i < items.size(); i++) {
        const MenuItem& item = items[i];
        switch (item.kind) {
        case MenuItemKind::Command: {
            const CommandRow& row = *FindCommand(item.nId);
            QAction* pAction = MakeAction(row, item.text, &menu);
            if (!row.icon.empty())
                pAction->setIcon(LoadIcon(ToQString(row.icon)));
            menu.addAction(pAction);
            break;
        }
        case MenuItemKind::Separator:
            menu.addSeparator();
            break;
        case MenuItemKind::Submenu: {
            const std::size_t nCount = LengthOfLevel(items, i + 1);
            for (QMenu* pSubmenu : MakeMenus(items.subspan(i, nCount + 2), &menu))
                menu.addMenu(pSubmenu);
            i += nCount + 1;
            break;
        }
        case MenuItemKind::RecentFiles:
        case MenuItemKind::WindowList: {
            // A place holder, which keeps the rows' place while there are none.
            auto* pPlace = new QAction(&menu);
            pPlace->setVisible(false);
            pPlace->setProperty(c_szPlaceOf, static_cast<int>(item.kind));
            menu.addAction(pPlace);
            break;
        }
        case MenuItemKind::End:
            break;
        }
    }
}

void CCommandUi::UpdateMenu(QMenu& menu)
{
    for (QAction* pAction : menu.actions())
        if (pAction->property(c_szMadeAnew).toBool())
            delete pAction;
    for (QAction* pAction : menu.actions()) {
        ShowState(*pAction);
        const QVariant place = pAction->property(c_szPlaceOf);
        if (!place.isValid())
            continue;
        const auto& rows = place.toInt() == static_cast<int>(MenuItemKind::RecentFiles) ? m_route.recentFiles : m_route.windows;
        for (QAction* pRow : rows(&menu)) {
            pRow->setProperty(c_szMadeAnew, true);
            menu.insertAction(pAction, pRow);
        }
    }
}

void CCommandUi::FillToolBar(QToolBar& bar, std::span<const int> commands)
{
    for (const int nId : commands) {
        if (nId == 0) {
            bar.addSeparator();
            continue;
        }
        const CommandRow& row = *FindCommand(nId);
        QAction* pAction = MakeAction(row, {}, &bar);
        pAction->setProperty(c_szText, PlainText(row.text));
        pAction->setText(PlainText(row.text));
        pAction->setEnabled(false);
        bar.addAction(pAction);
        m_toolBarActions.push_back(pAction);
    }
}

void CCommandUi::LoadToolBarIcons()
{
    for (QAction* pAction : m_toolBarActions)
        pAction->setIcon(LoadIcon(ToQString(FindCommand(CommandOfAction(*pAction))->icon)));
}

void CCommandUi::UpdateToolBars()
{
    for (QAction* pAction : m_toolBarActions)
        ShowState(*pAction);
}

} // namespace kestrune
