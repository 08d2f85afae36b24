#include "base/Messages.h"
#include "doc/PaintImage.h"
#include "resources/PaintSources.h"
#include "tools/StampTool.h"
#include "tools/ToolOptions.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "undo/UndoStack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace kestrune;

namespace {

/// A view at a zoom over a picture, which counts the picture's repaints.
class CCanvasView : public CToolView, public CImageSite {
public:
    explicit CCanvasView(CPaintImage* pImage) : m_pImage(pImage) {}
    CPaintImage* GetImage() const override { return m_pImage; }
    float GetZoom() const override { return m_fZoom; }
    CPoint GetImageOrigin() const override { return m_origin; }
    CPoint ClientToImage(CPoint pt) const override
    {
        return {static_cast<int>((pt.x - m_origin.x) / m_fZoom), static_cast<int>((pt.y - m_origin.y) / m_fZoom)};
    }
    CPoint ImageToClient(CPoint pt) const override
    {
        return {static_cast<int>(pt.x * m_fZoom) + m_origin.x, static_cast<int>(pt.y * m_fZoom) + m_origin.y};
    }
    CSize GetClientSize() const override { return {400, 400}; }
    CPoint GetScrollPosition() const override { return {}; }
    void ScrollToPosition(CPoint) override {}
    bool HasHScroll() const override { return false; }
    bool HasVScroll() const override { return false; }
    void ZoomAt(bool, CPoint) override {}
    void SetCapture() override { m_bCapture = true; }
    void ReleaseCapture() override { m_bCapture = false; }
    bool HasCapture() const override { return m_bCapture; }
    void SetToolCursor(int nCursor) override { m_nCursor = nCursor; }
    void SetOverlay(ToolOverlay overlay) override { m_overlay = std::move(overlay); }
    void StartTimer(int nTimer, int nMilliseconds) override { m_aTimers[nTimer] = nMilliseconds; }
    void KillTimer(int nTimer) override { m_aTimers.erase(nTimer); }
    void RepaintRect(const CRect& rc) override { m_rcPainted = Unite(m_rcPainted, rc); }
    void RepaintAll() override {}
    void StopOutline() override {}
    void StartOutline() override {}

    CPaintImage* m_pImage;
    float m_fZoom = 1;
    CPoint m_origin;
    bool m_bCapture = false;
    int m_nCursor = 0;
    ToolOverlay m_overlay;
    std::map<int, int> m_aTimers;
    CRect m_rcPainted;
};

class CTextSink : public CMessageSink {
public:
    CTextSink() { SetMessageSink(this); }
    ~CTextSink() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_strText += strText;
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    std::string m_strText;
};

class PaintingToolsTest : public testing::Test {
protected:
    PaintingToolsTest()
    {
        m_image.Create(100, 80, FILL_WHITE, COLOR_RGB);
        RecordFirstState(m_image, 2);
        m_image.SetSite(&m_view);
        m_image.Activate();
        SquareBrush(7);
        g_crForeground = Rgb(200, 10, 20);
        g_crBackground = Rgb(1, 2, 3);
        SetToolOption(ToolOption::BrushFade, 0);
    }
    ~PaintingToolsTest() override
    {
        g_activeBrush = {};
        g_crForeground = 0;
        g_crBackground = 0xFFFFFF;
        for (const ToolOptionRow& row : ToolOptionTable())
            SetToolOption(row.option, row.nDefault);
        CPaintImage::Deactivate();
    }

    static void SquareBrush(int n)
    {
        g_activeBrush = {std::vector<std::uint8_t>(n * n, 255), n, n, {n / 2.0, 0}, {0, n / 2.0}, 20};
    }
    void Press(int nTool, CPoint pt, unsigned nFlags = MK_LBUTTON) { FindTool(nTool)->OnLButtonDown(m_view, nFlags, pt); }
    void Move(int nTool, CPoint pt, unsigned nFlags = MK_LBUTTON) { FindTool(nTool)->OnMouseMove(m_view, nFlags, pt); }
    void Release(int nTool, CPoint pt) { FindTool(nTool)->OnLButtonUp(m_view, 0, pt); }
    void Click(int nTool, CPoint pt, unsigned nFlags = MK_LBUTTON)
    {
        Press(nTool, pt, nFlags);
        Release(nTool, pt);
    }
    COLORREF At(int x, int y) const { return m_image.m_Bitmap.GetPixelColor(x, y); }
    int Records() const { return static_cast<int>(m_image.m_UndoList.size()); }
    /// Pixels that are not as in the new picture.
    int Painted() const
    {
        int n = 0;
        for (int y = 0; y < m_image.m_nHeight; y++)
            for (int x = 0; x < m_image.m_nWidth; x++)
                n += At(x, y) != 0xFFFFFF;
        return n;
    }

    CPaintImage m_image;
    CCanvasView m_view{&m_image};
};

constexpr int c_aTools[] = {TOOL_PENCIL, TOOL_BRUSH, TOOL_ERASER, TOOL_AIR_BRUSH, TOOL_STAMP,
                            TOOL_BLUR,   TOOL_SHARPEN, TOOL_DODGE, TOOL_BURN,      TOOL_SMUDGE};

} // namespace

TEST_F(PaintingToolsTest, AStrokePaintsRecordsOnceCommitsAndIsUndone)
{
    Press(TOOL_BRUSH, {20, 20});
    EXPECT_TRUE(m_view.HasCapture());
    EXPECT_EQ(At(20, 20), g_crForeground);
    EXPECT_EQ(m_image.m_BaseBitmap.GetPixelColor(20, 20), 0xFFFFFFu) << "the committed picture follows at the release";
    Move(TOOL_BRUSH, {60, 20});
    Move(TOOL_BRUSH, {60, 50}, 0); // without the button: a move like any other
    EXPECT_EQ(At(60, 20), g_crForeground);
    EXPECT_EQ(At(60, 40), 0xFFFFFFu);
    Release(TOOL_BRUSH, {60, 20});
    EXPECT_FALSE(m_view.HasCapture());
    EXPECT_EQ(m_image.m_BaseBitmap.GetPixelColor(40, 20), g_crForeground);
    ASSERT_EQ(Records(), 2);
    EXPECT_EQ(m_image.m_UndoList.front()->nKind, 22u);
    UndoCommand(m_image);
    EXPECT_EQ(Painted(), 0);
    RedoCommand(m_image);
    EXPECT_EQ(At(40, 20), g_crForeground);
}

TEST_F(PaintingToolsTest, EachToolRecordsItsKindAndShowsItsCursor)
{
    Click(TOOL_STAMP, {5, 5}, MK_LBUTTON | MK_CONTROL);
    for (int nTool : c_aTools) {
        const ToolRow& row = *FindToolRow(nTool);
        const int nBefore = Records();
        Click(nTool, {30, 30});
        EXPECT_EQ(Records(), nBefore + 1) << row.strClass;
        EXPECT_EQ(static_cast<int>(m_image.m_UndoList.front()->nKind), row.nUndoKind) << row.strClass;
        EXPECT_TRUE(FindTool(nTool)->OnSetCursor(m_view, {30, 30}));
        EXPECT_EQ(m_view.m_nCursor, row.nCursor) << row.strClass;
    }
}

TEST_F(PaintingToolsTest, WithoutPictureOrBrushNothingHappens)
{
    g_activeBrush = {};
    for (int nTool : c_aTools) {
        Press(nTool, {30, 30});
        Move(nTool, {50, 50});
        FindTool(nTool)->OnTimer(m_view, 1);
        Release(nTool, {50, 50});
    }
    EXPECT_EQ(Painted(), 0);
    SquareBrush(5);
    m_view.m_pImage = nullptr;
    const int nRecords = Records();
    for (int nTool : c_aTools) {
        Press(nTool, {30, 30});
        Move(nTool, {50, 50});
        FindTool(nTool)->OnTimer(m_view, 1);
        FindTool(nTool)->OnSetCursor(m_view, {30, 30});
        Release(nTool, {50, 50});
    }
    EXPECT_EQ(Painted(), 0);
    EXPECT_EQ(Records(), nRecords);
}

TEST_F(PaintingToolsTest, PointsOutsideBeginAndEndOnTheBorder)
{
    m_view.m_origin = {50, 60};
    Press(TOOL_PENCIL, {0, 0});
    EXPECT_EQ(At(0, 0), g_crForeground);
    Move(TOOL_PENCIL, {399, 399}); // one past the last pixel on both axes
    EXPECT_EQ(At(99, 79), g_crForeground);
    Release(TOOL_PENCIL, {399, 399});
    EXPECT_EQ(At(50, 40), g_crForeground);
}

TEST_F(PaintingToolsTest, TheZoomDividesThePath)
{
    m_view.m_fZoom = 4;
    Press(TOOL_PENCIL, {80, 80});
    Release(TOOL_PENCIL, {80, 80});
    EXPECT_EQ(At(20, 20), g_crForeground);
    EXPECT_LE(Painted(), 8 * 8);
    EXPECT_GE(Painted(), 6 * 6);
    EXPECT_TRUE(m_view.m_rcPainted.Contains(20, 20));
    EXPECT_LE(m_view.m_rcPainted.Width(), 9) << "the screen is told of the dab and of no more";
}

TEST_F(PaintingToolsTest, CappedPaintStopsAtItsOpacityStackedPaintGoesOn)
{
    SetToolOption(ToolOption::PencilOpacity, 50);
    SetToolOption(ToolOption::AirOpacity, 50);
    SetToolOption(ToolOption::AirPressure, 100);
    for (int nTool : {TOOL_PENCIL, TOOL_AIR_BRUSH}) {
        Press(nTool, {30, 30});
        const COLORREF crOnce = At(30, 30);
        for (int i = 0; i < 20; i++)
            Move(nTool, {30 + i % 2 * 3, 30});
        Release(nTool, {30, 30});
        if (nTool == TOOL_PENCIL)
            EXPECT_EQ(At(30, 30), crOnce);
        else
            EXPECT_NE(At(30, 30), crOnce);
        UndoCommand(m_image);
    }
}

TEST_F(PaintingToolsTest, TheAirBrushFlowsWhileTheMouseRestsButNotOnAFloat)
{
    SetToolOption(ToolOption::AirPressure, 20);
    Press(TOOL_AIR_BRUSH, {30, 30});
    EXPECT_EQ(m_view.m_aTimers, (std::map<int, int>{{1, 200}}));
    const COLORREF crFirst = At(30, 30);
    FindTool(TOOL_AIR_BRUSH)->OnTimer(m_view, 1);
    const COLORREF crSecond = At(30, 30);
    EXPECT_NE(crSecond, crFirst);
    FindTool(TOOL_AIR_BRUSH)->OnTimer(m_view, 7); // another's
    EXPECT_EQ(At(30, 30), crSecond);
    Release(TOOL_AIR_BRUSH, {30, 30});
    EXPECT_TRUE(m_view.m_aTimers.empty());
    FindTool(TOOL_AIR_BRUSH)->OnTimer(m_view, 1);
    EXPECT_EQ(At(30, 30), crSecond);

    m_image.m_pMask = std::make_unique<std::uint8_t[]>(100 * 80);
    m_image.CaptureFloat(10, 10, 20, 20);
    m_image.m_rcFloat = {10, 10, 30, 30};
    m_image.m_nFloatX = m_image.m_nFloatY = 10;
    Press(TOOL_AIR_BRUSH, {20, 20});
    EXPECT_TRUE(m_view.m_aTimers.empty());
    Release(TOOL_AIR_BRUSH, {20, 20});
}

TEST_F(PaintingToolsTest, TheStampAsksForASourceAndBeginsThereWithEveryStroke)
{
    CTextSink sink;
    CStampTool fresh(TOOL_STAMP); // the program's own one may have a source from another test
    const int nBefore = Records();
    fresh.OnLButtonDown(m_view, MK_LBUTTON, {50, 50});
    EXPECT_THAT(sink.m_strText, testing::StartsWith("복사될 이미지 영역을"));
    EXPECT_FALSE(m_view.HasCapture()) << "the message has the mouse";
    fresh.OnMouseMove(m_view, MK_LBUTTON, {60, 50});
    fresh.OnLButtonUp(m_view, 0, {60, 50});
    EXPECT_EQ(Records(), nBefore);
    EXPECT_TRUE(m_view.m_overlay.aLines.empty()) << "no marker without a source";
    sink.m_strText.clear();
    Click(TOOL_PENCIL, {20, 20});
    const int nRecords = Records();
    Click(TOOL_STAMP, {20, 20}, MK_LBUTTON | MK_CONTROL);
    EXPECT_EQ(Records(), nRecords) << "setting the source changes nothing";
    EXPECT_EQ(m_view.m_overlay.aLines.size(), 2u) << "the marker";
    for (int y : {40, 60}) {
        Press(TOOL_STAMP, {50, y});
        EXPECT_EQ(At(50, y), g_crForeground) << "each stroke copies from the source again";
        Move(TOOL_STAMP, {60, y});
        EXPECT_EQ(At(60, y), 0xFFFFFFu) << "and moves along with it";
        Release(TOOL_STAMP, {60, y});
    }
    EXPECT_EQ(sink.m_strText, "");
    Click(TOOL_STAMP, {80, 70}, MK_LBUTTON | MK_CONTROL | MK_SHIFT); // other flags paint
    EXPECT_EQ(At(80, 70), g_crForeground);
}

TEST_F(PaintingToolsTest, TheEraserOnAFloatTakesItsAlphaAndWithoutOneNothing)
{
    SetToolOption(ToolOption::EraserHard, 1);
    Click(TOOL_ERASER, {30, 30});
    EXPECT_EQ(Painted(), 0);
    m_image.m_pMask = std::make_unique<std::uint8_t[]>(100 * 80);
    std::fill_n(m_image.m_pMask.get(), 100 * 80, std::uint8_t{255});
    m_image.InvalidateMaskBounds();
    m_image.CaptureFloat(10, 10, 40, 40);
    m_image.m_rcFloat = {10, 10, 50, 50};
    m_image.m_nFloatX = m_image.m_nFloatY = 10;
    Click(TOOL_ERASER, {30, 30});
    EXPECT_EQ(m_image.m_pFloatMask[20 * 40 + 20], 0);
    EXPECT_EQ(m_image.m_pFloatMask[0], 255);
}

TEST_F(PaintingToolsTest, FadeLetsTheStrokeDieOut)
{
    SetToolOption(ToolOption::BrushFade, 1);
    SetToolOption(ToolOption::BrushPressure, 4); // 40 pixels
    Press(TOOL_BRUSH, {10, 40});
    Move(TOOL_BRUSH, {95, 40});
    Release(TOOL_BRUSH, {95, 40});
    EXPECT_EQ(At(10, 40), g_crForeground);
    EXPECT_NE(At(30, 40), 0xFFFFFFu);
    EXPECT_EQ(At(80, 40), 0xFFFFFFu);
    SetToolOption(ToolOption::BrushPressure, 0);
    const int nPainted = Painted();
    Click(TOOL_BRUSH, {50, 70});
    EXPECT_EQ(Painted(), nPainted);
}

TEST_F(PaintingToolsTest, TheOutlineOfATinyPencilLiesOnThePixelThatItPaints)
{
    g_activeBrush = {{255, 0, 0, 0}, 2, 2, {0.5, 0}, {0, 0.5}, 20}; // one pixel, as the brush box prepares it
    m_view.m_fZoom = 8;
    for (const CPoint pt : {CPoint{20, 30}, CPoint{1, 1}}) {
        const CPoint client = m_view.ImageToClient(pt);
        FindTool(TOOL_PENCIL)->OnSetCursor(m_view, {client.x + 5, client.y + 5});
        Click(TOOL_PENCIL, {client.x + 5, client.y + 5});
        ASSERT_EQ(Painted(), 1);
        CPoint painted;
        for (int i = 0; i < 100 * 80; i++)
            if (At(i % 100, i / 100) != 0xFFFFFF)
                painted = {i % 100, i / 100};
        EXPECT_EQ(m_view.m_overlay.ptShape, m_view.ImageToClient(painted)) << pt.x;
        EXPECT_EQ(m_view.m_overlay.pShape->rc, (CRect{0, 0, 9, 9}));
        UndoCommand(m_image);
    }
}

TEST_F(PaintingToolsTest, TheOutlineFollowsThePointerAndGoesWhenItLeaves)
{
    m_view.m_fZoom = 2;
    FindTool(TOOL_BRUSH)->OnSetCursor(m_view, {40, 40});
    ASSERT_TRUE(m_view.m_overlay.pShape);
    EXPECT_EQ(m_view.m_overlay.pShape->aLines.size(), 4u) << "a square has four edges";
    EXPECT_EQ(m_view.m_overlay.pShape->rc, (CRect{0, 0, 15, 15}));
    EXPECT_EQ(m_view.m_overlay.ptShape, (CPoint{35, 35})) << "two and a half pixels left of pixel 20, as the dab";
    const auto* pShape = m_view.m_overlay.pShape.get();
    FindTool(TOOL_BRUSH)->OnSetCursor(m_view, {60, 40});
    EXPECT_EQ(m_view.m_overlay.pShape.get(), pShape) << "traced once";
    SquareBrush(3);
    FindTool(TOOL_BRUSH)->OnSetCursor(m_view, {60, 40});
    EXPECT_EQ(m_view.m_overlay.pShape->rc.right, 7) << "another brush has another outline";
    CCanvasView other(&m_image);
    FindTool(TOOL_BRUSH)->OnDrawOverlay(other);
    EXPECT_TRUE(other.m_overlay.IsEmpty()) << "the pointer is not there";
    FindTool(TOOL_BRUSH)->OnDrawOverlay(m_view);
    EXPECT_EQ(m_view.m_overlay.pShape->rc.right, 7);
    FindTool(TOOL_BRUSH)->OnMouseLeave(m_view);
    EXPECT_TRUE(m_view.m_overlay.IsEmpty());
}
