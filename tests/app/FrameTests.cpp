#include "FrameTestKit.h"

#include "app/FramePlacement.h"
#include "app/MdiWorkspace.h"
#include "app/OptionBar.h"
#include "app/ToolBox.h"
#include "doc/ColorState.h"
#include "ui/SizableReBar.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QUrl>

namespace kestrune {
namespace {

using Frames = CFrameTest;

TEST(FrameTitle, HasZoomDepthAndSize)
{
    CPaintImage image;
    image.m_nWidth = 640;
    image.m_nHeight = 480;
    struct {
        int nMode, nBits;
        const char* pszDepth;
    } const rows[] = {{0, 1, " @ 비트맵"}, {1, 4, " @ 16 색상"}, {2, 8, " @ 인덱스 색상"}, {3, 8, " @ 그레이 스케일"},
                      {4, 24, " @ RGB 색상"}, {2, 4, " @ RGB 색상"}, {3, 1, " @ RGB 색상"}};
    for (const auto& row : rows) {
        image.m_nColorMode = row.nMode;
        image.m_nBitsPerPixel = row.nBits;
        EXPECT_EQ(FrameTitle("a.jpg", 1, image), std::string("a.jpg ( 100%)") + row.pszDepth + " 640x480");
    }
    EXPECT_EQ(FrameTitle("a", 0.125f, image), "a (  12%) @ RGB 색상 640x480"); // 12.5 rounds to even
    EXPECT_EQ(FrameTitle("a", 32, image), "a (3200%) @ RGB 색상 640x480");
}

TEST_F(Frames, TitleAndPanesFollowTheView)
{
    EXPECT_EQ(Frame().PaneText(PANE_DOCUMENT), QString());
    CChildFrame& child = NewPicture(64, 48);
    m_pApp->ExecuteCommand(ID_ZOOM_IN);
    EXPECT_TRUE(child.windowTitle().endsWith(QStringLiteral(" ( 200%) @ RGB 색상 64x48"))) << child.windowTitle().toStdString();
    EXPECT_EQ(Frame().PaneText(PANE_ZOOM), QStringLiteral("  200%"));
    Frame().ShowMousePosition(3, 14);
    EXPECT_EQ(Frame().PaneText(PANE_MOUSE), QStringLiteral("X = 3  Y = 14"));
    Frame().UpdateCommandUi();
    EXPECT_TRUE(Frame().PaneText(PANE_DOCUMENT).contains(QStringLiteral("64 x 48")));
    child.CloseNow();
    Frame().UpdateCommandUi();
    EXPECT_EQ(Frame().PaneText(PANE_DOCUMENT), QString());
}

TEST_F(Frames, TheZoomBoxTakesAPercentage)
{
    CPaintView& view = NewPicture().GetView();
    auto* pBox = Frame().OptionBar().findChild<QComboBox*>(QStringLiteral("ZoomBox"));
    const auto type = [&](const QString& strText) {
        pBox->lineEdit()->selectAll();
        QTest::keyClicks(pBox->lineEdit(), strText);
        QTest::keyClick(pBox->lineEdit(), Qt::Key_Return);
        return view.GetZoom();
    };
    EXPECT_FLOAT_EQ(type(QStringLiteral("300")), 3);
    EXPECT_FLOAT_EQ(type(QStringLiteral("150%")), 1); // above 75 % whole numbers alone
    EXPECT_FLOAT_EQ(type(QStringLiteral("33")), 0.33f);
    EXPECT_FLOAT_EQ(type(QStringLiteral("abc")), 0.33f);
    EXPECT_EQ(pBox->currentText(), QStringLiteral("   33%"));
    Frame().OptionBar().TypeZoom(4);
    EXPECT_FLOAT_EQ(view.GetZoom(), 4);
}

TEST_F(Frames, OpeningAnOpenFileBringsItToTheFront)
{
    const auto first = PictureFile("first.bmp"), second = PictureFile("second.png");
    CPaintDoc* pFirst = m_pApp->OpenDocumentFile(first);
    ASSERT_TRUE(pFirst);
    ASSERT_TRUE(m_pApp->OpenDocumentFile(second));
    EXPECT_EQ(m_pApp->ChildFrames().size(), 2u);
    EXPECT_EQ(m_pApp->OpenDocumentFile(Folder() / "." / "first.bmp"), pFirst);
    EXPECT_EQ(m_pApp->ChildFrames().size(), 2u);
    EXPECT_EQ(&m_pApp->ActiveChild()->GetDocument(), pFirst);
    EXPECT_FALSE(m_pApp->OpenDocumentFile(Folder() / "missing.bmp"));
    EXPECT_EQ(m_sink.m_said.size(), 1u);
}

TEST_F(Frames, DroppedFilesOpen)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(PictureFile("a.png").string())),
                  QUrl::fromLocalFile(QString::fromStdString(PictureFile("b.png").string())), QUrl(QStringLiteral("http://x/y.png"))});
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Frame(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Frame(), &drop);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_pApp->ChildFrames().size(), 2u);
}

TEST_F(Frames, RecentFilesSurviveARestart)
{
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < 6; i++) {
        paths.push_back(PictureFile(std::to_string(i) + ".png"));
        ASSERT_TRUE(m_pApp->OpenDocumentFile(paths.back()));
    }
    m_pApp->OpenDocumentFile(paths[3]);
    Restart();
    ASSERT_EQ(m_pApp->RecentFiles().Count(), 5);
    EXPECT_EQ(m_pApp->RecentFiles().At(0), paths[5]); // an open file that comes to the front is not opened anew
    EXPECT_EQ(m_pApp->RecentFiles().At(4), paths[1]);
    QObject parent;
    const auto rows = m_pApp->RecentFileRows(&parent);
    ASSERT_EQ(rows.size(), 5);
    EXPECT_TRUE(rows[1]->text().startsWith(QStringLiteral("&2 "))) << rows[1]->text().toStdString();
    EXPECT_FALSE(rows[1]->icon().isNull());
    rows[1]->trigger();
    ASSERT_TRUE(m_pApp->ActiveChild());
    EXPECT_EQ(m_pApp->ActiveChild()->GetDocument().GetPathName(), paths[4]);
    EXPECT_EQ(m_pApp->RecentFiles().At(0), paths[4]);

    std::filesystem::remove(paths[5]);
    EXPECT_TRUE(m_pApp->ExecuteCommand(ID_FILE_MRU_FILE1 + 1));
    EXPECT_EQ(m_pApp->RecentFiles().Count(), 4); // what is gone leaves the list
    EXPECT_FALSE(m_pApp->QueryCommand(ID_FILE_MRU_FILE5).bEnabled);
}

TEST_F(Frames, TogglesShowAndHideTheBoxes)
{
    for (const BarRow& row : BarRows()) {
        QWidget* pBar = Frame().FrameBars().Bar(row.nId);
        EXPECT_EQ(m_pApp->QueryCommand(row.nToggleCommand).bChecked, row.bShown) << row.pszTitle;
        m_pApp->ExecuteCommand(row.nToggleCommand);
        EXPECT_EQ(pBar->isHidden(), row.bShown) << row.pszTitle;
        EXPECT_EQ(m_pApp->QueryCommand(row.nToggleCommand).bChecked, !row.bShown) << row.pszTitle;
    }
    m_pApp->ExecuteCommand(ID_RESET_BOXES);
    for (const BarRow& row : BarRows())
        EXPECT_EQ(m_pApp->QueryCommand(row.nToggleCommand).bChecked, row.bShown) << row.pszTitle;
}

TEST_F(Frames, BoxesRememberPlaceAndSizes)
{
    Frame().FrameBars().Bar(BAR_HISTORY)->hide();
    CSizingControlBar* pColor = Frame().FrameBars().Bar(BAR_COLOR);
    pColor->setFloating(true);
    pColor->setGeometry(100, 120, 333, 222);
    QCoreApplication::processEvents();
    Restart();
    EXPECT_TRUE(Frame().FrameBars().Bar(BAR_HISTORY)->isHidden());
    pColor = Frame().FrameBars().Bar(BAR_COLOR);
    EXPECT_TRUE(pColor->isFloating());
    EXPECT_EQ(pColor->FloatSize(), QSize(333, 222));
    EXPECT_EQ(pColor->size(), QSize(333, 222));
    EXPECT_EQ(m_pApp->Profile().GetInt("Kestrune-SCBar-5001", "sizeFloatCX", 0), 333);
    for (const char* pszKey : {"sizeHorzCX", "sizeHorzCY", "sizeVertCX", "sizeVertCY", "sizeFloatCY"})
        EXPECT_GT(m_pApp->Profile().GetInt("Kestrune-SCBar-5002", pszKey, 0), 0) << pszKey;
}

TEST_F(Frames, AStateThatNamesAnUnknownBarIsIgnored)
{
    Frame().FrameBars().Bar(BAR_HISTORY)->hide();
    Exit();
    {
        CSettingsProfile profile(Settings());
        const int nBars = profile.GetInt("BarState", "Bars", 0);
        ASSERT_GT(nBars, 6);
        profile.WriteInt("BarState", "Bar" + std::to_string(nBars - 1), 5099);
        ASSERT_TRUE(profile.Flush());
    }
    Start();
    for (const BarRow& row : BarRows()) {
        EXPECT_EQ(!Frame().FrameBars().Bar(row.nId)->isHidden(), row.bShown) << row.pszTitle;
        EXPECT_FALSE(Frame().FrameBars().Bar(row.nId)->isFloating());
    }
}

TEST_F(Frames, TheBandsOfToolBarsSurviveARestart)
{
    constexpr char c_szKey[] = "InformationBarStateInfo (v1.01)";
    const int nHeight = Frame().OptionBar().height();
    m_pApp->ExecuteCommand(ID_VIEW_TOOLBAR);
    Restart();
    const CSettingsProfile written(Settings());
    const std::string text = written.GetString("ReBar", c_szKey, "");
    EXPECT_TRUE(text.starts_with("wID=E800,cx=")) << text;
    EXPECT_NE(text.find(",fStyle=00000009\nwID=E805,cx="), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with(",fStyle=00000001")) << text;
    EXPECT_FALSE(m_pApp->QueryCommand(ID_VIEW_TOOLBAR).bChecked);
    EXPECT_TRUE(m_pApp->QueryCommand(ID_VIEW_OPTION_BAR).bChecked);
    EXPECT_EQ(Frame().OptionBar().height(), nHeight);

    // The text is what counts, also where the toolkit's own state has the other order.
    m_pApp->Profile().WriteString("ReBar", c_szKey, "wID=E805,cx=900,fStyle=00000001\nwID=E800,cx=900,fStyle=00000001");
    Frame().LoadState();
    QCoreApplication::processEvents();
    const int nToolBarTop = Frame().findChild<QToolBar*>(QStringLiteral("Bar59392"))->y();
    EXPECT_EQ(nToolBarTop, Frame().OptionBar().y() + nHeight);
    EXPECT_EQ(Frame().OptionBar().height(), nHeight);
    EXPECT_TRUE(m_pApp->QueryCommand(ID_VIEW_TOOLBAR).bChecked);
    Restart();
    EXPECT_EQ(Frame().findChild<QToolBar*>(QStringLiteral("Bar59392"))->y(), nToolBarTop);
    m_pApp->ExecuteCommand(ID_RESET_BOXES);
    QCoreApplication::processEvents();
    EXPECT_LT(Frame().findChild<QToolBar*>(QStringLiteral("Bar59392"))->y(), Frame().OptionBar().y());
}

TEST_F(Frames, TheBandMenuAndTheCommandsAgree)
{
    QContextMenuEvent press(QContextMenuEvent::Mouse, {20, 10}, Frame().OptionBar().mapToGlobal(QPoint(20, 10)));
    QApplication::sendEvent(&Frame().OptionBar(), &press);
    auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(pMenu);
    ASSERT_EQ(pMenu->actions().size(), 2);
    EXPECT_EQ(pMenu->actions()[0]->text(), QStringLiteral("기본 도구 모음"));
    EXPECT_EQ(pMenu->actions()[1]->text(), QStringLiteral("옵션 막대"));
    pMenu->actions()[1]->trigger();
    pMenu->close();
    EXPECT_FALSE(m_pApp->QueryCommand(ID_VIEW_OPTION_BAR).bChecked);
    m_pApp->ExecuteCommand(ID_VIEW_OPTION_BAR);
    const std::unique_ptr<QMenu> pAgain(Frame().ReBar().MakeMenu(nullptr));
    EXPECT_TRUE(pAgain->actions()[1]->isChecked());
}

TEST_F(Frames, ABoxOffScreenComesBack)
{
    CSizingControlBar* pBrowser = Frame().FrameBars().Bar(BAR_BROWSER);
    pBrowser->show();
    pBrowser->setFloating(true);
    pBrowser->move(30000, 30000);
    QCoreApplication::processEvents();
    Restart();
    pBrowser = Frame().FrameBars().Bar(BAR_BROWSER);
    EXPECT_TRUE(!pBrowser->isFloating() || IsOnScreen(pBrowser->geometry()));
}

TEST_F(Frames, PlacementIsRestoredUnlessItIsOffEveryScreen)
{
    Frame().setGeometry(40, 50, 700, 500);
    QCoreApplication::processEvents();
    Restart();
    EXPECT_EQ(Frame().geometry(), QRect(40, 50, 700, 500));
    Exit();
    {
        CSettingsProfile profile(Settings());
        profile.WriteBinary("Frame", "FrameWndState", EncodePlacement({QRect(20000, 50, 700, 500), true}));
        ASSERT_TRUE(profile.Flush());
    }
    Start();
    EXPECT_TRUE(IsOnScreen(Frame().geometry()));
    EXPECT_FALSE(Frame().isMaximized());
}

TEST_F(Frames, ExitAsksForEachChangedPictureAndThenWritesSettings)
{
    NewPicture();
    NewPicture();
    g_crForeground = Rgb(9, 8, 7);
    m_sink.m_answers = {MessageAnswer::No, MessageAnswer::Cancel};
    m_pApp->ExecuteCommand(ID_APP_EXIT);
    EXPECT_EQ(m_sink.m_said.size(), 2u);
    EXPECT_TRUE(Frame().isVisible());
    EXPECT_EQ(m_pApp->ChildFrames().size(), 2u);
    EXPECT_FALSE(std::filesystem::exists(Settings()));

    m_sink.m_answers = {MessageAnswer::No, MessageAnswer::No};
    m_pApp->ExecuteCommand(ID_APP_EXIT);
    EXPECT_FALSE(Frame().isVisible());
    EXPECT_TRUE(m_pApp->ChildFrames().empty());
    const CSettingsProfile profile(Settings());
    EXPECT_EQ(profile.GetInt("Color Value", "RedBr", 0), 9);
    EXPECT_EQ(profile.GetInt("General", "History", 0), 20);
    EXPECT_FALSE(profile.FindInt("Capture", "Delay"));
    EXPECT_TRUE(profile.FindBinary("Frame", "FrameWndState"));
    g_crForeground = Rgb(255, 255, 255);
}

TEST_F(Frames, CloseAllStopsWhereTheUserStops)
{
    m_pApp->OpenDocumentFile(PictureFile("a.png"));
    NewPicture();
    NewPicture();
    m_sink.m_answers = {MessageAnswer::Cancel};
    EXPECT_FALSE(m_pApp->CloseAllDocuments());
    EXPECT_EQ(m_pApp->ChildFrames().size(), 2u); // the opened one was not changed and went without a question
    m_sink.m_answers = {MessageAnswer::No, MessageAnswer::No};
    m_pApp->ExecuteCommand(ID_CLOSE_ALL);
    EXPECT_TRUE(m_pApp->ChildFrames().empty());
    EXPECT_FALSE(m_pApp->QueryCommand(ID_CLOSE_ALL).bEnabled);
}

TEST_F(Frames, ClosingActivatesAnotherPicture)
{
    CChildFrame& first = NewPicture();
    CChildFrame& second = NewPicture();
    EXPECT_EQ(m_pApp->ActiveChild(), &second);
    second.CloseNow();
    EXPECT_EQ(m_pApp->ActiveChild(), &first);
    EXPECT_EQ(g_nColors, ColorsOfDepth(24));
    first.CloseNow();
    EXPECT_EQ(g_nColors, c_nColorsUnlimited);
}

TEST(Tiling, CoversTheAreaWithoutOverlap)
{
    const QRect area(5, 7, 1001, 703);
    for (const bool bHorizontal : {true, false})
        for (int nCount = 1; nCount <= 12; nCount++) {
            const auto rects = TileRects(area, nCount, bHorizontal);
            ASSERT_EQ(static_cast<int>(rects.size()), nCount);
            qint64 nCovered = 0;
            for (std::size_t i = 0; i < rects.size(); i++) {
                EXPECT_TRUE(area.contains(rects[i]));
                nCovered += qint64(rects[i].width()) * rects[i].height();
                for (std::size_t j = 0; j < i; j++)
                    EXPECT_FALSE(rects[i].intersects(rects[j])) << nCount;
            }
            EXPECT_EQ(nCovered, qint64(area.width()) * area.height());
        }
    EXPECT_EQ(TileRects({0, 0, 100, 80}, 2, true)[1], QRect(0, 40, 100, 40));
    EXPECT_EQ(TileRects({0, 0, 100, 80}, 2, false)[1], QRect(50, 0, 50, 80));
}

TEST(Tiling, CascadeKeepsEveryCaptionInside)
{
    const QRect area(0, 0, 800, 600);
    for (const QRect& rc : CascadeRects(area, 20, 24))
        EXPECT_TRUE(area.contains(rc));
    EXPECT_EQ(CascadeRects(area, 2, 24)[1].topLeft(), QPoint(24, 24));
}

TEST_F(Frames, TileAndCascadeArrangeTheChildren)
{
    for (int i = 0; i < 4; i++)
        NewPicture();
    m_pApp->ActiveChild()->showMaximized();
    m_pApp->ExecuteCommand(ID_WINDOW_TILE_VERT);
    QCoreApplication::processEvents();
    const QRect rcSpace = Frame().Workspace().viewport()->rect();
    for (const CChildFrame* pChild : m_pApp->ChildFrames()) {
        EXPECT_FALSE(pChild->isMaximized());
        EXPECT_NEAR(pChild->width(), rcSpace.width() / 2, 1);
        EXPECT_NEAR(pChild->height(), rcSpace.height() / 2, 1);
    }
    m_pApp->ExecuteCommand(ID_WINDOW_CASCADE);
    EXPECT_EQ(m_pApp->ChildFrames()[0]->pos(), QPoint(0, 0));
    EXPECT_GT(m_pApp->ChildFrames()[1]->x(), 0);
    EXPECT_FALSE(m_pApp->QueryCommand(ID_WINDOW_ARRANGE).bEnabled);
    m_pApp->ActiveChild()->showMinimized();
    EXPECT_TRUE(m_pApp->QueryCommand(ID_WINDOW_ARRANGE).bEnabled);
    EXPECT_TRUE(m_pApp->ExecuteCommand(ID_WINDOW_ARRANGE));
}

TEST_F(Frames, ALowWindowHasTwoColumnsOfTools)
{
    Frame().resize(1024, 700);
    QCoreApplication::processEvents();
    EXPECT_EQ(Frame().ToolBox().Columns(), 1);
    Frame().resize(1024, 480);
    QCoreApplication::processEvents();
    EXPECT_EQ(Frame().ToolBox().Columns(), 2);
    const int nHeight = Frame().OptionBar().height();
    Frame().OptionBar().ShowPage(new QLineEdit);
    QCoreApplication::processEvents();
    EXPECT_EQ(Frame().OptionBar().height(), nHeight);
}

} // namespace
} // namespace kestrune
