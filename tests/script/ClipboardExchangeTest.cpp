// The clipboard of a real display: what other programs put there is pasted, and they get what is copied here.

#include "ScriptHarness.h"

#include <QFile>
#include <QImage>

namespace {

/// A display of its own, with the program that other programs' users copy and paste with on the command line.
class CClipboardExchange : public CScriptTest {
protected:
    void SetUp() override
    {
        // The number of the display comes over standard output.
        m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
        ASSERT_TRUE(m_server.waitForStarted()) << "Xvfb is one of the packages that the tests need";
        QByteArray number;
        while (!number.endsWith('\n') && m_server.waitForReadyRead(20000))
            number += m_server.readAllStandardOutput();
        m_strDisplay = ":" + QString::fromLatin1(number).trimmed();
        ASSERT_GT(m_strDisplay.size(), 1);
    }
    void TearDown() override
    {
        m_server.terminate(); // its clients go with it
        m_server.waitForFinished();
    }

    QByteArray XClip(const QStringList& words)
    {
        QProcess process;
        process.setProcessEnvironment(Environment());
        process.start("xclip", QStringList{"-selection", "clipboard"} + words);
        EXPECT_TRUE(process.waitForFinished(30000)) << words;
        EXPECT_EQ(process.exitCode(), 0) << words;
        return process.readAllStandardOutput();
    }
    /// Offers a file as another program would.
    void Offer(const QString& strType, const QString& strFile)
    {
        QProcess process; // the copy of itself that goes on to serve must not hold our pipes
        process.setProcessEnvironment(Environment());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start("xclip", {"-selection", "clipboard", "-t", strType, "-i", strFile});
        ASSERT_TRUE(process.waitForFinished(30000) && process.exitCode() == 0);
    }
    ScriptRun RunShown(const QString& strScript) { return RunProgram({"--show", "--script", "-"}, strScript.toUtf8()); }

    QImage MakePicture()
    {
        QImage image(71, 43, QImage::Format_RGB888); // rows that need padding
        for (int y = 0; y < image.height(); y++)
            for (int x = 0; x < image.width(); x++)
                image.setPixel(x, y, qRgb(x * 3, y * 5, (x * y) & 255));
        EXPECT_TRUE(image.save(Path("p.png")) && image.save(Path("p.bmp")));
        return image;
    }

    QProcess m_server;
};

void Write(const QString& strPath, const QByteArray& bytes)
{
    QFile file(strPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

} // namespace

TEST_F(CClipboardExchange, WhatAnotherProgramCopiesIsPasted)
{
    const QImage image = MakePicture();
    QImage indexed(9, 5, QImage::Format_Indexed8);
    QList<QRgb> table(40, qRgb(1, 1, 1)); // too many for four bits
    table[0] = qRgb(10, 20, 30);
    table[1] = qRgb(250, 0, 5);
    indexed.setColorTable(table);
    for (int i = 0; i < 45; i++)
        indexed.setPixel(i % 9, i / 9, i % 40);
    ASSERT_TRUE(indexed.save(Path("indexed.bmp")));
    for (const QString& strExtension : {QString("bmp"), QString("png")}) {
        Offer("image/" + strExtension, Path("p." + strExtension));
        const ScriptRun run = RunShown("print command 30082\ncommand 30082\nprint size\nprint mode\ndump image new.ppm\n"
                                       "new 90 20 white rgb\npaste\nprint history\ndump image here.ppm\n");
        ASSERT_EQ(run.nStatus, 0) << run.strErr.toStdString();
        EXPECT_EQ(run.out.mid(0, 3), (QStringList{"enabled unchecked", "71 43", "4"}));
        EXPECT_EQ(QImage(Path("new.ppm")).convertToFormat(QImage::Format_RGB888), image);
        EXPECT_EQ(run.out.last(), "* 붙여넣기");
        const QImage here(Path("here.ppm"));
        EXPECT_EQ(here.copy(0, 0, 71, 20).convertToFormat(QImage::Format_RGB888), image.copy(0, 0, 71, 20));
        EXPECT_EQ(here.pixel(71, 0), qRgb(255, 255, 255));
    }
    Offer("image/bmp", Path("indexed.bmp"));
    const ScriptRun run = RunShown("command 30152\nprint mode\nprint depth\nprint colors\nprint pixel 1 0\n");
    EXPECT_EQ(run.out, (QStringList{"2", "8", "256", "250 0 5"})) << run.strErr.toStdString() << "the colour table comes along";
}

TEST_F(CClipboardExchange, NonsenseOnTheClipboardLeavesEverythingAsItWas)
{
    QByteArray huge("BM"); // claims 2^31 - 1 pixels a side
    huge += QByteArray(12, '\0') + QByteArray("\x28\0\0\0\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F\x01\0\x18\0", 16) + QByteArray(24, '\0');
    for (const QByteArray& bytes : {QByteArray("no picture at all"), huge, huge.left(20)}) {
        Write(Path("nonsense"), bytes);
        for (const char* strType : {"image/bmp", "image/png"}) {
            Offer(strType, Path("nonsense"));
            const ScriptRun run = RunShown("new 8 8 white rgb\npaste\ncommand 30082\nprint size\nprint history\nactivate 1\n");
            EXPECT_EQ(run.nStatus, 1);
            EXPECT_EQ(run.out, (QStringList{"8 8", "* << 새로운 이미지 >>"})) << strType;
            EXPECT_TRUE(run.LastError().contains("there is no document 1")) << run.strErr.toStdString();
        }
    }
    Write(Path("text"), "words");
    Offer("UTF8_STRING", Path("text"));
    const ScriptRun run = RunShown("new 8 8 white rgb\nprint command 30084\nprint command 30082\nprint command 30152\nprint command 30099\n"
                                   "command 30099\nprint command 30099\n");
    EXPECT_EQ(run.out, (QStringList{"disabled unchecked", "disabled unchecked", "disabled unchecked", "enabled unchecked", "disabled unchecked"}))
        << run.strErr.toStdString();
}

TEST_F(CClipboardExchange, AnotherProgramGetsWhatIsCopied)
{
    const QImage image = MakePicture();
    QProcess program;
    program.setProcessEnvironment(Environment());
    program.setWorkingDirectory(m_folder.path());
    program.start(QStringLiteral(KESTRUNE_BUILD_DIR "/kestrune"), {"--show", "--script", "-"});
    program.write("open p.png\ncopy\nprint size\nwait 60000\n");
    program.closeWriteChannel();
    QByteArray said;
    while (!said.contains("71 43") && program.waitForReadyRead(60000))
        said += program.readAllStandardOutput();
    ASSERT_TRUE(said.contains("71 43"));

    const QList<QByteArray> targets = XClip({"-o", "-t", "TARGETS"}).split('\n');
    const QByteArray bmp = XClip({"-o", "-t", "image/bmp"}), png = XClip({"-o", "-t", "image/png"});
    program.kill();
    program.waitForFinished();
    EXPECT_TRUE(targets.contains("image/bmp") && targets.contains("image/png"));
    EXPECT_TRUE(bmp.startsWith("BM"));
    EXPECT_EQ(QImage::fromData(bmp, "BMP").convertToFormat(QImage::Format_RGB888), image);
    EXPECT_EQ(QImage::fromData(png, "PNG").convertToFormat(QImage::Format_RGB888), image);
    Write(Path("out.bmp"), bmp);
    QProcess identify; // a reader that shares nothing with the toolkit
    identify.start("gm", {"identify", "-format", "%m %w %h", Path("out.bmp")});
    ASSERT_TRUE(identify.waitForFinished());
    EXPECT_EQ(identify.readAllStandardOutput().trimmed(), "BMP 71 43");
}
