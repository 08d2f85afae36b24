// Mouse, keyboard, zoom and window shots of scripts, through the real program.

#include "ScriptHarness.h"

#include <QImage>

TEST_F(CScriptTest, ZoomBoxFollowsItsRules)
{
    // Above 0.75 a whole number counts, within 0.125 and 32.
    EXPECT_EQ(Output("new 20 20 white rgb\nzoom 0.5\nprint title\nzoom 1.5\nprint title\nzoom 3\nprint title\nzoom 99\nprint title\nzoom 0.01\nprint title\n")
                  .replaceInStrings(QRegularExpression("^.*\\( *([0-9]+)%\\).*$"), "\\1"),
              (QStringList{"50", "100", "300", "3200", "12"})); // %4.0f of 12.5 rounds to even
    // The ladder of the zoom commands, up and down again.
    EXPECT_EQ(Output("new 20 20 white rgb\nzoom 9\ncommand 30063\nprint title\ncommand 30064\nprint title\ncommand 30064\nprint title\ncommand 30066\nprint title\n")
                  .replaceInStrings(QRegularExpression("^.*\\( *([0-9]+)%\\).*$"), "\\1"),
              (QStringList{"1100", "900", "800", "100"}));
}

TEST_F(CScriptTest, TheMagnifierTakesClicks)
{
    const QStringList out = Output("new 40 30 white rgb\nprint tool\nkeydown 90\nkeyup 90\n"
                                   "press 5 5\nrelease 5 5\nprint title\n");
    ASSERT_EQ(out.size(), 2);
    EXPECT_TRUE(out[0].startsWith("0x")) << out;
    EXPECT_EQ(out[0].split(u' ').size(), 2);
}

TEST_F(CScriptTest, SpaceHoldsTheHandAndGivesTheToolBack)
{
    const QStringList out = Output("new 40 30 white rgb\nprint tool\nkeydown 32\nprint tool\nkeyup 32\nprint tool\n");
    ASSERT_EQ(out.size(), 3);
    EXPECT_EQ(out[1].section(u' ', 0, 0), "0x700");
    EXPECT_EQ(out[2].section(u' ', 0, 0), out[0].section(u' ', 0, 0));
}

TEST_F(CScriptTest, ShortcutsRunTheirCommands)
{
    // Ctrl+Alt+0 shows the actual size.
    EXPECT_TRUE(Output("new 9 9 white rgb\nzoom 4\nkeydown 17\nkeydown 18\nkeydown 48\nkeyup 48\nkeyup 18\nkeyup 17\nprint title\n")
                    .last()
                    .contains("( 100%)"));
}

TEST_F(CScriptTest, ButtonsAreHeldOnceAndLetGoOnce)
{
    const QString strNew = "new 9 9 white rgb\n";
    EXPECT_FALSE(Reason(strNew + "press 1 1\npress 2 2\n", 3).isEmpty());
    EXPECT_FALSE(Reason(strNew + "press 1 1\nrelease 1 1\nrelease 1 1\n", 4).isEmpty());
    EXPECT_FALSE(Reason(strNew + "press 1 1\ndoubleclick 1 1\n", 3).isEmpty());
    Output(strNew + "press 1 1 right shift\nmove 30 -20 ctrl\nrelease 2 2\ndoubleclick 4 4\npress -50 2000\nrelease -50 2000\n");
}

TEST_F(CScriptTest, WaitLetsTimersRunForThatTime)
{
    QElapsedTimer timer;
    timer.start();
    Output("");
    const qint64 nEmpty = timer.restart();
    Output("wait 1500\n");
    EXPECT_GE(timer.elapsed(), 1500);
    EXPECT_LT(timer.elapsed(), 1500 + 3 * nEmpty + 3000);
}

TEST_F(CScriptTest, ScreenshotsShowTheWindowAndItsBoxes)
{
    Output("new 200 150 black rgb\nscreenshot frame.png\nscreenshot box.png 5001\nscreenshot status.png 59393\nscreenshot options.png 59397\n");
    const QImage frame(Path("frame.png"));
    ASSERT_GE(frame.width(), 800);
    ASSERT_GE(frame.height(), 600);
    // The picture is in it: as many black pixels as it has.
    int nBlack = 0;
    for (int y = 0; y < frame.height(); y++)
        for (int x = 0; x < frame.width(); x++)
            nBlack += (frame.pixel(x, y) & 0xFFFFFF) == 0;
    EXPECT_GE(nBlack, 200 * 150);
    for (const char* strName : {"box.png", "status.png", "options.png"}) {
        const QImage box(Path(strName));
        EXPECT_GT(box.width(), 50) << strName;
        EXPECT_LT(box.height(), frame.height()) << strName;
    }
}
