#include "DocTestTools.h"

#include "base/Files.h"
#include "base/StringTable.h"
#include "doc/PaintDoc.h"
#include "doc/files/ImageFile.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace kestrune;
using namespace kestrune::test;
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Answers as a user would, and keeps what was asked.
struct Host final : CDocumentHost {
    std::optional<NewImageParams> AskNewImage() override { return newImage; }
    std::optional<fs::path> AskSaveName(const std::string& strSuggested, bool bSaveAs, int& nFilterIndex) override
    {
        asked.push_back((bSaveAs ? "as " : "name ") + strSuggested);
        nFilterIndex = nIndex;
        if (onAsk)
            onAsk();
        return answer;
    }
    std::optional<NewImageParams> newImage;
    std::optional<fs::path> answer;
    int nIndex = 2;
    std::vector<std::string> asked;
    std::function<void()> onAsk;
};

ImageFormat FormatOf(const fs::path& path)
{
    const auto bytes = ReadWholeFile(path, 1 << 20);
    const ImageFormatRow* pRow = bytes ? FindFormatByContent(*bytes) : nullptr;
    return pRow ? pRow->format : ImageFormat::Count;
}

class PaintDocTest : public testing::Test {
protected:
    PaintDocTest() { SetRecoveryFolder(folder / "kept"); }
    ~PaintDocTest() override { SetRecoveryFolder({}); }

    /// Makes `doc` a small new picture.
    void MakeNew() { ASSERT_TRUE(doc.OnNewDocument({DocumentBirth::FromSize, nullptr, 24, MODE_RGB, {5, 4}})); }
    /// Writes a bitmap file and opens it.
    void Open(const std::string& strName)
    {
        LBitmapBase bitmap = RandomBitmap(6, 5, 24, 1);
        ASSERT_EQ(bitmap.Save(folder / strName, 6, 24, 0), IMG_SUCCESS);
        ASSERT_TRUE(doc.OnOpenDocument(folder / strName));
    }
    std::vector<fs::path> Kept() const
    {
        std::vector<fs::path> kept;
        if (fs::exists(folder / "kept"))
            for (const auto& entry : fs::directory_iterator(folder / "kept"))
                kept.push_back(entry.path());
        return kept;
    }

    CTempFolder folder;
    CSaid said;
    Host host;
    CPaintDoc doc{host};
};

} // namespace

TEST_F(PaintDocTest, NewDocumentComesFromTheDialogAHoldingBitmapOrASize)
{
    EXPECT_FALSE(doc.OnNewDocument({})) << "cancelled";
    EXPECT_EQ(doc.m_pImage, nullptr);

    host.newImage = NewImageParams{7, 3, FILL_BLACK, COLOR_GRAY};
    ASSERT_TRUE(doc.OnNewDocument({}));
    EXPECT_EQ(doc.m_pImage->m_nWidth, 7);
    EXPECT_EQ(doc.m_pImage->m_nColorMode, MODE_GRAY);
    EXPECT_TRUE(doc.IsModified());

    host.newImage = NewImageParams{0, 3, FILL_BLACK, COLOR_RGB};
    EXPECT_FALSE(doc.OnNewDocument({}));
    EXPECT_EQ(doc.m_pImage, nullptr) << "a picture without width is none";

    const LBitmapBase holding = RandomBitmap(4, 4, 24, 2);
    ASSERT_TRUE(doc.OnNewDocument({DocumentBirth::FromHoldingBitmap, &holding, 24, MODE_RGB, {}}));
    EXPECT_EQ(BytesOf(doc.m_pImage->m_Bitmap), BytesOf(holding));

    MakeNew();
    EXPECT_EQ(doc.m_pImage->m_Bitmap.GetPixelColor(4, 3), Rgb(255, 255, 255));
    EXPECT_THAT(said.messages, IsEmpty());
}

TEST_F(PaintDocTest, SaveWritesTheCodingOfTheExtension)
{
    const std::pair<const char*, ImageFormat> rows[] = {
        {"a.JPG", ImageFormat::Jpeg}, {"a.bmp", ImageFormat::Bmp}, {"a.Psd", ImageFormat::Psd}, {"a.xyz", ImageFormat::Jpeg},
        {"b.c.bmp", ImageFormat::Bmp}, {"dot.", ImageFormat::Jpeg}};
    for (const auto& [strName, format] : rows) {
        MakeNew();
        host.answer = folder / strName;
        said.lines.clear();
        EXPECT_TRUE(doc.OnFileSave()) << strName;
        EXPECT_EQ(FormatOf(folder / strName), format) << strName;
        EXPECT_FALSE(doc.IsModified());
        EXPECT_EQ(doc.GetPathName(), folder / strName);
        EXPECT_EQ(doc.GetTitle(), strName);
        const bool bOdd = std::string(strName) == "a.xyz" || std::string(strName) == "dot.";
        EXPECT_EQ(said.lines.size(), bOdd ? 1u : 0u) << "the status bar says what is coded otherwise than named: " << strName;
    }
    EXPECT_THAT(said.messages, IsEmpty());
    EXPECT_THAT(Kept(), IsEmpty());
}

TEST_F(PaintDocTest, ANameWithoutExtensionGetsOne)
{
    MakeNew();
    host.answer = folder / "plain";
    ASSERT_TRUE(doc.OnFileSave());
    EXPECT_EQ(doc.GetPathName(), folder / "plain.jpg");
    EXPECT_FALSE(fs::exists(folder / "plain"));

    host.nIndex = 3;
    ASSERT_TRUE(doc.OnFileSaveAs());
    EXPECT_EQ(FormatOf(folder / "plain.bmp"), ImageFormat::Bmp) << "Save As takes the row that was chosen";

    // A file that was opened under such a name: emptied like any other, its bytes kept, the picture beside it.
    Open("old.bmp");
    fs::rename(folder / "old.bmp", folder / "old");
    ASSERT_TRUE(doc.OnOpenDocument(folder / "old"));
    const std::string strOld = ReadText(folder / "old");
    ASSERT_TRUE(doc.OnFileSave());
    EXPECT_EQ(FormatOf(folder / "old.jpg"), ImageFormat::Jpeg);
    ASSERT_EQ(Kept().size(), 1u);
    EXPECT_EQ(ReadText(Kept()[0]), strOld);
    EXPECT_THAT(said.lines, ElementsAre(HasSubstr(Kept()[0].string())));
}

TEST_F(PaintDocTest, SaveAsLeavesPathAndFlag)
{
    Open("a.bmp");
    doc.SetModifiedFlag(true);
    host.answer = folder / "b.pcx";
    ASSERT_TRUE(doc.OnFileSaveAs());
    EXPECT_EQ(FormatOf(folder / "b.pcx"), ImageFormat::Pcx);
    EXPECT_EQ(doc.GetPathName(), folder / "a.bmp");
    EXPECT_TRUE(doc.IsModified());
    EXPECT_THAT(host.asked, ElementsAre("as " + (folder / "a.bmp").string()));
}

TEST_F(PaintDocTest, TheTitleIsCutWhereANameIsAsked)
{
    MakeNew();
    for (const auto& [strTitle, strAsked] : {std::pair{"Kestrune1", "name Kestrune1"}, {"my picture", "name my"}, {"a#b", "name a"},
                                             {"50%", "name 50"}, {"x;y", "name x"}, {"d/e", "name d"}, {"d\\e", "name d"}}) {
        host.asked.clear();
        doc.SetTitle(strTitle);
        EXPECT_FALSE(doc.OnFileSave()) << "cancelled";
        EXPECT_THAT(host.asked, ElementsAre(strAsked));
        EXPECT_TRUE(doc.IsModified());
    }
}

TEST_F(PaintDocTest, SaveEmptiesTheFileFirstAndClearsTheFlag)
{
    Open("a.bmp");
    ASSERT_TRUE(doc.OnFileSave());
    EXPECT_FALSE(doc.IsModified());

    // A read-only file asks for another name, and while it asks, nothing has been written yet.
    fs::permissions(folder / "a.bmp", fs::perms::owner_read);
    const std::string strBefore = ReadText(folder / "a.bmp");
    host.answer = folder / "other.bmp";
    WriteText(folder / "other.bmp", "what stood there");
    host.onAsk = [&] { EXPECT_TRUE(doc.IsModified()); };
    ASSERT_TRUE(doc.OnFileSave());
    EXPECT_THAT(host.asked, ElementsAre("name " + (folder / "a.bmp").string()));
    EXPECT_EQ(ReadText(folder / "a.bmp"), strBefore);
    EXPECT_EQ(FormatOf(folder / "other.bmp"), ImageFormat::Bmp);
    EXPECT_THAT(Kept(), IsEmpty()) << "the copy goes when the new bytes stand";
}

TEST_F(PaintDocTest, AFailedCreationIsSaidAndTheFlagStays)
{
    MakeNew();
    for (const char* strName : {"no/such/folder/a.jpg", "."}) {
        said.messages.clear();
        host.answer = folder / strName;
        EXPECT_FALSE(doc.OnFileSave());
        EXPECT_THAT(said.messages, ElementsAre(std::string(StringText(61696))));
        EXPECT_TRUE(doc.IsModified());
        EXPECT_TRUE(doc.GetPathName().empty());
    }
}

TEST_F(PaintDocTest, AWriterThatFailsLeavesTheOldBytesInTheRecoveryFolder)
{
    // The coding knows no side over 65500 pixels: the writer refuses, when the file has been emptied already.
    LBitmapBase wide;
    ASSERT_TRUE(wide.Create(70000, 1, 24));
    wide.Fill(0);
    ASSERT_TRUE(doc.OnNewDocument({DocumentBirth::FromHoldingBitmap, &wide, 24, MODE_RGB, {}}));
    const fs::path path = folder / "a.jpg";
    WriteText(path, "old bytes");
    host.answer = path;
    EXPECT_FALSE(doc.OnFileSave());
    EXPECT_EQ(fs::file_size(path), 0u);
    EXPECT_FALSE(doc.IsModified());
    ASSERT_EQ(Kept().size(), 1u);
    EXPECT_EQ(ReadText(Kept()[0]), "old bytes");
    EXPECT_THAT(said.lines, ElementsAre(HasSubstr(Kept()[0].string())));
    EXPECT_THAT(said.messages, IsEmpty()) << "no box interrupts";
    EXPECT_EQ(doc.m_pImage->m_nWidth, 70000) << "the picture in memory stays";
}

TEST_F(PaintDocTest, WithoutARecoveryFolderNothingIsEmptied)
{
    Open("a.bmp");
    const std::string strBefore = ReadText(folder / "a.bmp");
    WriteText(folder / "file", "");
    SetRecoveryFolder(folder / "file/below");
    EXPECT_FALSE(doc.OnFileSave());
    EXPECT_EQ(ReadText(folder / "a.bmp"), strBefore);
    EXPECT_EQ(said.messages.size(), 1u);
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(PaintDocTest, WhatCannotBeOpenedIsSaidWithItsNumber)
{
    WriteText(folder / "junk.png", "no picture");
    const auto Number = [&](const fs::path& path) {
        said.messages.clear();
        EXPECT_FALSE(doc.OnOpenDocument(path));
        EXPECT_EQ(doc.m_pImage, nullptr);
        EXPECT_EQ(said.messages.size(), 1u);
        const std::string strStart(StringText(IDS_LOAD_ERROR));
        EXPECT_THAT(said.messages.at(0), testing::StartsWith(strStart));
        return std::stoi(said.messages.at(0).substr(strStart.size()));
    };
    EXPECT_EQ(Number(folder / "missing.png"), IMG_ERROR_FILE_OPEN);
    EXPECT_EQ(Number(folder.Path()), IMG_ERROR_FILE_OPEN);
    EXPECT_LT(Number(folder / "junk.png"), 0);

    // A path of 500 characters opens nothing, though the file is there; one of 499 does, however many bytes its letters have.
    fs::path path = folder.Path();
    while (path.string().size() < 380)
        path /= "deep";
    fs::create_directories(path);
    const auto Named = [&](int nChars) {
        const int nRest = nChars - static_cast<int>(path.string().size()) - 1 - 4;
        fs::path full = path / (std::string(nRest - 50, 'n') + ".bmp");
        std::string strName;
        for (int i = 0; i < 50; i++)
            strName += "가";
        return path / (std::string(nRest - 50, 'n') + strName + ".bmp");
    };
    Open("a.bmp");
    const fs::path longest = Named(499), over = Named(500);
    fs::copy_file(folder / "a.bmp", longest);
    fs::copy_file(folder / "a.bmp", over);
    EXPECT_TRUE(doc.OnOpenDocument(longest));
    EXPECT_EQ(Number(over), IMG_ERROR_FILE_OPEN);

    // A metafile that does not state its size has a message of its own.
    WriteText(folder / "bare.wmf", std::string("\x01\x00\x09\x00\x00\x03", 6));
    said.messages.clear();
    EXPECT_FALSE(doc.OnOpenDocument(folder / "bare.wmf"));
    EXPECT_THAT(said.messages, ElementsAre(std::string(StringText(IDS_BAD_FORMAT))));
}
