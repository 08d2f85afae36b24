#include "app/CommandTable.h"

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

constexpr MenuItem Cmd(int nId, std::string_view text = {}) { return {MenuItemKind::Command, nId, text}; }
constexpr MenuItem Sub(std::string_view text, std::string_view icon = {}) { return {MenuItemKind::Submenu, 0, text, icon}; }
constexpr MenuItem c_sep{MenuItemKind::Separator};
constexpr MenuItem c_end{MenuItemKind::End};
constexpr MenuItem c_recent{MenuItemKind::RecentFiles};
constexpr MenuItem c_windows{MenuItemKind::WindowList};

// clang-format off
constexpr MenuItem c_aStartMenu[] = {
    Sub("파일(&F)"),
        Cmd(57600), Cmd(57601), Cmd(30140), c_sep,
        Cmd(30152), c_sep,
        Cmd(30226), Cmd(30227), c_sep,
        Cmd(30093), Cmd(30129), c_sep,
        Cmd(57606), Cmd(57610), c_sep,
        Cmd(30089), Cmd(30091), c_sep,
        c_recent, c_sep,
        Cmd(57665),
    c_end,
    Sub("보기(&V)"),
        Cmd(59392), Cmd(59397), Cmd(59393), c_sep,
        Cmd(30135), Cmd(30136), Cmd(40003), Cmd(40004), Cmd(30143), Cmd(30139), c_sep,
        Cmd(30160), c_sep,
        Cmd(40002),
    c_end,
    Sub("갈무리(&P)"),
        Cmd(30070), Cmd(30076), Cmd(30075), Cmd(30071), Cmd(30072), Cmd(30224), Cmd(30225), c_sep,
        Cmd(30074),
    c_end,
    Sub("도움말(&H)"),
        Cmd(57670), c_sep, Cmd(57664),
    c_end,
};

constexpr MenuItem c_aDocumentMenu[] = {
    Sub("파일(&F)"),
        Cmd(57600), Cmd(57601), Cmd(30140), Cmd(57602), Cmd(30108), c_sep,
        Cmd(57603), Cmd(57604), Cmd(40001), c_sep,
        Cmd(30226), Cmd(30227), c_sep,
        Cmd(30093), Cmd(30094), Cmd(30129), c_sep,
        Cmd(57605), Cmd(57606), Cmd(57609), Cmd(57607),
        Sub("인쇄 배치(&Y)"),
            Cmd(30121), Cmd(30122), Cmd(30123), Cmd(30124), Cmd(30125), Cmd(30126), Cmd(30127), Cmd(30128),
        c_end,
        Cmd(57610), Cmd(57611), c_sep,
        Cmd(30203), Cmd(30212), c_sep,
        c_recent, c_sep,
        Cmd(57665),
    c_end,
    Sub("편집(&E)"),
        Cmd(57643), Cmd(57644), c_sep,
        Cmd(57635), Cmd(57634), Cmd(30151), Cmd(30082),
        Sub("붙여넣기(&V)"),
            Cmd(30084), Cmd(30082, "새 창으로(&N)"), Cmd(30152),
        c_end,
        Cmd(30090), c_sep,
        Cmd(30050), Cmd(30088), Cmd(30097), c_sep,
        Sub("비우기(&G)"),
            Cmd(30098), Cmd(30100), Cmd(30099), Cmd(30101),
        c_end,
    c_end,
    Sub("이미지(&I)"),
        Sub("색상 모드(&E)"),
            Cmd(30144), Cmd(30145), Cmd(30146), Cmd(30147), Cmd(30148),
        c_end,
        Sub("색상 보정(&A)"),
            Cmd(30025), Cmd(30026), Cmd(30035), Cmd(30027), Cmd(30028), Cmd(30034), c_sep,
            Cmd(30095), Cmd(30030), Cmd(30029), c_sep,
            Cmd(30019), Cmd(30018), Cmd(30104), Cmd(30021), Cmd(30020), Cmd(30047),
        c_end, c_sep,
        Cmd(30012), Cmd(30013), Cmd(30011), c_sep,
        Cmd(30006), Cmd(30007), Cmd(30008), c_sep,
        Cmd(30109), Cmd(30110), c_sep,
        Cmd(30009), Cmd(30010), c_sep,
        Cmd(30092),
    c_end,
    Sub("선택(&S)"),
        Cmd(30056), Cmd(30057), Cmd(30059), c_sep,
        Cmd(30060), Cmd(30134), Cmd(30061), Cmd(30062),
    c_end,
    Sub("필터(&T)"),
        Sub("흐리게(&B)", "commands/filter-blur"),
            Cmd(30002), Cmd(30003), Cmd(30001), c_sep, Cmd(30037),
        c_end,
        Sub("선명하게(&S)", "commands/filter-sharpen"),
            Cmd(30039), Cmd(30040),
        c_end,
        Sub("입체 효과(&R)", "commands/filter-relief"),
            Cmd(30078), Cmd(30079), Cmd(30103),
        c_end,
        Sub("왜곡(&T)", "commands/filter-distort"),
            Cmd(30000), Cmd(30032), Cmd(30033), c_sep, Cmd(30046), Cmd(30105), Cmd(30042),
        c_end,
        Sub("노이즈(&N)", "commands/filter-noise"),
            Cmd(30038), c_sep, Cmd(30102), Cmd(30120),
        c_end,
        Sub("예술 효과(&A)"),
            Cmd(30004), Cmd(30081),
        c_end,
        Sub("기타(&O)", "commands/filter-custom"),
            Cmd(30043), Cmd(30044), c_sep, Cmd(30045),
        c_end, c_sep,
        Cmd(30119),
    c_end,
    Sub("보기(&V)"),
        Cmd(30063), Cmd(30064), Cmd(30065), Cmd(30066), c_sep,
        Cmd(30067), Cmd(30068), Cmd(30069), Cmd(30213), c_sep,
        Cmd(59392), Cmd(59397), Cmd(59393), c_sep,
        Cmd(30135), Cmd(30136), Cmd(40003), Cmd(40004), Cmd(30143), Cmd(30139), c_sep,
        Cmd(30160), c_sep,
        Cmd(40002),
    c_end,
    Sub("갈무리(&P)"),
        Cmd(30070), Cmd(30076), Cmd(30075), Cmd(30071), Cmd(30072), Cmd(30224), Cmd(30225), c_sep,
        Cmd(30074),
    c_end,
    Sub("창(&W)"),
        Cmd(57650), Cmd(57651), Cmd(57652), Cmd(57649), c_sep,
        c_windows,
    c_end,
    Sub("도움말(&H)"),
        Cmd(57670), c_sep, Cmd(57664),
    c_end,
};

constexpr MenuItem c_aViewContextMenu[] = {
    Cmd(30063), Cmd(30064), Cmd(30065), Cmd(30066), c_sep,
    Cmd(30067), Cmd(30068), Cmd(30069), c_sep,
    Cmd(57602),
};

constexpr MenuItem c_aColorBoxMenu[] = {
    Cmd(40012), Cmd(40013), c_sep,
    Cmd(40011), Cmd(40010), c_sep,
    Cmd(40014),
};

constexpr int c_aMainToolBar[] = {57600, 57601, 57603, 57607, 0, 57635, 57634, 30082, 0, 57643, 57644, 0,
                                  30064, 30063, 30065, 30066, 0, 30140};

constexpr ToolBoxButton c_aToolBox[] = {
    {1001, 258}, {1002, 0}, {1004, 0}, {30051, 269}, {337, 312}, {1024, 0}, {1026, 0},
    {1005, 314}, {1009, 271}, {1011, 316}, {1013, 260}, {1015, 262}, {1050, 264}, {1055, 266},
};

constexpr int c_aGroup258[] = {1001, 1122, 1123, 1124, 1003};
constexpr int c_aGroup260[] = {1013, 1014, 1017};
constexpr int c_aGroup262[] = {1015, 1016};
constexpr int c_aGroup264[] = {1050, 1067, 1071, 1063, 1068};
constexpr int c_aGroup266[] = {1055, 1053, 1062, 1070, 1066, 1051, 1057};
constexpr int c_aGroup269[] = {30051, 30052, 30053, 30054, 30055};
constexpr int c_aGroup271[] = {1009, 1094};
constexpr int c_aGroup312[] = {337, 1025};
constexpr int c_aGroup314[] = {1005, 1006, 1007, 1008};
constexpr int c_aGroup316[] = {1011, 1012};

struct ToolGroup {
    int nResource;
    std::span<const int> commands;
};
constexpr ToolGroup c_aGroups[] = {
    {258, c_aGroup258}, {260, c_aGroup260}, {262, c_aGroup262}, {264, c_aGroup264}, {266, c_aGroup266},
    {269, c_aGroup269}, {271, c_aGroup271}, {312, c_aGroup312}, {314, c_aGroup314}, {316, c_aGroup316},
};
// clang-format on

constexpr bool IsBalanced(std::span<const MenuItem> items)
{
    int nDepth = 0;
    for (const MenuItem& item : items) {
        if (item.kind == MenuItemKind::Submenu)
            nDepth++;
        if (item.kind == MenuItemKind::End && --nDepth < 0)
            return false;
    }
    return nDepth == 0;
}
static_assert(IsBalanced(c_aStartMenu) && IsBalanced(c_aDocumentMenu) && IsBalanced(c_aViewContextMenu));

constexpr bool AreGroupsSane()
{
    for (const ToolBoxButton& button : c_aToolBox) {
        if (button.nGroupResource == 0)
            continue;
        const auto it = std::find_if(std::begin(c_aGroups), std::end(c_aGroups),
                                     [&](const ToolGroup& group) { return group.nResource == button.nGroupResource; });
        if (it == std::end(c_aGroups) || it->commands.front() != button.nCommand)
            return false;
    }
    return std::size(c_aToolBox) == 14;
}
static_assert(AreGroupsSane(), "a group is missing or does not begin with its button's command");

} // namespace

std::span<const MenuItem> StartMenu()
{
    return c_aStartMenu;
}

std::span<const MenuItem> DocumentMenu()
{
    return c_aDocumentMenu;
}

std::span<const MenuItem> ViewContextMenu()
{
    return c_aViewContextMenu;
}

std::span<const MenuItem> ColorBoxMenu()
{
    return c_aColorBoxMenu;
}

std::span<const int> MainToolBarCommands()
{
    return c_aMainToolBar;
}

std::span<const ToolBoxButton> ToolBoxButtons()
{
    return c_aToolBox;
}

std::span<const int> ToolBoxGroup(int nResource)
{
    for (const ToolGroup& group : c_aGroups)
        if (group.nResource == nResource)
            return group.commands;
    return {};
}

} // namespace kestrune
