// Colours and history from scripts, through the real program.

#include "ScriptHarness.h"

#include <QFile>

TEST_F(CScriptTest, ColoursArePickedAndWritten)
{
    const QString strFolder = Path("settings");
    const ScriptRun run = RunProgram({"--settings", strFolder, "--script", "-"}, "foreground 1 2 3\nbackground 250 128 0\nnew 4 4 background rgb\nprint pixel 1 1\n");
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    EXPECT_EQ(run.out, QStringList{"250 128 0"}) << "the fill takes the background colour";
    const ScriptRun after = RunProgram({"--settings", strFolder, "--script", "-"},
                                       "print setting \"Color Value\" RedBr\nprint setting \"Color Value\" BlueBr\nprint setting \"Color Value\" RedPen\n"
                                       "command 40011\nnew 4 4 background rgb\nprint pixel 1 1\ncommand 40010\nnew 4 4 background rgb\nprint pixel 1 1\n");
    EXPECT_EQ(after.out, (QStringList{"1", "3", "250", "1 2 3", "255 255 255"})) << "swapped, then white";
    for (const char* strLine : {"foreground 1 2", "foreground 1 2 3 4", "foreground 256 0 0", "background -1 0 0", "background a 0 0"})
        EXPECT_FALSE(Reason(QString(strLine) + "\n", 1).isEmpty()) << strLine;
}

TEST_F(CScriptTest, HistoryRowsAreToldAndClicked)
{
    EXPECT_EQ(Output("new 9 9 white rgb\nprint history\nhistory 0\nprint command 57643\nprint command 57644\n"),
              (QStringList{"* << 새로운 이미지 >>", "disabled unchecked", "disabled unchecked"}));
    EXPECT_EQ(Output("new 9 9 white rgb\nsaveas a.bmp\nopen a.bmp\nprint history\n"), QStringList{"* << 원본 이미지 >>"});
    const QString strNew = "new 9 9 white rgb\n";
    for (const char* strLine : {"undo", "redo", "history 1", "history -1", "history x"})
        EXPECT_FALSE(Reason(strNew + strLine + "\n", 2).isEmpty()) << strLine;
    for (const char* strLine : {"undo", "redo", "history 0", "print history"})
        EXPECT_FALSE(Reason(QString(strLine) + "\n", 1).isEmpty()) << "no document: " << strLine;
}

TEST_F(CScriptTest, TheTableEditorKeepsFiles)
{
    EXPECT_EQ(Output("command 40014 Band=2 Color=9,8,7 Save=t.PAL\ncommand 40014 Color=1,1,1 cancel\ncommand 40014 Save=u\n"), QStringList{});
    QFile t(Path("t.PAL")), u(Path("u.PAL"));
    ASSERT_TRUE(t.open(QIODevice::ReadOnly) && u.open(QIODevice::ReadOnly));
    const QByteArray bytes = t.readAll();
    EXPECT_EQ(bytes.size(), 48);
    EXPECT_EQ(bytes.mid(6, 3).toHex(), "090807");
    EXPECT_EQ(u.readAll(), bytes) << "OK kept the table, Cancel did not change it";
    const ScriptRun run = Run("command 40014 Open=missing.PAL\n");
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_EQ(run.out, QStringList{"message: Unable to open file for reading"});
}

TEST_F(CScriptTest, MissingSwatchesAreSaidOnce)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("empty"));
    const ScriptRun run = RunProgram({"--install", Path("empty"), "--script", "-"}, "new 5 5 white rgb\nprint size\ncommand 30136\ncommand 30136\n");
    EXPECT_EQ(run.nStatus, 0) << run.strErr.toStdString();
    EXPECT_EQ(run.out, (QStringList{"message: Default.pal not found",
                                    "message: 브러시 파일이 존재하지 않습니다.\\n프로그램이 정상적으로 작동할 수 없습니다.\\n프로그램을 다시 설치하십시오.",
                                    "5 5"}))
        << "at the start, not at each showing of the box";
    EXPECT_EQ(Output("print colors\n"), QStringList{"1000"}) << "the folder that ships has them";
}
