#include "base/Messages.h"
#include "base/Profile.h"
#include "base/StringTable.h"
#include "resources/PaintSources.h"
#include "resources/gui/TextureBox.h"
#include "resources/gui/TextureWnd.h"
#include "tools/gui/OptionPage.h"
#include "tools/gui/ToolOptionPages.h"
#include "ui/ControlValue.h"
#include "ui/NumEdit.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

struct CCountingSink : CMessageSink {
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_said.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    std::vector<std::string> m_said;
};

class OptionPageTest : public testing::Test {
protected:
    OptionPageTest()
    {
        LoadToolOptions(CMemoryProfile());
        SetMessageSink(&m_sink);
        m_window.resize(900, 40);
    }
    ~OptionPageTest() override
    {
        SetMessageSink(nullptr);
        g_brushTexture = {};
        g_paintPattern = {};
        LoadToolOptions(CMemoryProfile());
    }

    /// What a control shows, as the number that its setting has.
    static int Shown(QObject& control, ToolOption option)
    {
        if (auto* pEdit = qobject_cast<CNumEdit*>(&control))
            return static_cast<int>(pEdit->GetValue());
        if (auto* pCombo = qobject_cast<QComboBox*>(&control))
            return pCombo->currentIndex() + ToolOptionTable()[static_cast<std::size_t>(option)].nMin;
        if (auto* pGroup = qobject_cast<QButtonGroup*>(&control))
            return pGroup->checkedId();
        return qobject_cast<QCheckBox*>(&control)->isChecked();
    }

    std::filesystem::path Install() const { return m_folder.path().toStdString(); }
    void WriteImage(const QString& strName, QRgb rgb)
    {
        QImage image(8, 6, QImage::Format_RGB32);
        image.fill(rgb);
        QDir(m_folder.path()).mkpath(QFileInfo(strName).path());
        ASSERT_TRUE(image.save(m_folder.filePath(strName)));
    }

    QTemporaryDir m_folder;
    CCountingSink m_sink;
    QWidget m_window;
    CToolOptionPages m_pages{Install(), &m_window};
};

} // namespace

TEST_F(OptionPageTest, EverySettingHasAControlThatGoesBothWays)
{
    for (const ToolOptionRow& row : ToolOptionTable()) {
        SCOPED_TRACE(std::string(row.strSection) + " " + std::string(row.strKey));
        QObject* pControl = m_pages.Control(row.option);
        ASSERT_TRUE(pControl);
        EXPECT_EQ(Shown(*pControl, row.option), row.nDefault);
        SetToolOption(row.option, row.nMax);
        EXPECT_EQ(Shown(*pControl, row.option), row.nMax);
        SetToolOption(row.option, row.nMin);
        EXPECT_EQ(Shown(*pControl, row.option), row.nMin);

        SetToolOption(ToolOption::FloaterStyle, 1); // a grey control takes nothing
        const bool bList = qobject_cast<QComboBox*>(pControl) != nullptr;
        const auto text = [&](int n) { return QString::number(bList ? n - row.nMin : n); };
        EXPECT_FALSE(PutIntoControl(*pControl, text(row.nMax)));
        EXPECT_EQ(GetToolOption(row.option), row.nMax);
        for (const int n : {row.nMax + 1, row.nMin - 1}) {
            EXPECT_TRUE(PutIntoControl(*pControl, text(n))) << n;
            EXPECT_EQ(GetToolOption(row.option), row.nMax);
            EXPECT_EQ(Shown(*pControl, row.option), row.nMax);
        }
        EXPECT_TRUE(PutIntoControl(*pControl, "nonsense"));
        SetToolOption(ToolOption::FloaterStyle, 0);
    }
}

TEST_F(OptionPageTest, ControlsAreFoundByTheirNumbers)
{
    const auto find = [&](int nTool, int nCommand, int nControl) {
        return m_pages.PageOf(*FindToolRow(nTool), nCommand)->findChild<CNumEdit*>(QStringLiteral("Control%1").arg(nControl));
    };
    for (const auto& [nTool, nCommand, nControl, option] :
         {std::tuple{TOOL_AIR_BRUSH, 1008, 1461, ToolOption::AirSpace}, {TOOL_AIR_BRUSH, 1008, 1462, ToolOption::AirPressure},
          {TOOL_AIR_BRUSH, 1008, 1463, ToolOption::AirOpacity}, {TOOL_BUCKET, 1012, 1461, ToolOption::BucketThreshold},
          {TOOL_RECT_SELECT, 1001, 1101, ToolOption::FloaterFeather}, {TOOL_MOVE, 1002, 1102, ToolOption::FloaterOpacity},
          {TOOL_MAGIC_WAND, 1003, 1103, ToolOption::FloaterTolerance}, {TOOL_COLOR_EFFECT, 1067, 1547, ToolOption::ArtIntensity}}) {
        CNumEdit* pEdit = find(nTool, nCommand, nControl);
        ASSERT_TRUE(pEdit) << nControl;
        SetToolOption(option, 7);
        EXPECT_EQ(pEdit->GetValue(), 7) << nControl;
    }
}

TEST_F(OptionPageTest, SelectionToolsShareABarThatShowsEachItsOwn)
{
    QWidget* pPage = m_pages.PageOf(*FindToolRow(TOOL_RECT_SELECT), 1001);
    const auto isShown = [&](const char* pszName) { return pPage->findChild<QWidget*>(pszName)->isVisibleTo(pPage); };
    EXPECT_TRUE(isShown("Floater.Style") && isShown("Floater.Width") && isShown("Control1101"));
    EXPECT_FALSE(isShown("Control1103") || isShown("Floater.AntiAlias"));
    EXPECT_EQ(m_pages.PageOf(*FindToolRow(TOOL_MAGIC_WAND), 1003), pPage);
    EXPECT_TRUE(isShown("Control1103") && isShown("Control1101"));
    EXPECT_FALSE(isShown("Floater.Style") || isShown("Floater.AntiAlias"));
    m_pages.PageOf(*FindToolRow(TOOL_FREE_SELECT), 1123);
    EXPECT_TRUE(isShown("Floater.AntiAlias"));
    // A control that another tool shows still takes what a script says.
    EXPECT_FALSE(PutIntoControl(*m_pages.Control(ToolOption::FloaterTolerance), "30"));
    EXPECT_EQ(GetToolOption(ToolOption::FloaterTolerance), 30);
}

TEST_F(OptionPageTest, WhatACheckBoxSwitchesIsGreyWithoutIt)
{
    const auto isEnabled = [&](ToolOption option) { return qobject_cast<QWidget*>(m_pages.Control(option))->isEnabled(); };
    EXPECT_FALSE(isEnabled(ToolOption::FloaterWidth) || isEnabled(ToolOption::FloaterHeight));
    EXPECT_TRUE(isEnabled(ToolOption::BrushPressure) && isEnabled(ToolOption::FloaterFeather));
    qobject_cast<QCheckBox*>(m_pages.Control(ToolOption::FloaterStyle))->click();
    EXPECT_TRUE(isEnabled(ToolOption::FloaterWidth) && isEnabled(ToolOption::FloaterHeight));
    SetToolOption(ToolOption::FloaterStyle, 0); // somebody else switches it off
    EXPECT_FALSE(isEnabled(ToolOption::FloaterWidth) || isEnabled(ToolOption::FloaterHeight));
    qobject_cast<QCheckBox*>(m_pages.Control(ToolOption::BrushFade))->click();
    EXPECT_FALSE(isEnabled(ToolOption::BrushPressure));
    EXPECT_TRUE(isEnabled(ToolOption::BrushOpacity));
}

TEST_F(OptionPageTest, EffectBarNamesItsEffectAndHidesAStrengthThatHasNone)
{
    QWidget* pPage = m_pages.PageOf(*FindToolRow(TOOL_COLOR_EFFECT), 1050);
    EXPECT_EQ(pPage->findChild<QLabel*>("EffectTitle")->text(), QStringLiteral("그레이스케일"));
    const auto* pStrength = pPage->findChild<CNumEdit*>("Control1547");
    EXPECT_FALSE(pStrength->isVisibleTo(pPage));
    m_pages.PageOf(*FindToolRow(TOOL_TEXTURE_EFFECT), 1055);
    EXPECT_EQ(pPage->findChild<QLabel*>("EffectTitle")->text(), QStringLiteral("흩뿌림"));
    EXPECT_TRUE(pStrength->isVisibleTo(pPage));
    bool bLabel = false;
    for (const QLabel* pLabel : pPage->findChildren<QLabel*>())
        bLabel = bLabel || (pLabel->buddy() == pStrength && pLabel->text() == QStringLiteral("크기:"));
    EXPECT_TRUE(bLabel);
}

TEST_F(OptionPageTest, ATypedNumberCountsAtOnceAndIsPutRightAtTheEnd)
{
    QWidget* pPage = m_pages.PageOf(*FindToolRow(TOOL_PENCIL), 1005);
    m_window.show();
    pPage->show();
    auto* pEdit = qobject_cast<CNumEdit*>(m_pages.Control(ToolOption::PencilOpacity));
    int nDone = 0;
    QObject::connect(&m_pages, &CToolOptionPages::Done, [&] { nDone++; });
    pEdit->setFocus();
    pEdit->selectAll();
    QTest::keyClicks(pEdit, "4");
    EXPECT_EQ(GetToolOption(ToolOption::PencilOpacity), 4);
    EXPECT_EQ(pEdit->text(), "4"); // what is typed stays as it is typed
    QTest::keyClicks(pEdit, "0");
    EXPECT_EQ(GetToolOption(ToolOption::PencilOpacity), 40);
    QTest::keyClicks(pEdit, "0");
    EXPECT_EQ(GetToolOption(ToolOption::PencilOpacity), 40); // 400 is none
    QTest::keyClick(pEdit, Qt::Key_Return);
    EXPECT_EQ(GetToolOption(ToolOption::PencilOpacity), 100);
    EXPECT_EQ(pEdit->text(), "100 %");
    EXPECT_EQ(nDone, 1);
    pEdit->setText("rubbish");
    QTest::keyClick(pEdit, Qt::Key_Return);
    EXPECT_EQ(pEdit->text(), "100 %");
    pEdit->setText("100/4");
    QTest::keyClick(pEdit, Qt::Key_Return);
    EXPECT_EQ(GetToolOption(ToolOption::PencilOpacity), 25);
    EXPECT_TRUE(m_sink.m_said.empty());
}

TEST_F(OptionPageTest, ChosenTextureFillsWhatTheToolsRead)
{
    WriteImage("BrushTexture/a.bmp", qRgb(10, 20, 30));
    WriteImage("BrushTexture/b.bmp", qRgb(90, 20, 30));
    WriteImage("Textures/p.bmp", qRgb(1, 2, 3));
    QWidget* pPage = m_pages.PageOf(*FindToolRow(TOOL_PENCIL), 1005);
    m_window.show();
    auto* pPatch = pPage->findChild<CTexturePatch*>("Texture");
    ASSERT_TRUE(pPatch);
    pPatch->click();
    CTextureBox& box = m_pages.TextureBox();
    ASSERT_TRUE(box.isVisible());
    auto* pGrid = box.findChild<CTextureWnd*>();
    ASSERT_EQ(pGrid->count(), 2);
    QTest::mouseClick(pGrid->viewport(), Qt::LeftButton, {}, pGrid->visualItemRect(pGrid->item(1)).center());
    EXPECT_FALSE(box.isVisible());
    EXPECT_EQ(g_brushTexture.nWidth, 8);
    EXPECT_EQ(g_brushTexture.aBytes, std::vector<std::uint8_t>(48, 90));
    EXPECT_FALSE(box.Choose(Install() / "missing.bmp")); // the old one stays
    EXPECT_EQ(g_brushTexture.aBytes.size(), 48u);
    box.findChild<QPushButton*>("None")->click();
    EXPECT_TRUE(g_brushTexture.aBytes.empty());

    ASSERT_TRUE(m_pages.PatternBox().Choose(Install() / "Textures/p.bmp"));
    EXPECT_EQ(g_paintPattern.aPixels.size(), 144u);
    EXPECT_EQ(g_paintPattern.aPixels[2], 3);
    // Every bar shows the one percent.
    auto* pOther = m_pages.PageOf(*FindToolRow(TOOL_BRUSH), 1006)->findChild<CNumEdit*>("PatternPercent");
    EXPECT_FALSE(PutIntoControl(m_pages.PatternPercent(), "35"));
    EXPECT_EQ(g_paintPattern.nPercent, 35);
    EXPECT_EQ(pOther->GetValue(), 35);
    EXPECT_TRUE(PutIntoControl(m_pages.PatternPercent(), "101"));
    m_pages.PatternBox().Clear();
    EXPECT_EQ(g_paintPattern.nPercent, 35);
}

TEST_F(OptionPageTest, DrawingsFollowTheTheme)
{
    const QPalette before = qApp->palette();
    ApplyTheme(*qApp, ThemeKind::Light);
    QWidget* pPage = m_pages.PageOf(*FindToolRow(TOOL_DODGE), 1015);
    m_window.show();
    pPage->show();
    const auto patch = [&] { return pPage->findChild<CTexturePatch*>("Texture")->icon().pixmap(34, 18).toImage(); };
    const auto tool = [&] {
        for (const QLabel* pLabel : pPage->findChildren<QLabel*>())
            if (const QPixmap pixmap = pLabel->pixmap(); !pixmap.isNull())
                return pixmap.toImage();
        return QImage();
    };
    const QImage lightPatch = patch(), lightTool = tool();
    ASSERT_FALSE(lightTool.isNull());
    ApplyTheme(*qApp, ThemeKind::Dark);
    QCoreApplication::processEvents();
    EXPECT_NE(patch(), lightPatch);
    EXPECT_NE(tool(), lightTool);
    ApplyTheme(*qApp, ThemeKind::Light);
    QCoreApplication::processEvents();
    EXPECT_EQ(patch(), lightPatch);
    EXPECT_EQ(tool(), lightTool);
    qApp->setPalette(before);
}

TEST_F(OptionPageTest, AnEmptyFolderIsToldForBrushTexturesAlone)
{
    m_window.show();
    m_pages.PatternBox().OpenBeside(m_window);
    EXPECT_TRUE(m_sink.m_said.empty());
    m_pages.PatternBox().hide();
    m_pages.TextureBox().OpenBeside(m_window);
    m_pages.TextureBox().hide();
    m_pages.TextureBox().OpenBeside(m_window); // once
    EXPECT_EQ(m_sink.m_said, std::vector<std::string>{std::string(StringText(1127))});
    EXPECT_TRUE(m_sink.m_said[0].starts_with("텍스츄어 이미지가 존재하지 않습니다."));
}
