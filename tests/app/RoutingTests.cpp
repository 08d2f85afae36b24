#include "FrameTestKit.h"

#include "app/CommandUi.h"

#include <QMenuBar>
#include <QTest>
#include <QToolButton>

namespace kestrune {
namespace {

class Routing : public CFrameTest {
protected:
    /// Opens every menu of the menu bar, as a user who looks for something.
    void WalkMenus(const std::function<void(const QAction&)>& visit)
    {
        const std::function<void(QMenu&)> walk = [&](QMenu& menu) {
            Q_EMIT menu.aboutToShow();
            for (QAction* pAction : menu.actions()) {
                if (pAction->menu())
                    walk(*pAction->menu());
                else
                    visit(*pAction);
            }
        };
        for (QAction* pAction : Frame().menuBar()->actions())
            walk(*pAction->menu());
    }
    bool IsHandled(int nId) const
    {
        const CChildFrame* pChild = m_pApp->ActiveChild();
        return (pChild && (pChild->GetView().Handles(nId) || pChild->GetDocument().Handles(nId) || pChild->Handles(nId)))
            || Frame().Handles(nId) || m_pApp->Handles(nId);
    }
    std::vector<QString> MenuTitles()
    {
        std::vector<QString> titles;
        for (const QAction* pAction : Frame().menuBar()->actions())
            titles.push_back(pAction->text());
        return titles;
    }
};

TEST_F(Routing, TheFirstMemberThatHandlesAnIdTakesIt)
{
    CChildFrame& child = NewPicture();
    constexpr int nId = 39999; // no part of the editor has it
    EXPECT_FALSE(m_pApp->QueryCommand(nId).bEnabled);
    std::vector<CCommandTarget*> route{m_pApp.get(), &Frame(), &child, &child.GetDocument(), &child.GetView()};
    std::string strRan;
    for (std::size_t i = 0; i < route.size(); i++) {
        route[i]->OnCommandId(nId, [&strRan, i] { strRan += "afcdv"[i]; });
        EXPECT_TRUE(m_pApp->ExecuteCommand(nId));
    }
    EXPECT_EQ(strRan, "afcdv");
    // A member that handles the id and disables it ends the route.
    child.GetView().OnCommandId(nId, [&] { strRan += '!'; }, [](CommandState& state) { state.bEnabled = false; });
    EXPECT_FALSE(m_pApp->ExecuteCommand(nId));
    EXPECT_EQ(strRan, "afcdv");
    // The members of a picture leave the route with it.
    child.CloseNow();
    EXPECT_TRUE(m_pApp->ExecuteCommand(nId));
    EXPECT_EQ(strRan, "afcdvf");
}

TEST_F(Routing, ACommandIsGreyWhenNobodyHandlesIt)
{
    for (const bool bPicture : {false, true}) {
        if (bPicture)
            NewPicture();
        for (const CommandRow& row : Commands()) {
            const bool bEnabled = m_pApp->QueryCommand(row.nId).bEnabled;
            EXPECT_TRUE(!bEnabled || IsHandled(row.nId)) << row.nId;
            if (!IsHandled(row.nId)) {
                EXPECT_FALSE(m_pApp->ExecuteCommand(row.nId)) << row.nId;
            }
        }
        int nRows = 0;
        WalkMenus([&](const QAction& action) {
            if (const int nId = CommandOfAction(action)) {
                nRows++;
                EXPECT_EQ(action.isEnabled(), m_pApp->QueryCommand(nId).bEnabled) << nId;
                EXPECT_EQ(action.isChecked(), m_pApp->QueryCommand(nId).bChecked) << nId;
            }
        });
        EXPECT_GT(nRows, bPicture ? 130 : 30);
    }
}

TEST_F(Routing, CommandsWithoutAHandlerStayGreyForEver)
{
    NewPicture();
    for (const int nId : {30011, 30068, 30069, 30088, 30089, 30091, 30093, 30094, 30097, 30098, 30100, 30101, 30121, 30122,
                          30123, 30124, 30125, 30126, 30127, 30128, 30129, 57610, 57611})
        EXPECT_FALSE(m_pApp->QueryCommand(nId).bEnabled) << nId;
    EXPECT_TRUE(m_pApp->QueryCommand(ID_EDIT_PASTE).bEnabled); // taken by an empty handler
}

TEST_F(Routing, TheMenuFollowsTheDocuments)
{
    EXPECT_FALSE(m_pApp->ActiveChild());
    EXPECT_EQ(MenuTitles().size(), 4u);
    EXPECT_FALSE(m_pApp->QueryCommand(ID_FILE_SAVE).bEnabled);
    CChildFrame& child = NewPicture();
    EXPECT_EQ(MenuTitles().size(), 9u);
    EXPECT_TRUE(m_pApp->QueryCommand(ID_FILE_SAVE).bEnabled);
    child.CloseNow();
    EXPECT_EQ(MenuTitles().size(), 4u);
    EXPECT_FALSE(m_pApp->ActiveChild());
}

TEST_F(Routing, ThrowingCommandsBecomeAMessage)
{
    Frame().OnCommandId(30041, [] { throw std::bad_alloc(); });
    EXPECT_FALSE(m_pApp->ExecuteCommand(30041));
    ASSERT_EQ(m_sink.m_said.size(), 1u);
}

TEST_F(Routing, ShortcutsAndToolButtonsReachTheRoute)
{
    CChildFrame& child = NewPicture();
    QTest::keyClick(&child.GetView(), Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(child.GetView().GetZoom(), 2);
    QToolButton* pZoomOut = nullptr;
    for (QToolButton* pButton : Frame().findChildren<QToolButton*>())
        if (pButton->defaultAction() && CommandOfAction(*pButton->defaultAction()) == ID_ZOOM_OUT)
            pZoomOut = pButton;
    ASSERT_TRUE(pZoomOut);
    QTest::mouseClick(pZoomOut, Qt::LeftButton);
    EXPECT_FLOAT_EQ(child.GetView().GetZoom(), 1);
}

TEST_F(Routing, PromptsStandInTheMessagePane)
{
    QMenu* pFile = Frame().menuBar()->actions().front()->menu();
    Q_EMIT pFile->aboutToShow();
    QAction* pOpen = pFile->actions().at(1);
    pOpen->hover();
    pOpen->showStatusText(&Frame());
    EXPECT_EQ(Frame().PaneText(PANE_MESSAGE), ToQString(FindCommand(ID_FILE_OPEN)->prompt));
}

} // namespace
} // namespace kestrune
