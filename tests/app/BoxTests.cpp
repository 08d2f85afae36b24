// The boxes in the main frame: history and colours follow the active picture, commands and shortcuts; a dock state that
// cannot be used leaves everything where it stands.

#include "FrameTestKit.h"

#include "app/FrameBoxes.h"
#include "resources/PaletteColors.h"
#include "resources/PaletteFile.h"
#include "resources/gui/ColorBar.h"
#include "resources/gui/ColorPatches.h"
#include "resources/gui/ColorWnd.h"
#include "ui/Dialog.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"
#include "undo/gui/HistoryBox.h"

#include <QTest>
#include <QToolButton>

using namespace kestrune;

namespace {

class CBoxesTest : public CFrameTest {
protected:
    CPaintImage& Image() { return *m_pApp->ActiveChild()->GetDocument().m_pImage; }
    CHistoryBox& History() { return Frame().Boxes().History(); }
    void Act(int nAct)
    {
        PushRect(Image(), 0, 0, 8, 8, UNDO_BRUSH);
        Image().m_Bitmap.WriteRow(0)[0] = static_cast<std::uint8_t>(nAct);
    }
    int State() { return Image().m_Bitmap.Row(0)[0]; }
    int Rows() { return History().model()->rowCount(); }
    QString Row(int nRow) { return History().model()->index(nRow, 0).data().toString(); }
    bool Enabled(int nId) { return m_pApp->QueryCommand(nId).bEnabled; }
};

} // namespace

TEST_F(CBoxesTest, HistoryFollowsTheActivePicture)
{
    EXPECT_EQ(Rows(), 0);
    CChildFrame& first = NewPicture();
    EXPECT_EQ(Row(0), QStringLiteral("<< 새로운 이미지 >>"));
    EXPECT_FALSE(Enabled(ID_EDIT_UNDO)) << "the origin is not undone";
    Act(1);
    Act(2);
    EXPECT_EQ(Rows(), 3);
    m_pApp->OpenDocumentFile(PictureFile("other.png"));
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(Row(0), QStringLiteral("<< 원본 이미지 >>"));
    EXPECT_FALSE(Enabled(ID_EDIT_UNDO));
    Frame().ActivateChild(&first);
    EXPECT_EQ(Rows(), 3);
    EXPECT_EQ(History().CurrentRow(), 2);
    EXPECT_TRUE(Enabled(ID_EDIT_UNDO));
    EXPECT_FALSE(Enabled(ID_EDIT_REDO));
    m_pApp->ExecuteCommand(ID_EDIT_UNDO);
    EXPECT_EQ(State(), 1);
    EXPECT_EQ(History().CurrentRow(), 1);
    EXPECT_TRUE(Enabled(ID_EDIT_REDO));
    m_pApp->ExecuteCommand(ID_EDIT_UNDO);
    EXPECT_FALSE(Enabled(ID_EDIT_UNDO));
    EXPECT_FALSE(m_pApp->ExecuteCommand(ID_EDIT_UNDO));
    m_pApp->ExecuteCommand(ID_EDIT_REDO);
    EXPECT_EQ(State(), 1);
    m_sink.m_answers = {MessageAnswer::No};
    first.close();
    EXPECT_EQ(Rows(), 1) << "the other picture's";
    m_pApp->CloseAllDocuments();
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(History().ShownImage(), nullptr);
}

TEST_F(CBoxesTest, TheSettingLimitsTheHistory)
{
    m_pApp->Preferences().SetInt("General", "History", 2);
    Restart();
    NewPicture();
    for (int i = 1; i <= 5; i++)
        Act(i);
    EXPECT_EQ(Rows(), 3);
    m_pApp->ExecuteCommand(ID_EDIT_UNDO);
    m_pApp->ExecuteCommand(ID_EDIT_UNDO);
    EXPECT_EQ(State(), 3);
    EXPECT_FALSE(Enabled(ID_EDIT_UNDO));
    m_sink.m_answers = {MessageAnswer::No};
    m_pApp->Preferences().SetInt("General", "History", 0);
    Restart();
    NewPicture();
    for (int i = 1; i <= 60; i++)
        Act(i);
    EXPECT_EQ(Rows(), 61) << "0 is no limit";
    m_sink.m_answers = {MessageAnswer::No};
    Exit();
    SetHistoryLimit(c_nDefaultHistoryLimit);
}

TEST_F(CBoxesTest, ColoursOutliveTheProgramAndLettersChangeThem)
{
    CColorBar& colors = Frame().Boxes().Colors();
    NewPicture();
    QWidget& view = m_pApp->ActiveChild()->GetView();
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_D);
    EXPECT_EQ(g_crForeground, Rgb(0, 0, 0));
    EXPECT_EQ(g_crBackground, Rgb(255, 255, 255));
    CPaintDialog::SetDriver([](CPaintDialog& dialog) {
        EXPECT_FALSE(dialog.SetKey("Red", "200"));
        return int(QDialog::Accepted);
    });
    m_pApp->ExecuteCommand(ID_COLOR_FOREGROUND);
    EXPECT_EQ(g_crForeground, Rgb(200, 0, 0));
    QTest::keyClick(&view, Qt::Key_X);
    EXPECT_EQ(g_crForeground, Rgb(255, 255, 255));
    EXPECT_EQ(g_crBackground, Rgb(200, 0, 0));
    EXPECT_FALSE(colors.Patches().IsBackgroundActive());

    CPaintDialog::SetDriver([](CPaintDialog& dialog) {
        EXPECT_FALSE(dialog.SetKey("Color", "1,2,3"));
        dialog.accept();
        return dialog.result();
    });
    m_pApp->ExecuteCommand(ID_COLOR_PALETTE);
    EXPECT_EQ(g_aPaletteTable[0], (PaletteEntry{1, 2, 3}));
    g_aPaletteTable = c_aStartPalette;
    CPaintDialog::SetDriver({});

    m_sink.m_answers = {MessageAnswer::No};
    Exit();
    ResetForegroundAndBackground();
    Start();
    EXPECT_EQ(g_crForeground, Rgb(255, 255, 255));
    EXPECT_EQ(g_crBackground, Rgb(200, 0, 0));
    EXPECT_EQ(m_sink.m_said.size(), 1u) << "the question at the close alone; the swatch file was found";
}

TEST_F(CBoxesTest, ADockStateThatCannotBeUsedLeavesTheBoxesWhereTheyWere)
{
    CSizingControlBar* pBar = Frame().FrameBars().Bar(BAR_COLOR);
    Frame().addDockWidget(Qt::LeftDockWidgetArea, pBar);
    Restart();
    EXPECT_EQ(Frame().dockWidgetArea(Frame().FrameBars().Bar(BAR_COLOR)), Qt::LeftDockWidgetArea);
    const auto good = m_pApp->Profile().GetBinary("BarState", "State");
    ASSERT_GT(good.size(), 40u);
    const auto spoilt = [&](int nCase) {
        auto bytes = good;
        switch (nCase) {
        case 0: bytes[4] ^= 0xFF; break;                   // another version
        case 1: bytes.resize(bytes.size() / 2); break;     // cut
        case 2: bytes.assign(bytes.size(), 0); break;      // nothing of it left
        case 3: bytes.assign({1, 2, 3}); break;
        default: bytes[0] ^= 0x80; break;                  // no state at all
        }
        return bytes;
    };
    for (int nCase = 0; nCase < 5; nCase++) {
        Exit();
        {
            CSettingsProfile profile(Settings());
            profile.WriteBinary("BarState", "State", spoilt(nCase));
            ASSERT_TRUE(profile.Flush());
        }
        Start();
        for (const BarRow& row : BarRows()) {
            const CSizingControlBar* pBox = Frame().FrameBars().Bar(row.nId);
            EXPECT_EQ(Frame().dockWidgetArea(const_cast<CSizingControlBar*>(pBox)), row.area) << nCase << " " << row.nId;
            EXPECT_EQ(pBox->isHidden(), !row.bShown) << nCase << " " << row.nId;
        }
        EXPECT_TRUE(Frame().Boxes().Colors().isVisible());
    }
}

TEST_F(CBoxesTest, OnlyTheColourBoxHasAMenu)
{
    for (const CSizingControlBar* pBar : Frame().FrameBars().Bars())
        EXPECT_EQ(pBar->titleBarWidget()->findChildren<QToolButton*>().size(), pBar->BarId() == BAR_COLOR ? 2 : 1);
}
