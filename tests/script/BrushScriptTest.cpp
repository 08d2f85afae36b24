// Brushes from scripts, through the real program.

#include "ScriptHarness.h"

#include <QFile>
#include <QImage>

namespace {

/// The area of the brush box that shows the brush at hand.
QImage Box(const QString& strPath)
{
    return QImage(strPath);
}

} // namespace

TEST_F(CScriptTest, BrushesAreMadeChosenAndKept)
{
    // Only the new brush is in a file of its own; 2 * 13 + 1 pixels wide and 9 high.
    EXPECT_EQ(Output("brushnew 12.5 60 0 3\ncommand 24354 Path=all\nbrush 0\ncommand 24352\nbrushfile all.pbr\ncommand 24354 Path=again.pbr\n"), QStringList{});
    QFile all(Path("all.pbr")), again(Path("again.pbr"));
    ASSERT_TRUE(all.open(QIODevice::ReadOnly) && again.open(QIODevice::ReadOnly));
    const QByteArray bytes = all.readAll();
    EXPECT_EQ(again.readAll(), bytes);
    const QByteArray head = QByteArray::fromHex("14000000" "64000000" "1b000000" "0b000000");
    EXPECT_EQ(bytes.mid(bytes.size() - 27 * 11 - 16, 16), head) << bytes.right(27 * 11 + 16).left(16).toHex().toStdString();

    for (const char* strLine : {"brush 999", "brush -1", "brush x", "brushfile missing.pbr", "brushnew 101 50 0 1", "brushnew 5 50 0 0", "brushnew 5 50 0",
                                "softedge x", "response 1", "response 1 2 3", "response 1 256", "command 24351 Size=3"})
        EXPECT_FALSE(Reason(QString(strLine) + "\n", 1).isEmpty()) << strLine;
}

TEST_F(CScriptTest, BrushBoxShowsWhatAScriptDoes)
{
    Output("screenshot a.png 5003\nbrush 8\nscreenshot b.png 5003\nsoftedge 10\nscreenshot c.png 5003\nsoftedge 400\nscreenshot c2.png 5003\nresponse 128 250\nscreenshot d.png 5003\n"
           "response 64 64\nsoftedge 0\nbrush 3\nscreenshot e.png 5003\ncommand 24367\nscreenshot f.png 5003\nprint command 24367\n");
    const QImage a = Box(Path("a.png"));
    ASSERT_FALSE(a.isNull());
    EXPECT_NE(a, Box(Path("b.png"))) << "another brush";
    EXPECT_NE(Box(Path("b.png")), Box(Path("c.png"))) << "a soft edge";
    EXPECT_EQ(Box(Path("c.png")), Box(Path("c2.png"))) << "no softer than 10";
    EXPECT_NE(Box(Path("c.png")), Box(Path("d.png"))) << "a response";
    EXPECT_EQ(a, Box(Path("e.png"))) << "and all of it taken back";
    EXPECT_NE(a, Box(Path("f.png"))) << "the list alone";
}
