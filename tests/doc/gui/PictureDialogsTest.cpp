// Resize, Canvas Size and index colours under a person's hands: keys typed one by one, boxes in step, previews.
#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/gui/AnchorGrid.h"
#include "doc/gui/CanvasSizeDialog.h"
#include "doc/gui/IndexColorDialog.h"
#include "doc/gui/PanPane.h"
#include "doc/gui/ResizeDialog.h"
#include "ui/NumEdit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

struct CSaid final : CMessageSink {
    CSaid() { SetMessageSink(this); }
    ~CSaid() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        messages.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    std::vector<std::string> messages;
};

LBitmapBase Colourful(int nWidth, int nHeight)
{
    LBitmapBase bitmap;
    bitmap.Create(nWidth, nHeight, 24);
    for (int y = 0; y < nHeight; y++)
        for (int x = 0; x < nWidth; x++)
            bitmap.PutPixelColor(x, y, Rgb(x * 5 & 255, y * 7 & 255, (x + y) & 255));
    return bitmap;
}

void TypeOver(CNumEdit& box, const QString& strText)
{
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, strText);
}

QSet<QRgb> ColorsOf(QWidget& widget)
{
    const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QSet<QRgb> colors;
    for (int y = 2; y < image.height() - 2; y++)
        for (int x = 2; x < image.width() - 2; x++)
            colors.insert(image.pixel(x, y));
    return colors;
}

} // namespace

TEST(PictureDialogs, TheKeystrokeThatMakesASideTooLargeIsTakenBack)
{
    CSaid said;
    CResizeDialog dialog({{400, 300}, 24, 0, 0});
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    const QList<CNumEdit*> boxes = dialog.findChildren<CNumEdit*>();
    ASSERT_EQ(boxes.size(), 4) << "pixels and centimetres";
    CNumEdit &width = *boxes[0], &height = *boxes[1];
    TypeOver(width, "5000");
    EXPECT_EQ(said.messages, std::vector<std::string>{std::string(StringText(IDS_WIDTH_TOO_LARGE))});
    EXPECT_EQ(width.text(), "500");
    EXPECT_EQ(height.text(), "375") << "the proportions were kept all the way";
    TypeOver(height, "600");
    EXPECT_EQ(dialog.PictureSize(), (CSize{800, 600}));
    for (int i = 0; i < 5; i++)
        QTest::keyClick(&height, Qt::Key_Down);
    EXPECT_EQ(dialog.PictureSize(), (CSize{793, 595}));
    EXPECT_EQ(said.messages.size(), 1u);
}

TEST(PictureDialogs, PixelsAndPrintSizeKeepInStep)
{
    CSaid said;
    CResizeDialog dialog({{800, 400}, 24, 254, 127}); // 100 and 50 pixels a centimetre
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    const QList<CNumEdit*> boxes = dialog.findChildren<CNumEdit*>();
    EXPECT_EQ(boxes[2]->text(), "8.00");
    EXPECT_EQ(boxes[3]->text(), "8.00");
    TypeOver(*boxes[0], "333");
    EXPECT_EQ(boxes[2]->text(), "3.33");
    TypeOver(*boxes[2], "16");
    EXPECT_EQ(dialog.PictureSize(), (CSize{1600, 800}));
    EXPECT_EQ(boxes[2]->text(), "16") << "what is being typed is left alone";
    EXPECT_EQ(boxes[3]->text(), "16.00");
    TypeOver(*boxes[2], "70");
    EXPECT_EQ(said.messages.size(), 1u);
    EXPECT_EQ(dialog.PictureSize(), (CSize{700, 350})) << "the 7 was taken, the 70 was not";
    EXPECT_EQ(boxes[2]->text(), "7.00");
}

TEST(PictureDialogs, TheAnchorIsChosenByMouseAndArrows)
{
    CCanvasSizeDialog dialog(Colourful(40, 30), 24, Rgb(1, 2, 3));
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(dialog.Anchor(), 4);
    auto* pGrid = dialog.findChild<CAnchorGrid*>();
    QTest::mouseClick(pGrid->Buttons()->button(2), Qt::LeftButton);
    EXPECT_EQ(dialog.Anchor(), 2);
    QTest::keyClick(pGrid->Buttons()->button(2), Qt::Key_Down);
    EXPECT_EQ(dialog.Anchor(), 5);
    ASSERT_FALSE(dialog.SetKey("Width", "90"));
    EXPECT_EQ(dialog.PictureSize(), (CSize{90, 30}));
    EXPECT_TRUE(ColorsOf(dialog).contains(qRgb(1, 2, 3))) << "the preview shows what fills the rest";
}

TEST(PictureDialogs, IndexColoursShowAPartBeforeAndAfter)
{
    CIndexColorDialog dialog(Colourful(500, 400), 4);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QApplication::processEvents();
    const QList<CPanPane*> panes = dialog.findChildren<CPanPane*>();
    ASSERT_EQ(panes.size(), 2);
    for (const char* strPalette : {"0", "1", "2"})
        for (const char* strDither : {"0", "1", "2"}) {
            ASSERT_FALSE(dialog.SetKey("Palette", strPalette));
            ASSERT_FALSE(dialog.SetKey("Dither", strDither));
            EXPECT_GT(ColorsOf(*panes[0]).size(), 100);
            EXPECT_LE(ColorsOf(*panes[1]).size(), 16) << strPalette << strDither;
        }
    EXPECT_EQ(dialog.Flags(), CRF_GRAYPALETTE | CRF_ORDEREDDITHER);
    const QImage before = panes[0]->grab().toImage();
    QTest::mousePress(panes[1], Qt::LeftButton, {}, {100, 100});
    QTest::mouseMove(panes[1], {60, 90});
    QTest::mouseRelease(panes[1], Qt::LeftButton, {}, {60, 90});
    const QImage after = panes[0]->grab().toImage();
    EXPECT_EQ(after.copy(20, 20, 100, 100), before.copy(60, 30, 100, 100)) << "both panes follow the drag";
}

TEST(PictureDialogs, TheKeyboardStartsInTheWidth)
{
    const LBitmapBase bitmap = Colourful(40, 30);
    CResizeDialog resize({{40, 30}, 24, 96, 96});
    CCanvasSizeDialog canvas(bitmap, 24, 0);
    for (CPictureSizeDialog* pDialog : {static_cast<CPictureSizeDialog*>(&resize), static_cast<CPictureSizeDialog*>(&canvas)}) {
        pDialog->show();
        QApplication::processEvents();
        ASSERT_NE(pDialog->focusWidget(), nullptr);
        QTest::keyClicks(pDialog->focusWidget(), "52");
        EXPECT_EQ(pDialog->PictureSize().cx, 52);
    }
}
