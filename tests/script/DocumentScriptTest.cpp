// Whole paths of a document through the real program: made, opened, saved, exported, closed.

#include "ScriptHarness.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <cstdlib>

namespace {

QByteArray Contents(const QString& strPath)
{
    QFile file(strPath);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << strPath.toStdString();
    return file.readAll();
}

/// A picture with soft and hard places, 61 x 37, as a PNG that another program wrote.
QImage MakePhoto(const QString& strPath)
{
    QImage image(61, 37, QImage::Format_RGB888);
    for (int y = 0; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++)
            image.setPixel(x, y, qRgb(x * 4, y * 6, x < 30 ? 40 : 200));
    EXPECT_TRUE(image.save(strPath, "PNG"));
    return image;
}

/// The mean difference of a dump to a picture, over all channels.
double MeanDifference(const QString& strPpm, const QImage& image)
{
    const QImage dump(strPpm);
    if (dump.size() != image.size())
        return 999;
    double fSum = 0;
    for (int y = 0; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++) {
            const QRgb a = dump.pixel(x, y), b = image.pixel(x, y);
            fSum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
        }
    return fSum / (3.0 * image.width() * image.height());
}

/// The picture as a person sees its brightness: 30 % red, 59 % green, 11 % blue.
QImage Grey(QImage image)
{
    for (int y = 0; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++) {
            const QRgb c = image.pixel(x, y);
            const int n = (30 * qRed(c) + 59 * qGreen(c) + 11 * qBlue(c)) / 100;
            image.setPixel(x, y, qRgb(n, n, n));
        }
    return image;
}

struct SaveCase {
    const char* strExtension;
    double fGreatest; ///< mean difference that its coding may make
    int nDepth;       ///< what the reader tells of the written file
    bool bGrey = false; ///< the coding has no palette: the picture comes back grey
};
const SaveCase c_aSaves[] = {{"jpg", 6, 24}, {"bmp", 0, 24}, {"psd", 0, 24}, {"tif", 0, 24}, {"cut", 3, 8, true},
                             {"pct", 1, 24}, {"sgi", 0, 24}, {"wpg", 25, 8}, {"pcx", 0, 24}};

} // namespace

TEST_F(CScriptTest, NewPicturesHaveTheirFillModeAndTitle)
{
    const QStringList out = Output("new 10 6 white rgb\nprint size\nprint mode\nprint depth\nprint colors\nprint pixel 9 5\nprint title\n"
                                   "new 5 5 black grey\nprint mode\nprint depth\nprint colors\nprint pixel 0 0\nprint title\n"
                                   "new 3 2 white bitmap\nprint mode\nprint depth\nprint colors\nprint title\n"
                                   "new 4 4 background rgb\nprint pixel 1 1\n"
                                   "zoom 2\nprint title\n");
    ASSERT_EQ(out.size(), 17) << out;
    EXPECT_EQ(out.mid(0, 5), (QStringList{"10 6", "4", "24", "16777216", "255 255 255"}));
    EXPECT_TRUE(out[5].endsWith(" ( 100%) @ RGB 색상 10x6")) << out[5].toStdString();
    EXPECT_EQ(out.mid(6, 4), (QStringList{"3", "8", "256", "0 0 0"}));
    EXPECT_TRUE(out[10].endsWith(" ( 100%) @ 그레이 스케일 5x5")) << out[10].toStdString();
    EXPECT_EQ(out.mid(11, 3), (QStringList{"0", "1", "2"}));
    EXPECT_TRUE(out[14].endsWith(" ( 100%) @ 비트맵 3x2")) << out[14].toStdString();
    EXPECT_EQ(out[15], "0 0 0") << "the background colour is black at first";
    EXPECT_TRUE(out[16].endsWith(" ( 200%) @ RGB 색상 4x4")) << out[16].toStdString();
}

TEST_F(CScriptTest, NewWithoutWordsLeavesTheDialogAsItStands)
{
    EXPECT_EQ(Output("new 10 6\nprint mode\nnew 7 7 white grey\nnew 8 8\nprint mode\nprint pixel 0 0\nnew 6 6 rgb\nprint mode\nprint pixel 0 0\n"),
              (QStringList{"0", "3", "255 255 255", "4", "255 255 255"}));
}

TEST_F(CScriptTest, ADumpIsThePicture)
{
    const QImage photo = MakePhoto(Path("p.png"));
    EXPECT_EQ(Output("open p.png\nprint size\nprint mode\nprint depth\nprint pixel 10 5\nprint title\ndump image i.ppm\ndump base b.ppm\n").mid(0, 5),
              (QStringList{"61 37", "4", "24", "40 30 40", "p.png ( 100%) @ RGB 색상 61x37"}));
    EXPECT_EQ(MeanDifference(Path("i.ppm"), photo), 0);
    EXPECT_EQ(Contents(Path("i.ppm")), Contents(Path("b.ppm")));
    EXPECT_TRUE(Contents(Path("i.ppm")).startsWith("P6\n61 37\n255\n"));
    EXPECT_EQ(Contents(Path("i.ppm")).size(), 13 + 61 * 37 * 3);
}

TEST_F(CScriptTest, EachSaveFormatComesBack)
{
    const QImage photo = MakePhoto(Path("p.png"));
    for (const SaveCase& save : c_aSaves) {
        const QStringList out = Output("open p.png\nsaveas $1\nopen $1\nprint size\nprint depth\ndump image back.ppm\n",
                                       {Path(QString("s.") + save.strExtension)});
        EXPECT_EQ(out, (QStringList{"61 37", QString::number(save.nDepth)})) << save.strExtension;
        const QImage expected = save.bGrey ? Grey(photo) : photo;
        EXPECT_LE(MeanDifference(Path("back.ppm"), expected), save.fGreatest) << save.strExtension;
    }
}

TEST_F(CScriptTest, SaveAsWritesAFileAndLeavesTheDocumentWhereItIs)
{
    MakePhoto(Path("p.png"));
    const QByteArray before = Contents(Path("p.png"));
    EXPECT_EQ(Output("open p.png\nsaveas q.BMP\nprint title\nsaveas plain\nsaveas odd.xyz\nclose\n"),
              QStringList{"p.png ( 100%) @ RGB 색상 61x37"})
        << "no question at the end either: nothing was changed";
    EXPECT_TRUE(Contents(Path("q.BMP")).startsWith("BM"));
    EXPECT_TRUE(Contents(Path("plain.jpg")).startsWith("\xFF\xD8\xFF")) << "a name without a dot takes the dialog's row";
    EXPECT_TRUE(Contents(Path("odd.xyz")).startsWith("\xFF\xD8\xFF")) << "an unknown extension: JPEG coding under its own name";
    EXPECT_EQ(Contents(Path("p.png")), before);
    // The row chosen in the dialog counts for a name without a dot.
    Output("open p.png\ncommand 57604 Filter=1 Path=rowed\n");
    EXPECT_TRUE(Contents(Path("rowed.bmp")).startsWith("BM"));
}

TEST_F(CScriptTest, SaveWritesTheDocumentsOwnFile)
{
    MakePhoto(Path("p.png"));
    Output("open p.png\nsaveas own.bmp\n");
    const QByteArray bmp = Contents(Path("own.bmp"));
    EXPECT_EQ(Output("open own.bmp\nsave\nclose\n"), QStringList{});
    EXPECT_EQ(Contents(Path("own.bmp")), bmp);
    // Save knows no PNG: its table ends in JPEG coding under the old name.
    Output("open p.png\nsave\n");
    EXPECT_TRUE(Contents(Path("p.png")).startsWith("\xFF\xD8\xFF"));
    // A new picture has no name; nobody types one here, so Save comes to nothing and the line fails.
    EXPECT_FALSE(Reason("new 5 5 white rgb\nsave\n", 2).isEmpty());
    Output("new 5 5 white rgb\ncommand 57603 Path=fresh.tif\nclose\n");
    EXPECT_TRUE(QFile::exists(Path("fresh.tif")));
}

TEST_F(CScriptTest, AFileThatCannotBeWrittenFailsTheLine)
{
    MakePhoto(Path("p.bmp"));
    ASSERT_TRUE(QFile::link("/dev/full", Path("full.bmp")));
    const ScriptRun run = Run("open p.bmp\nsaveas full.bmp\n");
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.LastError().startsWith("-:2: "));
    EXPECT_EQ(Output("open p.bmp\nprint size\n"), QStringList{"61 37"}) << "the source is as it was";
}

TEST_F(CScriptTest, AnUnreadableFileIsAMessageWithItsNumber)
{
    QFile file(Path("bad.jpg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture at all");
    file.close();
    const ScriptRun run = Run("new 5 5 white rgb\nopen bad.jpg\n");
    EXPECT_EQ(run.nStatus, 1);
    ASSERT_EQ(run.out.size(), 1);
    EXPECT_TRUE(run.out[0].startsWith("message: 이미지를 로딩하는 도중 오류가 발생하였습니다.! -> 오류 코드:-")) << run.out[0].toStdString();
    EXPECT_TRUE(run.LastError().startsWith("-:2: "));
    QFile wmf(Path("bare.wmf"));
    ASSERT_TRUE(wmf.open(QIODevice::WriteOnly));
    wmf.write(QByteArray(200, '\1'));
    wmf.close();
    EXPECT_EQ(Run("open bare.wmf\n").out, QStringList{"message: 올바른 파일 형식이 아닙니다."});
}

TEST_F(CScriptTest, SeveralDocumentsCloseAndComeToTheFront)
{
    EXPECT_EQ(Output("new 10 10 white rgb\nnew 20 20 white grey\nnew 30 30 white bitmap\nprint size\nprint colors\n"
                     "activate 0\nprint size\nprint colors\nactivate 1\nprint size\nanswer no\nclose\nactivate 1\nprint size\n"
                     "activate 0\nprint size\n")
                  .filter(QRegularExpression("^[0-9 ]+$")),
              (QStringList{"30 30", "2", "10 10", "16777216", "20 20", "30 30", "10 10"}));
    EXPECT_FALSE(Reason("new 5 5\nanswer cancel\nclose\n", 3).isEmpty());
    EXPECT_EQ(Output("new 5 5 white rgb\nanswer no\nclose\nprint colors\n").last(), "1000");
}

TEST_F(CScriptTest, CommandStates)
{
    EXPECT_EQ(Output("print command 57600\nprint command 57603\nprint command 30108\nprint command 30068\nnew 5 5 white rgb\n"
                     "print command 57603\nprint command 57604\nprint command 30108\nprint command 30066\nprint command 40001\n"),
              (QStringList{"enabled unchecked", "disabled unchecked", "disabled unchecked", "disabled unchecked", "enabled unchecked",
                           "enabled unchecked", "enabled unchecked", "enabled unchecked", "enabled unchecked"}));
}

TEST_F(CScriptTest, ExportWritesBesideTheDocument)
{
    const QImage photo = MakePhoto(Path("p.png"));
    const QStringList out = Output("open p.png\n"
                                   "command 40001 Path=e.webp Lossless=1\n"
                                   "command 40001 Path=e.jpg Quality=90\ncommand 40001 Path=poor.jpg Quality=5\n"
                                   "command 40001 Path=e.gif\ncommand 40001 Path=e.tif Compression=2\ncommand 40001 Path=e.bmp\n"
                                   "command 40001 Path=bare Format=png\nprint title\nclose\n");
    EXPECT_EQ(out, QStringList{"p.png ( 100%) @ RGB 색상 61x37"}) << "no question on closing: the document is as it was";
    EXPECT_EQ(MeanDifference(Path("bare.png"), photo), 0);
    EXPECT_EQ(MeanDifference(Path("e.webp"), photo), 0);
    EXPECT_EQ(MeanDifference(Path("e.bmp"), photo), 0);
    EXPECT_TRUE(Contents(Path("e.gif")).startsWith("GIF8"));
    EXPECT_TRUE(Contents(Path("e.tif")).startsWith("II*"));
    EXPECT_LT(QFileInfo(Path("poor.jpg")).size(), QFileInfo(Path("e.jpg")).size());
    EXPECT_TRUE(Reason("new 5 5 white rgb\ncommand 40001 Path=x.png Quality=5\n", 2).contains("Quality")) << "PNG has no quality";
    EXPECT_FALSE(QFile::exists(Path("x.png")));
}
