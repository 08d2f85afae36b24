// The preview of the filter dialogs: when it runs, what it filters, what dragging and zooming show.

#include "FilterTestKit.h"

#include "filters/gui/FilterCommands.h"
#include "filters/gui/FilterPreview.h"
#include "filters/gui/FilterRunner.h"
#include "filters/gui/PreviewPane.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QToolButton>

#include <stdexcept>

using namespace kestrune;

namespace {

constexpr int c_nThreshold = 30021;

/// A preview of the threshold over a large picture that counts its runs.
struct Scene {
    explicit Scene(CSize size = {900, 700}, int nPane = CPreviewGeometry::c_nPaneSize)
        : pImage(MakePicture(size.cx, size.cy))
    {
        PrepareFilterDialog(*pImage, data);
        data.values.an[0] = 128;
        pPreview = std::make_unique<CFilterPreview>(data, nPane, [this](const CRect& rc) {
            runs.push_back(rc);
            PreviewFilter(*FindFilter(c_nThreshold), *pImage, data, rc);
        });
        pPreview->show();
        pPane = pPreview->findChild<CPreviewPane*>();
    }
    QPoint InPane(int x, int y) const { return {x + CPreviewPane::c_nFrame, y + CPreviewPane::c_nFrame}; }
    QToolButton* Button(const QString& strText) const
    {
        for (auto* pButton : pPreview->findChildren<QToolButton*>())
            if (pButton->text() == strText)
                return pButton;
        return nullptr;
    }
    void WaitForRun(std::size_t nRuns) const
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return runs.size() >= nRuns; }, 2000));
    }

    std::unique_ptr<CPaintImage> pImage;
    FilterDialogData data;
    std::vector<CRect> runs;
    std::unique_ptr<CFilterPreview> pPreview;
    CPreviewPane* pPane = nullptr;
};

} // namespace

TEST(FilterPreview, ARunFiltersThePanesRectangleAlone)
{
    Scene scene;
    LBitmapBase before;
    before.Copy(scene.pImage->m_Bitmap);
    scene.pPreview->OnTimer();
    const CRect rc{375, 275, 525, 425};
    ASSERT_EQ(scene.runs, std::vector{rc});
    for (int y = 0; y < 700; y += 7)
        for (int x = 0; x < 900; x += 3) {
            const COLORREF cr = scene.data.bmpPreview.GetPixelColor(x, y);
            if (rc.Contains(x, y))
                EXPECT_TRUE(cr == 0 || cr == Rgb(255, 255, 255));
            else
                EXPECT_EQ(cr, before.GetPixelColor(x, y));
        }
    EXPECT_TRUE(SameBitmap(scene.pImage->m_Bitmap, before));
    // What the pane shows is the filtered part, pixel for pixel.
    const QImage shot = scene.pPane->grab().toImage();
    for (const QPoint pt : {QPoint(0, 0), QPoint(149, 149), QPoint(70, 20)}) {
        const COLORREF cr = scene.data.bmpPreview.GetPixelColor(rc.left + pt.x(), rc.top + pt.y());
        EXPECT_EQ(shot.pixel(scene.InPane(pt.x(), pt.y())), qRgb(RedOf(cr), GreenOf(cr), BlueOf(cr)));
    }
}

TEST(FilterPreview, ABurstOfChangesCostsOneRun)
{
    Scene scene;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 10; i++) {
        scene.pPreview->StartTimer(CFilterPreview::c_nParameterDelay);
        QTest::qWait(20);
    }
    EXPECT_TRUE(scene.runs.empty() || clock.elapsed() > 300) << "each change starts the delay anew";
    scene.WaitForRun(1);
    QTest::qWait(2 * CFilterPreview::c_nParameterDelay);
    EXPECT_EQ(scene.runs.size(), 1u);
    EXPECT_FALSE(scene.pPreview->IsWaiting());
}

TEST(FilterPreview, DraggingShowsTheUnfilteredPictureUntilTheRelease)
{
    Scene scene;
    scene.pPreview->OnTimer();
    scene.pPreview->StartTimer(CFilterPreview::c_nParameterDelay);
    QTest::mousePress(scene.pPane, Qt::LeftButton, {}, scene.InPane(70, 70));
    EXPECT_FALSE(scene.pPreview->IsWaiting());
    EXPECT_TRUE(SameBitmap(scene.data.bmpPreview, scene.data.bmpClean));
    QTest::mouseMove(scene.pPane, scene.InPane(40, 90));
    // The offscreen platform's moves carry no buttons; the pane's own event does.
    QMouseEvent move(QEvent::MouseMove, scene.InPane(40, 90), scene.pPane->mapToGlobal(scene.InPane(40, 90)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(scene.pPane, &move);
    EXPECT_EQ(scene.pPreview->Geometry().SourceRect(), (CRect{405, 255, 555, 405}));
    QTest::mouseRelease(scene.pPane, Qt::LeftButton, {}, scene.InPane(40, 90));
    EXPECT_TRUE(scene.pPreview->IsWaiting());
    scene.WaitForRun(2);
    EXPECT_EQ(scene.runs.back(), (CRect{405, 255, 555, 405}));
    QTest::keyClick(scene.pPane, Qt::Key_Right);
    EXPECT_EQ(scene.pPreview->Geometry().SourceRect().left, 421);
}

TEST(FilterPreview, TheCursorIsAHandOverThePictureAlone)
{
    Scene scene({40, 600});
    const auto shapeAt = [&](int x) {
        QMouseEvent move(QEvent::MouseMove, scene.InPane(x, 70), scene.pPane->mapToGlobal(scene.InPane(x, 70)),
                         Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(scene.pPane, &move);
        return scene.pPane->cursor().shape();
    };
    EXPECT_EQ(shapeAt(10), Qt::ArrowCursor);
    EXPECT_EQ(shapeAt(75), Qt::BitmapCursor);
    EXPECT_EQ(shapeAt(140), Qt::ArrowCursor);
}

TEST(FilterPreview, ButtonsZoomAndTheLabelGoesBack)
{
    Scene scene;
    ASSERT_TRUE(scene.Button("100%"));
    scene.Button("+")->click();
    scene.Button("+")->click();
    EXPECT_TRUE(scene.Button("140%"));
    scene.WaitForRun(1);
    EXPECT_EQ(scene.runs.back().Width(), 107);
    scene.Button("140%")->click();
    EXPECT_TRUE(scene.Button("100%"));
    for (int i = 0; i < 9; i++)
        scene.Button("-")->click();
    ASSERT_TRUE(scene.Button("20%"));
    EXPECT_EQ(scene.pPreview->Geometry().SourceRect(), (CRect{76, 0, 824, 700}));
    scene.pPreview->OnTimer();
    const QImage shot = scene.pPane->grab().toImage();
    EXPECT_EQ(shot.width(), 152);
}

TEST(FilterPreview, TinyPicturesAreDrawnWithoutAFault)
{
    for (const CSize size : {CSize{1, 1}, CSize{1, 400}, CSize{3, 3}, CSize{151, 2}}) {
        Scene scene(size, 180);
        for (int i = 0; i < 8; i++) {
            scene.Button(i < 4 ? "-" : "+")->click();
            scene.pPreview->OnTimer();
            EXPECT_EQ(scene.pPane->grab().width(), 182);
        }
    }
}

TEST(FilterRunner, LongWorkGetsTheWaitCursorAndPassesItsFailureOn)
{
    QWidget canvas;
    bool bShort = false;
    RunWithWaitCursor([&] { bShort = QGuiApplication::overrideCursor() == nullptr; }, &canvas);
    EXPECT_TRUE(bShort);

    bool bWait = false, bFrozen = false, bEvents = false;
    QTimer::singleShot(350, &canvas, [&] { // runs only if events are handled while the work goes on
        bEvents = true;
        bWait = QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
        bFrozen = !canvas.updatesEnabled();
    });
    RunWithWaitCursor([] { QThread::msleep(600); }, &canvas);
    EXPECT_TRUE(bEvents);
    EXPECT_TRUE(bWait);
    EXPECT_TRUE(bFrozen);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(canvas.updatesEnabled());

    // The window may go while the work goes on; what else asks for the picture is turned away.
    auto pGone = std::make_unique<QWidget>();
    bool bRunning = false;
    QTimer::singleShot(320, &canvas, [&] {
        bRunning = IsFilterRunning();
        pGone.reset();
    });
    RunWithWaitCursor([] { QThread::msleep(500); }, pGone.get());
    EXPECT_FALSE(pGone);
    EXPECT_TRUE(bRunning);
    EXPECT_FALSE(IsFilterRunning());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    EXPECT_THROW(RunWithWaitCursor([] { throw std::runtime_error("no memory"); }, &canvas), std::runtime_error);
    EXPECT_THROW(RunWithWaitCursor(
                     [] {
                         QThread::msleep(400);
                         throw std::bad_alloc();
                     },
                     &canvas),
                 std::bad_alloc);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(IsFilterRunning());
}

TEST(FilterRunner, ACommandDuringARunDoesNothing)
{
    CCommandTarget target;
    CMemoryProfile profile;
    const auto pImage = MakePicture(30, 30);
    RegisterFilterCommands(
        target, [&] { return pImage.get(); }, profile, nullptr);
    LBitmapBase before;
    before.Copy(pImage->m_Bitmap);
    CommandState state;
    RunWithWaitCursor(
        [&] {
            target.RunCommand(30019);
            target.UpdateCommand(30019, state);
        },
        nullptr);
    EXPECT_FALSE(state.bEnabled);
    EXPECT_TRUE(SameBitmap(pImage->m_Bitmap, before));
    EXPECT_EQ(HistoryRows(*pImage).size(), 1u);
    EXPECT_TRUE(target.RunCommand(30019));
    EXPECT_FALSE(SameBitmap(pImage->m_Bitmap, before));
}
