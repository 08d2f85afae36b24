// The Image and Color Mode menus and the clipboard within the program, as a person drives them.

#include "ScriptHarness.h"

#include <QFile>
#include <QImage>

#include <sys/resource.h>

namespace {

/// 61 x 37, every pixel another colour.
QImage MakePhoto(const QString& strPath)
{
    QImage image(61, 37, QImage::Format_RGB888);
    for (int y = 0; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++)
            image.setPixel(x, y, qRgb(x * 4, y * 6, (x * 3 + y * 5) & 255));
    EXPECT_TRUE(image.save(strPath, "PNG"));
    return image;
}

QImage Dumped(const QString& strPath)
{
    return QImage(strPath).convertToFormat(QImage::Format_RGB888);
}

constexpr const char* c_strWidthRefused = "message: 이미지의 폭은 5000 pixel 보다 클 수 없습니다.\\n 5000 이하의 수치를 입력하십시오.";
constexpr const char* c_strHeightRefused = "message: 이미지의 높이는 5000 pixel 보다 클 수 없습니다.\\n 5000 이하의 수치를 입력하십시오.";

} // namespace

TEST_F(CScriptTest, TurnsAndFlipsOfThePicture)
{
    const QImage photo = MakePhoto(Path("p.png"));
    const struct {
        const char* strId;
        QImage expected;
    } c_aTurns[] = {{"30006", photo.transformed(QTransform().rotate(-90))},
                    {"30007", photo.transformed(QTransform().rotate(90))},
                    {"30008", photo.transformed(QTransform().rotate(180))},
                    {"30109", photo.mirrored(true, false)},
                    {"30110", photo.mirrored(false, true)}};
    for (const auto& turn : c_aTurns) {
        const QStringList out = Output("open p.png\ncommand $1\nprint size\ndump image i.ppm\ndump base b.ppm\nprint history\nundo\nprint size\ndump image u.ppm\nredo\ndump image r.ppm\n", {turn.strId});
        EXPECT_EQ(Dumped(Path("i.ppm")), turn.expected) << turn.strId;
        EXPECT_EQ(Dumped(Path("b.ppm")), turn.expected);
        EXPECT_EQ(Dumped(Path("u.ppm")), photo);
        EXPECT_EQ(Dumped(Path("r.ppm")), turn.expected);
        EXPECT_EQ(out, (QStringList{QString("%1 %2").arg(turn.expected.width()).arg(turn.expected.height()), "  << 원본 이미지 >>", "* 판형 회전", "61 37"}));
    }
    EXPECT_EQ(Output("new 1 3 white rgb\ncommand 30007\nprint size\n"), QStringList{"3 1"});
}

TEST_F(CScriptTest, ResizeKeepsProportionsAndHasItsMethods)
{
    const QImage photo = MakePhoto(Path("p.png"));
    EXPECT_EQ(Output("open p.png\ncommand 30012 Width=30\nprint size\nundo\ncommand 30012 Height=100\nprint size\nundo\n"
                     "command 30012 Width=10 Height=30 Proportions=0\nprint size\nundo\n"
                     "command 30012 Proportions=0 Width=10 Height=30 Method=3\nprint size\nundo\n"
                     "command 30012 Proportions=0 Width=122 Proportions=1\nprint size\nundo\n"
                     "command 30012 Width=61*2\nprint size\nundo\ncommand 30012 Width=5 cancel\nprint size\nprint history\n"),
              (QStringList{"30 18", "164 100", "10 30", "10 30", "122 74", "122 74", "61 37", "* << 원본 이미지 >>", "- 이미지 크기 변경"}));
    // Twice the size with the nearest pixel is every pixel twice, and half with the mean of areas is the picture again.
    Output("open p.png\ncommand 30012 Width=122 Method=0\ndump image big.ppm\ncommand 30012 Width=61 Method=3\ndump image back.ppm\n");
    EXPECT_EQ(Dumped(Path("big.ppm")), photo.scaled(122, 74));
    EXPECT_EQ(Dumped(Path("back.ppm")), photo);
    Output("new 50 40 white rgb\ncommand 30012 Proportions=0 Width=4999 Method=0\ncommand 30012 Proportions=0 Height=4999 Method=0\n");
}

TEST_F(CScriptTest, SidesOf5000AreRefusedWithTheirMessages)
{
    for (const char* strId : {"30012", "30013"}) {
        const ScriptRun width = Run(QStringLiteral("new 40 30 white rgb\ncommand %1 Width=5000\n").arg(strId));
        EXPECT_EQ(width.nStatus, 1);
        EXPECT_EQ(width.out, QStringList{c_strWidthRefused});
        const ScriptRun height = Run(QStringLiteral("new 40 30 white rgb\ncommand %1 Height=70000\n").arg(strId));
        EXPECT_EQ(height.nStatus, 1);
        EXPECT_EQ(height.out, QStringList{c_strHeightRefused});
    }
    // The side that follows may be the one that grows too large.
    EXPECT_EQ(Run("new 10 100 white rgb\ncommand 30012 Width=600\n").out, QStringList{c_strHeightRefused});
    EXPECT_EQ(Output("new 5000 3 white bitmap\nprint size\ncommand 30012 Proportions=0 Height=7\nprint size\n"), (QStringList{"5000 3", "5000 7"}))
        << "a picture that has such a side keeps it";
    EXPECT_TRUE(Reason("new 40 30 white rgb\ncommand 30013 Width=0\n", 2).contains("0 is not in 1 to"));
}

TEST_F(CScriptTest, TheCanvasSizeLeavesThePictureAtItsAnchor)
{
    const QImage photo = MakePhoto(Path("p.png"));
    EXPECT_EQ(Output("open p.png\nbackground 9 8 7\ncommand 30013 Width=70 Height=40\nprint size\nprint pixel 0 0\ndump image i.ppm\nprint history\n"
                     "undo\ncommand 30013 Width=20 Height=50 Anchor=2\ndump image j.ppm\n"),
              (QStringList{"70 40", "9 8 7", "  << 원본 이미지 >>", "* 판형 크기 변경"}));
    EXPECT_EQ(Dumped(Path("i.ppm")).copy(4, 1, 61, 37), photo);
    EXPECT_EQ(Dumped(Path("j.ppm")).copy(0, 0, 20, 37), photo.copy(41, 0, 20, 37));
    EXPECT_EQ(Dumped(Path("j.ppm")).pixel(19, 37), qRgb(9, 8, 7));
}

TEST_F(CScriptTest, ColourModesAndWhatTheyAsk)
{
    MakePhoto(Path("p.png"));
    const QString strTell = "print mode\nprint depth\nprint colors\nprint title\n";
    const QStringList out = Output("open p.png\nprint command 30148\n" + strTell + "command 30146 Palette=0 Dither=1\n" + strTell + "print command 30146\nprint command 30148\n"
                                   "command 30145 Palette=1 Dither=0\n" + strTell + "answer cancel\ncommand 30147\nprint mode\ncommand 30147\n" + strTell
                                   + "command 30144\n" + strTell + "command 30148\n" + strTell + "print history\ndump image i.ppm\ncommand 30145 cancel\nprint mode\nprint command 57643\n");
    const QString strAsked = "message: 그레이 스케일로 변경하면 색상 정보가 제거됩니다.\\n계속하시겠습니까?";
    EXPECT_EQ(out, (QStringList{"enabled checked", "4", "24", "16777216", "p.png ( 100%) @ RGB 색상 61x37",
                                "2", "8", "256", "p.png ( 100%) @ 인덱스 색상 61x37", "enabled checked", "enabled unchecked",
                                "1", "4", "16", "p.png ( 100%) @ 16 색상 61x37",
                                strAsked, "1", strAsked, "3", "8", "256", "p.png ( 100%) @ 그레이 스케일 61x37",
                                "0", "1", "2", "p.png ( 100%) @ 비트맵 61x37",
                                "4", "24", "16777216", "p.png ( 100%) @ RGB 색상 61x37", "* << 원본 이미지 >>", "4", "disabled unchecked"}));
    const QImage image = Dumped(Path("i.ppm"));
    for (int y = 0; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++)
            ASSERT_TRUE(image.pixel(x, y) == qRgb(0, 0, 0) || image.pixel(x, y) == qRgb(255, 255, 255));
}

TEST_F(CScriptTest, CopyPasteCutAndClear)
{
    const QImage photo = MakePhoto(Path("p.png"));
    const QStringList out = Output("print command 30099\nopen p.png\nprint command 30082\nprint command 30084\ncommand 30009\n"
                                   "copy\nprint command 30082\nprint command 30084\ncommand 30082\nprint size\nprint mode\ndump image new.ppm\nprint history\n"
                                   "new 20 20 white rgb\nbackground 1 2 3\npaste\nprint history\ndump image here.ppm\n"
                                   "command 30010\ndump image flipped.ppm\ncommand 30090\ndump image cleared.ppm\nundo\ndump image u.ppm\n"
                                   "activate 0\ncut\nprint pixel 60 36\nprint history\ncommand 30099\nprint command 30099\nprint command 30082\n");
    EXPECT_EQ(out, (QStringList{"disabled unchecked", "disabled unchecked", "disabled unchecked", "message: 선택된 영역이 없습니다.",
                                "enabled unchecked", "enabled unchecked", "61 37", "4", "* << 새로운 이미지 >>",
                                "  << 새로운 이미지 >>", "* 붙여넣기",
                                "1 2 3", "  << 원본 이미지 >>", "* 영역 지우기", "disabled unchecked", "disabled unchecked"}));
    EXPECT_EQ(Dumped(Path("new.ppm")), photo);
    EXPECT_EQ(Dumped(Path("here.ppm")), photo.copy(0, 0, 20, 20));
    EXPECT_EQ(Dumped(Path("flipped.ppm")), photo.mirrored(false, true).copy(0, 0, 20, 20));
    QImage white(20, 20, QImage::Format_RGB888);
    white.fill(Qt::white);
    EXPECT_EQ(Dumped(Path("cleared.ppm")), white) << "what was lifted is dropped";
    EXPECT_EQ(Dumped(Path("u.ppm")), Dumped(Path("flipped.ppm")));
}

TEST_F(CScriptTest, CutTakesTheSelectionAndWithoutOneTheCommandsSaySo)
{
    const QImage photo = MakePhoto(Path("p.png"));
    const QString strNothing = "message: 선택된 영역이 없습니다.";
    const QStringList out = Output("open p.png\ncommand 30009\ncommand 30010\nprint history\nbackground 9 8 7\noption Floater Feather 1\npress 10 5\nrelease 30 25\nprint bounds\n"
                                   "dump mask m.pgm\ncut\ndump image cut.ppm\nprint float\ncommand 30082\nprint size\ndump image new.ppm\n");
    ASSERT_EQ(out.size(), 6);
    EXPECT_EQ(out.mid(0, 3), (QStringList{strNothing, strNothing, "* << 원본 이미지 >>"}));
    const QStringList bounds = out[3].split(u' ');
    const QRect rc(QPoint(bounds[0].toInt(), bounds[1].toInt()), QPoint(bounds[2].toInt() - 1, bounds[3].toInt() - 1));
    EXPECT_EQ(out[4], QStringLiteral("%1 %2 %3 %4 %5 1 0 1").arg(rc.x()).arg(rc.y()).arg(rc.width()).arg(rc.height()).arg(out[3]));
    EXPECT_EQ(out[5], QStringLiteral("%1 %2").arg(rc.width()).arg(rc.height()));
    EXPECT_EQ(Dumped(Path("new.ppm")), photo.copy(rc)) << "the whole rectangle, before it was erased";
    const QImage mask(Path("m.pgm")), cut = Dumped(Path("cut.ppm"));
    for (int y = 0; y < photo.height(); y++)
        for (int x = 0; x < photo.width(); x++) {
            const int nWas = qGreen(photo.pixel(x, y)), t = (8 - nWas) * qGray(mask.pixel(x, y)) + 128;
            ASSERT_EQ(qGreen(cut.pixel(x, y)), nWas + (((t >> 8) + t) >> 8)) << x << ' ' << y;
        }
}

TEST_F(CScriptTest, WithoutMemoryAResizeSaysSoAndEndsInOrder)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer takes no bound on its addresses";
#endif
    QProcess program;
    program.setProcessEnvironment(Environment());
    program.start(QStringLiteral(KESTRUNE_BUILD_DIR "/kestrune"), {"--script", "-"});
    program.write("new 1500 1000 white rgb\nprint size\nwait 2000\ncommand 30012 Width=4999 Proportions=0 Height=4999\n");
    program.closeWriteChannel();
    while (!program.canReadLine() && program.waitForReadyRead(60000)) { }
    ASSERT_EQ(program.readLine().trimmed(), "1500 1000");
    QFile pages(QStringLiteral("/proc/%1/statm").arg(program.processId()));
    ASSERT_TRUE(pages.open(QIODevice::ReadOnly));
    const rlim_t nMost = pages.readAll().split(' ').first().toULongLong() * 4096 + (40 << 20); // the new picture takes 75 million bytes
    const rlimit limit{nMost, nMost};
    ASSERT_EQ(prlimit(static_cast<pid_t>(program.processId()), RLIMIT_AS, &limit, nullptr), 0);
    ASSERT_TRUE(program.waitForFinished(60000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(program.readAllStandardOutput()).startsWith("message: 메모리가 부족하여")) << program.readAllStandardError().toStdString();
}
