// The colour box and the editor of sixteen colours, driven by events; palette files good and bad.

#include "base/Messages.h"
#include "resources/PaletteColors.h"
#include "resources/Swatches.h"
#include "resources/gui/ColorBar.h"
#include "resources/gui/ColorPatches.h"
#include "resources/gui/ColorPickerDialog.h"
#include "resources/gui/ColorWnd.h"
#include "resources/gui/PaletteDialog.h"
#include "resources/gui/PaletteStrip.h"
#include "ui/Dialog.h"

#include <QApplication>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

class CRecordingSink final : public CMessageSink {
public:
    CRecordingSink() { SetMessageSink(this); }
    ~CRecordingSink() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_texts << QString::fromStdString(strText);
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    QStringList m_texts;
};

class Boxes : public testing::Test {
protected:
    ~Boxes() override { CPaintDialog::SetDriver({}); }
    QString Path(const char* pszName) const { return m_folder.filePath(QString::fromLatin1(pszName)); }
    QString Write(const char* pszName, const QByteArray& bytes) const
    {
        QFile file(Path(pszName));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    static QByteArray Read(const QString& strPath)
    {
        QFile file(strPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What the grid holds once a box over that file has been shown.
    SwatchColors Shown(const QString& strPath)
    {
        CColorBar bar(strPath.toStdString());
        bar.show();
        QApplication::processEvents();
        bar.hide();
        bar.show(); // read once, not at each showing
        QApplication::processEvents();
        return bar.Swatches().GetColors();
    }
    static void Click(CColorWnd& grid, int iCell, Qt::MouseButton button = Qt::LeftButton)
    {
        grid.verticalScrollBar()->setValue(0);
        for (int y = 0;; y += 1) { // look for it as the eye does
            ASSERT_LT(y, 2000);
            if (y >= grid.viewport()->height()) {
                ASSERT_LT(grid.verticalScrollBar()->value(), grid.verticalScrollBar()->maximum());
                grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->value() + CColorWnd::c_nCell);
                y = 0;
            }
            for (int x = 0; x < grid.viewport()->width(); x++)
                if (grid.CellAt({x, y}) == iCell)
                    return QTest::mouseClick(grid.viewport(), button, {}, {x + 2, y + 2});
        }
    }

    QTemporaryDir m_folder;
    CRecordingSink m_sink;
};

} // namespace

TEST_F(Boxes, SwatchFileIsReadAtTheFirstShowing)
{
    QByteArray bytes;
    for (int i = 0; i < 257; i++)
        for (const int nByte : {i, i / 2, 3, 77}) // the fourth byte is spare
            bytes += static_cast<char>(nByte);
    const QString strGood = Write("good.pal", bytes);
    EXPECT_EQ(Shown(strGood)[200], Rgb(200, 100, 3));
    EXPECT_EQ(Shown(strGood)[256], Rgb(0, 128, 3)) << "the last of 257 is a colour like any other";
    EXPECT_EQ(Shown(Write("long.pal", bytes + bytes))[255], Rgb(255, 127, 3));
    const SwatchColors cut = Shown(Write("short.pal", bytes.left(4 * 100 + 3)));
    EXPECT_EQ(cut[99], Rgb(99, 49, 3));
    EXPECT_EQ(cut[100], c_aBuiltInSwatches[100]);
    EXPECT_EQ(m_sink.m_texts, QStringList());

    EXPECT_EQ(Shown(Path("none.pal")), c_aBuiltInSwatches);
    EXPECT_EQ(m_sink.m_texts, QStringList{"Default.pal not found"});
    EXPECT_EQ(Shown(m_folder.path()), c_aBuiltInSwatches) << "any other failure: the built-in table";
    EXPECT_EQ(m_sink.m_texts.size(), 1) << "and no message";
}

TEST_F(Boxes, SwatchesGoToTheActivePatchAndBack)
{
    CColorBar bar(Path("none.pal").toStdString());
    bar.resize(200, 130);
    bar.show();
    QApplication::processEvents();
    SetForeground(Rgb(9, 9, 9));
    SetBackground(Rgb(8, 8, 8));
    bar.ShowColors();
    int nChanges = 0;
    QObject::connect(&bar, &CColorBar::ColorsChanged, &bar, [&] { nChanges++; });
    CColorWnd& grid = bar.Swatches();

    Click(grid, 5);
    EXPECT_EQ(g_crForeground, c_aBuiltInSwatches[5]);
    EXPECT_EQ(g_crBackground, Rgb(8, 8, 8));
    QTest::mouseClick(&bar.Patches(), Qt::LeftButton, {}, {40, 40}); // the background's patch
    EXPECT_TRUE(bar.Patches().IsBackgroundActive());
    Click(grid, 256);
    EXPECT_EQ(g_crForeground, c_aBuiltInSwatches[5]);
    EXPECT_EQ(g_crBackground, c_aBuiltInSwatches[256]);
    EXPECT_EQ(grid.GetSelected(), 256);
    EXPECT_EQ(nChanges, 2);

    SetBackground(Rgb(1, 2, 3)); // by a tool
    bar.ShowColors();
    Click(grid, 7, Qt::RightButton);
    EXPECT_EQ(grid.GetColors()[7], Rgb(1, 2, 3));
    QTest::mouseClick(&bar.Patches(), Qt::LeftButton, {}, {5, 5});
    Click(grid, 8, Qt::RightButton);
    EXPECT_EQ(grid.GetColors()[8], c_aBuiltInSwatches[5]);
    EXPECT_EQ(nChanges, 2) << "storing chooses nothing";
    EXPECT_EQ(grid.GetSelected(), 256);

    const auto buttons = bar.Patches().findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    EXPECT_EQ(g_crForeground, Rgb(1, 2, 3));
    EXPECT_EQ(g_crBackground, c_aBuiltInSwatches[5]);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    EXPECT_EQ(g_crForeground, Rgb(0, 0, 0));
    EXPECT_EQ(g_crBackground, Rgb(255, 255, 255));
}

TEST_F(Boxes, APressOnTheActivePatchOpensThePicker)
{
    CColorBar bar(Path("none.pal").toStdString());
    bar.show();
    SetForeground(Rgb(10, 20, 30));
    int nResult = QDialog::Accepted;
    CPaintDialog::SetDriver([&](CPaintDialog& dialog) {
        EXPECT_EQ(static_cast<CColorPickerDialog&>(dialog).GetColor(), Rgb(10, 20, 30));
        EXPECT_FALSE(dialog.SetKey("Green", "200"));
        EXPECT_TRUE(dialog.SetKey("Green", "256")) << "out of range";
        EXPECT_TRUE(dialog.SetKey("Green", "-1"));
        EXPECT_TRUE(dialog.SetKey("Red", "12x"));
        EXPECT_TRUE(dialog.SetKey("Red", ""));
        return nResult;
    });
    nResult = QDialog::Rejected;
    QTest::mouseClick(&bar.Patches(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(g_crForeground, Rgb(10, 20, 30));
    nResult = QDialog::Accepted;
    QTest::mouseClick(&bar.Patches(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(g_crForeground, Rgb(10, 200, 30));
}

TEST_F(Boxes, PickerBoxesFollowEachOther)
{
    CColorPickerDialog dialog(Rgb(0, 0, 0));
    const auto type = [&](const char* pszKey, const char* pszValue) { EXPECT_FALSE(dialog.SetKey(pszKey, pszValue)) << pszKey; };
    type("Saturation", "100");
    type("Value", "100");
    type("Hue", "360");
    EXPECT_EQ(dialog.GetColor(), Rgb(255, 0, 0)) << "a hue of 360 is 0";
    type("Hue", "0");
    EXPECT_EQ(dialog.GetColor(), Rgb(255, 0, 0));
    type("Hue", "120");
    EXPECT_EQ(dialog.GetColor(), Rgb(0, 255, 0));
    type("Hue", "330 °"); // with the unit, as the box shows it
    EXPECT_EQ(dialog.GetColor(), Rgb(255, 0, 127));
    type("Hex", "808080");
    EXPECT_EQ(dialog.GetColor(), Rgb(128, 128, 128));
    type("Hue", "200");
    EXPECT_EQ(dialog.GetColor(), Rgb(127, 127, 127)) << "50 percent, truncated; a grey has no hue to change";
    type("Red", "0");
    type("Green", "0");
    type("Blue", "0");
    type("Value", "60");
    EXPECT_EQ(dialog.GetColor(), Rgb(153, 153, 153)) << "black has lost its saturation";
}

TEST_F(Boxes, TableEditorPicksBandsAndAppliesOnOkAlone)
{
    g_aPaletteTable = c_aStartPalette;
    CPaletteDialog dialog;
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("색상 견본 편집"));
    dialog.show();
    CPaintDialog::SetDriver([](CPaintDialog& picker) {
        EXPECT_FALSE(picker.SetKey("Hex", "0A0B0C"));
        return int(QDialog::Accepted);
    });
    CPaletteStrip& strip = dialog.Strip();
    QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.BandRect(15).center());
    EXPECT_EQ(strip.Selected(), 15);
    EXPECT_EQ(dialog.Table()[15], (PaletteEntry{10, 11, 12}));
    EXPECT_EQ(dialog.Table()[14], c_aStartPalette[14]);

    EXPECT_FALSE(dialog.SetKey("Count", "3"));
    EXPECT_EQ(strip.Selected(), 2) << "the selection stays among the bands";
    EXPECT_EQ(strip.BandRect(1).width(), 85);
    QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.BandRect(2).topRight() + QPoint(1, 5)); // the level left over belongs to none
    EXPECT_EQ(dialog.Table()[2], c_aStartPalette[2]);
    strip.setFocus();
    QTest::keyClick(&strip, Qt::Key_Left);
    QTest::keyClick(&strip, Qt::Key_Return);
    EXPECT_EQ(dialog.Table()[1], (PaletteEntry{10, 11, 12}));
    for (const auto& [pszKey, pszValue] : {std::pair{"Count", "1"}, {"Count", "17"}, {"Count", "x"}, {"Band", "3"}, {"Band", "-1"},
                                           {"Color", "1,2"}, {"Color", "1,2,256"}, {"Color", "red"}, {"Nonsense", "1"}})
        EXPECT_TRUE(dialog.SetKey(pszKey, pszValue)) << pszKey << " " << pszValue;
    EXPECT_FALSE(dialog.SetKey("Band", "0"));
    EXPECT_FALSE(dialog.SetKey("Color", "1,2,3"));

    dialog.reject();
    EXPECT_EQ(g_aPaletteTable, c_aStartPalette);
    dialog.accept();
    EXPECT_EQ(g_aPaletteTable[0], (PaletteEntry{1, 2, 3}));
    g_aPaletteTable = c_aStartPalette;
}

TEST_F(Boxes, TableEditorReadsAndWritesFiles)
{
    g_aPaletteTable = c_aStartPalette;
    CPaletteDialog dialog;
    EXPECT_FALSE(dialog.SetKey("Save", Path("first")));
    const QByteArray bytes = Read(Path("first.PAL"));
    ASSERT_EQ(bytes.size(), 48);
    EXPECT_EQ(bytes.left(6).toHex(), "0000fe56fe56");
    EXPECT_FALSE(dialog.SetKey("Color", "7,7,7"));
    EXPECT_FALSE(dialog.SetKey("Open", Path("first.PAL")));
    EXPECT_EQ(dialog.Table(), c_aStartPalette);
    EXPECT_FALSE(dialog.SetKey("Open", Write("long.PAL", QByteArray(500, '\x11')))) << "what follows is not looked at";
    EXPECT_EQ(dialog.Table()[15], (PaletteEntry{17, 17, 17}));
    EXPECT_EQ(m_sink.m_texts, QStringList());

    EXPECT_TRUE(dialog.SetKey("Open", Write("short.PAL", QByteArray(47, '\x22'))));
    EXPECT_TRUE(dialog.SetKey("Open", Path("none.PAL")));
    EXPECT_TRUE(dialog.SetKey("Save", Path("no such folder/x.PAL")));
    EXPECT_EQ(m_sink.m_texts, (QStringList{"Error during reading", "Unable to open file for reading", "Unable to open file for writing"}));
    EXPECT_EQ(dialog.Table()[0], (PaletteEntry{17, 17, 17})) << "the old table stays";
}
