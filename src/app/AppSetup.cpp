#include "app/AppSetup.h"

#include "base/Log.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QTranslator>

namespace kestrune {

namespace {

Q_LOGGING_CATEGORY(c_log, "kestrune")

} // namespace

void PrepareApplication(QApplication& app)
{
    app.setApplicationName(QStringLiteral("kestrune"));
    app.setApplicationDisplayName(QStringLiteral("케스트룬"));
    app.setDesktopFileName(QStringLiteral("kestrune"));
    // Numbers in dialogs look the same whatever the system's language; the texts are Korean.
    QLocale::setDefault(QLocale(QLocale::Korean, QLocale::SouthKorea));
    SetLogSink([](const std::string& strText) { qCWarning(c_log, "%s", strText.c_str()); });
    ApplyTheme(app, DesktopTheme());
}

void FinishApplication(QApplication& app)
{
    auto* pTranslator = new QTranslator(&app);
    if (pTranslator->load(QStringLiteral("qtbase_ko"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        app.installTranslator(pTranslator);
    app.setWindowIcon(LoadIcon(QStringLiteral("app/kestrune")));
    new CThemeWatcher(&app);
}

} // namespace kestrune
