#include "app/CommandTable.h"
#include "app/CommandUi.h"
#include "ui/Icons.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace kestrune {
namespace {

/// The commands that a menu, a toolbar, the toolbox or one of its groups shows.
std::set<int> ShownCommands()
{
    std::set<int> shown;
    for (const auto& items : {StartMenu(), DocumentMenu(), ViewContextMenu(), ColorBoxMenu()})
        for (const MenuItem& item : items)
            if (item.kind == MenuItemKind::Command)
                shown.insert(item.nId);
    for (const int nId : MainToolBarCommands())
        shown.insert(nId);
    for (const ToolBoxButton& button : ToolBoxButtons()) {
        shown.insert(button.nCommand);
        for (const int nId : ToolBoxGroup(button.nGroupResource))
            shown.insert(nId);
    }
    shown.erase(0);
    return shown;
}

TEST(CommandTable, EveryShownCommandHasARow)
{
    for (const int nId : ShownCommands())
        EXPECT_TRUE(FindCommand(nId)) << nId;
    EXPECT_FALSE(FindCommand(1));
    EXPECT_FALSE(FindCommand(99999));
}

TEST(CommandTable, EveryRowCanBeReachedButThoseWithoutAPlace)
{
    // Recent files have rows made anew, guides their own menu; the others are routed, and stand on no menu.
    std::set<int> hidden{12201, 12202, 12203, 12204, 30031, 30116, ID_EDIT_PASTE, 30036, 30041, 30048, 30049, 30077,
                         30106, 30107, 30111, 30113, 30114, 30115, 30117, 30118};
    for (int nId = ID_FILE_MRU_FILE1; nId <= ID_FILE_MRU_FILE5; nId++)
        hidden.insert(nId);
    const std::set<int> shown = ShownCommands();
    for (const CommandRow& row : Commands())
        EXPECT_NE(shown.contains(row.nId), hidden.contains(row.nId)) << row.nId << ' ' << row.text;
}

TEST(CommandTable, EveryIconIsDrawn)
{
    for (const CommandRow& row : Commands())
        if (!row.icon.empty()) {
            EXPECT_FALSE(LoadIcon(ToQString(row.icon)).isNull()) << row.icon;
        }
    for (const MenuItem& item : DocumentMenu())
        if (!item.icon.empty()) {
            EXPECT_FALSE(LoadIcon(ToQString(item.icon)).isNull()) << item.icon;
        }
    for (const ToolBoxButton& button : ToolBoxButtons())
        EXPECT_FALSE(FindCommand(button.nCommand)->icon.empty()) << button.nCommand;
}

TEST(CommandTable, TextsThatUsersKnow)
{
    const std::map<int, std::pair<std::string_view, std::string_view>> known{
        {57600, {"새 이미지(&N)", "Ctrl+N"}},     {30006, {"퍈형 90도 왼쪽으로 회전(&L)", ""}},
        {30029, {"색조 제거(&A)", "Shift+Ctrl+U"}}, {30060, {"선택된 경계 후림 조정(&F)...", "Alt+Ctrl+D"}},
        {1012, {"뺑기통 도구(A)", "A"}},          {30140, {"이미지 탐색 상자에서 열기(&B)...", ""}},
        {30042, {"채널이동...", ""}},             {30064, {"축소(&O)", "Ctrl+Alt+Space"}}};
    for (const auto& [nId, texts] : known) {
        ASSERT_TRUE(FindCommand(nId)) << nId;
        EXPECT_EQ(FindCommand(nId)->text, texts.first);
        EXPECT_EQ(FindCommand(nId)->shortcut, texts.second);
    }
    // One command, two texts: its own, and that of its place below "붙여넣기".
    std::set<std::string_view> texts;
    for (const MenuItem& item : DocumentMenu())
        if (item.nId == ID_PASTE_NEW)
            texts.insert(item.text);
    EXPECT_EQ(texts, (std::set<std::string_view>{"", "새 창으로(&N)"}));
}

TEST(CommandTable, TipsNameTheShortcutOnce)
{
    EXPECT_EQ(TipOf(*FindCommand(57601)), QStringLiteral("열기 (Ctrl+O)"));
    EXPECT_EQ(TipOf(*FindCommand(1005)), QStringLiteral("연필 도구(P)"));
    EXPECT_EQ(PlainText("다른 이름으로 저장(&V)..."), QStringLiteral("다른 이름으로 저장"));
}

} // namespace
} // namespace kestrune
