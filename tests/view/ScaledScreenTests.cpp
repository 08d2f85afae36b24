#include "ViewTestKit.h"

#include <QProcess>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace kestrune;
using namespace kestrune::test;

// At every screen scale an image pixel at zoom 3 is a block of 3 x 3 pixels of the screen, also for a view that stands at an odd
// place within its window. The screen scale is fixed when a program starts, so the check runs in programs of its own.
TEST(ScaledScreen, PixelsStaySharp)
{
    const double fScale = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
    if (fScale == 0) {
        for (const char* pszScale : {"1", "1.25", "1.5", "2"}) {
            QProcess process;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("QT_SCALE_FACTOR", pszScale);
            process.setProcessEnvironment(environment);
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=ScaledScreen.PixelsStaySharp"});
            ASSERT_TRUE(process.waitForFinished(60000));
            EXPECT_EQ(process.exitCode(), 0) << pszScale << ": " << process.readAll().toStdString();
        }
        return;
    }
    Picture picture(500, 400);
    CNotingHost host;
    QWidget window;
    CPaintView view(picture.doc, host, &window);
    view.setGeometry(13, 21, 203, 151);
    window.resize(260, 200);
    window.show();
    view.OnInitialUpdate();
    view.SetZoom(3);
    view.ScrollToPosition({100, 51});
    QApplication::processEvents();
    ASSERT_EQ(view.ClientScale(), fScale);
    const CSize client = view.GetClientSize();
    EXPECT_EQ(client.cx, static_cast<int>(view.viewport()->width() * fScale));
    const QImage shot = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QPoint corner(qRound(13 * fScale), qRound(21 * fScale));
    int nWrong = 0;
    for (int y = 1; y < client.cy - 1; y++) {
        for (int x = 1; x < client.cx - 1; x++) {
            const CPoint pt = view.ClientToImage(CPoint{x, y});
            EXPECT_EQ(pt, (CPoint{(x + 100) / 3, (y + 51) / 3}));
            nWrong += shot.pixel(corner + QPoint(x, y)) != picture.Pixel(pt.x, pt.y);
        }
    }
    EXPECT_EQ(nWrong, 0);
    // The mouse reaches every pixel of the screen.
    for (CPoint pt : {CPoint{0, 0}, CPoint{101, 77}, CPoint{102, 78}})
        EXPECT_EQ(view.PointFromViewport(view.PointToViewport(pt)), pt);
}
