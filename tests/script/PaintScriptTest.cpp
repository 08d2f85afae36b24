// Strokes from the press to the release, through the real program: every painting tool and what its bars make of it.

#include "ScriptHarness.h"

#include <QImage>

#include <functional>

namespace {

constexpr QRgb c_crFore = qRgb(200, 30, 90), c_crBack = qRgb(10, 240, 60), c_crWhite = qRgb(255, 255, 255);

/// One stroke of a tool over a picture without two equal neighbours, which runs over two corners of it.
struct StrokeRow {
    const char* pszTool;
    int nCommand;
    const char* pszBrush; ///< radius, hardness, angle, roundness
    int nSoftEdge;
    const char* pszBefore; ///< statements that set the bars
    std::uint32_t nSum;    ///< of the result's bytes
};

/// The sums come from a reference of brushes, masks and tools that was written apart from this program, pixel by pixel, in
/// another language: they hold the whole way from the option bars to the picture. A sum that changes is a changed result.
constexpr StrokeRow c_aStrokes[] = {
    {"pencil", 1005, "6.3 40 30 2", 1, "option Pencil Opacity 80\noption Pencil Mode 3\n", 0xC3F25B8B},
    {"pencil", 1005, "0.5 50 0 1", 0, "option Pencil Space 100\npattern p.png 60\n", 0xC041F759},
    {"brush", 1006, "9.1 70 110 3", 2, "option \"Paint Brush\" Opacity 90\noption \"Paint Brush\" Pressure 7\ntexture t.png\n", 0x63293E1F},
    {"eraser", 1007, "0.6 100 0 1", 0, "option Eraser Opacity 50\ntexture t.png\n", 0x33E57D9D},
    {"airbrush", 1008, "8 20 0 1", 0, "option \"Air Brush\" Opacity 60\npattern p.png 100\ntexture t.png\n", 0x245A22AB},
    {"stamp", 1009, "7.7 90 45 1", 0, "press 30 40 ctrl\nrelease 30 40\noption Stamp Opacity 70\n", 0x09B54F2E},
    {"blur", 1013, "10 80 0 1", 0, "option ConvolveB Pressure 100\n", 0x0241BAEA},
    {"sharpen", 1014, "10 80 0 1", 3, "option ConvolveB Opacity 85\n", 0x62CBE15D},
    {"dodge", 1015, "12 30 0 1", 0, "option Dodge \"D Mode\" 0\n", 0xAFF9E4C2},
    {"dodge", 1015, "12 30 0 1", 0, "option Dodge \"D Mode\" 2\noption Dodge Pressure 90\n", 0xA0AB3B8D},
    {"burn", 1016, "12 30 0 1", 0, "", 0xB4E09F2C},
    {"burn", 1016, "12 30 20 4", 0, "option Dodge \"D Mode\" 2\n", 0x81B8B1A5},
    {"smudge", 1017, "11 60 0 1", 0, "option Smudge Pressure 75\n", 0x5FF99DFA},
};

/// The same on a float that is moved partly out of the picture, soft at its edge and not opaque, and on a picture of 256 colours.
struct FloatRow {
    const char* pszTool;
    int nCommand;
    const char* pszPicture;
    const char* pszBrush;
    bool bFloat;
    const char* pszBefore;
    std::uint32_t nSum; ///< of the picture, the float and its mask
};

constexpr FloatRow c_aFloatStrokes[] = {
    {"brush", 1006, "a.png", "9 70 110 3", true,
     "option \"Paint Brush\" Opacity 90\noption \"Paint Brush\" Pressure 9\noption \"Paint Brush\" \"P Mode\" 6\ntexture t.png\npattern p.png 50\n",
     0xCA00B7DE},
    {"eraser", 1007, "a.png", "8 40 20 2", true, "option Eraser Opacity 60\noption Eraser Hard 1\n", 0x6588C227},
    {"airbrush", 1008, "a.png", "8 20 0 1", true, "option \"Air Brush\" Opacity 80\noption \"Air Brush\" Mode 1\ntexture t.png\n", 0x33BBD05E},
    {"smudge", 1017, "a.png", "7 60 30 1", true, "option Smudge Pressure 70\n", 0x477ADFDE},
    {"stamp", 1009, "a.png", "7.7 90 45 1", true, "option Stamp Opacity 70\noption Stamp Mode 8\ncommand 1009\npress 30 40 ctrl\nrelease 30 40\n", 0xF51A9E2E},
    {"sharpen", 1014, "a.png", "9 80 0 1", true, "option ConvolveB Pressure 60\n", 0x954DB373},
    {"pencil", 1005, "i.png", "6.3 40 30 2", false, "option Pencil Mode 12\ntexture t.png\npattern p.png 40\n", 0xCBAF085A},
    {"brush", 1006, "i.png", "9 30 0 1", false, "option \"Paint Brush\" Fade 0\noption \"Paint Brush\" \"P Mode\" 14\ntexture t.png\n", 0x96833352},
    {"airbrush", 1008, "i.png", "8 20 0 1", false, "option \"Air Brush\" Mode 5\n", 0x6AE3F9AF},
    {"burn", 1016, "i.png", "9 30 0 1", true, "option Dodge \"P Mode\" 10\noption Dodge \"D Mode\" 0\n", 0xF805164E},
};

std::uint32_t SumOf(const QImage& image, std::uint32_t n = 2166136261u)
{
    for (int y = 0; y < image.height(); y++)
        for (int x = 0; x < image.width(); x++) {
            const QRgb cr = image.pixel(x, y);
            for (const int nByte : {qRed(cr), qGreen(cr), qBlue(cr)})
                n = (n ^ static_cast<std::uint32_t>(nByte)) * 16777619u;
        }
    return n;
}

class CPaintScriptTest : public CScriptTest {
protected:
    CPaintScriptTest()
    {
        Save("a.png", 80, 60, [](int x, int y) { return qRgb(x * 3, y * 4, (x * 7 + y * 11) & 255); });
        Save("t.png", 7, 5, [](int x, int y) { const int n = (x * 40 + y * 25) & 255; return qRgb(n, n, n); });
        Save("p.png", 9, 11, [](int x, int y) { return qRgb(x * 20, 255 - y * 20, 128); });
        QImage indexed(80, 60, QImage::Format_Indexed8);
        for (int i = 0; i < 256; i++)
            indexed.setColor(i, qRgb(i, 255 - i, i * 53 & 255));
        for (int i = 0; i < 80 * 60; i++)
            indexed.setPixel(i % 80, i / 80, (i % 80 * 3 + i / 80 * 5) & 255);
        EXPECT_TRUE(indexed.save(Path("i.png")));
        Save("black.png", 3, 3, [](int, int) { return qRgb(0, 0, 0); });
    }
    void Save(const char* pszName, int nWidth, int nHeight, const std::function<QRgb(int, int)>& color) const
    {
        QImage image(nWidth, nHeight, QImage::Format_RGB32);
        for (int y = 0; y < nHeight; y++)
            for (int x = 0; x < nWidth; x++)
                image.setPixel(x, y, color(x, y));
        ASSERT_TRUE(image.save(Path(pszName)));
    }
    /// The picture that the script leaves, which begins with a white one of 80 x 80 and the two colours picked.
    QImage Painted(const QString& strScript)
    {
        Output("new 80 80 white rgb\nforeground 200 30 90\nbackground 10 240 60\n" + strScript + "dump image out.ppm\n");
        return Picture("out.ppm");
    }
    QImage Picture(const char* pszName) const { return QImage(Path(pszName)).convertToFormat(QImage::Format_RGB32); }

    /// Columns of a row that are not white.
    static QList<int> Marks(const QImage& image, int y)
    {
        QList<int> columns;
        for (int x = 0; x < image.width(); x++)
            if (image.pixel(x, y) != c_crWhite)
                columns << x;
        return columns;
    }
    static int Count(const QImage& image, const std::function<bool(QRgb)>& which)
    {
        int n = 0;
        for (int y = 0; y < image.height(); y++)
            for (int x = 0; x < image.width(); x++)
                n += which(image.pixel(x, y));
        return n;
    }
};

constexpr const char* c_strNoSource = "message: 복사될 이미지 영역을 먼저 선택하여야 합니다.\\n마우스를 원하는 위치로 이동 시킨 후 Ctrl 키를 누른 \\n상태에서 "
                                      "마우스 왼쪽 버튼을 클릭하십시오.";
constexpr const char* c_strFirstRow = "  << 새로운 이미지 >>";

} // namespace

TEST_F(CPaintScriptTest, EveryToolGivesTheBytesOfTheReference)
{
    for (const StrokeRow& row : c_aStrokes) {
        Output(QString("open a.png\nforeground 200 30 90\nbackground 10 240 60\nsoftedge %1\nbrushnew %2\ncommand %3\n%4"
                       "press -5 -5\nmove 40 30\nmove 90 22\nrelease 10 66\ndump image out.ppm\ndump base base.ppm\nundo\ndump image undone.ppm\n")
                   .arg(row.nSoftEdge)
                   .arg(row.pszBrush)
                   .arg(row.nCommand)
                   .arg(row.pszBefore));
        EXPECT_EQ(SumOf(Picture("out.ppm")), row.nSum) << row.pszTool << " " << row.pszBefore;
        EXPECT_EQ(Picture("base.ppm"), Picture("out.ppm")) << row.pszTool;
        EXPECT_EQ(Picture("undone.ppm"), Picture("a.png")) << row.pszTool;
    }
}

TEST_F(CPaintScriptTest, FloatsAndPicturesOfFewColoursGiveTheBytesOfTheReference)
{
    for (const FloatRow& row : c_aFloatStrokes) {
        QString strScript = QString("open %1\nforeground 200 30 90\nbackground 10 240 60\nbrushnew %2\n").arg(row.pszPicture, row.pszBrush);
        if (row.bFloat)
            strScript += "option Floater Feather 3\ncommand 1001\npress 10 8\nrelease 60 45\ncommand 1002\npress 30 30\nrelease 10 39\n"
                         "option Floater Opacity 70\n";
        strScript += QString("%1command %2\npress -5 -5\nmove 40 30\nmove 90 22\nrelease 10 66\ndump image out.ppm\n").arg(row.pszBefore).arg(row.nCommand);
        if (row.bFloat)
            strScript += "dump float float.ppm\ndump floatmask mask.pgm\n";
        Output(strScript);
        std::uint32_t nSum = SumOf(Picture("out.ppm"));
        if (row.bFloat)
            nSum = SumOf(Picture("mask.pgm"), SumOf(Picture("float.ppm"), nSum));
        EXPECT_EQ(nSum, row.nSum) << row.pszTool << " " << row.pszPicture;
    }
}

TEST_F(CPaintScriptTest, EveryModeGivesTheBytesOfTheReference)
{
    QString strScript = "open a.png\nbrushnew 9 60 0 1\ncommand 1005\noption Pencil Opacity 85\n";
    for (int nMode = 0; nMode < 16; nMode++) {
        strScript += QString("foreground %1 %2 %3\n").arg(nMode * 37 & 255).arg(255 - nMode * 11).arg(nMode * 83 & 255);
        strScript += QString("option Pencil Mode %1\npress %2 5\nrelease %3 55\n").arg(nMode).arg(nMode * 5).arg(79 - nMode * 5);
    }
    Output(strScript + "dump image out.ppm\n");
    EXPECT_EQ(SumOf(Picture("out.ppm")), 0xF54A42C6);
}

TEST_F(CPaintScriptTest, EachStrokeIsOneRowOfTheHistory)
{
    QString strScript = "open a.png\ncommand 1009\npress 9 9 ctrl\nrelease 9 9\n";
    QStringList rows{"  << 원본 이미지 >>"};
    const std::pair<int, const char*> c_aRows[] = {
        {1005, "연필 도구"}, {1006, "브러시 도구"}, {1007, "지우개 도구"}, {1008, "에어 브러시 도구"}, {1009, "영역복사(도장 도구)"},
        {1013, "흐림"},      {1014, "선명"},        {1015, "밝기"},        {1016, "태우기"},           {1017, "문지르기 도구"}};
    for (const auto& [nCommand, pszName] : c_aRows) {
        strScript += QString("command %1\npress 30 30\nmove 40 35\nrelease 50 30\n").arg(nCommand);
        rows << QString("  [브러시] %1").arg(pszName);
    }
    rows.last().replace(0, 1, "*");
    strScript += "print history\nhistory 0\ndump image first.ppm\nhistory 10\ndump image last.ppm\n";
    EXPECT_EQ(Output(strScript), rows);
    EXPECT_EQ(Picture("first.ppm"), Picture("a.png"));
    EXPECT_NE(Picture("last.ppm"), Picture("a.png"));
}

TEST_F(CPaintScriptTest, SpacingCountsInBrushWidthsAndAClickIsOneDab)
{
    // A brush of one hard pixel; its axes are a pixel long, so that two pixels of the path are one unit.
    const QString strBrush = "brushnew 1 100 0 1\ncommand 1005\noption Pencil Space %1\n";
    const QImage dots = Painted(strBrush.arg(200) + "press 4 20\nrelease 60 20\n");
    const QImage line = Painted(strBrush.arg(10) + "press 4 20\nrelease 60 20\n");
    const QImage dot = Painted(strBrush.arg(10) + "press 4 20\nrelease 4 20\n");
    const qsizetype nDab = Marks(dot, 20).size();
    EXPECT_GT(nDab, 0);
    EXPECT_EQ(Marks(dots, 20).size(), (56 / 4 + 1) * nDab);
    EXPECT_EQ(Marks(line, 20).size(), 56 + nDab);
    // The rest of a segment counts for the next: through many small moves the dabs fall on the same places.
    QString strMoves;
    for (int x = 5; x < 60; x += 3)
        strMoves += QString("move %1 20\n").arg(x);
    EXPECT_EQ(Painted(strBrush.arg(200) + "press 4 20\n" + strMoves + "release 60 20\n"), dots);
}

TEST_F(CPaintScriptTest, CappedPaintEndsAtItsOpacityAndStackedPaintBuildsUp)
{
    QString strRub = "press 30 30\n";
    for (int i = 0; i < 20; i++)
        strRub += QString("move %1 30\n").arg(30 + i % 2 * 20);
    strRub += "release 30 30\n";
    const QString strClick = "press 30 30\nrelease 30 30\n";
    const QString strBrush = "brushnew 9 100 0 1\ncommand 1006\noption \"Paint Brush\" Fade 0\noption \"Paint Brush\" Opacity 50\n";
    const QString strAir = "brushnew 9 100 0 1\ncommand 1008\noption \"Air Brush\" Opacity 50\noption \"Air Brush\" Pressure 50\n";
    EXPECT_EQ(Painted(strBrush + strRub).pixel(30, 30), Painted(strBrush + strClick).pixel(30, 30));
    EXPECT_EQ(Painted(strBrush + strClick + strClick).pixel(30, 30), Painted(strBrush + strRub + strRub).pixel(30, 30));
    EXPECT_NE(Painted(strBrush + strClick + strClick).pixel(30, 30), Painted(strBrush + strClick).pixel(30, 30)) << "another stroke adds";
    EXPECT_GT(qGreen(Painted(strAir + strClick).pixel(30, 30)), qGreen(Painted(strAir + strRub).pixel(30, 30)) + 50);
}

TEST_F(CPaintScriptTest, AFadingStrokeDiesOutAndOneOfNoLengthNeverBegins)
{
    const QString strFade = "brushnew 4 100 0 1\ncommand 1006\noption \"Paint Brush\" Fade 1\noption \"Paint Brush\" Pressure %1\n"
                            "press 5 20\nmove 40 20\nrelease 75 20\n";
    EXPECT_EQ(Count(Painted(strFade.arg(0)), [](QRgb cr) { return cr != c_crWhite; }), 0);
    const QImage faded = Painted(strFade.arg(4));
    EXPECT_EQ(faded.pixel(5, 20), c_crFore);
    EXPECT_EQ(faded.pixel(60, 20), c_crWhite) << "40 pixels from the press it is gone";
    for (int x = 10; x < 40; x += 5)
        EXPECT_LT(qGreen(faded.pixel(x, 20)), qGreen(faded.pixel(x + 5, 20))) << x;
}

TEST_F(CPaintScriptTest, InPicturesOfFewColoursPencilAndEraserSnap)
{
    // The colour's nearest of black and white, with hard edges though the brush is soft.
    const QString strStroke = "command %1\npress 20 20\nrelease 40 22\ndump image out.ppm\n";
    const QString strBitmap = "new 60 40 white bitmap\nforeground 200 30 90\nbackground 10 10 60\nbrushnew 6 20 0 1\n";
    for (const int nCommand : {1005, 1007}) {
        Output(strBitmap + strStroke.arg(nCommand));
        const QImage image = Picture("out.ppm");
        EXPECT_EQ(Count(image, [](QRgb cr) { return cr != c_crWhite && cr != qRgb(0, 0, 0); }), 0);
        EXPECT_GT(Count(image, [](QRgb cr) { return cr == qRgb(0, 0, 0); }), 100);
    }
    Output(strBitmap + "option \"Paint Brush\" Fade 0\n" + strStroke.arg(1006));
    EXPECT_EQ(Count(Picture("out.ppm"), [](QRgb cr) { return cr != c_crWhite && cr != c_crFore; }), 0) << "as picked, hard edges";
    EXPECT_EQ(Picture("out.ppm").pixel(30, 21), c_crFore);
}

TEST_F(CPaintScriptTest, WithoutABrushNothingIsPaintedAndThePressOfATinyOneIsHard)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("nothing"));
    const ScriptRun run = RunProgram({"--install", Path("nothing"), "--script", "-"},
                                     "new 30 30 white rgb\ncommand 1006\npress 5 5\nmove 20 20\nrelease 6 6\ncommand 1017\npress 5 5\nrelease 9 9\n"
                                     "dump image out.ppm\n");
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    EXPECT_TRUE(run.out.contains("message: 브러시 파일이 존재하지 않습니다.\\n프로그램이 정상적으로 작동할 수 없습니다.\\n프로그램을 다시 설치하십시오."));
    EXPECT_EQ(Count(Picture("out.ppm"), [](QRgb cr) { return cr != c_crWhite; }), 0);
    // The mask of the smallest brush is 4 wide with its border: two pixels of a brush file make a tiny one.
    const unsigned char c_aBrush[] = {1, 0, 0, 0, 20, 0, 0, 0, 100, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0, 60, 255};
    QFile file(Path("tiny.pbr"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(c_aBrush), sizeof c_aBrush);
    file.close();
    const QString strTiny = "brushfile tiny.pbr\nbrush 0\ncommand %1\npress 20 20\nrelease 50 33\n";
    const QImage pencil = Painted(strTiny.arg(1005));
    EXPECT_EQ(Count(pencil, [](QRgb cr) { return cr != c_crWhite && cr != c_crFore; }), 0);
    EXPECT_GT(Count(pencil, [](QRgb cr) { return cr == c_crFore; }), 30);
    EXPECT_EQ(Count(Painted(strTiny.arg(1007)), [](QRgb cr) { return cr != c_crWhite && cr != c_crBack; }), 0);
    EXPECT_GT(Count(Painted("option \"Paint Brush\" Fade 0\n" + strTiny.arg(1006)), [](QRgb cr) { return cr != c_crWhite && cr != c_crFore; }), 30);
}

TEST_F(CPaintScriptTest, TheStampAsksForASourceAndCopiesFromItAnew)
{
    const QString strNew = "new 80 60 white rgb\nforeground 200 30 90\nbrushnew 4 100 0 1\ncommand 1005\npress 20 20\nrelease 20 20\ncommand 1009\n";
    EXPECT_EQ(Output(strNew + "press 50 40\nmove 52 40\nrelease 55 40\nprint history\ndump image out.ppm\n"),
              (QStringList{c_strNoSource, c_strFirstRow, "* [브러시] 연필 도구"}));
    EXPECT_EQ(Picture("out.ppm").pixel(50, 40), c_crWhite);
    const QStringList out = Output(strNew
                                   + "screenshot bare.png\npress 20 20 ctrl\nscreenshot marked.png\nrelease 20 20\nprint history\n"
                                     "press 50 40\nmove 52 40\nrelease 55 40\npress 20 50\nrelease 20 50\npress 70 10 ctrl shift\nrelease 70 10\nprint history\ndump image out.ppm\n"
                                     "new 30 30 black rgb\npress 5 5\nrelease 5 5\ndump image other.ppm\n");
    EXPECT_EQ(out, (QStringList{c_strFirstRow, "* [브러시] 연필 도구", c_strFirstRow, "  [브러시] 연필 도구", "  [브러시] 영역복사(도장 도구)",
                                "  [브러시] 영역복사(도장 도구)", "* [브러시] 영역복사(도장 도구)"}));
    for (const QPoint pt : {QPoint(50, 40), QPoint(20, 50), QPoint(70, 10)})
        EXPECT_EQ(Picture("out.ppm").pixel(pt), c_crFore) << pt.x();
    EXPECT_NE(QImage(Path("bare.png")), QImage(Path("marked.png"))) << "a cross stands at the source";
    // The source goes on to other pictures, cut by their size: of this one's black comes black.
    EXPECT_EQ(Count(Picture("other.ppm"), [](QRgb cr) { return cr != qRgb(0, 0, 0); }), 0);
}

TEST_F(CPaintScriptTest, TheAirBrushFlowsWhileTheMouseRests)
{
    const QString strAir = "brushnew 9 100 0 1\ncommand 1008\noption \"Air Brush\" Pressure 30\n";
    const int nOnce = qGreen(Painted(strAir + "press 30 30\nrelease 30 30\nwait 500\n").pixel(30, 30));
    const int nRested = qGreen(Painted(strAir + "press 30 30\nwait 700\nrelease 30 30\n").pixel(30, 30));
    EXPECT_LT(nRested, nOnce - 20) << "three dabs more";
    // Not on a float.
    const QString strSelect = "command 1001\npress 10 10\nrelease 60 50\n";
    EXPECT_EQ(Painted(strSelect + strAir + "press 30 30\nwait 700\nrelease 30 30\n").pixel(30, 30),
              Painted(strSelect + strAir + "press 30 30\nrelease 30 30\n").pixel(30, 30));
}

TEST_F(CPaintScriptTest, SelectionsAndFloatsKeepStrokesInside)
{
    const QString strSelect = "option Floater Feather 0\ncommand 1001\npress 20 20\nrelease 60 60\n";
    const QString strStroke = "brushnew 6 100 0 1\ncommand %1\npress 2 30\nrelease 78 30\n";
    for (const int nCommand : {1005, 1006, 1007, 1008, 1015}) {
        const QImage image = Painted("option \"Paint Brush\" Fade 0\n" + strSelect + strStroke.arg(nCommand) + "dump floatmask mask.pgm\n");
        EXPECT_EQ(Marks(image, 30).isEmpty(), nCommand == 1015) << "white cannot be dodged";
        if (nCommand != 1015) {
            EXPECT_GE(Marks(image, 30).first(), 20) << nCommand;
            EXPECT_LE(Marks(image, 30).last(), 59) << nCommand;
        }
    }
    // A float that was moved is painted on where it stands, and what it left behind stays as it is.
    const QString strMoved = strSelect + "command 1002\npress 40 30\nmove 45 32\nrelease 55 30\n" + strStroke.arg(1005);
    const QImage moved = Painted(strMoved);
    EXPECT_EQ(moved.pixel(55, 30), c_crFore);
    EXPECT_NE(moved.pixel(25, 30), c_crFore);
    EXPECT_EQ(moved.pixel(5, 30), c_crWhite);
    EXPECT_NE(moved.pixel(78, 30), c_crFore);
    // The hard eraser takes the float away; without one it does nothing.
    const QString strHard = "option Eraser Hard 1\n" + strStroke.arg(1007);
    EXPECT_EQ(Marks(Painted(strHard), 30).size(), 0);
    Output("open a.png\n" + strSelect + strHard + "dump floatmask mask.pgm\n");
    const QImage mask(Path("mask.pgm"));
    ASSERT_FALSE(mask.isNull());
    EXPECT_EQ(qGray(mask.pixel(mask.width() / 2, mask.height() / 2)), 0);
    EXPECT_EQ(qGray(mask.pixel(mask.width() / 2, 2)), 255);
}

TEST_F(CPaintScriptTest, TextureAndPatternActOnTheStroke)
{
    const QString strStroke = "brushnew 6 100 0 1\ncommand 1005\npress 20 30\nrelease 60 30\n";
    EXPECT_EQ(Marks(Painted("texture black.png\n" + strStroke), 30).size(), 0);
    EXPECT_EQ(Painted("texture black.png\ntexture none\n" + strStroke).pixel(40, 30), c_crFore);
    const QImage pattern = Painted("pattern p.png 100\n" + strStroke), tile = Picture("p.png");
    for (const int x : {25, 40, 53})
        EXPECT_EQ(pattern.pixel(x, 30), tile.pixel(x % 9, 30 % 11)) << "tiled from the picture's corner";
    EXPECT_EQ(Painted("pattern p.png 0\n" + strStroke), Painted(strStroke));
}

TEST_F(CPaintScriptTest, WhileTheButtonIsHeldNothingElseTouchesThePicture)
{
    const QString strPress = "new 80 60 white rgb\nforeground 200 30 90\nbrushnew 4 100 0 1\ncommand 1005\npress 20 20\nrelease 20 20\npress 30 30\n";
    for (const char* pszLine : {"undo", "history 0", "command 30006", "command 1006", "command 30012 Width=20", "paste"})
        EXPECT_FALSE(Reason(strPress + pszLine + "\n", 8).isEmpty()) << pszLine;
    // Keys stay with the tool: Ctrl+Z, the letter of another tool, Tab.
    const QStringList out = Output(strPress
                                   + "keydown 17\nkeydown 90\nkeyup 90\nkeyup 17\nkeydown 66\nkeyup 66\nkeydown 9\nkeyup 9\nprint tool\n"
                                     "release 50 40\nundo\nprint history\nprint pixel 40 35\n");
    EXPECT_EQ(out, (QStringList{"0x80 1005", c_strFirstRow, "* [브러시] 연필 도구", "- [브러시] 연필 도구", "255 255 255"}));
    // The hand that Space lends waits for the stroke's end.
    EXPECT_EQ(Output(strPress + "keydown 32\nmove 40 35\nkeyup 32\nrelease 50 40\nprint tool\nprint pixel 40 35\nprint pixel 46 38\n"),
              (QStringList{"0x80 1025", "200 30 90", "200 30 90"}));
}

TEST_F(CPaintScriptTest, AClosedOrOtherPictureEndsTheStroke)
{
    const QString strPress = "new 80 60 white rgb\nforeground 200 30 90\nbrushnew 4 100 0 1\ncommand %1\npress 20 20\nmove 40 20\n";
    for (const int nCommand : {1005, 1008, 1017}) {
        Output(strPress.arg(nCommand) + "answer no\nclose\nwait 300\nnew 50 50 black rgb\nrelease 30 30\nmove 35 35\nprint pixel 30 30\n");
        Output(strPress.arg(nCommand) + "answer no\ncommand 57665\n"); // the exit
    }
    EXPECT_EQ(Output(strPress.arg(1005)
                     + "open a.png\nmove 30 30\nrelease 30 30\nprint pixel 30 30\nactivate 0\nprint pixel 30 20\nprint history\nundo\n"
                       "print pixel 30 20\n"),
              (QStringList{"90 120 28", "200 30 90", c_strFirstRow, "* [브러시] 연필 도구", "255 255 255"}));
}
