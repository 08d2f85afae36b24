#include "script/ScriptMain.h"

#include "app/AppSetup.h"
#include "app/CommandLine.h"
#include "app/SettingsProfile.h"
#include "base/Random.h"
#include "script/ScriptOptions.h"
#include "script/ScriptRunner.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryFile>

#include <algorithm>
#include <cstdio>

namespace kestrune {

namespace {

constexpr int c_nFailed = 1;
constexpr int c_nUsageError = 2;

QtMessageHandler g_pHandler = nullptr;

/// Keeps what the offscreen platform says of itself out of standard error, where a script's user looks for the failed line.
void DropPlatformChatter(QtMsgType type, const QMessageLogContext& context, const QString& strText)
{
    for (const char* strHead : {"This plugin does not support ", "QStandardPaths: XDG_RUNTIME_DIR"})
        if (strText.startsWith(QLatin1String(strHead)))
            return;
    g_pHandler(type, context, strText);
}

/// A screen of a usual size instead of the offscreen platform's 800 x 800. The platform reads the file when the application is made.
bool WriteScreenFile(QTemporaryFile& file)
{
    constexpr char szScreens[] = R"({"screens": [{"name": "script", "x": 0, "y": 0, "width": 1920, "height": 1080,)"
                                 R"( "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    return file.open() && file.write(szScreens) > 0 && file.flush();
}

std::vector<std::string> Words(int argc, char** argv)
{
    return {argv + std::min(argc, 1), argv + argc};
}

std::unique_ptr<CProfile> MakeProfile(const ScriptOptions& options)
{
    if (options.strSettings.empty())
        return std::make_unique<CMemoryProfile>();
    return std::make_unique<CSettingsProfile>(std::filesystem::path(options.strSettings) / "settings.ini");
}

int RunOver(QApplication& qtApp, const ScriptOptions& options, QFile& file)
{
    if (options.nSeed)
        SetClockSeed(*options.nSeed);
    PrepareApplication(qtApp);
    FinishApplication(qtApp);
    CPaintApp app(MakeProfile(options));
    app.SetInstallFolder(FindInstallFolder(options.strInstall, QCoreApplication::applicationFilePath().toStdString()));
    // On the offscreen platform the frame is shown to nobody, but laid out, focused and painted as on a screen.
    if (!app.InitInstance(true))
        return c_nFailed;
    QStringList args;
    for (const std::string& strWord : options.args)
        args << QString::fromStdString(strWord);
    QTextStream script(&file);
    return CScriptRunner(app, QString::fromStdString(options.strFile), args).Run(script);
}

} // namespace

bool IsScriptRequest(int argc, char** argv)
{
    return IsScriptCommandLine(Words(argc, argv));
}

int ScriptMain(int argc, char** argv)
{
    std::string strError;
    const std::optional<ScriptOptions> options = ParseScriptOptions(Words(argc, argv), strError);
    QFile file;
    if (options) {
        file.setFileName(QString::fromStdString(options->strFile));
        const bool bOpen = options->strFile == "-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
        if (!bOpen)
            strError = options->strFile + ": " + file.errorString().toStdString();
    }
    if (!strError.empty()) {
        std::fprintf(stderr, "%s\n%s", strError.c_str(), UsageText().c_str());
        return c_nUsageError;
    }
    QTemporaryFile screens;
    if (!options->bShow) {
        QByteArray platform("offscreen");
        if (WriteScreenFile(screens))
            platform += ":configfile=" + screens.fileName().toUtf8();
        qputenv("QT_QPA_PLATFORM", platform);
    }
    g_pHandler = qInstallMessageHandler(DropPlatformChatter);
    int nWords = 1; // the script's words are not the toolkit's
    QApplication qtApp(nWords, argv);
    return RunOver(qtApp, *options, file);
}

} // namespace kestrune
