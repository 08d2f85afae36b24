// The brush box and its dialogs, driven by events: what reaches the brush that paints, and what does not.

#include "base/Messages.h"
#include "resources/BrushFile.h"
#include "resources/BrushGenerator.h"
#include "resources/BrushPrepare.h"
#include "resources/gui/BrushBox.h"
#include "resources/gui/BrushButtons.h"
#include "resources/gui/BrushCurveDialog.h"
#include "resources/gui/BrushOptionsDialog.h"
#include "resources/gui/BrushWnd.h"
#include "resources/gui/BrushZoomView.h"
#include "resources/gui/CurveField.h"
#include "ui/NumEdit.h"
#include "ui/PopupSlider.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

class CMessages final : public CMessageSink {
public:
    CMessages() { SetMessageSink(this); }
    ~CMessages() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_texts << QString::fromStdString(strText);
        return nDefault;
    }
    void Stop(const std::string& strText) override
    {
        m_nStops++;
        CMessageSink::Stop(strText);
    }
    void StatusText(const std::string& strText) override { m_texts << QString::fromStdString(strText); }
    QStringList m_texts;
    int m_nStops = 0;
};

/// A folder of two files: six brushes of 11 to 61 pixels, and two.
class BrushBox : public testing::Test {
protected:
    BrushBox()
    {
        QDir(m_folder.path()).mkdir("Brushes");
        g_activeBrush = {};
        std::vector<BrushEntry> six, two;
        for (int n = 1; n <= 6; n++)
            six.push_back(GenerateBrush({5.0 * n, 50, 0, 1}));
        six[2].m_nSpacing = 77;
        for (const double dRadius : {50.0, 2.0})
            two.push_back(GenerateBrush({dRadius, 100, 0, 1}));
        WriteBrushFile(Path("Brushes/a.pbr"), six);
        WriteBrushFile(Path("Brushes/b.pbr"), two);
    }
    ~BrushBox() override { CPaintDialog::SetDriver({}); }

    std::string Path(const char* pszName) const { return m_folder.filePath(QString::fromLatin1(pszName)).toStdString(); }

    CDlgBrushBox& Box()
    {
        if (!m_pBox) {
            m_pBox = std::make_unique<CDlgBrushBox>(m_folder.path().toStdString());
            m_pBox->resize(210, 400);
            m_pBox->show();
            m_pBox->EnsureLoaded();
        }
        return *m_pBox;
    }
    CBrushWnd& List() { return Box().List(); }
    void Click(int iBrush) { QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().CellRect(iBrush).center()); }
    template <typename Widget> Widget& Child() { return *Box().findChild<Widget*>(); }
    /// Fills in the next dialogs with keys; null cancels them.
    static void Drive(std::optional<QList<QPair<QString, QString>>> keys)
    {
        CPaintDialog::SetDriver([keys](CPaintDialog& dialog) {
            for (const auto& [strKey, strValue] : keys.value_or(QList<QPair<QString, QString>>{}))
                EXPECT_EQ(dialog.SetKey(strKey, strValue).value_or(QString()), QString()) << strKey.toStdString();
            keys ? dialog.accept() : dialog.reject();
            return dialog.result();
        });
    }
    static int Width() { return g_activeBrush.nWidth; }

    QTemporaryDir m_folder;
    CMessages m_messages;
    std::unique_ptr<CDlgBrushBox> m_pBox;
};

} // namespace

TEST_F(BrushBox, StartsWithTheFourthBrushOfTheFirstFile)
{
    EXPECT_EQ(Child<QComboBox>().count(), 2);
    EXPECT_EQ(List().Count(), 6);
    EXPECT_EQ(List().Selected(), 3);
    EXPECT_EQ(Width(), 42);
    EXPECT_EQ(g_activeBrush.aMask, PrepareBrush(List().Brushes()[3], 0, IdentityResponse()).aMask);
    Click(1);
    EXPECT_EQ(Width(), 22);
    QTest::keyClick(&List(), Qt::Key_Right);
    EXPECT_EQ(Width(), 32);
    EXPECT_EQ(g_activeBrush.dSpacing, 77);
    QTest::keyClick(&List(), Qt::Key_End);
    EXPECT_EQ(Width(), 62);
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, QPoint(5, List().viewport()->height() - 2));
    EXPECT_EQ(Width(), 62) << "below the cells";
    EXPECT_FALSE(Box().ApplyBrush(6));
    EXPECT_FALSE(Box().ApplyBrush(-1));
    EXPECT_TRUE(m_messages.m_texts.isEmpty());
}

TEST_F(BrushBox, AnotherFileReplacesTheList)
{
    auto& files = Child<QComboBox>();
    files.setFocus();
    QTest::keyClick(&files, Qt::Key_Down);
    EXPECT_EQ(List().Count(), 2);
    EXPECT_EQ(List().Selected(), 1) << "it has no fourth: the last";
    EXPECT_EQ(Width(), 6);
    Drive({{{"Path", QString::fromStdString(Path("Brushes/a.pbr"))}}});
    Box().OnOpen();
    EXPECT_EQ(files.currentText(), "a.pbr") << "the row names the file of the list";
    EXPECT_EQ(List().Count(), 6);
    EXPECT_EQ(Width(), 12) << "the first of a file that was opened";
    ASSERT_TRUE(WriteBrushFile(Path("empty.pbr"), {}));
    Drive({{{"Path", QString::fromStdString(Path("empty.pbr"))}}});
    Box().OnOpen();
    EXPECT_EQ(List().Count(), 0);
    EXPECT_EQ(List().Selected(), -1);
    EXPECT_EQ(Width(), 12) << "nothing to choose: the brush that paints stays";
    EXPECT_EQ(files.currentIndex(), -1);
    EXPECT_EQ(files.placeholderText(), "empty.pbr") << "a file of another folder has no row";
    QTest::keyClick(&List(), Qt::Key_Return);
    QTest::keyClick(&List(), Qt::Key_Down);
    Box().OnDelete();
    Drive({{{"Path", QString::fromStdString(Path("saved"))}}});
    Box().OnSave();
    EXPECT_EQ(QFile(QString::fromStdString(Path("saved.pbr"))).size(), 4) << "an empty list has its count alone";
    Drive({{{"Path", QString::fromStdString(Path("Brushes/aa"))}}});
    Box().OnSave();
    EXPECT_EQ(files.count(), 3);
    EXPECT_EQ(files.currentText(), "aa.pbr") << "saved among the others it is one of them";
    Drive({{{"Radius", "3"}}});
    Box().OnNew();
    EXPECT_EQ(Width(), 8);
    EXPECT_EQ(List().Count(), 1);
}

TEST_F(BrushBox, NewEditAndDelete)
{
    Drive({{{"Radius", "12.5"}, {"Hardness", "60"}, {"Angle", "30"}, {"Roundness", "3"}}});
    Box().OnNew();
    ASSERT_EQ(List().Count(), 7);
    EXPECT_EQ(List().Selected(), 6);
    EXPECT_EQ(List().Brushes()[6], GenerateBrush({12.5, 60, 30, 3}));
    EXPECT_EQ(Width(), List().Brushes()[6].m_nWidth + 1);
    Drive({{{"Radius", "20"}}});
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, List().CellRect(2).center());
    EXPECT_EQ(List().Count(), 7);
    EXPECT_EQ(List().Brushes()[2], GenerateBrush({20, 20, 0, 1})) << "what the sliders did not say stands at its start";
    EXPECT_EQ(Width(), 42);
    Drive({});
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, List().CellRect(0).center());
    Box().OnNew();
    EXPECT_EQ(List().Count(), 7) << "cancelled";
    EXPECT_EQ(List().Brushes()[0].m_nWidth, 11);
    List().Select(5);
    Box().OnDelete();
    EXPECT_EQ(List().Count(), 6);
    EXPECT_EQ(List().Selected(), 0);
    EXPECT_EQ(Width(), 42) << "the brush that paints is not the first";
}

TEST_F(BrushBox, ListModeMovesTheFrameAlone)
{
    auto& strip = Child<CResponseStrip>();
    EXPECT_TRUE(strip.isVisible());
    Box().OnListMode();
    EXPECT_FALSE(strip.isVisible());
    EXPECT_FALSE(Box().SoftEdge().isVisible());
    Click(0);
    EXPECT_EQ(List().Selected(), 0);
    EXPECT_EQ(Width(), 42);
    Box().OnListMode();
    EXPECT_TRUE(strip.isVisible());
    Click(0);
    EXPECT_EQ(Width(), 12);
}

TEST_F(BrushBox, SoftEdgeWaitsForTheHand)
{
    CNumEdit& edge = Box().SoftEdge();
    QSignalSpy changed(&Box(), &CDlgBrushBox::BrushChanged);
    edge.setFocus();
    edge.selectAll();
    QTest::keyClicks(&edge, "4");
    EXPECT_EQ(Width(), 42);
    EXPECT_TRUE(QTest::qWaitFor([] { return Width() == 50; }, 2000)) << "41 and four on each side";
    EXPECT_EQ(changed.count(), 1);
    edge.selectAll();
    QTest::keyClicks(&edge, "25");
    QTest::keyClick(&edge, Qt::Key_Return);
    Box().SettleBrush();
    EXPECT_EQ(Width(), 62) << "10 at most";
    EXPECT_EQ(edge.text(), "10 px");
    edge.selectAll();
    QTest::keyClicks(&edge, "-3");
    Box().SettleBrush();
    EXPECT_EQ(Width(), 42);

    // A press on the label drops the slider under the pointer; its moves arrive like typing.
    QLabel* pLabel = nullptr;
    for (QLabel* p : Box().findChildren<QLabel*>())
        if (p->buddy() == &edge)
            pLabel = p;
    ASSERT_TRUE(pLabel);
    QTest::mousePress(pLabel, Qt::LeftButton);
    QWidget* pPopup = QApplication::activePopupWidget();
    ASSERT_TRUE(pPopup);
    auto* pSlider = pPopup->findChild<CPopupSlider*>();
    EXPECT_EQ(pSlider->GetMax(), 10);
    QTest::keyClick(pSlider, Qt::Key_End);
    pPopup->close();
    EXPECT_EQ(edge.text(), "10 px");
    Box().SettleBrush();
    EXPECT_EQ(Width(), 62);
}

TEST_F(BrushBox, TheCurveReachesTheBrush)
{
    Box();
    const auto before = g_activeBrush.aMask;
    Drive({{{"Point", "128,20"}}});
    QTest::mouseClick(&Child<CResponseStrip>(), Qt::LeftButton);
    Box().SettleBrush();
    EXPECT_EQ(Box().Response()[128], 20);
    EXPECT_NE(g_activeBrush.aMask, before);
    EXPECT_EQ(g_activeBrush.aMask, PrepareBrush(List().Brushes()[3], 0, Box().Response()).aMask);
    Drive({});
    QTest::mouseClick(&Child<CResponseStrip>(), Qt::LeftButton);
    EXPECT_EQ(Box().Response()[128], 20) << "cancelled";
    Drive({{{"Reset", "1"}}});
    QTest::keyClick(&Child<CResponseStrip>(), Qt::Key_Space);
    Box().SettleBrush();
    EXPECT_EQ(g_activeBrush.aMask, before);
}

TEST_F(BrushBox, SpacingIsPutIntoTheBarOnRequestAlone)
{
    QSignalSpy wanted(&Box(), &CDlgBrushBox::SpacingRequested);
    Click(2);
    EXPECT_EQ(wanted.count(), 0);
    QToolButton* pButton = nullptr;
    for (auto* p : Box().findChildren<QToolButton*>())
        if (p->parentWidget()->layout()->count() == 2 && !p->isEnabled())
            pButton = p;
    ASSERT_TRUE(pButton) << "grey while the tool has no spacing";
    Box().EnableSpacing(true);
    QTest::mouseClick(pButton, Qt::LeftButton);
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toInt(), 77);
}

TEST_F(BrushBox, NoFilesNoBrush)
{
    QTemporaryDir empty;
    CDlgBrushBox box(empty.path().toStdString());
    box.show();
    EXPECT_TRUE(m_messages.m_texts.isEmpty()) << "not before it is loaded";
    box.EnsureLoaded();
    box.EnsureLoaded();
    box.SettleBrush();
    ASSERT_EQ(m_messages.m_texts.size(), 1);
    EXPECT_EQ(m_messages.m_nStops, 1) << "with the sign of a stop";
    EXPECT_TRUE(m_messages.m_texts[0].startsWith("브러시 파일이 존재하지 않습니다.\n"));
    EXPECT_TRUE(g_activeBrush.aMask.empty());
    EXPECT_EQ(box.List().Count(), 0);
    box.OnFileChosen();
    box.OnDelete();
    Drive({{{"Point", "9,9"}}});
    box.EditCurve();
    Drive({{}});
    box.OnNew();
    EXPECT_EQ(Width(), 4) << "a brush made in the empty box paints, with the smallest radius";
}

TEST(BrushDialogs, TheOptionsFollowTheirSliders)
{
    CDlgBrushOptions dialog;
    EXPECT_EQ(dialog.Brush(), GenerateBrush({0.1, 20, 0, 1}));
    for (const auto& [strKey, strValue] : {std::pair("Radius", "101"), {"Radius", "-1"}, {"Radius", "x"}, {"Radius", "nan"}, {"Hardness", "101"},
                                           {"Hardness", "1.5"}, {"Angle", "181"}, {"Roundness", "0"}, {"Roundness", "21"}, {"Size", "3"}})
        EXPECT_TRUE(dialog.SetKey(strKey, strValue)) << strKey << " " << strValue;
    EXPECT_EQ(dialog.Brush(), GenerateBrush({0.1, 20, 0, 1})) << "refused values change nothing";
    dialog.show();
    const auto sliders = dialog.findChildren<CPopupSlider*>();
    ASSERT_EQ(sliders.size(), 4);
    QTest::keyClick(sliders[0], Qt::Key_End);
    QTest::keyClick(sliders[1], Qt::Key_Home);
    EXPECT_EQ(dialog.Brush(), GenerateBrush({100, 0, 0, 1}));
    EXPECT_FALSE(dialog.SetKey("Radius", "0"));
    EXPECT_EQ(dialog.Brush(), GenerateBrush({0.1, 0, 0, 1}));
    QStringList texts;
    for (const QLabel* pLabel : dialog.findChildren<QLabel*>())
        texts << pLabel->text();
    EXPECT_TRUE(texts.contains("  0.10 ")) << texts.join('|').toStdString();
    EXPECT_TRUE(texts.contains("0 %"));
    EXPECT_TRUE(texts.contains("    1 "));
}

TEST(BrushDialogs, TheCurveIsBentByHand)
{
    CDlgBrushCurve dialog(SoftenBrush(GenerateBrush({30, 50, 0, 1}), 3), CResponseCurve());
    dialog.show();
    CCurveField& field = dialog.Field();
    QTest::mousePress(&field, Qt::LeftButton, {}, CCurveField::ToField({100, 60}));
    QTest::mouseMove(&field, CCurveField::ToField({110, 40}));
    QTest::mouseRelease(&field, Qt::LeftButton, {}, CCurveField::ToField({110, 40}));
    EXPECT_EQ(dialog.Curve().Point(6), (CPoint{110, 40})) << "the slot of where it was made";
    QTest::mouseMove(&field, CCurveField::ToField({10, 10}));
    QTest::keyClick(&field, Qt::Key_Up);
    QTest::keyClick(&field, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(dialog.Curve().Point(6), (CPoint{102, 41}));
    QTest::keyClick(&field, Qt::Key_PageDown);
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_EQ(dialog.Curve().Point(16), (CPoint{255, 254}));
    QTest::keyClick(&field, Qt::Key_Delete);
    EXPECT_TRUE(dialog.Curve().IsUsed(16)) << "an end stays";
    QTest::mouseClick(&field, Qt::RightButton, {}, CCurveField::ToField({103, 42}));
    EXPECT_FALSE(dialog.Curve().IsUsed(6));
    for (const char* pszBad : {"5", "5,", "a,b", "256,0", "0,-1", "1,2,3"})
        EXPECT_TRUE(dialog.SetKey("Point", pszBad)) << pszBad;

    CBrushZoomView& view = dialog.Preview();
    for (int n = 0; n < 60; n++)
        view.ZoomBy(1);
    EXPECT_DOUBLE_EQ(view.Zoom(), 10);
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_DOUBLE_EQ(view.Zoom(), 1) << "a press brings it back";
    for (int n = 0; n < 9; n++)
        view.ZoomBy(-1);
    EXPECT_DOUBLE_EQ(view.Zoom(), 0.4);
    bool bShown = false;
    for (const QLabel* pLabel : dialog.findChildren<QLabel*>())
        bShown = bShown || pLabel->text() == "40%";
    EXPECT_TRUE(bShown);

    CDlgBrushCurve large(SoftenBrush(GenerateBrush({100, 50, 0, 1}), 0), CResponseCurve());
    EXPECT_DOUBLE_EQ(large.Preview().Zoom(), 0.6) << "202 pixels in a pane of 140";
    QTest::mouseClick(&large.Preview(), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(large.Preview().Zoom(), 1);
}
