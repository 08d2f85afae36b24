// Save, Export and Open dialogs: names, extensions, the question before a file is replaced, and the preview.

#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/gui/ExportDialog.h"
#include "doc/gui/OpenDialog.h"
#include "doc/gui/SaveDialog.h"

#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

void Touch(const QString& strPath, const QByteArray& bytes = "old")
{
    QFile file(strPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QString PathOf(const CFileDialogFrame& dialog)
{
    return QFile::decodeName(dialog.Path().c_str());
}

/// Counts what is asked and gives one answer to all.
class CAnswers final : public CMessageSink {
public:
    explicit CAnswers(MessageAnswer nAnswer) : m_nAnswer(nAnswer) { SetMessageSink(this); }
    ~CAnswers() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer) override
    {
        m_texts.push_back(strText);
        return m_nAnswer;
    }
    void StatusText(const std::string&) override {}

    MessageAnswer m_nAnswer;
    std::vector<std::string> m_texts;
};

/// A person types a name into the browser and presses Enter.
void TypeName(CFileDialogFrame& dialog, const QString& strName)
{
    auto* pName = dialog.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(pName, nullptr);
    pName->setText(strName);
    QTest::keyClick(pName, Qt::Key_Return);
}

} // namespace

TEST(SaveDialog, RowsStandInTheOrderOfTheSaveTable)
{
    CMemoryProfile profile;
    CSaveDialog dialog(profile, true);
    const QStringList expected{"*.jpg", "*.bmp", "*.psd", "*.tif", "*.cut", "*.pct", "*.sgi", "*.wpg", "*.pcx"};
    for (int i = 0; i < expected.size(); i++) {
        EXPECT_EQ(dialog.SetKey("Filter", QString::number(i)), std::nullopt);
        EXPECT_EQ(dialog.FilterIndex(), i + 2);
        const auto* pBrowser = dialog.findChild<QFileDialog*>();
        EXPECT_TRUE(pBrowser->selectedNameFilter().endsWith("(" + expected[i] + ")")) << i;
    }
    EXPECT_NE(dialog.SetKey("Filter", "9"), std::nullopt);
    dialog.Suggest("photo.SGI", 0);
    EXPECT_EQ(dialog.FilterIndex(), 8);
    dialog.Suggest("photo.unknown", 0);
    EXPECT_EQ(dialog.FilterIndex(), 2);
}

TEST(SaveDialog, RefusesWhatIsNoFileName)
{
    QTemporaryDir folder;
    CMemoryProfile profile;
    CSaveDialog dialog(profile, false);
    EXPECT_NE(dialog.SetKey("Path", ""), std::nullopt);
    EXPECT_NE(dialog.SetKey("Path", folder.path()), std::nullopt);
    EXPECT_NE(dialog.SetKey("Path", folder.filePath("missing/x.bmp")), std::nullopt);
    EXPECT_EQ(dialog.SetKey("Path", folder.filePath("그림 1.bmp")), std::nullopt);
    EXPECT_EQ(PathOf(dialog), folder.filePath("그림 1.bmp"));
}

TEST(SaveDialog, AsksAPersonBeforeItReplacesAFile)
{
    QTemporaryDir folder;
    Touch(folder.filePath("old.jpg"));
    CMemoryProfile profile;
    profile.WriteString("Files", "Save Folder", folder.path().toStdString());
    for (const MessageAnswer nAnswer : {MessageAnswer::No, MessageAnswer::Yes}) {
        const bool bYes = nAnswer == MessageAnswer::Yes;
        CAnswers answers(nAnswer);
        CSaveDialog dialog(profile, true);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        TypeName(dialog, "old"); // the name that it will get with its extension counts
        ASSERT_EQ(answers.m_texts.size(), 1u);
        EXPECT_NE(answers.m_texts[0].find("old.jpg"), std::string::npos);
        EXPECT_EQ(dialog.result(), bYes ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_EQ(dialog.isVisible(), !bYes) << "after No another name can be typed";
        EXPECT_EQ(dialog.findChild<QFileDialog*>()->isVisible(), !bYes);
        if (!bYes) {
            TypeName(dialog, "new");
            EXPECT_EQ(answers.m_texts.size(), 1u) << "a new name asks nothing";
            EXPECT_EQ(dialog.result(), QDialog::Accepted);
        }
    }
}

TEST(ExportDialog, FormatAndExtensionSayTheSame)
{
    QTemporaryDir folder;
    CMemoryProfile profile;
    CExportDialog dialog(profile);
    const auto text = [&] { return dialog.Format().text; };
    EXPECT_EQ(text(), "PNG 이미지");
    ASSERT_EQ(dialog.SetKey("Path", folder.filePath("a.WEBP")), std::nullopt);
    EXPECT_EQ(text(), "WebP 이미지") << "the extension decides while nobody names a format";
    EXPECT_EQ(dialog.SetKey("Quality", "37"), std::nullopt);
    EXPECT_EQ(dialog.SetKey("Lossless", "1"), std::nullopt);
    EXPECT_NE(dialog.SetKey("Quality", "40"), std::nullopt) << "without loss there is no quality to choose";
    ASSERT_EQ(dialog.SetKey("Format", "jpg"), std::nullopt);
    EXPECT_EQ(text(), "JPEG 이미지");
    EXPECT_NE(dialog.SetKey("Lossless", "0"), std::nullopt);
    EXPECT_NE(dialog.SetKey("Quality", "0"), std::nullopt);
    EXPECT_NE(dialog.SetKey("Quality", "101"), std::nullopt);
    EXPECT_NE(dialog.SetKey("Format", "psd"), std::nullopt);
    EXPECT_EQ(dialog.Options().nQuality, 37);
    ASSERT_EQ(dialog.SetKey("Path", folder.filePath("plain")), std::nullopt);
    EXPECT_EQ(dialog.Target().filename(), "plain.jpg");
    ASSERT_EQ(dialog.SetKey("Path", folder.filePath("a.dat")), std::nullopt);
    EXPECT_EQ(dialog.Target().filename(), "a.dat") << "a name with an extension is meant";
    dialog.accept();
    ASSERT_EQ(dialog.result(), QDialog::Accepted);
    CExportDialog again(profile);
    EXPECT_EQ(again.Format().text, "JPEG 이미지") << "the last format is remembered";
    EXPECT_EQ(again.Options().nQuality, 37);
}

TEST(OpenDialog, FilterRowsStandInOrderAndLetFilesThrough)
{
    CMemoryProfile profile;
    CDlgImageFile dialog(profile);
    EXPECT_EQ(dialog.windowTitle(), QString("Open Bitmap File"));
    const QStringList filters = dialog.findChild<QFileDialog*>()->nameFilters();
    const QStringList patterns{"*.*",    "*.BMP", "*.CLP", "*.CUT", "*.DIB", "*.DCX",  "*.EPS", "*.GIF",
                               "*.ICO",  "*.JPG", "*.PNTG", "*.MSP", "*.PCD", "*.PCX", "*.PICT", "*.PNG",
                               "*.PSD",  "*.SGI", "*.TGA", "*.TIF", "*.WMF", "*.WPG"};
    ASSERT_GE(filters.size(), patterns.size());
    for (int i = 0; i < patterns.size(); i++)
        EXPECT_TRUE(filters[i].contains("(" + patterns[i] + ")")) << i << " " << filters[i].toStdString();
    EXPECT_TRUE(filters[9].contains("*.jpeg"));
}

TEST(OpenDialog, ShowsTheSelectedFileAndWhatItSaysOfItself)
{
    QTemporaryDir folder;
    QImage picture(300, 150, QImage::Format_RGB888);
    picture.fill(QColor(200, 30, 10));
    picture.setDotsPerMeterX(5906); // 150 dots an inch
    picture.setDotsPerMeterY(5906);
    ASSERT_TRUE(picture.save(folder.filePath("p.png")));
    Touch(folder.filePath("broken.png"), "this is no picture");

    CMemoryProfile profile;
    CDlgImageFile dialog(profile);
    QFileDialog& browser = *dialog.findChild<QFileDialog*>();
    Q_EMIT browser.currentChanged(folder.filePath("p.png"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.Preview().has_value(); }, 5000));
    const PreviewResult& result = *dialog.Preview();
    EXPECT_EQ(result.nWidth, 300);
    EXPECT_EQ(result.nHeight, 150);
    EXPECT_EQ(result.nBitsPerPixel, 24);
    EXPECT_EQ(result.nXResolution, 150);
    EXPECT_EQ(result.image.width(), 2 * result.image.height());
    EXPECT_LT(result.image.width(), 300);
    EXPECT_EQ(result.image.pixelColor(10, 10), QColor(200, 30, 10));

    Q_EMIT browser.currentChanged(folder.filePath("broken.png"));
    EXPECT_FALSE(dialog.Preview()) << "the old preview goes at once";
    const QString strFailed = TextOf(IDS_PREVIEW_FAILED);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            for (const QLabel* pLabel : dialog.findChildren<QLabel*>())
                if (pLabel->text() == strFailed)
                    return true;
            return false;
        },
        5000));
}

TEST(PreviewLoader, OnlyTheLastRequestOvertakes)
{
    QTemporaryDir folder;
    QStringList paths;
    for (int i = 0; i < 12; i++) {
        QImage picture(400 + i, 300, QImage::Format_RGB888);
        picture.fill(Qt::gray);
        paths << folder.filePath(QString::number(i) + ".bmp");
        ASSERT_TRUE(picture.save(paths.last()));
    }
    CPreviewLoader loader({64, 64});
    QStringList shown;
    QObject::connect(&loader, &CPreviewLoader::Ready, [&](const PreviewResult& result) { shown << result.strPath; });
    for (const QString& strPath : paths)
        loader.Request(strPath); // no event runs between: all but the last are overtaken
    ASSERT_TRUE(QTest::qWaitFor([&] { return !shown.isEmpty(); }, 5000));
    QTest::qWait(50);
    EXPECT_EQ(shown, QStringList{paths.last()});
    loader.Request(paths[0]);
    loader.Cancel();
    QTest::qWait(200);
    EXPECT_EQ(shown.size(), 1);
    {
        CPreviewLoader gone({64, 64});
        gone.Request(paths[1]);
    } // its result arrives when nobody wants it any more
    QTest::qWait(100);
}
