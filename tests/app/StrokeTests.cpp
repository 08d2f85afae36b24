// Strokes in the real window, driven by its events.
#include "FrameTestKit.h"

#include "doc/ColorState.h"
#include "doc/PaintImage.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "undo/UndoStack.h"

#include <QTest>

using namespace kestrune;

namespace {

class CStrokeWindowTest : public CFrameTest {
protected:
    void SetUp() override
    {
        CFrameTest::SetUp();
        m_pChild = &NewPicture(300, 200);
        g_crForeground = Rgb(200, 30, 90);
        EXPECT_TRUE(m_pApp->ExecuteCommand(1005));
        QCoreApplication::processEvents();
    }
    void TearDown() override
    {
        SwitchTool(TOOL_RECT_SELECT, 1001);
        g_crForeground = 0;
        CFrameTest::TearDown();
    }
    CPaintView& View() const { return m_pChild->GetView(); }
    CPaintImage& Image() const { return *m_pChild->GetDocument().m_pImage; }
    QPoint At(int x, int y) const { return View().PointToViewport(View().ImageToClient(CPoint{x, y})).toPoint(); }
    void Press(int x, int y) { QTest::mousePress(View().viewport(), Qt::LeftButton, {}, At(x, y)); }
    void Move(int x, int y) { QTest::mouseMove(View().viewport(), At(x, y)); }
    void Release(int x, int y) { QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, At(x, y)); }

    CChildFrame* m_pChild = nullptr;
};

} // namespace

TEST_F(CStrokeWindowTest, TheScreenShowsTheDabBeforeTheButtonIsUp)
{
    Press(50, 50);
    Move(120, 60);
    QCoreApplication::processEvents();
    const QImage screen = View().viewport()->grab().toImage();
    EXPECT_EQ(screen.pixel(At(50, 50)) & 0xFFFFFF, 0xC81E5Au);
    EXPECT_NE(screen.pixel(At(119, 60)) & 0xFFFFFF, 0xFFFFFFu);
    Release(120, 60);
}

TEST_F(CStrokeWindowTest, AShortcutTakesTheOutlineOfTheOldToolAwayAndShowsThatOfTheNew)
{
    QCursor::setPos(View().viewport()->mapToGlobal(At(60, 50)));
    View().viewport()->setAttribute(Qt::WA_UnderMouse); // as the window system's enter event would
    Move(60, 50);
    const auto screen = [&] { return View().viewport()->grab().toImage(); };
    const QImage pencil = screen();
    EXPECT_TRUE(m_pApp->ExecuteCommand(1011));
    QImage blank = pencil;
    blank.fill(Qt::white);
    EXPECT_EQ(screen(), blank) << "the gradient tool has no outline";
    EXPECT_NE(pencil, blank);
    EXPECT_TRUE(m_pApp->ExecuteCommand(1005));
    EXPECT_EQ(screen(), pencil) << "the pointer still rests there";
}

TEST_F(CStrokeWindowTest, AStrokeThatBeginsAsTheSecondPressOfADoubleClickIsDrawn)
{
    Press(50, 50);
    Release(50, 50);
    QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, At(50, 50)); // this event alone, in place of a press
    EXPECT_TRUE(View().IsDragging());
    Move(120, 50);
    Release(120, 50);
    EXPECT_EQ(Image().m_BaseBitmap.GetPixelColor(90, 50), g_crForeground);
    EXPECT_EQ(Image().m_UndoList.size(), 3u);
}

TEST_F(CStrokeWindowTest, NoCommandOrShortcutRunsWhileTheButtonIsHeld)
{
    Press(50, 50);
    Release(60, 50);
    Press(80, 80);
    for (const int nCommand : std::initializer_list<int>{ID_EDIT_UNDO, 30006, 1006, 57603, ID_FILE_NEW})
        EXPECT_FALSE(m_pApp->ExecuteCommand(nCommand)) << nCommand;
    QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&View(), Qt::Key_B);
    QTest::keyClick(&View(), Qt::Key_Escape);
    EXPECT_EQ(g_nCurrentTool, TOOL_PENCIL);
    Move(100, 90);
    Release(100, 90);
    EXPECT_EQ(Image().m_UndoList.size(), 3u);
    EXPECT_TRUE(m_pApp->ExecuteCommand(ID_EDIT_UNDO));
    EXPECT_EQ(Image().m_Bitmap.GetPixelColor(80, 80), 0xFFFFFFu);
    EXPECT_NE(Image().m_Bitmap.GetPixelColor(55, 50), 0xFFFFFFu);
}

TEST_F(CStrokeWindowTest, ClosingInTheMiddleAsksAboutWhatWasDrawnAndEndsCleanly)
{
    Press(50, 50);
    Move(70, 50);
    m_sink.m_answers = {MessageAnswer::Cancel};
    EXPECT_FALSE(m_pChild->close()); // by its window, not by a command
    ASSERT_EQ(m_sink.m_said.size(), 1u) << "the stroke is a change";
    EXPECT_FALSE(View().IsDragging());
    EXPECT_EQ(Image().m_BaseBitmap.GetPixelColor(60, 50), g_crForeground) << "and is kept when the user stays";
    Release(70, 50);

    Press(50, 90);
    Move(70, 90);
    m_sink.m_answers = {MessageAnswer::No};
    EXPECT_TRUE(m_pApp->ExecuteCommand(ID_FILE_CLOSE));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_pApp->ActiveChild());
    m_pChild = &NewPicture(100, 100); // the tool is ready for the next
    Press(30, 30);
    Release(40, 30);
    EXPECT_NE(Image().m_Bitmap.GetPixelColor(35, 30), 0xFFFFFFu);
    EXPECT_EQ(Image().m_UndoList.size(), 2u);
}

TEST_F(CStrokeWindowTest, AnotherPictureThatComesToTheFrontEndsTheStrokeInThisOne)
{
    CChildFrame* pFirst = m_pChild;
    EXPECT_TRUE(m_pApp->ExecuteCommand(1008)); // the timer of the air brush ends too
    Press(50, 50);
    NewPicture(40, 40);
    EXPECT_FALSE(pFirst->GetView().IsDragging());
    const COLORREF cr = Image().m_Bitmap.GetPixelColor(50, 50);
    EXPECT_EQ(Image().m_BaseBitmap.GetPixelColor(50, 50), cr);
    QTest::qWait(450);
    EXPECT_EQ(Image().m_Bitmap.GetPixelColor(50, 50), cr) << "nothing flows any more";
    EXPECT_TRUE(CanUndo(Image()));
}
