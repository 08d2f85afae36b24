// The language of batch scripts: words, arguments, failures, exit status, settings. The real program runs each script.

#include "ScriptHarness.h"

#include <QFile>

namespace {
void WriteFile(const QString& strPath, const QByteArray& bytes)
{
    QFile file(strPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
} // namespace

TEST_F(CScriptTest, CommentsBlanksQuotesAndArguments)
{
    const QString strScript = "# a comment\n"
                              "\n"
                              "   \t \n"
                              "new 30 20 white rgb   # another\r\n"
                              "dump image \"$2 $1.ppm\"\n"
                              "dump base $3\n"
                              "print size";
    EXPECT_EQ(Output(strScript, {"one", "two", "three four.ppm"}), QStringList{"30 20"});
    EXPECT_TRUE(QFile::exists(Path("two one.ppm")));
    EXPECT_TRUE(QFile::exists(Path("three four.ppm"))) << "an argument stays one word whatever it holds";
    EXPECT_TRUE(Reason("print size $1\n", 1).contains("$1"));
    EXPECT_TRUE(Reason("open \"half\n", 1).contains("quotation"));
}

TEST_F(CScriptTest, AFailedLineStopsTheScriptAndTellsWhere)
{
    WriteFile(Path("my script.txt"), "new 4 4 white rgb\nprint size\n\nflourish 1 2\nprint size\n");
    const ScriptRun run = RunProgram({"--script", "my script.txt"});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_EQ(run.out, QStringList{"4 4"}) << "nothing runs after the failed line";
    EXPECT_TRUE(run.LastError().startsWith("my script.txt:4: ")) << run.strErr.toStdString();
    EXPECT_TRUE(run.strErr.contains("flourish"));
}

TEST_F(CScriptTest, UsageErrorsEndWithStatus2)
{
    WriteFile(Path("s.txt"), "print colors\n");
    for (const QStringList& words : {QStringList{"--script"}, {"--script", "missing.txt"}, {"--seed", "x", "--script", "s.txt"},
                                     {"--script", "s.txt", "--settings"}, {"--install", "nowhere", "--script", "s.txt"},
                                     {"--settings", "s.txt", "--script", "s.txt"}, {"--script", "."}, {"--nonsense", "--script", "s.txt"}}) {
        const ScriptRun run = RunProgram(words);
        EXPECT_EQ(run.nStatus, 2) << words;
        EXPECT_FALSE(run.strErr.isEmpty());
        EXPECT_TRUE(run.out.isEmpty());
    }
    const ScriptRun run = RunProgram({"--seed", "7", "--script", "s.txt", "--install", ".", "--", "--seed"});
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    const QString strNoBrushes = "message: 브러시 파일이 존재하지 않습니다.\\n프로그램이 정상적으로 작동할 수 없습니다.\\n프로그램을 다시 설치하십시오.";
    EXPECT_EQ(run.out, (QStringList{"message: Default.pal not found", strNoBrushes, "1000"})) << "no swatches and brushes in that folder; no document is open: no limit of colours is in force";
}

TEST_F(CScriptTest, WordCountsAreChecked)
{
    for (const char* strLine : {"new 3", "new 1 2 white rgb black", "open", "save x", "saveas", "close 1", "activate", "command", "answer",
                                "answer yes no", "zoom", "wait", "quit now", "press 1", "move 1", "release 1", "release 1 2 3",
                                "keydown", "dump image", "print", "print pixel 1", "print size 1", "print setting General",
                                "screenshot", "screenshot a 5001 b"})
        EXPECT_FALSE(Reason(QString(strLine) + "\n", 1).isEmpty()) << strLine;
}

TEST_F(CScriptTest, StatementsOfLaterTimesSaySo)
{
    for (const char* strLine : {"option \"Paint Brush\" Opacity 50", "foreground 1 2 3", "background 1 2 3", "brush 1", "brushfile x",
                                "brushnew 1 2 3 4", "softedge 1", "response 1 2", "pattern none", "texture none", "photobrush x",
                                "gradientfile x", "text a", "history 1", "copy", "cut", "paste"}) {
        const QString strName = QString(strLine).section(u' ', 0, 0);
        const ScriptRun run = Run(QString(strLine) + "\n");
        EXPECT_FALSE(run.LastError().contains("no statement")) << "the language knows " << strLine;
        if (run.strErr.contains("not yet available")) { // those that have come meanwhile have tests of their own
            EXPECT_EQ(run.nStatus, 1);
            EXPECT_EQ(run.LastError(), "-:1: not yet available: " + strName);
        }
    }
}

TEST_F(CScriptTest, ValuesThatMakeNoSenseFail)
{
    for (const char* strLine : {"activate 0", "activate x", "activate -1", "answer maybe", "zoom 2", "wait -1", "wait x", "close", "save",
                                "saveas a.bmp", "press 1 1", "move 1 1", "release 1 1", "doubleclick 1 1", "print size", "print pixel 0 0",
                                "print title", "print nonsense", "dump image a.ppm", "dump nonsense a.ppm", "screenshot a.png 77",
                                "keydown 0", "keydown 256", "keydown 7", "open missing.jpg", "new 0 5", "new 5001 5", "new x 5",
                                "new 5 5 pink", "command 999999", "command x", "print command 999999"})
        EXPECT_FALSE(Reason(QString(strLine) + "\n", 1).isEmpty()) << strLine;
    for (const char* strLine : {"print pixel 8 0", "print pixel 0 -1", "zoom 0", "zoom nan", "press 1 1 middle", "press x 1", "release 1 1",
                                "activate 1", "dump image missing/a.ppm", "screenshot missing/a.png", "saveas missing/a.bmp"})
        EXPECT_FALSE(Reason(QString("new 8 8 white rgb\n") + strLine + "\n", 2).isEmpty()) << strLine;
}

TEST_F(CScriptTest, CommandsFillInDialogsOrFail)
{
    EXPECT_EQ(Output("command 57600 Width=33 Height=44 Kind=0 Color=1\nprint size\nprint mode\nprint depth\n"),
              (QStringList{"33 44", "3", "8"}));
    EXPECT_TRUE(Reason("command 57600 Width=33 Depth=2\n", 1).contains("Depth"));
    EXPECT_TRUE(Reason("command 57600 Width=0\n", 1).contains("Width"));
    EXPECT_TRUE(Reason("command 57600 Width\n", 1).contains("Width"));
    EXPECT_FALSE(Reason("command 57603\n", 1).isEmpty()) << "Save is disabled without a document";
    EXPECT_TRUE(Reason("new 9 9\ncommand 30066 Zoom=1\n", 2).contains("Zoom")) << "a command without a dialog takes no keys";
    EXPECT_FALSE(Reason("new 9 9\ncommand 30066 cancel\n", 2).isEmpty());
    const ScriptRun run = Run("command 57600 Width=33 cancel\nprint setting Image Width\nprint size\n");
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.LastError().startsWith("-:3: ")) << "cancelled: no document";
}

TEST_F(CScriptTest, SettingsStartFromDefaultsAndStayInMemory)
{
    const QString strScript = "print setting Nonsense Key\nprint setting General History\nnew 77 55 black grey\nprint setting Image Width\n";
    const QStringList first = Output(strScript);
    ASSERT_EQ(first.size(), 3);
    EXPECT_EQ(first[0], "missing");
    EXPECT_EQ(first[2], "77");
    EXPECT_EQ(Output(strScript), first) << "nothing of the first run may be left";
    EXPECT_FALSE(QFile::exists(Path("config/kestrune/settings.ini"))) << "a script must not touch the user's settings";
}

TEST_F(CScriptTest, ASettingsFolderIsReadAtStartAndWrittenAtExit)
{
    const QByteArray write = "new 123 45 black grey\n";
    for (const QByteArray& end : {QByteArray(""), QByteArray("answer no\nquit\n"), QByteArray("flourish\n")}) {
        const QString strFolder = Path("settings" + QString::number(end.size()));
        RunProgram({"--settings", strFolder, "--script", "-"}, write + end);
        const ScriptRun run = RunProgram({"--settings", strFolder, "--script", "-"},
                                         "print setting Image Width\nprint setting Image Kind\ncommand 57600\nprint size\nprint mode\n");
        EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
        EXPECT_EQ(run.out, (QStringList{"123", "1", "123 45", "3"})) << end.constData();
    }
}

TEST_F(CScriptTest, QuitEndsTheProgramAndAsksAboutChanges)
{
    EXPECT_EQ(Output("quit\nprint nonsense\n"), QStringList{}) << "what stands behind quit does not run";
    const ScriptRun run = Run("new 5 5\nanswer no\nquit\nflourish\n");
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    ASSERT_EQ(run.out.size(), 1);
    EXPECT_TRUE(run.out[0].startsWith("message: "));
    EXPECT_FALSE(Reason("new 5 5\nanswer cancel\nquit\n", 3).isEmpty());
}
