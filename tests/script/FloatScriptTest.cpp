// Floats from selection to pixels, and the crop, through the real program.

#include "ScriptHarness.h"

#include <QFile>
#include <QImage>

namespace {

/// A picture of 90 x 90 in which no two neighbours are alike; square, and selections on its diagonal, so that a rectangle without feather
/// stays where it was drawn.
class CFloatScriptTest : public CScriptTest {
protected:
    CFloatScriptTest()
        : m_picture(90, 90, QImage::Format_RGB32)
    {
        for (int y = 0; y < 90; y++)
            for (int x = 0; x < 90; x++)
                m_picture.setPixel(x, y, qRgb(x * 2, y * 2, (x * 7 + y * 11) & 255));
        m_picture.save(Path("a.png"));
    }
    QImage Picture(const char* strName) const { return QImage(Path(strName)).convertToFormat(QImage::Format_RGB32); }
    /// Dumps everything under names that begin with the letter, and prints where the float is.
    static QString DumpAll(char letter)
    {
        return QStringLiteral("dump image %1i.ppm\ndump base %1b.ppm\ndump float %1f.ppm\ndump floatmask %1m.pgm\ndump mask %1s.pgm\nprint float\n").arg(QLatin1Char(letter));
    }
    /// What `DumpAll` has left is in itself as it must be: the float over the base through its mask at that opacity, and the selection where
    /// the float's mask lies in the picture.
    void ExpectComposite(char letter, const QString& strFloat, int nOpacity) const
    {
        const auto name = [&](const char* strRest) { return letter + std::string(strRest); };
        const QImage image = Picture(name("i.ppm").c_str()), base = Picture(name("b.ppm").c_str()), pixels = Picture(name("f.ppm").c_str());
        const QImage floatMask(Path(name("m.pgm").c_str())), mask(Path(name("s.pgm").c_str()));
        const QStringList where = strFloat.split(u' ');
        ASSERT_EQ(where.size(), 11) << strFloat.toStdString();
        const QRect rc(where[0].toInt(), where[1].toInt(), where[2].toInt(), where[3].toInt());
        ASSERT_EQ(pixels.size(), rc.size());
        ASSERT_EQ(floatMask.size(), rc.size());
        const auto scale = [](int a, int b) { return (a * b + 128 + ((a * b + 128) >> 8)) >> 8; };
        for (int y = 0; y < image.height(); y++)
            for (int x = 0; x < image.width(); x++) {
                const bool bIn = rc.contains(x, y);
                const int m = bIn ? qGray(floatMask.pixel(x - rc.x(), y - rc.y())) : 0;
                ASSERT_EQ(qGray(mask.pixel(x, y)), m) << x << ' ' << y;
                const int a = scale(m, static_cast<int>(nOpacity * 255 / 100.0));
                const QRgb under = base.pixel(x, y), over = bIn ? pixels.pixel(x - rc.x(), y - rc.y()) : under;
                const QRgb wanted = qRgb(qRed(under) + scale(qRed(over) - qRed(under), a), qGreen(under) + scale(qGreen(over) - qGreen(under), a),
                                         qBlue(under) + scale(qBlue(over) - qBlue(under), a));
                ASSERT_EQ(image.pixel(x, y), wanted) << x << ' ' << y;
            }
    }

    QImage m_picture;
    const QString m_strSoft = "open a.png\nbackground 250 120 60\ncommand 1122\noption Floater Feather 6\npress 15 20\nrelease 55 48\n"; ///< an ellipse that fades
    const QString m_strSelect = "open a.png\noption Floater Feather 0\nbackground 250 120 60\npress 10 10\nrelease 40 40\n";
};

} // namespace

TEST_F(CFloatScriptTest, MovingLiftsAndLeavesAHole)
{
    const QStringList out = Output(m_strSelect + "print float\ncommand 1002\npress 20 20\nmove 30 30\nrelease 60 25\nprint float\n"
                                                 "print bounds\ndump image moved.ppm\ndump base base.ppm\ndump mask mask.pgm\n"
                                                 "undo\ndump image undone.ppm\nprint float\nredo\ndump image redone.ppm\n");
    EXPECT_EQ(out, (QStringList{"10 10 30 30 10 10 40 40 1 0 1", "50 15 30 30 50 15 80 45 1 1 1", "50 15 80 45", "10 10 30 30 10 10 40 40 1 0 1"}));
    const QImage moved = Picture("moved.ppm"), base = Picture("base.ppm"), mask(Path("mask.pgm"));
    for (int y = 0; y < 90; y++)
        for (int x = 0; x < 90; x++) {
            const bool bFloat = QRect(50, 15, 30, 30).contains(x, y), bHole = QRect(10, 10, 30, 30).contains(x, y);
            const QRgb under = bHole ? qRgb(250, 120, 60) : m_picture.pixel(x, y);
            ASSERT_EQ(base.pixel(x, y), under) << x << ' ' << y;
            ASSERT_EQ(moved.pixel(x, y), bFloat ? m_picture.pixel(x - 40, y - 5) : under) << x << ' ' << y;
            ASSERT_EQ(qGray(mask.pixel(x, y)), bFloat ? 255 : 0);
        }
    EXPECT_EQ(Picture("undone.ppm"), m_picture);
    EXPECT_EQ(Picture("redone.ppm"), moved);
}

TEST_F(CFloatScriptTest, CopyModeOpacityAndTheBorder)
{
    const QStringList out = Output(m_strSelect + "option Floater Copy 1\noption Floater Opacity 40\ncommand 1002\npress 20 20\n"
                                                 "release 0 75\nprint float\ndump image out.ppm\ndump base base.ppm\n");
    EXPECT_EQ(out, QStringList{"-10 65 30 30 0 65 20 90 1 1 1"});
    EXPECT_EQ(Picture("base.ppm"), m_picture);
    const QImage picture = Picture("out.ppm");
    EXPECT_EQ(picture.pixel(15, 15), m_picture.pixel(15, 15));
    for (int x = 0; x < 20; x++) {
        const int nBelow = qRed(m_picture.pixel(x, 70)), nFloat = qRed(m_picture.pixel(x + 20, 15));
        EXPECT_NEAR(qRed(picture.pixel(x, 70)), nBelow + (nFloat - nBelow) * 102 / 255.0, 1) << x;
    }
}

TEST_F(CFloatScriptTest, TransformsAddUpUntilADoubleClick)
{
    const QStringList out = Output(m_strSelect + "print command 30051\ncommand 30051\npress 40 40\nmove 50 50\nrelease 70 55\nprint float\n"
                                                 "command 30054\npress 70 55\nrelease 70 61\ndoubleclick 80 5\nprint float\nprint bounds\n"
                                                 "dump float float.ppm\ndump floatmask floatmask.pgm\ndump image a.ppm\nundo\n"
                                                 "dump image undone.ppm\nprint float\nredo\ndump image b.ppm\nprint history\n");
    ASSERT_GE(out.size(), 5);
    EXPECT_EQ(out[0], "enabled unchecked");
    EXPECT_EQ(out[1], "10 10 30 30 10 10 40 40 1 0 1");
    // 60 x 45, of which the right edge was drawn down by 6 and the left one up.
    EXPECT_EQ(out[2], "10 4 60 57 10 4 70 61 1 1 0");
    EXPECT_TRUE(out[3].startsWith("10 ")) << out[3].toStdString();
    EXPECT_EQ(out[4], "10 10 30 30 10 10 40 40 1 0 1");
    EXPECT_TRUE(out.last().startsWith("* ") && out.last().endsWith("선택영역 수직 변형")) << out.last().toStdString();
    const QImage mask(Path("floatmask.pgm")), pixels(Path("float.ppm"));
    EXPECT_EQ(mask.size(), QSize(60, 57));
    EXPECT_EQ(pixels.size(), QSize(60, 57));
    EXPECT_EQ(qGray(mask.pixel(1, 4)), 255);
    EXPECT_EQ(qGray(mask.pixel(1, 50)), 0);
    EXPECT_EQ(qGray(mask.pixel(58, 4)), 0);
    EXPECT_EQ(qGray(mask.pixel(58, 54)), 255);
    EXPECT_EQ(qGray(mask.pixel(30, 28)), 255);
    EXPECT_EQ(Picture("undone.ppm"), m_picture);
    EXPECT_EQ(Picture("a.ppm"), Picture("b.ppm"));
}

TEST_F(CFloatScriptTest, ASoftFloatIsMovedBentAndCommitted)
{
    const QStringList out = Output(m_strSoft + "dump mask first.pgm\n" + DumpAll('a') + "option Floater Opacity 70\ncommand 1002\npress 30 30\nmove 50 40\nrelease 33 2\n" + DumpAll('b')
                                   + "print float\ncommand 30052\npress 49 3\nrelease 30 30\nkeydown 13\nkeyup 13\n" + DumpAll('c')
                                   + "command 30055\ndoubleclick 80 80\n" + DumpAll('d') + "command 30009\n" + DumpAll('e')
                                   + "command 1001\npress 85 85\nrelease 85 85\ndump image all.ppm\ndump base all-base.ppm\nprint float\nprint bounds\nprint history\n");
    ASSERT_GE(out.size(), 8);
    // The hole: the picture moved toward the background by the mask that was.
    const QImage first(Path("first.pgm")), base = Picture("bb.ppm");
    for (int y = 0; y < 90; y++)
        for (int x = 0; x < 90; x++) {
            const int m = qGray(first.pixel(x, y)), nWas = qRed(m_picture.pixel(x, y)), t = (250 - nWas) * m + 128;
            ASSERT_EQ(qRed(base.pixel(x, y)), nWas + (((t >> 8) + t) >> 8)) << x << ' ' << y;
        }
    EXPECT_EQ(Picture("ai.ppm"), m_picture);
    EXPECT_EQ(Picture("af.ppm"), Picture("bf.ppm"));
    ExpectComposite('b', out[1], 70);
    ExpectComposite('c', out[3], 70);
    EXPECT_EQ(out[4], out[3]) << "an identity leaves the float where it is";
    for (const char* strPart : {"i.ppm", "b.ppm", "m.pgm", "s.pgm"})
        EXPECT_EQ(QImage(Path(QString("c") + strPart)), QImage(Path(QString("d") + strPart))) << strPart;
    ExpectComposite('e', out[5], 70);
    EXPECT_EQ(QImage(Path("em.pgm")), QImage(Path("dm.pgm")).mirrored(true, false));
    EXPECT_EQ(Picture("all.ppm"), Picture("ei.ppm"));
    EXPECT_EQ(Picture("all-base.ppm"), Picture("ei.ppm"));
    EXPECT_EQ(out.mid(6, 2), (QStringList{"none", "empty"}));
    EXPECT_EQ(out.mid(8).replaceInStrings(QRegularExpression("^..(\\[.*\\] )?"), ""),
              (QStringList{"<< 원본 이미지 >>", "타원", "선택영역 이동", "선택영역 회전", "선택영역 자유 변형", "선택영역 수평 대칭", "선택영역 해제"}));
}

TEST_F(CFloatScriptTest, AFloatMovedWhollyOutsideComesBack)
{
    const QStringList out = Output(m_strSoft + DumpAll('a') + "option Floater Copy 1\ncommand 1002\npress 30 30\nrelease -60 35\n" + DumpAll('b') + "print bounds\n"
                                   "press 5 5\nrelease 95 0\n" + DumpAll('c'));
    ASSERT_EQ(out.size(), 4);
    EXPECT_TRUE(out[1].contains(" 0 0 0 0 1 1 1")) << out[1].toStdString();
    EXPECT_EQ(out[2], "empty");
    EXPECT_EQ(Picture("bi.ppm"), m_picture);
    EXPECT_EQ(Picture("bf.ppm"), Picture("af.ppm")) << "its pixels are kept";
    EXPECT_EQ(out[3].section(u' ', 0, 3), out[0].section(u' ', 0, 3));
    EXPECT_EQ(QImage(Path("cs.pgm")), QImage(Path("as.pgm")));
    EXPECT_EQ(Picture("ci.ppm"), m_picture) << "over what it was copied from";
}

TEST_F(CFloatScriptTest, TransformsThatCollapseLeaveEverything)
{
    // Three corners on one point, and all of it in less than a pixel.
    const QStringList out = Output(m_strSelect + "dump image a.ppm\ncommand 30055\npress 10 10\nrelease 40 40\npress 40 10\nrelease 40 41\npress 10 40\nrelease 40 39\n"
                                                 "keydown 13\nkeyup 13\nprint float\ndump image b.ppm\nprint history\n");
    EXPECT_EQ(out, (QStringList{"10 10 30 30 10 10 40 40 1 0 1", "  << 원본 이미지 >>", "* [영역선택] 사각형"}));
    EXPECT_EQ(Picture("a.ppm"), Picture("b.ppm"));
}

TEST_F(CFloatScriptTest, APasteLargerThanThePictureFloatsWithAllItsPixels)
{
    const QStringList out = Output("open a.png\ncopy\nnew 40 30 white rgb\npaste\nprint float\nprint bounds\ndump float f.ppm\ndump image i.ppm\n"
                                   "command 1002\npress 20 20\nrelease -30 -35\nprint float\nprint bounds\n" + DumpAll('m')
                                   + "command 30090\nprint float\ndump image c.ppm\n");
    EXPECT_EQ(out.mid(0, 4), (QStringList{"0 0 90 90 0 0 90 90 1 1 1", "0 0 40 30", "-50 -55 90 90 0 0 40 30 1 1 1", "0 0 40 30"}));
    EXPECT_EQ(Picture("f.ppm"), m_picture);
    EXPECT_EQ(Picture("i.ppm"), m_picture.copy(0, 0, 40, 30));
    EXPECT_EQ(Picture("mi.ppm"), m_picture.copy(50, 55, 40, 30));
    ExpectComposite('m', out[4], 100);
    QImage white(40, 30, QImage::Format_RGB32);
    white.fill(Qt::white);
    EXPECT_EQ(Picture("c.ppm"), white) << "the pixels that floated are dropped";
    EXPECT_EQ(out.last(), "0 0 40 30 0 0 40 30 1 0 1");
}

TEST_F(CFloatScriptTest, APictureOfTwoColoursKeepsThemUnderAFloat)
{
    const QStringList out = Output(m_strSoft + "command 30144\noption Floater Opacity 60\ncommand 1002\npress 30 30\nrelease 41 33\ndump image i.ppm\n"
                                               "command 30090\ndump image c.ppm\nprint colors\n");
    EXPECT_EQ(out, QStringList{"2"});
    for (const char* strName : {"i.ppm", "c.ppm"}) {
        const QImage image = Picture(strName);
        for (int y = 0; y < 90; y++)
            for (int x = 0; x < 90; x++)
                ASSERT_TRUE(image.pixel(x, y) == qRgb(0, 0, 0) || image.pixel(x, y) == qRgb(255, 255, 255)) << strName << x << ' ' << y;
    }
}

TEST_F(CFloatScriptTest, KeysApplyAndDrop)
{
    const QStringList out = Output(m_strSelect + "command 30055\npress 40 40\nmove 60 50\nkeydown 27\nkeyup 27\nrelease 60 50\nkeydown 13\nkeyup 13\n"
                                                 "print float\nundo\npress 40 40\nrelease 60 50\nkeydown 13\nkeyup 13\nprint float\n");
    EXPECT_EQ(out, (QStringList{"10 10 30 30 10 10 40 40 1 1 0", "10 10 50 40 10 10 60 50 1 1 0"}));
}

TEST_F(CFloatScriptTest, CropTakesTheRectangle)
{
    const QStringList out = Output("open a.png\ncommand 1004\npress 70 60\nmove 30 30\nrelease 20 10\nkeydown 13\nkeyup 13\nprint size\n"
                                   "dump image crop.ppm\nundo\nprint size\npress 5 5\nrelease 50 50\nkeydown 27\nkeyup 27\nkeydown 13\nkeyup 13\n"
                                   "print size\npress 10 20\nrelease 200 30\ndoubleclick 40 25\nprint size\nprint history\n");
    ASSERT_EQ(out.size(), 6);
    EXPECT_EQ(out[0], "50 50");
    EXPECT_EQ(Picture("crop.ppm"), m_picture.copy(20, 10, 50, 50));
    EXPECT_EQ(out.mid(1, 3), (QStringList{"90 90", "90 90", "80 10"}));
    EXPECT_TRUE(out.last().endsWith("이미지 자르기"));
}

TEST_F(CFloatScriptTest, WithoutASelectionTheTransformsAreOff)
{
    EXPECT_EQ(Output("open a.png\nprint command 30053\n"), QStringList{"disabled unchecked"});
    // A float that goes while its tool is chosen: the press says so, and the next one is a press again.
    EXPECT_EQ(Output(m_strSelect + "command 30051\ncommand 30057\npress 40 40\nrelease 50 50\npress 40 40\nrelease 50 50\n"),
              (QStringList{"message: 영역 선택 도구를 이용하여 적용할 이미지 영역을 \\n먼저 선택하십시오.",
                           "message: 영역 선택 도구를 이용하여 적용할 이미지 영역을 \\n먼저 선택하십시오."}));
}
