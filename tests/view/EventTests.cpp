#include "ViewTestKit.h"

#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"

#include <QDialog>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QUrl>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace kestrune;
using namespace kestrune::test;
using testing::ElementsAre;

namespace {

constexpr int c_nSpy = 0x9000;

/// Notes what reaches it; made the current tool for one test.
class CSpyTool : public CPaintTool {
public:
    CSpyTool()
        : CPaintTool(c_nSpy)
    {
    }
    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override
    {
        CPaintTool::OnLButtonDown(view, nFlags, pt);
        Note("down", nFlags, pt);
    }
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override
    {
        CPaintTool::OnLButtonUp(view, nFlags, pt);
        Note("up", nFlags, pt);
    }
    void OnLButtonDblClk(CToolView&, unsigned nFlags, CPoint pt) override { Note("double", nFlags, pt); }
    void OnMouseMove(CToolView&, unsigned nFlags, CPoint pt) override { Note("move", nFlags, pt); }
    void OnRButtonDown(CToolView&, unsigned nFlags, CPoint pt) override { Note("rdown", nFlags, pt); }
    void OnRButtonUp(CToolView&, unsigned nFlags, CPoint pt) override { Note("rup", nFlags, pt); }
    bool OnKeyDown(int nKey, int, unsigned) override
    {
        m_aNotes.push_back("key " + std::to_string(nKey));
        return m_bTakesKeys;
    }
    bool OnKeyUp(int nKey, int, unsigned) override
    {
        m_aNotes.push_back("keyup " + std::to_string(nKey));
        return false;
    }
    bool OnSetCursor(CToolView& view, CPoint) override
    {
        m_nCursorAsks++;
        view.SetToolCursor(153);
        return true;
    }
    void OnTimer(CToolView& view, int nTimer) override
    {
        m_aNotes.push_back("timer " + std::to_string(nTimer));
        view.KillTimer(nTimer);
    }
    bool WantsEveryMove() const override { return m_bWantsEveryMove; }
    void OnActivate() override { m_aNotes.push_back("enter"); }
    void OnDeactivate() override { m_aNotes.push_back("leave"); }

    std::vector<std::string> Taken() { return std::exchange(m_aNotes, {}); }

    bool m_bTakesKeys = false;
    bool m_bWantsEveryMove = false;
    int m_nCursorAsks = 0;

private:
    void Note(const char* psz, unsigned nFlags, CPoint pt)
    {
        std::ostringstream out;
        out << psz << ' ' << nFlags << ' ' << pt.x << ',' << pt.y;
        m_aNotes.push_back(out.str());
    }
    std::vector<std::string> m_aNotes;
};

class CDragView : public CPaintView {
public:
    using CPaintView::CPaintView;
    std::unique_ptr<QMimeData> m_pDragged;

protected:
    void StartImageDrag(std::unique_ptr<QMimeData> pData) override { m_pDragged = std::move(pData); }
};

class EventTest : public testing::Test {
protected:
    EventTest()
        : picture(100, 80)
        , view(picture.doc, host)
    {
        ShowView(view, 200, 160); // the picture's corner lies at 50, 40
        g_nCurrentTool = c_nSpy;
        g_nCurrentToolCommand = 1005;
    }
    ~EventTest() override
    {
        g_nCurrentTool = TOOL_RECT_SELECT;
        g_nCurrentToolCommand = 1001;
    }
    QWidget* Area() { return view.viewport(); }
    void Key(QEvent::Type type, int nKey, bool bRepeat = false)
    {
        QKeyEvent event(type, nKey, Qt::NoModifier, QString(), bRepeat);
        QApplication::sendEvent(&view, &event);
    }

    Picture picture;
    CNotingHost host;
    CDragView view;
    CSpyTool spy;
};

} // namespace

TEST_F(EventTest, MouseReachesTheToolInClientPixels)
{
    QTest::mousePress(Area(), Qt::LeftButton, Qt::ShiftModifier, {60, 70});
    EXPECT_TRUE(view.HasCapture());
    const int nAsks = spy.m_nCursorAsks;
    QTest::mouseMove(Area(), {61, 72});
    EXPECT_EQ(spy.m_nCursorAsks, nAsks); // not while captured
    QTest::mouseRelease(Area(), Qt::LeftButton, Qt::ControlModifier, {61, 72});
    EXPECT_FALSE(view.HasCapture());
    QTest::mouseClick(Area(), Qt::RightButton, {}, {5, 6});
    EXPECT_THAT(spy.Taken(), ElementsAre("down 5 60,70", "move 1 61,72", "up 8 61,72", "rdown 2 5,6", "rup 0 5,6"));
    QTest::mouseClick(Area(), Qt::LeftButton, {}, {9, 9});
    QTest::mouseDClick(Area(), Qt::LeftButton, {}, {9, 9});
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, {9, 9});
    EXPECT_THAT(spy.Taken(), ElementsAre("down 1 9,9", "up 0 9,9", "double 1 9,9", "up 0 9,9"));
    QTest::mouseMove(Area(), {63, 72});
    EXPECT_GT(spy.m_nCursorAsks, nAsks);
    picture.doc.m_pImage = nullptr;
    spy.Taken();
    QTest::mouseClick(Area(), Qt::LeftButton, {}, {60, 70});
    EXPECT_THAT(spy.Taken(), ElementsAre());
}

TEST_F(EventTest, MovesAreMergedOnlyWhereNoToolWantsThemAll)
{
    const auto merged = [] { return QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents); };
    const auto enter = [&] {
        QEnterEvent event({5, 5}, {5, 5}, {5, 5});
        QApplication::sendEvent(Area(), &event);
    };
    const auto leave = [&] {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(Area(), &event);
    };
    enter();
    EXPECT_TRUE(merged());
    spy.m_bWantsEveryMove = true;
    leave();
    enter();
    EXPECT_FALSE(merged()) << "moves may wait before the press is told of";
    QTest::mousePress(Area(), Qt::MiddleButton, {}, {60, 70});
    EXPECT_TRUE(merged()) << "the hand goes where the pointer is, whatever the way";
    QTest::mouseRelease(Area(), Qt::MiddleButton, {}, {60, 70});
    QTest::mousePress(Area(), Qt::LeftButton, {}, {60, 70});
    leave();
    EXPECT_FALSE(merged()) << "a stroke goes on outside the window";
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, {-60, 70});
    EXPECT_TRUE(merged());
}

TEST_F(EventTest, MousePaneShowsThePictureOrNought)
{
    QTest::mouseMove(Area(), {50 + 33, 40 + 44});
    EXPECT_EQ(host.m_ptMouse, (CPoint{33, 44}));
    QTest::mouseMove(Area(), {49, 84});
    EXPECT_EQ(host.m_ptMouse, (CPoint{0, 0}));
    view.SetZoom(3);
    view.ScrollToPosition({1000, 1000});
    const CPoint pt = view.ImageToClient(CPoint{80, 60});
    QTest::mouseMove(Area(), {pt.x + 1, pt.y + 2});
    EXPECT_EQ(host.m_ptMouse, (CPoint{80, 60}));
}

TEST_F(EventTest, SpaceLendsTheHand)
{
    Key(QEvent::KeyPress, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, TOOL_HAND);
    EXPECT_EQ(g_nCurrentToolCommand, 1025);
    Key(QEvent::KeyRelease, Qt::Key_Space, true);
    Key(QEvent::KeyPress, Qt::Key_Space, true);
    Key(QEvent::KeyPress, Qt::Key_Space, true);
    EXPECT_EQ(g_nCurrentTool, TOOL_HAND);
    view.SetZoom(4);
    const CPoint scroll = view.GetScrollPosition();
    QTest::mousePress(Area(), Qt::LeftButton, {}, {60, 70});
    QTest::mouseMove(Area(), {50, 65});
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, {50, 65});
    EXPECT_EQ(view.GetScrollPosition(), (CPoint{scroll.x + 10, scroll.y + 5}));
    Key(QEvent::KeyRelease, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, c_nSpy);
    EXPECT_EQ(g_nCurrentToolCommand, 1025); // lags behind
    EXPECT_THAT(spy.Taken(), ElementsAre("leave", "enter", "keyup 32"));
    Key(QEvent::KeyRelease, Qt::Key_Space); // without the flag only the tool hears of it
    EXPECT_THAT(spy.Taken(), ElementsAre("keyup 32"));

    g_nCurrentTool = TOOL_HAND;
    Key(QEvent::KeyPress, Qt::Key_Space);
    Key(QEvent::KeyRelease, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, TOOL_HAND);
}

TEST_F(EventTest, SpaceLeavesAStrokeToItsTool)
{
    QTest::mousePress(Area(), Qt::LeftButton, {}, {60, 70});
    Key(QEvent::KeyPress, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, TOOL_HAND);
    QTest::mouseMove(Area(), {70, 80});
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, {71, 80});
    Key(QEvent::KeyRelease, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, c_nSpy);
    EXPECT_THAT(spy.Taken(), ElementsAre("down 1 60,70", "leave", "move 1 70,80", "up 0 71,80", "enter", "keyup 32"));
}

TEST_F(EventTest, LosingTheKeyboardEndsTheLoan)
{
    Key(QEvent::KeyPress, Qt::Key_Space);
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(&view, &out);
    EXPECT_EQ(g_nCurrentTool, c_nSpy);
}

TEST_F(EventTest, ADragEndsWhenItsReleaseCannotCome)
{
    const auto press = [&] {
        QTest::mousePress(Area(), Qt::LeftButton, {}, {60, 70});
        QTest::mouseMove(Area(), {65, 72});
        EXPECT_TRUE(view.IsDragging());
    };
    const auto expectEnd = [&](const char* pszUp) {
        EXPECT_FALSE(view.IsDragging());
        EXPECT_THAT(spy.Taken(), testing::Contains(pszUp));
        QTest::mouseRelease(Area(), Qt::LeftButton, {}, {65, 72});
        spy.Taken();
    };
    press(); // another window took the release: the pointer comes back without the button
    QMouseEvent move(QEvent::MouseMove, QPointF(80, 80), Area()->mapToGlobal(QPointF(80, 80)), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(Area(), &move);
    expectEnd("up 0 65,72");
    press();
    view.OnActivateView(false); // another picture came to the front
    view.OnActivateView(true);
    expectEnd("up 0 65,72");
    press();
    view.hide();
    view.show();
    expectEnd("up 0 65,72");
    press(); // a dialog that nobody asked for
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&view, &out);
    expectEnd("up 0 65,72");
    dialog.hide();
    press();
    {
        CPaintView second(picture.doc, host);
        ShowView(second, 200, 160);
        QTest::mousePress(second.viewport(), Qt::LeftButton, {}, {30, 30});
        spy.Taken();
    } // a view that ends in the middle of it
    EXPECT_THAT(spy.Taken(), ElementsAre("up 0 30,30"));
}

TEST_F(EventTest, TheKeyboardStaysWhileAButtonIsHeld)
{
    struct : QWidget {
        void keyPressEvent(QKeyEvent*) override { nKeys++; }
        int nKeys = 0;
    } window;
    CPaintView held(picture.doc, host, &window);
    QLineEdit other(&window);
    held.resize(200, 160);
    other.move(0, 170);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    const auto tab = [&] {
        held.setFocus();
        QTest::keyClick(&held, Qt::Key_Tab);
        return held.hasFocus();
    };
    EXPECT_FALSE(tab());
    QTest::mousePress(held.viewport(), Qt::LeftButton, {}, {60, 70});
    EXPECT_TRUE(held.IsDragging());
    EXPECT_TRUE(tab());
    QTest::keyClick(&held, Qt::Key_F6);
    EXPECT_EQ(window.nKeys, 0) << "the window goes to other boxes by it";
    QTest::mouseRelease(held.viewport(), Qt::LeftButton, {}, {60, 70});
    EXPECT_FALSE(tab());
    QTest::keyClick(&held, Qt::Key_F6);
    EXPECT_EQ(window.nKeys, 1);
}

TEST_F(EventTest, KeysScrollUnlessTheToolTakesThem)
{
    view.SetZoom(8);
    view.ScrollToPosition({100, 100});
    Key(QEvent::KeyPress, Qt::Key_Right);
    Key(QEvent::KeyPress, Qt::Key_Up);
    EXPECT_EQ(view.GetScrollPosition(), (CPoint{116, 84}));
    Key(QEvent::KeyPress, Qt::Key_End);
    EXPECT_EQ(view.GetScrollPosition().y, view.verticalScrollBar()->maximum());
    Key(QEvent::KeyPress, Qt::Key_PageUp);
    EXPECT_EQ(view.GetScrollPosition().y, view.verticalScrollBar()->maximum() - (view.GetClientSize().cy - 16));
    spy.m_bTakesKeys = true;
    const CPoint scroll = view.GetScrollPosition();
    for (int nKey : {Qt::Key_Home, Qt::Key_Left, Qt::Key_Shift})
        Key(QEvent::KeyPress, nKey);
    EXPECT_EQ(view.GetScrollPosition(), scroll);
    EXPECT_THAT(spy.Taken(), ElementsAre("key 39", "key 38", "key 35", "key 33", "key 36", "key 37", "key 16"));
}

TEST_F(EventTest, MiddleButtonPansWhateverTheTool)
{
    view.SetZoom(8);
    view.ScrollToPosition({100, 100});
    QTest::mousePress(Area(), Qt::MiddleButton, {}, {60, 70});
    QTest::mouseMove(Area(), {40, 75});
    QTest::mouseRelease(Area(), Qt::MiddleButton, {}, {40, 75});
    EXPECT_EQ(view.GetScrollPosition(), (CPoint{120, 95}));
    EXPECT_EQ(g_nCurrentTool, c_nSpy);
}

TEST_F(EventTest, TimersReachTheTool)
{
    view.StartTimer(7, 1);
    QTest::qWait(60);
    EXPECT_THAT(spy.Taken(), ElementsAre("timer 7")); // killed by itself
}

TEST_F(EventTest, ActivationSetsTheColourLimits)
{
    picture.doc.m_pImage->m_nBitsPerPixel = 24;
    view.OnActivateView(true);
    EXPECT_EQ(g_nColors, 1 << 24);
    EXPECT_EQ(g_pActiveToolView, &view);
    view.OnActivateView(false);
    EXPECT_EQ(g_nColors, 1000);
    EXPECT_EQ(g_pPalette, nullptr);
    EXPECT_EQ(g_pActiveToolView, nullptr);
}

TEST_F(EventTest, MoveToolWithoutAFloatDragsThePictureOut)
{
    g_nCurrentTool = TOOL_MOVE;
    const auto drag = [&] {
        QTest::mousePress(Area(), Qt::LeftButton, {}, {60, 70});
        QTest::mouseMove(Area(), {62, 71}); // a trembling hand
        EXPECT_EQ(view.m_pDragged, nullptr);
        QTest::mouseMove(Area(), {90, 90});
        QTest::mouseMove(Area(), {95, 95});
        QTest::mouseRelease(Area(), Qt::LeftButton, {}, {95, 95});
    };
    drag();
    ASSERT_NE(view.m_pDragged, nullptr);
    EXPECT_FALSE(view.HasCapture());
    const auto pData = std::exchange(view.m_pDragged, nullptr);
    for (const char* pszType : {"image/bmp", "image/png"}) {
        const QImage image = QImage::fromData(pData->data(pszType));
        ASSERT_EQ(image.size(), QSize(100, 80)) << pszType;
        for (CPoint pt : {CPoint{0, 0}, CPoint{99, 79}, CPoint{31, 57}})
            EXPECT_EQ(image.pixel(pt.x, pt.y), picture.Pixel(pt.x, pt.y)) << pszType;
    }
    EXPECT_EQ(qvariant_cast<QImage>(pData->imageData()).size(), QSize(100, 80));
    picture.doc.m_pImage->m_bFloatReady = true;
    drag();
    EXPECT_EQ(view.m_pDragged, nullptr);
    g_nCurrentTool = TOOL_PENCIL;
    picture.doc.m_pImage->m_bFloatReady = false;
    drag();
    EXPECT_EQ(view.m_pDragged, nullptr);
}

TEST_F(EventTest, DroppedFilesGoToTheFrame)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/tmp/a.png"), QUrl("https://example.invalid/b.png")});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Area(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Area(), &event);
    EXPECT_EQ(host.m_aDropped, QStringList{"/tmp/a.png"});
}
