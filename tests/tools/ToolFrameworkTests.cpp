#include "doc/PaintImage.h"
#include "tools/ToolCommands.h"
#include "tools/ToolRegistry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace kestrune;
using testing::ElementsAre;

namespace {

/// A view of fixed geometry that notes what a tool asked of it.
class CFakeView : public CToolView {
public:
    CPaintImage* GetImage() const override { return nullptr; }
    float GetZoom() const override { return m_fZoom; }
    CPoint GetImageOrigin() const override { return m_origin; }
    CPoint ClientToImage(CPoint pt) const override { return pt; }
    CPoint ImageToClient(CPoint pt) const override { return pt; }
    CSize GetClientSize() const override { return {200, 100}; }
    CPoint GetScrollPosition() const override { return m_scroll; }
    void ScrollToPosition(CPoint pt) override { m_scroll = pt; }
    bool HasHScroll() const override { return m_bHScroll; }
    bool HasVScroll() const override { return true; }
    void ZoomAt(bool bIn, CPoint pt) override { Note((bIn ? "in " : "out ") + std::to_string(pt.x)); }
    void SetCapture() override { m_bCapture = true; }
    void ReleaseCapture() override { m_bCapture = false; }
    bool HasCapture() const override { return m_bCapture; }
    void SetToolCursor(int nCursor) override { Note("cursor " + std::to_string(nCursor)); }
    void SetOverlay(ToolOverlay) override {}
    void StartTimer(int, int) override {}
    void KillTimer(int) override {}
    void RepaintRect(const CRect&) override {}
    void RepaintAll() override { Note("repaint"); }
    void StopOutline() override { Note("stop"); }
    void StartOutline() override { Note("start"); }

    void Note(std::string str) { m_aNotes.push_back(std::move(str)); }

    float m_fZoom = 1;
    CPoint m_origin;
    CPoint m_scroll;
    bool m_bHScroll = true;
    bool m_bCapture = false;
    std::vector<std::string> m_aNotes;
};

/// Tells of entering and leaving; lives for one test, so it stands in the registry behind the real ones.
class CSpyTool : public CPaintTool {
public:
    CSpyTool(int nId, std::vector<std::string>& aNotes)
        : CPaintTool(nId)
        , m_aNotes(aNotes)
    {
    }
    void OnActivate() override { m_aNotes.push_back("enter " + std::to_string(m_nToolId) + State()); }
    void OnDeactivate() override { m_aNotes.push_back("leave " + std::to_string(m_nToolId) + State()); }
    static CPoint Clamp(const CToolView& view, CPoint pt, const CPaintImage& image) { return ClampToImage(view, pt, image); }

private:
    static std::string State() { return " at " + std::to_string(g_nCurrentTool); }
    std::vector<std::string>& m_aNotes;
};

class ToolTest : public testing::Test {
protected:
    ~ToolTest() override
    {
        g_nCurrentTool = TOOL_RECT_SELECT;
        g_nCurrentToolCommand = 1001;
    }
};

} // namespace

TEST_F(ToolTest, RegistryHoldsEveryToolInItsOrder)
{
    std::vector<int> aIds;
    for (const CPaintTool* pTool : ToolRegistry())
        aIds.push_back(pTool->GetId());
    EXPECT_THAT(aIds, ElementsAre(0x10, 0x20, 0x40, 0x30, 0x50, 0x60, 0x70, 0x80, 0x90, 0x100, 0x110, 0x120, 0x260, 0x270, 0x280,
                                  0x140, 0x150, 0x160, 0x170, 0x180, 0x190, 0x200, 0x210, 0x220, 0x230, 0x240, 0x250, 0x400, 0x500,
                                  0x600, 0x700));
    std::vector<int> aTable;
    for (const ToolRow& row : ToolTable())
        aTable.push_back(row.nId);
    EXPECT_EQ(aTable, aIds);
    EXPECT_EQ(FindTool(0x130), nullptr);
    EXPECT_EQ(g_nCurrentTool, 0x10);
    EXPECT_EQ(g_nCurrentToolCommand, 1001);
}

TEST_F(ToolTest, ChoosingLeavesStoresAndEntersInThisOrder)
{
    std::vector<std::string> aNotes;
    CSpyTool old(0x9001, aNotes), next(0x9002, aNotes);
    g_nCurrentTool = 0x9001;
    SwitchTool(0x9002, 77);
    EXPECT_THAT(aNotes, ElementsAre("leave 36865 at 36865", "enter 36866 at 36866"));
    EXPECT_EQ(g_nCurrentToolCommand, 77);
}

TEST_F(ToolTest, CommandsKeepTheirIrregularities)
{
    CPaintImage* pImage = nullptr;
    struct : CCommandTarget {
    } target;
    std::vector<std::pair<ToolBar, SideBox>> aBars;
    int nToolAtBars = 0;
    RegisterToolCommands(
        target, [&] { return pImage; },
        [&](const ToolRow& row, int) {
            aBars.emplace_back(row.bar, row.sideBox);
            nToolAtBars = g_nCurrentTool;
        });
    const auto choose = [&](int nCommand) {
        EXPECT_TRUE(target.RunCommand(nCommand)) << nCommand;
        return std::pair(g_nCurrentTool, g_nCurrentToolCommand);
    };
    EXPECT_EQ(choose(1124), std::pair(0x30, 1124));
    EXPECT_EQ(choose(1122), std::pair(0x20, 1001)); // shares the rectangle's button
    EXPECT_EQ(nToolAtBars, 0x30);                   // the bar changes before the old tool is left
    EXPECT_EQ(choose(337), std::pair(0x600, 337));
    EXPECT_EQ(choose(30053), std::pair(0x230, 1020));
    EXPECT_EQ(choose(1070), std::pair(0x280, 1070));
    EXPECT_EQ(g_nEffectKind, 25);
    aBars.clear();
    choose(1015);
    choose(1016);
    EXPECT_THAT(aBars, ElementsAre(std::pair(ToolBar::Dodge, SideBox::Brushes), std::pair(ToolBar::Dodge, SideBox::Keep)));

    CommandState state;
    EXPECT_TRUE(target.UpdateCommand(1016, state));
    EXPECT_TRUE(state.bEnabled && state.bChecked);
    EXPECT_TRUE(target.UpdateCommand(30051, state));
    EXPECT_FALSE(state.bEnabled || state.bChecked); // no picture, no float
    EXPECT_FALSE(target.Handles(0));
}

TEST_F(ToolTest, BaseToolCapturesOnlyWhileTheButtonIsHeld)
{
    CFakeView view;
    CPaintTool tool(0x9003), *pTool = &tool;
    pTool->OnLButtonDown(view, MK_LBUTTON, {5, 5});
    EXPECT_TRUE(view.m_bCapture);
    pTool->OnLButtonUp(view, 0, {5, 5});
    EXPECT_FALSE(view.m_bCapture);
    EXPECT_FALSE(pTool->OnSetCursor(view, {5, 5}));
}

TEST_F(ToolTest, HandDragsTheScrollPositionOfTheAxesThatScroll)
{
    CFakeView view;
    CPaintTool* pHand = FindTool(TOOL_HAND);
    view.m_scroll = {50, 60};
    pHand->OnMouseMove(view, MK_LBUTTON, {1, 1});
    EXPECT_EQ(view.m_scroll, (CPoint{50, 60})); // not captured
    pHand->OnLButtonDown(view, MK_LBUTTON, {100, 80});
    pHand->OnMouseMove(view, MK_LBUTTON, {90, 85});
    EXPECT_EQ(view.m_scroll, (CPoint{60, 55}));
    view.m_bHScroll = false;
    pHand->OnMouseMove(view, MK_LBUTTON, {80, 80});
    EXPECT_EQ(view.m_scroll, (CPoint{60, 60}));
    pHand->OnLButtonUp(view, 0, {80, 80});
    EXPECT_FALSE(view.m_bCapture);
    EXPECT_THAT(view.m_aNotes, ElementsAre("cursor 334", "stop", "start", "repaint"));
    EXPECT_TRUE(pHand->OnSetCursor(view, {199, 99}));
    EXPECT_FALSE(pHand->OnSetCursor(view, {200, 99}));
}

TEST_F(ToolTest, MagnifierStepsAtThePoint)
{
    CFakeView view;
    FindTool(TOOL_ZOOM)->OnLButtonDown(view, MK_LBUTTON, {7, 8});
    FindTool(TOOL_ZOOM)->OnRButtonDown(view, MK_RBUTTON, {9, 8});
    EXPECT_THAT(view.m_aNotes, ElementsAre("in 7", "out 9"));
    EXPECT_FALSE(view.m_bCapture);
}
