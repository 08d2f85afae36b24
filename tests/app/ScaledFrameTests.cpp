// The frame on screens of other scales. The scale is fixed when a program starts, so the checks run in programs of their own.

#include "FrameTestKit.h"

#include <QProcess>

using namespace kestrune;

using ScaledFrame = CFrameTest;

TEST_F(ScaledFrame, AChildHoldsItsPictureAtEveryScale)
{
    const double fScale = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
    if (fScale == 0) {
        for (const char* pszScale : {"1", "1.25", "2"}) {
            QProcess process;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("QT_SCALE_FACTOR", pszScale);
            process.setProcessEnvironment(environment);
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=ScaledFrame.AChildHoldsItsPictureAtEveryScale"});
            ASSERT_TRUE(process.waitForFinished(60000));
            EXPECT_EQ(process.exitCode(), 0) << pszScale << ": " << process.readAll().toStdString();
        }
        return;
    }
    Frame().resize(1280, 800);
    QCoreApplication::processEvents();
    CPaintView& view = NewPicture(601, 403).GetView();
    ASSERT_EQ(view.ClientScale(), fScale);
    const CSize client = view.GetClientSize();
    EXPECT_GE(client.cx, 601);
    EXPECT_GE(client.cy, 403);
    EXPECT_LE(client.cx, 601 + 8);
    EXPECT_LE(client.cy, 403 + 8);

    // The whole of what is free, and the picture as large as it goes.
    EXPECT_TRUE(m_pApp->ExecuteCommand(ID_ZOOM_FIT));
    const CSize space = static_cast<CViewHost&>(Frame()).AvailableSpace(view);
    EXPECT_GT(m_pApp->ActiveChild()->width(), space.cx * 9 / 10);
    EXPECT_LE(m_pApp->ActiveChild()->width(), space.cx);
    EXPECT_GT(view.GetScaledSize().cx, static_cast<int>(space.cx * fScale / 2)); // above 1 the zoom goes in whole steps
    EXPECT_LE(view.GetScaledSize().cx, view.GetClientSize().cx);
}
