#pragma once

#include "app/CommandTable.h"
#include "base/CommandTarget.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QToolBar>

#include <functional>
#include <span>
#include <vector>

namespace kestrune {

QString ToQString(std::string_view text);
/// A tool tip, with the shortcut behind it.
QString TipOf(const CommandRow& row);
/// A command's text without mnemonic, shortcut and dots.
QString PlainText(std::string_view text);

/// Builds menus and toolbars from the command table, and shows in them what the route says of each command.
/// Menus are filled when they are first opened.
class CCommandUi : public QObject {
    Q_OBJECT
public:
    struct Route {
        std::function<bool(int)> execute;
        std::function<CommandState(int)> query;
        /// The rows of the recent files and of the open windows, made anew each time their menu opens.
        std::function<QList<QAction*>(QObject* pParent)> recentFiles;
        std::function<QList<QAction*>(QObject* pParent)> windows;
    };

    CCommandUi(Route route, QObject* pParent);

    /// The top-level menus of a table, which has submenus alone at its top level.
    std::vector<QMenu*> MakeMenus(std::span<const MenuItem> items, QWidget* pParent);
    /// A single menu, filled at once.
    QMenu* MakeContextMenu(std::span<const MenuItem> items, QWidget* pParent);

    void FillToolBar(QToolBar& bar, std::span<const int> commands);
    void LoadToolBarIcons();
    /// Shows the state of every toolbar button anew.
    void UpdateToolBars();
    /// Shows the state of the commands in a menu anew, filling it first if it is new.
    void UpdateMenu(QMenu& menu);

private:
    QAction* MakeAction(const CommandRow& row, std::string_view text, QObject* pParent);
    void ShowState(QAction& action) const;
    void Fill(QMenu& menu, std::span<const MenuItem> items);

    Route m_route;
    std::vector<QAction*> m_toolBarActions;
};

/// The command id of an action made by `CCommandUi`; 0 for any other.
int CommandOfAction(const QAction& action);

} // namespace kestrune
