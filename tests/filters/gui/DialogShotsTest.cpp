// Grabs every filter dialog with its preview for a person to look at: KESTRUNE_SHOTS names the folder,
// KESTRUNE_SHOTS_THEME may be "dark".

#include "FilterTestKit.h"

#include "filters/gui/FilterPreview.h"
#include "ui/Theme.h"

#include <QPixmap>

using namespace kestrune;

TEST(DialogShots, EveryDialogAsAPersonSeesIt)
{
    const QString strFolder = qEnvironmentVariable("KESTRUNE_SHOTS");
    if (strFolder.isEmpty())
        GTEST_SKIP() << "for looking at: set KESTRUNE_SHOTS to a folder";
    ApplyTheme(*qApp, qEnvironmentVariable("KESTRUNE_SHOTS_THEME") == "dark" ? ThemeKind::Dark : ThemeKind::Light);
    CPaintImage image;
    ASSERT_TRUE(image.Load(KESTRUNE_SOURCE_DIR "/install/Samples/hills.png"));
    CMemoryProfile profile;
    for (const FilterRow& row : FilterTable()) {
        FilterDialogData data;
        PrepareFilterDialog(image, data);
        data.values = LoadFilterValues(row, profile);
        const std::unique_ptr<CFilterDialog> pDialog = MakeFilterDialog(row, image, data, nullptr);
        if (!pDialog)
            continue;
        pDialog->Preview().OnTimer();
        pDialog->show();
        QApplication::processEvents();
        const QString strFile = QStringLiteral("%1/%2.png").arg(strFolder).arg(row.nCommand);
        EXPECT_TRUE(pDialog->grab().save(strFile)) << strFile.toStdString();
    }
}
