#include "app/AppSetup.h"
#include "app/CommandLine.h"
#include "app/MainFrame.h"
#include "app/PaintApp.h"
#include "app/SettingsProfile.h"
#include "base/Messages.h"
#include "base/Random.h"
#include "base/StringTable.h"
#include "script/ScriptMain.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

using namespace kestrune;

namespace {

/// What the window shown first need not wait for.
void AfterFirstPaint(QApplication& qtApp, CPaintApp& app, const CPaintCommandLineInfo& info, bool bSettingsCorrupt)
{
    if (std::getenv("KESTRUNE_QUIT_WHEN_PAINTED")) // the start is being timed
        std::_Exit(0);
    FinishApplication(qtApp);
    if (bSettingsCorrupt)
        SayMessage(IDS_SETTINGS_CORRUPT);
    for (const std::filesystem::path& path : info.files)
        app.OpenDocumentFile(path);
}

} // namespace

int main(int argc, char** argv)
{
    if (IsScriptRequest(argc, argv))
        return ScriptMain(argc, argv);
    QApplication qtApp(argc, argv);
    const CPaintCommandLineInfo info = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (!info.strError.empty() || info.bHelp) {
        std::fprintf(info.bHelp ? stdout : stderr, "%s%s", info.bHelp ? "" : (info.strError + "\n").c_str(), UsageText().c_str());
        return info.bHelp ? 0 : 2;
    }
    if (info.nSeed)
        SetClockSeed(*info.nSeed);
    PrepareApplication(qtApp);

    auto pProfile = std::make_unique<CSettingsProfile>(info.pathSettings.empty() ? UserSettingsPath() : info.pathSettings / "settings.ini");
    const bool bSettingsCorrupt = pProfile->WasCorrupt();
    CPaintApp app(std::move(pProfile));
    app.SetInstallFolder(FindInstallFolder(info.pathInstall, QCoreApplication::applicationFilePath().toStdString()));
    if (!app.InitInstance(true))
        return 1;
    QObject::connect(&app.MainFrame(), &CMainFrame::FirstPainted, &app,
                     [&] { AfterFirstPaint(qtApp, app, info, bSettingsCorrupt); });
    return qtApp.exec();
}
