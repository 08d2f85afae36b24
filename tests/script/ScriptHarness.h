#pragma once

#include <QByteArray>
#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// What a run of the program has left behind.
struct ScriptRun {
    int nStatus = -1; ///< -1: it did not end by itself
    QStringList out;  ///< lines of standard output
    QString strErr;

    /// The last line of standard error: the reason of a failure stands there, behind what the log may have said.
    QString LastError() const { return strErr.trimmed().section(u'\n', -1); }
};

/// Runs the program itself on a script, as a person at a terminal would, in a folder of its own.
class CScriptTest : public testing::Test {
protected:
    QString Path(const QString& strName) const { return m_folder.filePath(strName); }

    /// The surroundings of a run: a home of its own, and no display unless the test has one.
    QProcessEnvironment Environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "xcb"); // where no display is, the program must choose its platform itself
        environment.insert("HOME", m_folder.path());
        environment.insert("XDG_CONFIG_HOME", Path("config"));
        environment.insert("XDG_STATE_HOME", Path("state"));
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        if (!m_strDisplay.isEmpty())
            environment.insert("DISPLAY", m_strDisplay);
        return environment;
    }

    ScriptRun RunProgram(const QStringList& words, const QByteArray& input = {})
    {
        QProcess process;
        process.setProcessEnvironment(Environment());
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral(KESTRUNE_BUILD_DIR "/kestrune"), words);
        process.write(input);
        process.closeWriteChannel();
        ScriptRun run;
        if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit)
            run.nStatus = process.exitCode();
        process.kill();
        process.waitForFinished();
        run.out = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        run.strErr = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    /// The script through standard input, with its arguments.
    ScriptRun Run(const QString& strScript, const QStringList& args = {})
    {
        return RunProgram(QStringList{"--script", "-"} + args, strScript.toUtf8());
    }

    /// The lines that a script prints, which must run to its end.
    QStringList Output(const QString& strScript, const QStringList& args = {})
    {
        const ScriptRun run = Run(strScript, args);
        EXPECT_EQ(run.nStatus, 0) << strScript.toStdString() << "\n" << run.strErr.toStdString();
        return run.out;
    }

    /// The reason for which a line fails; the script must end with status 1 there.
    QString Reason(const QString& strScript, int nLine)
    {
        const ScriptRun run = Run(strScript);
        EXPECT_EQ(run.nStatus, 1) << strScript.toStdString();
        const QString strHead = QStringLiteral("-:%1: ").arg(nLine);
        EXPECT_TRUE(run.LastError().startsWith(strHead)) << strScript.toStdString() << "\n" << run.strErr.toStdString();
        return run.LastError().mid(strHead.size());
    }

    QTemporaryDir m_folder;
    QString m_strDisplay; ///< of a test that has one
};

inline std::ostream& operator<<(std::ostream& stream, const QStringList& lines)
{
    return stream << lines.join("\n").toStdString();
}
