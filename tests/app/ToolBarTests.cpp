// What the choice of a tool does to the bars, and how the toolbox is held.

#include "FrameTestKit.h"

#include "app/FrameBars.h"
#include "app/FrameBoxes.h"
#include "app/OptionBar.h"
#include "app/ToolBarPopup.h"
#include "app/ToolBox.h"
#include "app/ToolBoxButton.h"
#include "resources/gui/BrushBox.h"
#include "resources/gui/BrushWnd.h"
#include "tools/ToolOptions.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "tools/gui/ToolOptionPages.h"
#include "ui/NumEdit.h"

#include <QButtonGroup>
#include <QDockWidget>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

using namespace kestrune;

namespace {

class CToolBarTest : public CFrameTest {
protected:
    void TearDown() override
    {
        SwitchTool(TOOL_RECT_SELECT, 1001);
        CFrameTest::TearDown();
    }

    bool SideBoxIsUp() const { return !Frame().FrameBars().Bar(BAR_BRUSH_LIB)->isHidden(); }
    void Choose(int nCommand) { EXPECT_TRUE(m_pApp->ExecuteCommand(nCommand)) << nCommand; }

    /// Presses a button of the toolbox, waits, drags to that command's button in what drops from it and lets go there.
    void HoldAndChoose(int nIndex, int nCommand, int nWait)
    {
        Frame().UpdateCommandUi();
        QToolButton* pButton = Frame().ToolBox().Button(nIndex);
        QTest::mousePress(pButton, Qt::LeftButton);
        QTest::qWait(nWait);
        const CToolBarPopup* pPopup = Frame().ToolBox().Popup();
        QPoint pt = pButton->rect().center();
        if (pPopup && nCommand)
            pt = pButton->mapFromGlobal(pPopup->CentreOf(nCommand));
        QMouseEvent move(QEvent::MouseMove, pt, pButton->mapToGlobal(QPointF(pt)), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(pButton, &move);
        QTest::mouseRelease(pButton, Qt::LeftButton, {}, pt);
    }
};

constexpr int c_nLong = c_nHoldTime + 100;

} // namespace

TEST_F(CToolBarTest, SideBoxFollowsTheToolButForBurn)
{
    NewPicture();
    EXPECT_TRUE(SideBoxIsUp()); // as it stands at first
    for (const int nCommand : {1001, 1122, 1123, 1124, 1003, 1002, 1004, 1025, 337, 1024, 1026, 1011, 1012}) {
        Choose(1006);
        EXPECT_TRUE(SideBoxIsUp()) << nCommand;
        Choose(nCommand);
        EXPECT_FALSE(SideBoxIsUp()) << nCommand;
    }
    for (const int nCommand : {1005, 1006, 1007, 1008, 1009, 1013, 1014, 1015, 1017, 1050, 1057, 1094}) {
        Choose(1001);
        Choose(nCommand);
        EXPECT_TRUE(SideBoxIsUp()) << nCommand;
    }
    Choose(1016); // its twin brings the box, this one leaves it as it is
    EXPECT_TRUE(SideBoxIsUp());
    Choose(1001);
    Choose(1016);
    EXPECT_FALSE(SideBoxIsUp());
}

TEST_F(CToolBarTest, SpaceChangesTheToolButNoBar)
{
    CPaintView& view = NewPicture().GetView();
    Choose(1005);
    QWidget* pPage = Frame().OptionPages().PageOf(*FindToolRow(TOOL_PENCIL), 1005);
    QTest::keyPress(&view, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, TOOL_HAND);
    EXPECT_TRUE(pPage->isVisible() && SideBoxIsUp());
    QTest::keyRelease(&view, Qt::Key_Space);
    EXPECT_EQ(g_nCurrentTool, TOOL_PENCIL);
    EXPECT_EQ(g_nCurrentToolCommand, 1025); // stays until the next tool command
}

TEST_F(CToolBarTest, SpaceOverThePictureIsTheHandsAfterAClickInABox)
{
    CPaintView& view = NewPicture(400, 300).GetView();
    Choose(1006);
    Frame().activateWindow();
    QCoreApplication::processEvents();
    QWidget* pGrid = Frame().FrameBars().Bar(BAR_BRUSH_LIB)->findChild<CBrushWnd*>()->viewport();
    CNumEdit* pOpacity = qobject_cast<CNumEdit*>(Frame().OptionPages().Control(ToolOption::BrushOpacity));
    const auto pressSpace = [&] {
        QTest::keyPress(QApplication::focusWidget(), Qt::Key_Space);
        const int nTool = g_nCurrentTool;
        QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_EQ(g_nCurrentTool, TOOL_BRUSH);
        return nTool;
    };
    for (QWidget* pClicked : {pGrid, static_cast<QWidget*>(pOpacity)}) {
        QTest::mouseClick(pClicked, Qt::LeftButton, {}, {9, 9});
        ASSERT_FALSE(view.hasFocus());
        QCursor::setPos(pClicked->mapToGlobal(QPoint(9, 9)));
        EXPECT_EQ(pressSpace(), TOOL_BRUSH) << "the pointer is still in the box";
        EXPECT_FALSE(view.hasFocus());
        QCursor::setPos(view.viewport()->mapToGlobal(view.viewport()->rect().center()));
        EXPECT_EQ(pressSpace(), TOOL_HAND);
        EXPECT_TRUE(view.hasFocus());
    }
    Frame().UpdateCommandUi();
    QTest::keyClick(&view, Qt::Key_F6);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6); // the button of the tool at hand: the key presses it
    EXPECT_EQ(pressSpace(), TOOL_BRUSH);
    EXPECT_FALSE(view.hasFocus());
}

TEST_F(CToolBarTest, EachToolShowsItsBarAndNoneIsHigherOrTooWideForASmallScreen)
{
    NewPicture();
    Frame().resize(1024, 700);
    const int nHeight = Frame().OptionBar().height();
    for (const ToolRow& row : ToolTable()) {
        if (!row.nCommand || row.bar == ToolBar::Transform)
            continue;
        Choose(row.nCommand);
        QCoreApplication::processEvents();
        const QWidget* pPage = Frame().OptionPages().PageOf(row, row.nCommand);
        EXPECT_TRUE(pPage->isVisible()) << row.strClass;
        EXPECT_EQ(Frame().OptionBar().height(), nHeight) << row.strClass;
        EXPECT_LE(pPage->sizeHint().height(), nHeight) << row.strClass;
        EXPECT_LE(pPage->sizeHint().width(), pPage->width()) << row.strClass;
        EXPECT_EQ(Frame().width(), 1024) << row.strClass;
    }
}

TEST_F(CToolBarTest, TheLongestBarsAreWholeInALargeFontOnASmallScreen)
{
    const QFont before = qApp->font();
    QFont font = before;
    font.setPointSize(13);
    qApp->setFont(font);
    Restart();
    NewPicture();
    Frame().resize(1024, 700);
    for (const int nTool : {TOOL_BRUSH, TOOL_GRADIENT, TOOL_DODGE, TOOL_RECT_SELECT}) {
        const ToolRow& row = *FindToolRow(nTool);
        Choose(row.nCommand);
        QCoreApplication::processEvents();
        const QWidget* pPage = Frame().OptionPages().PageOf(row, row.nCommand);
        EXPECT_LE(pPage->sizeHint().width(), pPage->width()) << row.strClass;
        EXPECT_EQ(Frame().width(), 1024) << row.strClass;
    }
    EXPECT_TRUE(Frame().OptionBar().findChild<QWidget*>(QStringLiteral("ZoomBox"))->isVisible()) << "it comes back where there is room";
    qApp->setFont(before);
}

TEST_F(CToolBarTest, SettingsAndTheFloatsChoiceReachTheirReaders)
{
    CPaintView& view = NewPicture().GetView();
    SetToolOption(ToolOption::FloaterOpacity, 40);
    SetToolOption(ToolOption::FloaterCopy, 1);
    SetToolOption(ToolOption::BrushOpacity, 33);
    EXPECT_EQ(view.GetImage()->Site().FloatOpacity(), 40);
    EXPECT_EQ(view.GetImage()->Site().MoveMode(), 1);
    m_sink.m_answers.push_back(MessageAnswer::No); // the picture is new
    Restart();
    EXPECT_EQ(GetToolOption(ToolOption::BrushOpacity), 33);
    EXPECT_EQ(GetToolOption(ToolOption::FloaterOpacity), 100); // these two start anew each time
    EXPECT_EQ(GetToolOption(ToolOption::FloaterCopy), 0);
}

TEST_F(CToolBarTest, AShortPressIsAClickAndAHeldOneDropsTheGroup)
{
    NewPicture();
    CToolBox& box = Frame().ToolBox();
    HoldAndChoose(7, 0, 20);
    EXPECT_EQ(g_nCurrentTool, TOOL_PENCIL);
    EXPECT_EQ(box.Popup(), nullptr);

    HoldAndChoose(7, 1008, c_nLong);
    EXPECT_EQ(box.Popup(), nullptr);
    EXPECT_EQ(g_nCurrentTool, TOOL_AIR_BRUSH);
    EXPECT_EQ(box.CommandAt(7), 1008);
    HoldAndChoose(7, 0, c_nLong); // let go over the button itself: nothing is chosen
    EXPECT_EQ(g_nCurrentTool, TOOL_AIR_BRUSH);
    HoldAndChoose(1, 0, c_nLong); // no group: a click, however long
    EXPECT_EQ(g_nCurrentTool, TOOL_MOVE);
    HoldAndChoose(0, 1122, c_nLong);
    EXPECT_EQ(g_nCurrentTool, TOOL_ELLIPSE_SELECT);
    EXPECT_EQ(g_nCurrentToolCommand, 1001);
    Frame().UpdateCommandUi();
    EXPECT_TRUE(box.Button(0)->isChecked());
    EXPECT_FALSE(box.Button(7)->isChecked());

    Choose(1017); // by its key or a script: the group's button follows
    EXPECT_EQ(box.CommandAt(10), 1017);
    m_sink.m_answers.push_back(MessageAnswer::No);
    Restart();
    EXPECT_EQ(Frame().ToolBox().CommandAt(7), 1008);
    EXPECT_EQ(Frame().ToolBox().CommandAt(0), 1122);
    EXPECT_EQ(g_nCurrentTool, TOOL_ELLIPSE_SELECT) << "the first button's tool is the one to begin with";
    EXPECT_TRUE(Frame().OptionPages().PageOf(*FindToolRow(TOOL_ELLIPSE_SELECT), 1122)->isVisible());
    EXPECT_EQ(Frame().ToolBox().CommandAt(10), 1017);
    EXPECT_EQ(Frame().ToolBox().CommandAt(9), 1011);
}

TEST_F(CToolBarTest, AButtonThatLosesItsMarkIsDrawnAnew)
{
    NewPicture();
    Frame().show();
    CToolBox& box = Frame().ToolBox();
    Choose(1001);
    Frame().UpdateCommandUi();
    QCoreApplication::processEvents();
    const QImage pressed = box.Button(0)->grab().toImage();
    struct CPaints : QObject {
        int nCount = 0;
        bool eventFilter(QObject*, QEvent* pEvent) override
        {
            nCount += pEvent->type() == QEvent::Paint;
            return false;
        }
    } paints;
    box.Button(0)->installEventFilter(&paints);
    Choose(1005); // by its key: the pointer is nowhere near the two buttons
    Frame().UpdateCommandUi();
    QCoreApplication::processEvents();
    EXPECT_GT(paints.nCount, 0);
    EXPECT_NE(box.Button(0)->grab().toImage(), pressed);
    EXPECT_TRUE(box.Button(7)->isChecked() && !box.Button(0)->isChecked());
    EXPECT_FALSE(box.Button(0)->isCheckable()) << "a press alone must not mark it";
}

TEST_F(CToolBarTest, TheKeyboardGoesRoundThePanesAndComesBack)
{
    CPaintView& view = NewPicture().GetView();
    Frame().show();
    Choose(1006);
    Frame().UpdateCommandUi();
    Frame().activateWindow();
    view.setFocus();
    QCoreApplication::processEvents();
    ASSERT_TRUE(view.hasFocus());
    QStringList visited;
    const auto where = [&] {
        for (const QWidget* p = QApplication::focusWidget(); p; p = p->parentWidget())
            if (p == &view || p == &Frame().OptionBar() || p == &Frame().ToolBox() || qobject_cast<const QDockWidget*>(p))
                return p == &view ? QStringLiteral("view") : p->objectName();
        return QString();
    };
    for (int n = 0; n < 6; n++) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        visited << where();
        if (n == 0) {
            EXPECT_EQ(QApplication::focusWidget(), Frame().OptionPages().Control(ToolOption::BrushOpacity)) << "the bar's first control";
            EXPECT_TRUE(Frame().testAttribute(Qt::WA_KeyboardFocusChange)) << "without it no button shows that it has the keyboard";
            QWidget* pLast = QApplication::focusWidget();
            for (QWidget* p = pLast; Frame().OptionBar().isAncestorOf(p); p = p->nextInFocusChain())
                if (p->isVisible() && p->focusPolicy() & Qt::TabFocus)
                    pLast = p;
            EXPECT_EQ(pLast, Frame().OptionBar().findChild<QWidget*>(QStringLiteral("FrameFollowsZoom"))) << "the zoom panel ends the row";
        }
        if (n == 1) {
            EXPECT_EQ(QApplication::focusWidget(), Frame().ToolBox().Button(7)) << "the tool in force";
        }
    }
    EXPECT_EQ(visited.indexOf("view"), 5) << visited.join(u' ').toStdString();
    EXPECT_EQ(visited.removeDuplicates(), 0) << "bar, toolbox, three boxes, picture";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(where(), visited[4]);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(view.hasFocus());

    QTest::keyClick(&view, Qt::Key_F6);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(g_nCurrentTool, TOOL_STAMP) << "the next button down";
    CToolBox& box = Frame().ToolBox();
    box.FitHeight(100);
    ASSERT_EQ(box.Columns(), 2);
    box.Button(1)->setFocus();
    for (const auto& [nKey, nButton] : {std::pair{Qt::Key_Down, 5}, {Qt::Key_Left, 4}, {Qt::Key_Up, 2}, {Qt::Key_Right, 4}}) {
        QTest::keyClick(QApplication::focusWidget(), nKey); // button 3 waits for a float: it is passed over
        EXPECT_EQ(QApplication::focusWidget(), box.Button(nButton)) << nButton;
    }
}

TEST_F(CToolBarTest, WhatIsPutAwayStaysAwayOverARestartUntilTheReset)
{
    constexpr int c_aBars[] = {ID_VIEW_TOOLBAR, ID_VIEW_OPTION_BAR, ID_VIEW_STATUS_BAR, ID_VIEW_TOOLBOX, ID_VIEW_HISTORY_BAR};
    for (const int nId : c_aBars) {
        EXPECT_TRUE(m_pApp->QueryCommand(nId).bChecked) << nId;
        Choose(nId);
    }
    Restart();
    for (const int nId : c_aBars)
        EXPECT_FALSE(m_pApp->QueryCommand(nId).bChecked) << nId;
    Choose(ID_RESET_BOXES);
    for (const int nId : c_aBars)
        EXPECT_TRUE(m_pApp->QueryCommand(nId).bChecked) << nId;
    Restart();
    for (const int nId : c_aBars)
        EXPECT_TRUE(m_pApp->QueryCommand(nId).bChecked) << nId;
}

TEST_F(CToolBarTest, AFloatingBoxComesBackInFrontOfTheWindow)
{
    Frame().FrameBars().Bar(BAR_BRUSH_LIB)->setFloating(true);
    QCoreApplication::processEvents();
    struct CShows : QObject {
        QStringList order;
        bool eventFilter(QObject* pObject, QEvent* pEvent) override
        {
            if (pEvent->type() == QEvent::Show && pObject->isWindowType() && static_cast<QWindow*>(pObject)->isVisible())
                order << pObject->objectName().remove(QStringLiteral("Window"));
            return false;
        }
    } shows;
    Exit();
    qApp->installEventFilter(&shows);
    Start();
    QTest::qWait(100); // the window is painted
    qApp->removeEventFilter(&shows);
    const auto* pBox = Frame().FrameBars().Bar(BAR_BRUSH_LIB);
    EXPECT_TRUE(pBox->isFloating() && pBox->isVisible());
    EXPECT_EQ(shows.order.join(u' ').toStdString(), "MainFrame Bar5003");
}

TEST_F(CToolBarTest, BoxesThatShareAPlaceHaveTheirTabsWhole)
{
    Frame().resize(1280, 800);
    Frame().show();
    Choose(ID_VIEW_ASSISTANT_BAR);
    Choose(ID_VIEW_BRUSH_BAR);
    QCoreApplication::processEvents();
    const QTabBar* pTabs = nullptr;
    for (const QTabBar* p : Frame().findChildren<QTabBar*>(Qt::FindDirectChildrenOnly))
        if (p->isVisible())
            pTabs = p;
    ASSERT_TRUE(pTabs);
    ASSERT_EQ(pTabs->count(), 3);
    for (int i = 0; i < 3; i++)
        EXPECT_GE(pTabs->tabRect(i).width(), pTabs->fontMetrics().horizontalAdvance(pTabs->tabText(i)) + 12) << pTabs->tabText(i).toStdString();
    EXPECT_EQ(Frame().FrameBars().Bar(BAR_HISTORY)->accessibleName(), QStringLiteral("명령 사용 내역"));
}

TEST_F(CToolBarTest, AFloatingBoxIsOneOfThePanesAndHoldsItsContentsWhole)
{
    CPaintView& view = NewPicture().GetView();
    Frame().show();
    Choose(1006);
    CSizingControlBar* pBox = Frame().FrameBars().Bar(BAR_BRUSH_LIB);
    const int nDocked = pBox->height();
    pBox->setFloating(true);
    QCoreApplication::processEvents();
    EXPECT_GE(pBox->height(), pBox->widget()->layout()->minimumSize().height()) << "the size at creation is too small for its rows";
    EXPECT_GE(pBox->width(), pBox->widget()->layout()->minimumSize().width());

    pBox->setFloating(false);
    QCoreApplication::processEvents();
    EXPECT_NEAR(pBox->height(), nDocked, 8) << "it comes back to the size that it left";
    pBox->setFloating(true);

    const auto enterBox = [&] {
        pBox->activateWindow();
        QCoreApplication::processEvents();
        for (QWidget* p : pBox->findChildren<QWidget*>())
            if (p->focusPolicy() & Qt::TabFocus && p->isVisible() && p->isEnabled()) {
                p->setFocus();
                break;
            }
        ASSERT_TRUE(QApplication::focusWidget() && QApplication::focusWidget()->window() == pBox);
    };
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ShiftModifier}) {
        enterBox();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, modifiers);
        QCoreApplication::processEvents();
        ASSERT_TRUE(QApplication::focusWidget());
        EXPECT_EQ(QApplication::focusWidget()->window(), &Frame());
    }
    enterBox();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.hasFocus());

    enterBox();
    QWidget& edge = Frame().Boxes().Brushes().SoftEdge();
    edge.setFocus();
    QTest::keyClicks(&edge, "3");
    QTest::keyClick(&edge, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.hasFocus()) << "a number that is done gives the keyboard back, as on the option bar";
}

TEST_F(CToolBarTest, NoTwoThingsOfTheWindowHaveOneMnemonic)
{
    NewPicture();
    Frame().show();
    for (const CSizingControlBar* pBox : Frame().FrameBars().Bars())
        const_cast<CSizingControlBar*>(pBox)->show();
    for (const int nCommand : {1001, 1006, 1011, 1012, 1015, 1057}) {
        Choose(nCommand);
        QCoreApplication::processEvents();
        QMap<QString, QString> keys;
        const auto add = [&](const QString& strText) {
            const QString strKey = QKeySequence::mnemonic(strText).toString();
            if (!strKey.isEmpty()) {
                EXPECT_FALSE(keys.contains(strKey)) << nCommand << ' ' << strText.toStdString() << " and " << keys[strKey].toStdString();
                keys[strKey] = strText;
            }
        };
        for (const QAction* pAction : Frame().menuBar()->actions())
            add(pAction->text());
        for (const QLabel* pLabel : Frame().findChildren<QLabel*>())
            if (pLabel->buddy() && pLabel->isVisible())
                add(pLabel->text());
        for (const QAbstractButton* pButton : Frame().findChildren<QAbstractButton*>())
            if (pButton->isVisible() && !qobject_cast<const QToolButton*>(pButton))
                add(pButton->text());
        EXPECT_GE(keys.size(), 9) << "the menus alone";
    }
}

TEST_F(CToolBarTest, WithoutAPictureAPressDoesNothingAndTransformsWaitForAFloat)
{
    Choose(ID_VIEW_TOOLBOX);
    Choose(ID_VIEW_TOOLBOX);
    HoldAndChoose(7, 1008, c_nLong);
    EXPECT_EQ(Frame().ToolBox().Popup(), nullptr);
    EXPECT_EQ(g_nCurrentTool, TOOL_RECT_SELECT);

    CPaintView& view = NewPicture().GetView();
    EXPECT_FALSE(m_pApp->QueryCommand(30051).bEnabled);
    Frame().UpdateCommandUi();
    EXPECT_FALSE(Frame().ToolBox().Button(3)->isEnabled());
    view.GetImage()->m_bFloatReady = true;
    Frame().UpdateCommandUi();
    EXPECT_TRUE(Frame().ToolBox().Button(3)->isEnabled());
    HoldAndChoose(3, 30054, c_nLong);
    EXPECT_EQ(g_nCurrentTool, TOOL_SKEW_VERT);
    EXPECT_EQ(g_nCurrentToolCommand, 1021);
    view.GetImage()->m_bFloatReady = false;
}

TEST_F(CToolBarTest, KeysOfTheSelectionModeShowOnTheBar)
{
    NewPicture();
    Choose(1001);
    auto* pGroup = qobject_cast<QButtonGroup*>(Frame().OptionPages().Control(ToolOption::FloaterMode));
    ASSERT_TRUE(pGroup);
    for (const int nMode : {2, 3, 1}) {
        SetToolOption(ToolOption::FloaterMode, nMode); // as a selection tool does while Shift or Control is held
        EXPECT_EQ(pGroup->checkedId(), nMode);
    }
}
