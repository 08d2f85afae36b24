// The move tool and the five transform tools, driven by their events.
#include "tools/ToolTable.h"
#include "tools/ToolTestKit.h"

#include "base/Arith.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;
using namespace kestrune::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class FloatToolTest : public testing::Test {
protected:
    FloatToolTest() { g_crBackground = Rgb(200, 100, 40); }
    ~FloatToolTest() override
    {
        g_nCurrentTool = TOOL_RECT_SELECT;
        g_nCurrentToolCommand = 1001;
    }
    COLORREF At(int x, int y) const { return view.m_image.m_Bitmap.GetPixelColor(x, y); }
    CRect FloatRect() const { return StateOf(view.m_image).rcFloat; }
    std::vector<CPoint> Corners() const
    {
        std::vector<CPoint> corners;
        for (const ToolOverlay::Line& line : view.m_overlay.aLines)
            corners.push_back(line.a);
        return corners;
    }
    /// The band shows just what the pending matrix does to the float, up to what cutting to pixels of the screen has cost.
    void ExpectBandAgrees(double fPixels)
    {
        const Quad whole = view.m_image.FloatCorners();
        for (int i = 0; i < 4; i++) {
            const PointF pt = view.m_image.m_Transform.Apply(whole[i]);
            EXPECT_NEAR(pt.x, view.m_image.m_Corner[i].x, fPixels) << i;
            EXPECT_NEAR(pt.y, view.m_image.m_Corner[i].y, fPixels) << i;
        }
    }

    CPictureView view{80, 60};
    CSayingSink sink;
};

} // namespace

TEST_F(FloatToolTest, ADragLiftsTheFloatOnceAndTheSelectionFollows)
{
    view.Select({10, 10, 30, 25});
    const PictureState before = StateOf(view.m_image);
    const LBitmapBase picture = view.m_image.m_Bitmap;
    view.Use(TOOL_MOVE);
    view.Drag({15, 15}, {35, 20});
    for (int y = 0; y < 60; y++)
        for (int x = 0; x < 80; x++) {
            const bool bFloat = CRect(30, 15, 50, 30).Contains(x, y);
            const COLORREF wanted = bFloat                                  ? picture.GetPixelColor(x - 20, y - 5)
                                    : CRect(10, 10, 30, 25).Contains(x, y) ? g_crBackground
                                                                           : picture.GetPixelColor(x, y);
            ASSERT_EQ(At(x, y), wanted) << x << ' ' << y;
            ASSERT_EQ(view.m_image.m_pMask[y * 80 + x], bFloat ? 255 : 0);
        }
    EXPECT_EQ(view.m_nOutlineStopped, 0);
    EXPECT_EQ(view.NewestKind(), 20u);
    const PictureState once = StateOf(view.m_image);

    // The second drag carries the same pixels; the hole stays one.
    view.Drag({40, 20}, {41, 45});
    EXPECT_EQ(At(31, 16), picture.GetPixelColor(31, 16));
    EXPECT_EQ(At(31, 40), picture.GetPixelColor(10, 10));
    const PictureState twice = StateOf(view.m_image);
    for (int i = 0; i < 2; i++) {
        UndoCommand(view.m_image);
        EXPECT_EQ(StateOf(view.m_image), once);
        UndoCommand(view.m_image);
        EXPECT_EQ(StateOf(view.m_image), before);
        RedoCommand(view.m_image);
        EXPECT_EQ(StateOf(view.m_image), once);
        RedoCommand(view.m_image);
        EXPECT_EQ(StateOf(view.m_image), twice);
    }
}

TEST_F(FloatToolTest, CopyModeAndOpacityAreTheBars)
{
    view.Select({10, 10, 30, 25}, true);
    const LBitmapBase picture = view.m_image.m_Bitmap;
    view.m_nMoveMode = 1;
    view.m_nOpacity = 50;
    view.Use(TOOL_MOVE);
    view.Drag({15, 15}, {45, 15});
    EXPECT_EQ(BytesOfBitmap(view.m_image.m_BaseBitmap), BytesOfBitmap(picture));
    for (int x = 10; x < 30; x++) {
        const int nAlpha = Mul255(255 * (x - 9) / 20, 127);
        for (int c = 0; c < 3; c++)
            ASSERT_EQ(view.m_image.m_Bitmap.Row(12)[(x + 30) * 3 + c], Lerp255(picture.Row(12)[(x + 30) * 3 + c], picture.Row(12)[x * 3 + c], nAlpha));
    }
    EXPECT_EQ(At(12, 12), picture.GetPixelColor(12, 12));
}

TEST_F(FloatToolTest, AFloatMovedOutsideKeepsItsPixels)
{
    view.Select({10, 10, 30, 25});
    const PictureState before = StateOf(view.m_image);
    view.Use(TOOL_MOVE);
    view.Drag({15, 15}, {0, 5});
    EXPECT_EQ(FloatRect(), (CRect{-5, 0, 15, 15}));
    EXPECT_EQ(view.m_image.m_rcFloat, (CRect{0, 0, 15, 15}));
    EXPECT_EQ(StateOf(view.m_image).floatPixels, before.floatPixels);
    for (int i = 0; i < 4; i++)
        view.Drag({70, 5}, {1, 5}); // until nothing of it is in sight
    EXPECT_TRUE(view.m_image.m_rcFloat.IsEmpty());
    EXPECT_TRUE(view.m_image.m_bMaskEmpty);
    EXPECT_EQ(BytesOfBitmap(view.m_image.m_Bitmap), BytesOfBitmap(view.m_image.m_BaseBitmap));
    for (int i = 0; i < 4; i++)
        view.Drag({1, 5}, {70, 5});
    view.Drag({5, 5}, {20, 15});
    EXPECT_EQ(FloatRect(), (CRect{10, 10, 30, 25}));
    EXPECT_EQ(StateOf(view.m_image), before);
}

TEST_F(FloatToolTest, StepsBackAndForthKeepTheBoundsInsideThePicture)
{
    view.Select({10, 10, 30, 25});
    view.Use(TOOL_MOVE);
    view.Drag({15, 15}, {0, 5});
    UndoCommand(view.m_image);
    RedoCommand(view.m_image);
    const CRect rcBounds{view.m_image.m_nMaskX1, view.m_image.m_nMaskY1, view.m_image.m_nMaskX2, view.m_image.m_nMaskY2};
    EXPECT_EQ(rcBounds, (CRect{0, 0, 15, 15})) << "they say which bytes of the mask may be read";
    EXPECT_EQ(view.m_image.m_rcFloat, rcBounds);
    EXPECT_EQ(FloatRect(), (CRect{-5, 0, 15, 15}));
}

TEST_F(FloatToolTest, ADragSurvivesAStepBackInBetween)
{
    view.Select({10, 10, 30, 25});
    const PictureState before = StateOf(view.m_image);
    view.Use(TOOL_MOVE);
    view.Press({15, 15});
    view.Move({40, 30});
    UndoCommand(view.m_image);
    EXPECT_EQ(StateOf(view.m_image), before);
    view.Move({41, 30});
    view.Release({41, 30});
    EXPECT_EQ(At(37, 26), Rgb((11 ^ 11) & 127, 11 * 3 + 11 * 7, 11 * 5 + 11)) << "the float over the picture again";
    EXPECT_EQ(At(12, 12), g_crBackground);
}

TEST_F(FloatToolTest, ArrowKeysMoveAndAreOneAct)
{
    view.Select({10, 10, 30, 25});
    const PictureState before = StateOf(view.m_image);
    view.Use(TOOL_MOVE);
    const std::size_t nRecords = view.m_image.m_UndoList.size();
    EXPECT_TRUE(view.Key(VK_RIGHT));
    EXPECT_TRUE(view.Key(VK_RIGHT));
    EXPECT_TRUE(view.Key(VK_DOWN, MK_SHIFT));
    EXPECT_EQ(FloatRect(), (CRect{12, 20, 32, 35}));
    EXPECT_EQ(view.m_image.m_nMaskX1, 12);
    EXPECT_EQ(view.m_image.m_UndoList.size(), nRecords + 1);
    UndoCommand(view.m_image);
    EXPECT_EQ(StateOf(view.m_image), before);
    EXPECT_TRUE(view.Key(VK_LEFT));
    EXPECT_EQ(view.m_image.m_UndoList.size(), nRecords + 1);
    EXPECT_FALSE(view.Key(VK_RETURN));
}

TEST_F(FloatToolTest, WithoutAPictureOrAFloatNothingHappens)
{
    for (const int nTool : {TOOL_MOVE, TOOL_CROP, TOOL_SCALE, TOOL_ROTATE, TOOL_SKEW_HORZ, TOOL_SKEW_VERT, TOOL_FREE_TRANSFORM}) {
        view.m_bHasImage = false;
        view.Use(nTool);
        view.Drag({3, 3}, {9, 9});
        view.DoubleClick({5, 5});
        EXPECT_FALSE(view.Key(VK_RETURN));
        EXPECT_FALSE(view.Key(VK_ESCAPE));
        view.m_bHasImage = true;
        if (nTool == TOOL_CROP)
            continue;
        EXPECT_THAT(sink.m_aMessages, IsEmpty());
        view.Drag({3, 3}, {9, 9});
        EXPECT_FALSE(view.Key(VK_RETURN));
        if (nTool != TOOL_MOVE) {
            EXPECT_THAT(sink.m_aMessages, ElementsAre("영역 선택 도구를 이용하여 적용할 이미지 영역을 \n먼저 선택하십시오."));
            EXPECT_FALSE(view.m_bCapture);
        }
        sink.m_aMessages.clear();
    }
    EXPECT_EQ(view.m_image.m_UndoList.size(), 1u);
}

TEST_F(FloatToolTest, ScalingKeepsTheOppositeCornerAndIsAppliedByADoubleClick)
{
    view.Select({10, 10, 30, 25});
    const PictureState before = StateOf(view.m_image);
    view.Use(TOOL_SCALE);
    const CPoint o = view.GetImageOrigin();
    const auto pt = [&](int x, int y) { return CPoint{x + o.x, y + o.y}; };
    EXPECT_THAT(Corners(), ElementsAre(pt(10, 10), pt(30, 10), pt(30, 25), pt(10, 25)));
    EXPECT_EQ(view.m_overlay.aHandles[2], (CRect{30 + o.x - 5, 25 + o.y - 5, 30 + o.x + 5, 25 + o.y + 5}));

    view.Drag({33, 27}, {53, 42}); // caught beside the corner, which moves as far as the mouse
    EXPECT_THAT(Corners(), ElementsAre(pt(10, 10), pt(50, 10), pt(50, 40), pt(10, 40)));
    EXPECT_EQ(StateOf(view.m_image), before) << "nothing is applied yet";
    view.DoubleClick({20, 20});
    EXPECT_EQ(FloatRect(), (CRect{10, 10, 50, 40}));
    EXPECT_EQ(view.NewestKind(), 34u);
    EXPECT_FALSE(view.m_image.m_bSelection);
    EXPECT_FALSE(view.m_image.m_bTransforming);
    EXPECT_EQ(At(20, 20), Rgb((15 ^ 15) & 127, 15 * 3 + 15 * 7, 15 * 5 + 15)) << "every second pixel is one of the float's";
    EXPECT_EQ(view.m_image.m_pMask[20 * 80 + 45], 255);
    EXPECT_EQ(view.m_image.m_nMaskX2, 50);
    const PictureState after = StateOf(view.m_image);
    UndoCommand(view.m_image);
    EXPECT_EQ(StateOf(view.m_image), before);
    RedoCommand(view.m_image);
    EXPECT_EQ(StateOf(view.m_image), after);
}

TEST_F(FloatToolTest, EachScaleHandleStopsAPixelShortOfTheOppositeSide)
{
    const CPoint o = view.GetImageOrigin();
    const CRect aWanted[] = {{29, 24, 30, 25}, {10, 24, 11, 25}, {10, 10, 11, 11}, {29, 10, 30, 11}};
    const CPoint aFrom[] = {{10, 10}, {30, 10}, {30, 25}, {10, 25}}, aTo[] = {{70, 50}, {0, 55}, {1, 2}, {75, 3}};
    for (int i = 0; i < 4; i++) {
        view.Select({10, 10, 30, 25});
        view.Use(TOOL_SCALE);
        view.Press(aFrom[i]);
        view.Move(aTo[i]);
        EXPECT_EQ(Corners()[0], (CPoint{aWanted[i].left + o.x, aWanted[i].top + o.y})) << i;
        EXPECT_EQ(Corners()[2], (CPoint{aWanted[i].right + o.x, aWanted[i].bottom + o.y})) << i;
        view.Move({aFrom[i].x + 2, aFrom[i].y + 1}); // and comes back with the mouse
        EXPECT_EQ(Corners()[i], (CPoint{aFrom[i].x + 2 + o.x, aFrom[i].y + 1 + o.y})) << i;
        view.Move(aTo[i]);
        view.Release(aTo[i]);
        EXPECT_TRUE(view.Key(VK_RETURN));
        EXPECT_EQ(FloatRect(), aWanted[i]);
    }
}

TEST_F(FloatToolTest, ADoubleClickWithoutADragLeavesTheFloatAsItIs)
{
    view.Select({10, 10, 30, 25}, true);
    const PictureState before = StateOf(view.m_image);
    const int aTools[] = {TOOL_SCALE, TOOL_ROTATE, TOOL_SKEW_HORZ, TOOL_SKEW_VERT, TOOL_FREE_TRANSFORM};
    for (int i = 0; i < 5; i++) {
        view.Use(aTools[i]);
        view.DoubleClick({50, 50});
        EXPECT_EQ(StateOf(view.m_image).floatPixels, before.floatPixels) << i;
        EXPECT_EQ(StateOf(view.m_image).floatMask, before.floatMask) << i;
        EXPECT_EQ(FloatRect(), before.rcFloat);
        EXPECT_EQ(view.NewestKind(), 34u + i);
    }
}

TEST_F(FloatToolTest, TurningFollowsTheMouseAroundTheMiddle)
{
    view.Select({10, 10, 30, 30});
    view.Use(TOOL_ROTATE);
    const CPoint o = view.GetImageOrigin();
    view.Press({30, 30});
    view.Move({20, 34}); // half of a quarter turn
    EXPECT_NEAR(Corners()[2].x, 20 + o.x, 1);
    EXPECT_NEAR(Corners()[2].y, 34 + o.y, 1);
    ExpectBandAgrees(1e-9);
    view.Release({20, 34});
    view.DoubleClick({20, 20});
    EXPECT_EQ(FloatRect().Width(), FloatRect().Height());
    EXPECT_NEAR(FloatRect().Width(), 28, 1);
    const PictureState state = StateOf(view.m_image);
    EXPECT_EQ(state.floatMask.front(), 0);
    EXPECT_EQ(state.floatMask[static_cast<std::size_t>(FloatRect().Width()) * 14 + 14], 255);
    EXPECT_EQ(view.NewestKind(), 35u);
}

TEST_F(FloatToolTest, TheSlantedEdgeFollowsTheMouseOnEveryHandle)
{
    const CPoint o = view.GetImageOrigin();
    const CPoint aCorners[] = {{20, 10}, {40, 10}, {40, 30}, {20, 30}};
    for (const bool bHorz : {true, false})
        for (int i = 0; i < 4; i++) {
            view.Select({20, 10, 40, 30});
            view.Use(bHorz ? TOOL_SKEW_HORZ : TOOL_SKEW_VERT);
            view.Press(aCorners[i]);
            view.Move({aCorners[i].x + 6, aCorners[i].y + 4});
            for (int k = 0; k < 4; k++) {
                const bool bSame = bHorz ? aCorners[k].y == aCorners[i].y : aCorners[k].x == aCorners[i].x;
                const int nStep = (bHorz ? 6 : 4) * (bSame ? 1 : -1);
                EXPECT_EQ(Corners()[k], (CPoint{aCorners[k].x + o.x + (bHorz ? nStep : 0), aCorners[k].y + o.y + (bHorz ? 0 : nStep)})) << i << k;
            }
            view.Release({aCorners[i].x + 6, aCorners[i].y + 4});
            EXPECT_TRUE(view.Key(VK_RETURN));
            EXPECT_EQ(FloatRect(), (bHorz ? CRect{14, 10, 46, 30} : CRect{20, 6, 40, 34}));
        }
}

TEST_F(FloatToolTest, FreeCornersMakeAPerspective)
{
    view.Select({10, 10, 30, 30});
    view.Use(TOOL_FREE_TRANSFORM);
    view.Drag({10, 10}, {14, 12});
    view.Drag({30, 10}, {27, 12});
    view.Drag({30, 30}, {44, 41});
    ExpectBandAgrees(1e-9);
    EXPECT_NE(view.m_image.m_Transform.a[2][0], 0);
    view.DoubleClick({60, 50});
    EXPECT_EQ(FloatRect(), (CRect{10, 12, 44, 41}));
    EXPECT_EQ(view.NewestKind(), 38u);
}

TEST_F(FloatToolTest, DragsOfSeveralToolsAddUpWhateverTheZoom)
{
    view.Select({20, 20, 40, 40});
    view.Use(TOOL_SCALE);
    view.Drag({40, 40}, {50, 35});
    ExpectBandAgrees(1e-9);
    view.m_fZoom = 2;
    view.m_scroll = {10, 5};
    view.Use(TOOL_ROTATE);
    EXPECT_EQ(Corners()[2], view.ImageToClient({50, 35})) << "what is pending is shown where it is now";
    view.Drag({50, 35}, {40, 45});
    ExpectBandAgrees(1);
    view.m_fZoom = 0.5f;
    view.m_scroll = {};
    view.Use(TOOL_SKEW_HORZ);
    view.Use(TOOL_MOVE);
    view.Drag({5, 5}, {9, 3}); // moves what is pending along
    EXPECT_EQ(FloatRect(), (CRect{24, 18, 44, 38}));
    ExpectBandAgrees(2);
    view.Use(TOOL_FREE_TRANSFORM);
    EXPECT_TRUE(view.m_image.m_bTransforming);
    EXPECT_TRUE(view.Key(VK_RETURN));
    EXPECT_FALSE(view.m_image.m_bTransforming);
    EXPECT_GT(FloatRect().Width(), 25);
}

TEST_F(FloatToolTest, EscapeAndANewSelectionDropWhatIsPending)
{
    view.Select({10, 10, 30, 30});
    const PictureState before = StateOf(view.m_image);
    view.Use(TOOL_ROTATE);
    EXPECT_FALSE(view.Key(VK_ESCAPE)) << "nothing to drop: the key is somebody else's";
    view.Press({30, 30});
    view.Move({35, 20});
    EXPECT_TRUE(view.Key(VK_ESCAPE));
    EXPECT_EQ(Corners()[2], (CPoint{30 + view.GetImageOrigin().x, 30 + view.GetImageOrigin().y}));
    view.Move({10, 10}); // the drag is over
    view.Release({10, 10});
    EXPECT_FALSE(view.m_image.m_bTransforming);
    EXPECT_EQ(StateOf(view.m_image), before);
    view.Drag({30, 30}, {35, 20});
    view.Select({40, 10, 50, 30});
    EXPECT_FALSE(view.m_image.m_bTransforming);
    EXPECT_EQ(view.m_image.m_UndoList.size(), 1u);
}

TEST_F(FloatToolTest, TransformsThatCollapseAreRefusedQuietly)
{
    view.Select({10, 10, 30, 30});
    const PictureState before = StateOf(view.m_image);
    view.Use(TOOL_FREE_TRANSFORM);
    view.Drag({10, 10}, {10, 30});
    view.Drag({30, 10}, {20, 30}); // a line
    view.DoubleClick({60, 50});
    EXPECT_THAT(sink.m_aMessages, IsEmpty());
    EXPECT_EQ(sink.m_aStatus.size(), 1u);
    EXPECT_EQ(StateOf(view.m_image), before);
    EXPECT_EQ(view.m_image.m_UndoList.size(), 1u);
    EXPECT_TRUE(view.Key(VK_ESCAPE));

    view.Select({10, 10, 30, 30});
    for (int i = 0; i < 30 && view.m_image.m_bTransforming == (i > 0); i++) { // crossed and thrown far out
        view.Drag({static_cast<int>(view.m_image.m_bTransforming ? view.m_image.m_Corner[i % 4].x : 10),
                   static_cast<int>(view.m_image.m_bTransforming ? view.m_image.m_Corner[i % 4].y : 10)},
                  {i * 7 % 80, i * 13 % 60});
    }
    view.Key(VK_RETURN); // whatever comes of it, there is no fault
    EXPECT_EQ(view.m_image.m_nWidth, 80);
}

TEST_F(FloatToolTest, HandlesOfASmallFloatAreCaughtFarOut)
{
    view.m_fZoom = 0.125f;
    view.Select({16, 16, 48, 48}); // four pixels of the screen wide
    const CPoint o = view.GetImageOrigin();
    view.Use(TOOL_FREE_TRANSFORM);
    const CPoint aClient[] = {{2, 2}, {6, 2}, {6, 6}, {2, 6}};
    for (int i = 0; i < 4; i++) {
        const CPoint pt{o.x + aClient[i].x, o.y + aClient[i].y};
        view.Tool().OnLButtonDown(view, MK_LBUTTON, pt);
        view.Tool().OnMouseMove(view, MK_LBUTTON, {pt.x + 1, pt.y});
        EXPECT_EQ(view.m_image.m_Corner[i].x, (aClient[i].x + 1) * 8) << i;
        view.Key(VK_ESCAPE);
    }
}
