// What the selection tools show and hold while they are used; what they select is in the scripts' tests.
#include "tools/ToolTable.h"
#include "tools/ToolTestKit.h"

#include "tools/ToolOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace kestrune;
using namespace kestrune::test;

namespace {

constexpr int c_aTools[] = {TOOL_RECT_SELECT, TOOL_ELLIPSE_SELECT, TOOL_POLYGON_SELECT, TOOL_FREE_SELECT, TOOL_MAGIC_WAND};

class SelectToolTest : public testing::Test {
protected:
    SelectToolTest() { SetToolOption(ToolOption::FloaterFeather, 1); }
    ~SelectToolTest() override
    {
        SetToolOption(ToolOption::FloaterFeather, 2);
        SetToolOption(ToolOption::FloaterMode, 1);
        g_nCurrentTool = TOOL_RECT_SELECT;
        g_nCurrentToolCommand = 1001;
    }
    int CursorAt(CPoint pt)
    {
        view.m_nCursor = 0;
        CPictureView::Tool().OnSetCursor(view, view.ImageToClient(pt));
        return view.m_nCursor;
    }

    CPictureView view{80, 60};
    CSayingSink sink;
};

} // namespace

TEST_F(SelectToolTest, CursorsTellWhatAPressWillDo)
{
    view.Select({20, 20, 40, 40});
    for (const int nTool : c_aTools) {
        view.Use(nTool);
        EXPECT_EQ(CursorAt({5, 5}), FindToolRow(nTool)->nCursor);
        EXPECT_EQ(CursorAt({30, 30}), 15024);
        EXPECT_EQ(CursorAt({40, 30}), FindToolRow(nTool)->nCursor) << "just beside it";
        EXPECT_EQ(CursorAt({-3, 900}), FindToolRow(nTool)->nCursor);
        view.Key(VK_SHIFT);
        EXPECT_EQ(CursorAt({30, 30}), FindToolRow(nTool)->nCursor) << "to add, not to move";
        CPictureView::Tool().OnKeyUp(VK_SHIFT, 1, 0);
        EXPECT_EQ(CursorAt({30, 30}), 15024);
    }
}

TEST_F(SelectToolTest, WithoutAPictureTheyAreInert)
{
    view.m_bHasImage = false;
    for (const int nTool : c_aTools) {
        view.Use(nTool);
        view.Drag({10, 10}, {30, 30});
        view.DoubleClick({10, 10});
        view.Key(VK_ESCAPE);
        view.Key(VK_RETURN);
        EXPECT_FALSE(view.m_bCapture);
        EXPECT_EQ(CursorAt({5, 5}), 0);
    }
    EXPECT_FALSE(view.m_image.m_bSelection);
    EXPECT_EQ(view.m_image.m_UndoList.size(), 1u);
}

TEST_F(SelectToolTest, BandsFollowTheDragAndGoWithIt)
{
    for (const int nTool : {TOOL_RECT_SELECT, TOOL_ELLIPSE_SELECT, TOOL_FREE_SELECT}) {
        view.Use(nTool);
        view.Press({50, 40});
        view.Move({20, 10});
        view.Move({30, 25});
        const auto nShown = view.m_overlay.aLines.size() + view.m_overlay.aEllipses.size();
        EXPECT_GT(nShown, 0u);
        for (const auto& line : view.m_overlay.aLines)
            for (const CPoint pt : {line.a, line.b})
                EXPECT_TRUE((CRect{20, 10, 51, 41}).Contains(view.ClientToImage(pt).x, view.ClientToImage(pt).y));
        view.Release({30, 25});
        EXPECT_TRUE(view.m_overlay.aLines.empty() && view.m_overlay.aEllipses.empty());
        EXPECT_FALSE(view.m_bCapture);
        view.m_image.m_bSelection = false;
        std::fill_n(view.m_image.m_pMask.get(), 80 * 60, std::uint8_t{0});
        view.m_image.InvalidateMaskBounds();
    }
}

/// The picture under the drag may go: what was begun on it then comes to nothing.
TEST_F(SelectToolTest, ADragThatLosesItsPictureEndsQuietly)
{
    for (const int nTool : c_aTools) {
        view.Use(nTool);
        view.m_bHasImage = true;
        view.Press({10, 10});
        view.Move({30, 30});
        view.m_bHasImage = false;
        view.Move({35, 35});
        view.Release({40, 40});
        view.Key(VK_ESCAPE);
        EXPECT_FALSE(view.m_image.m_bSelection);
    }
    EXPECT_EQ(view.m_image.m_UndoList.size(), 1u);
}

TEST_F(SelectToolTest, KeysHoldTheirModeAndGiveTheBarsBack)
{
    view.Use(TOOL_RECT_SELECT);
    for (const auto& [nKey, nMode] : {std::pair{VK_SHIFT, 2}, {VK_CONTROL, 3}}) {
        EXPECT_TRUE(view.Key(nKey));
        EXPECT_EQ(GetToolOption(ToolOption::FloaterMode), nMode);
        EXPECT_TRUE(CPictureView::Tool().OnKeyUp(nKey, 1, 0));
        EXPECT_EQ(GetToolOption(ToolOption::FloaterMode), 1);
    }
    EXPECT_FALSE(view.Key('A'));
    EXPECT_FALSE(view.Key(VK_ESCAPE)) << "no drag to drop: the key goes on";
}
