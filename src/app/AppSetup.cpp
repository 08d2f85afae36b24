#include "app/AppSetup.h"

#include "base/Log.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QRawFont>
#include <QTranslator>

#include <clocale>

namespace kestrune {

namespace {

Q_LOGGING_CATEGORY(c_log, "kestrune")

/// A desktop whose font has no Hangul would mix two fonts within a line: digits beside Hangul would come from the other one.
void ChooseFont(QApplication& app)
{
    QFont font = app.font();
    if (QRawFont::fromFont(font).supportsCharacter(u'한'))
        return;
    for (const char* pszFamily : {"Pretendard", "Noto Sans CJK KR", "Noto Sans KR", "NanumGothic", "NanumBarunGothic"})
        if (QFontDatabase::hasFamily(QLatin1String(pszFamily))) {
            font.setFamilies({QLatin1String(pszFamily), font.family()});
            app.setFont(font);
            return;
        }
}

} // namespace

void PrepareApplication(QApplication& app)
{
    app.setApplicationName(QStringLiteral("kestrune"));
    // No display name: the toolkit would add it to the title of every window and dialog, which have their own.
    app.setDesktopFileName(QStringLiteral("kestrune"));
    // Numbers in dialogs look the same whatever the system's language; the texts are Korean.
    QLocale::setDefault(QLocale(QLocale::Korean, QLocale::SouthKorea));
    std::setlocale(LC_NUMERIC, "C"); // the toolkit has taken the system's: a decimal comma would come into boxes and files
    SetLogSink([](const std::string& strText) { qCWarning(c_log, "%s", strText.c_str()); });
    ChooseFont(app);
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
