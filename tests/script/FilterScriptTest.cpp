// Filters through the real program: dialogs filled in by keys, history, settings, refusals.

#include "ScriptHarness.h"

#include <QImage>

#include <algorithm>

namespace {

QString History(const QStringList& out) { return out.join(u'|'); }

/// A soft ellipse at (10, 6) of a picture of 70 x 50.
constexpr const char* c_pszEllipse = "open a.png\ncommand 1122\noption Floater Feather 3\npress 10 6\nmove 20 20\nrelease 44 32\n";

class CFilterSelectionTest : public CScriptTest {
protected:
    CFilterSelectionTest()
    {
        QImage picture(70, 50, QImage::Format_RGB32);
        for (int y = 0; y < 50; y++)
            for (int x = 0; x < 70; x++)
                picture.setPixel(x, y, qRgb(x * 3, y * 5, (x * 7 + y * 11) & 255));
        picture.save(Path("a.png"));
    }
    QImage Dump(const QString& strName) const { return QImage(Path(strName)).convertToFormat(QImage::Format_RGB32); }

    /// What the picture holds after a filter: the base, with the float's pixels over it as far as the mask goes.
    QImage Merged(const QString& strNumber, const QStringList& place) const
    {
        const QImage floating = Dump("float" + strNumber + ".ppm");
        const QImage mask = QImage(Path("mask.pgm")).convertToFormat(QImage::Format_Grayscale8);
        QImage result = Dump("base.ppm");
        for (int y = place[5].toInt(); y < place[7].toInt(); y++)
            for (int x = place[4].toInt(); x < place[6].toInt(); x++) {
                const QPoint in(x - place[0].toInt(), y - place[1].toInt());
                const int m = mask.constScanLine(in.y())[in.x()];
                const auto mix = [m](int o, int f) {
                    const int u = (f - o) * m + 128;
                    return o + (((u >> 8) + u) >> 8);
                };
                const QRgb o = result.pixel(x, y), f = floating.pixel(in);
                result.setPixel(x, y, qRgb(mix(qRed(o), qRed(f)), mix(qGreen(o), qGreen(f)), mix(qBlue(o), qBlue(f))));
            }
        return result;
    }
    static QImage Grey(QImage picture)
    {
        for (int y = 0; y < picture.height(); y++)
            for (int x = 0; x < picture.width(); x++) {
                const QRgb c = picture.pixel(x, y);
                const auto [nLow, nHigh] = std::minmax({qRed(c), qGreen(c), qBlue(c)});
                const int n = (nLow + nHigh) / 2;
                picture.setPixel(x, y, qRgb(n, n, n));
            }
        return picture;
    }
};

} // namespace

TEST_F(CFilterSelectionTest, ASoftSelectionMixesAndARepeatedFilterReadsTheFloatAgain)
{
    // Where it was made, moved half over the corner, and moved out of the picture altogether.
    for (const char* pszMove : {"", "command 1002\npress 25 20\nmove 12 9\nrelease 5 2\n",
                                "command 1002\npress 25 20\nmove 60 60\nrelease 220 190\n"}) {
        SCOPED_TRACE(pszMove);
        const QStringList out = Output(QString(c_pszEllipse) + pszMove
                                       + "print float\ndump base base.ppm\ndump floatmask mask.pgm\ndump float float0.ppm\n"
                                         "dump image image0.ppm\n"
                                         "command 30029\ndump float float1.ppm\ndump image image1.ppm\n"
                                         "command 30040 Radius=4 Amount=300\ndump float float2.ppm\ndump image image2.ppm\n"
                                         "dump base base2.ppm\nundo\ndump image undone1.ppm\nundo\ndump image undone0.ppm\n");
        ASSERT_EQ(out.size(), 1);
        const QStringList place = out[0].split(u' ');
        EXPECT_EQ(Dump("float1.ppm"), Grey(Dump("float0.ppm")));
        EXPECT_EQ(Dump("image1.ppm"), Merged("1", place));
        EXPECT_NE(Dump("float2.ppm"), Dump("float1.ppm"));
        EXPECT_EQ(Dump("image2.ppm"), Merged("2", place));
        EXPECT_EQ(Dump("base2.ppm"), Dump("base.ppm")) << "what was there before is mixed in each time";
        EXPECT_EQ(Dump("undone1.ppm"), Dump("image1.ppm"));
        EXPECT_EQ(Dump("undone0.ppm"), Dump("image0.ppm"));
    }
}

TEST_F(CFilterSelectionTest, ASelectionOfNothingTakesNothingAndNoneTakesThePicture)
{
    const QStringList out = Output(QString(c_pszEllipse)
                                   + "option Floater Mode 4\npress 60 40\nmove 62 42\nrelease 68 48\nprint bounds\n"
                                     "dump image 0.ppm\ncommand 30029\ndump image 1.ppm\nundo\ndump image 2.ppm\n"
                                     "command 30057\nprint float\ncommand 30029\ndump image 3.ppm\nundo\ndump image 4.ppm\n");
    EXPECT_EQ(out, (QStringList{"empty", "none"}));
    EXPECT_EQ(Dump("1.ppm"), Dump("0.ppm"));
    EXPECT_EQ(Dump("2.ppm"), Dump("0.ppm"));
    EXPECT_EQ(Dump("3.ppm"), Grey(Dump("0.ppm")));
    EXPECT_EQ(Dump("4.ppm"), Dump("0.ppm"));
}

TEST_F(CFilterSelectionTest, TheLateRecordsHoldTheResult)
{
    // Equalize, Curves and Colour Balance push their record when the picture has changed: undo gives back what is there.
    // With a selection the picture changes only afterwards.
    for (const char* pszFilter : {"30018", "30026 Points=128:40", "30035 Red=80"}) {
        SCOPED_TRACE(pszFilter);
        const QString strRun = QStringLiteral("dump image 0.ppm\ncommand %1\ndump image 1.ppm\nundo\ndump image 2.ppm\n").arg(pszFilter);
        Output("open a.png\n" + strRun);
        EXPECT_NE(Dump("1.ppm"), Dump("0.ppm"));
        EXPECT_EQ(Dump("2.ppm"), Dump("1.ppm"));
        Output(c_pszEllipse + strRun);
        EXPECT_NE(Dump("1.ppm"), Dump("0.ppm"));
        EXPECT_EQ(Dump("2.ppm"), Dump("0.ppm"));
    }
}

TEST_F(CScriptTest, EveryFilterRunsOnASinglePixel)
{
    QString strScript = "new 1 1 white rgb\n";
    for (const char* pszFilter : {"30002", "30003 Value=250", "30001 Angle=300 Length=255", "30004", "30030", "30031", "30021",
                                  "30020", "30034", "30027", "30028", "30037 Value=10", "30039", "30040 Amount=500 Radius=250",
                                  "30043 Value=10", "30044 Value=9", "30045", "30047", "30025", "30026", "30035 Luminosity=1",
                                  "30029", "30018", "30019", "30104"})
        strScript += QStringLiteral("command %1\n").arg(pszFilter);
    EXPECT_EQ(Output(strScript + "print history\n").last(), "* [필터] 정규분포화");
}

TEST_F(CScriptTest, FiltersRunWithTheKeysOfTheirDialogs)
{
    const QStringList out = Output("new 200 160 white rgb\n"
                                   "command 30030 Red=20 Green=0 Blue=100 Color=10,20,30\nprint pixel 5 5\n"
                                   "command 30034 Gamma=0.5\nprint pixel 5 5\n"
                                   "command 30027 Brightness=-50 Contrast=0\nprint pixel 5 5\n"
                                   "command 30019\nprint pixel 5 5\n"
                                   "command 30021 Amount=200\nprint pixel 5 5\n"
                                   "undo\nprint pixel 5 5\n");
    // Red: (255 * 80 + 10 * 20) / 100; the picture is one colour, so a pixel tells all.
    EXPECT_EQ(out,
              (QStringList{"206 255 30", "229 255 87", "114 127 43", "141 128 211", "255 255 255", "141 128 211"}));
}

TEST_F(CScriptTest, RepeatedGroupsOfKeysApplyInOrder)
{
    const QStringList out
        = Output("new 20 20 white rgb\n"
                 "command 30025 OutWhite=200 Channel=1 OutWhite=100 Channel=0 OutWhite=150\nprint pixel 1 1\n"
                 "new 20 20 white rgb\n"
                 "command 30026 Channel=1 Points=255:64 Channel=3 Points=0:9,255:128\nprint pixel 1 1\n"
                 "new 20 20 white rgb\ncommand 30026\nprint pixel 1 1\n"
                 "new 20 20 white rgb\n"
                 "command 30028 Range=2 Saturation=-50 Range=0 Lightness=-100\nprint pixel 1 1\n"
                 "new 20 20 white rgb\n"
                 "command 30035 Range=2 Red=-100 Range=0 Blue=-100\nprint pixel 1 1\n");
    // The mode "red" of Levels works on the blue bytes.
    ASSERT_EQ(out.size(), 5) << out;
    EXPECT_EQ(out[0], "150 150 58");
    EXPECT_EQ(out[1], "64 255 128");
    EXPECT_EQ(out[2], out[1]) << "the curve is there again at the next opening";
    EXPECT_EQ(out[3], "128 128 128");
    EXPECT_NE(out[4], "255 255 255");
}

TEST_F(CScriptTest, FiltersLeaveTheirNameInTheHistory)
{
    const QStringList out = Output("new 20 20 white rgb\n"
                                   "command 30029\ncommand 30018\ncommand 30019\ncommand 30104\n"
                                   "command 30021\ncommand 30020 Level=9\ncommand 30020 Level=17 cancel\n"
                                   "command 30036\ncommand 30041\ncommand 30077\ncommand 30118\n"
                                   "print setting Posterize Level\nprint setting Threshold Amount\nprint setting "
                                   "Solarize Threshold\nprint history\n");
    EXPECT_EQ(
        History(out),
        "9|128|missing|  << 새로운 이미지 >>|  [필터] 색조 제거|  [필터] 평균화|  [필터] 색 반전|  [필터] 정규분포화|"
        "  [필터] 쓰레쉬 홀드|* [필터] 포스터 효과");
}

TEST_F(CScriptTest, FiltersRefuseWhatIsNoNumberAndLimitWhatIsOutOfRange)
{
    EXPECT_EQ(Output("new 9 9 white rgb\ncommand 30021 Amount=999\ncommand 30020 Level=-4\ncommand 30003 Value=251\n"
                     "print setting Threshold Amount\nprint setting Posterize Level\nprint setting \"Gaussian Blur\" Value\n"),
              (QStringList{"255", "1", "250"}));
    EXPECT_TRUE(Reason("new 9 9 white rgb\ncommand 30021 Amount=much\n", 2).startsWith("Amount: "));
    EXPECT_TRUE(Reason("new 9 9 white rgb\ncommand 30021 Level=3\n", 2).startsWith("Level: "));
    EXPECT_TRUE(Reason("new 9 9 white rgb\ncommand 30045 Matrix=1,2\n", 2).startsWith("Matrix: "));
    Reason("command 30021 Amount=3\n", 1); // no picture, so the command is disabled
    const QStringList out = Output("new 3 1 white rgb\ncommand 30045 Scale=2 Offset=-10\nprint pixel 2 0\nprint "
                                   "command 30045\nprint command 30120\n");
    ASSERT_EQ(out.size(), 3);
    EXPECT_EQ(out[0], "117 117 117");
    EXPECT_EQ(out[1], "enabled unchecked");
}
