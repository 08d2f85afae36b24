#include "base/Messages.h"
#include "ui/MultiSlider.h"
#include "ui/NumEdit.h"
#include "ui/NumSpinCtrl.h"
#include "ui/Popup.h"
#include "ui/PopupSlider.h"
#include "ui/TwoPointSlider.h"

#include <QApplication>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace kestrune;

namespace {

class CRecordingSink final : public CMessageSink {
public:
    CRecordingSink() { SetMessageSink(this); }
    ~CRecordingSink() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_aTexts.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    std::vector<std::string> m_aTexts;
};

struct Case {
    const char* pszText;
    int nUnit;
    int nCode;
    float fValue;
};

} // namespace

TEST(NumEdit, ReadsNumbersWithAndWithoutTheirUnit)
{
    const Case cases[] = {
        {"12 px", NUMUNIT_PIXEL, NUM_OK, 12},   {"12px", NUMUNIT_PIXEL, NUM_OK, 12},    {"-3.5 cm", NUMUNIT_CM, NUM_OK, -3.5f},
        {"45 °", NUMUNIT_DEGREE, NUM_OK, 45},   {"45°", NUMUNIT_DEGREE, NUM_OK, 45},    {"7 %", NUMUNIT_PERCENT, NUM_OK, 7},
        {"12 mm", NUMUNIT_PIXEL, NUM_NOT_A_NUMBER, 12}, {"12  px", NUMUNIT_PIXEL, NUM_OK, 12}, {"", NUMUNIT_NONE, NUM_NOT_A_NUMBER, 0},
        {"+", NUMUNIT_NONE, NUM_UNDER_WAY, 0},  {"- px", NUMUNIT_PIXEL, NUM_UNDER_WAY, 0}, {"1e3", NUMUNIT_NONE, NUM_OUT_OF_RANGE, 1000},
        {"abc", NUMUNIT_NONE, NUM_NOT_A_NUMBER, 0}, {"100.5", NUMUNIT_NONE, NUM_OUT_OF_RANGE, 100.5f}, {"-101", NUMUNIT_NONE, NUM_OUT_OF_RANGE, -101},
    };
    for (const Case& c : cases) {
        CNumEdit edit;
        edit.SetUnit(c.nUnit);
        edit.SetRange(-100, 100);
        edit.setText(QString::fromUtf8(c.pszText));
        EXPECT_EQ(edit.Verify(), c.nCode) << c.pszText;
        EXPECT_EQ(edit.GetValue(), c.fValue) << c.pszText;
    }
}

TEST(NumEdit, WritesDecimalsAndUnitAndKeepsTheMostDecimalsSeen)
{
    CNumEdit edit;
    edit.SetUnit(NUMUNIT_CM);
    edit.SetDecimalPlaces(2);
    edit.SetValue(0);
    EXPECT_EQ(edit.text(), "0.00 cm");
    edit.SetDecimalPlaces(0);
    edit.SetValue(7.6f);
    EXPECT_EQ(edit.text(), "8 cm");
    edit.SetUnit(NUMUNIT_NONE);
    EXPECT_EQ(edit.text(), "8");
}

TEST(NumEdit, AnyFiniteNumberPassesTheDefaultRange)
{
    CNumEdit edit;
    for (const char* pszText : {"3.4e38", "-3.4e38", "0", "1e-40"}) {
        edit.setText(pszText);
        EXPECT_EQ(edit.Verify(), NUM_OK) << pszText;
    }
}

TEST(NumEdit, OnlyAVerboseBoxSpeaksAndNeverOfASignAlone)
{
    CRecordingSink sink;
    CNumEdit edit;
    edit.SetRange(0, 10);
    edit.setText("11");
    edit.Verify();
    EXPECT_TRUE(sink.m_aTexts.empty());
    edit.SetVerbose(true);
    edit.Verify();
    edit.setText("x");
    edit.Verify();
    edit.setText("-");
    edit.Verify();
    EXPECT_EQ(sink.m_aTexts, (std::vector<std::string>{"Given value is out of range.\n", "Characters must be a number.\n"}));
}

TEST(NumEdit, KeysTypeStepAndWorkOutSums)
{
    CNumEdit edit;
    edit.SetUnit(NUMUNIT_PIXEL);
    edit.SetRange(0, 60);
    edit.SetDelta(5);
    std::vector<float> heard;
    QObject::connect(&edit, &CNumEdit::ValueEdited, &edit, [&](float f) { heard.push_back(f); });
    QTest::keyClicks(&edit, "1 2");
    EXPECT_EQ(edit.text(), "12") << "a blank is not taken";
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.text(), "17 px");
    QTest::keyClick(&edit, Qt::Key_PageUp);
    EXPECT_EQ(edit.text(), "60 px") << "kept within the range";
    EXPECT_EQ(heard, (std::vector<float>{1, 12, 17, 60}));
    edit.selectAll();
    QTest::keyClicks(&edit, "100/2-(3+1)*2");
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.text(), "42 px");
    edit.selectAll();
    QTest::keyClicks(&edit, "1/0");
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.Verify(), NUM_NOT_A_NUMBER) << "what cannot be worked out stays to be mended";
}

TEST(NumSpinCtrl, StepsItsBoxWithoutEnd)
{
    CNumEdit edit;
    edit.SetDelta(0.5f);
    edit.SetDecimalPlaces(1);
    edit.SetValue(1);
    CNumSpinCtrl spin(&edit);
    const auto buttons = spin.findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    buttons[0]->click();
    EXPECT_EQ(edit.text(), "1.5");
    for (int i = 0; i < 1200; i++)
        buttons[1]->click();
    EXPECT_EQ(edit.GetValue(), -598.5f);
    EXPECT_GT(spin.GetPos(), 1);
    EXPECT_LT(spin.GetPos(), 999);
}

TEST(MultiSlider, TheMiddleFollowsTheGamma)
{
    EXPECT_EQ(CMultiSlider::MiddleOf(0, 255, 1.0), 128);
    EXPECT_EQ(CMultiSlider::MiddleOf(10, 20, 1.0), 15);
    EXPECT_EQ(CMultiSlider::MiddleOf(0, 200, 0.1), 200);
    EXPECT_EQ(CMultiSlider::MiddleOf(0, 200, 10.0), 0);
    CMultiSlider slider;
    slider.resize(266, 22);
    QTest::mouseClick(&slider, Qt::LeftButton, {}, {slider.ValueToX(40), 10});
    EXPECT_EQ(slider.GetLow(), 40);
    EXPECT_EQ(slider.GetMiddle(), CMultiSlider::MiddleOf(40, 255, 1.0));
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(slider.GetLow(), 255) << "low stops at high";
    EXPECT_EQ(slider.GetMiddle(), 255);
}

TEST(MultiSlider, OnATieTheEarlierHandleKeepsThePress)
{
    CMultiSlider slider;
    slider.resize(266, 22);
    slider.SetEnds(100, 100);
    EXPECT_EQ(slider.HandleAt(slider.ValueToX(100)), CMultiSlider::HANDLE_LOW);
    slider.SetEnds(0, 255);
    EXPECT_EQ(slider.HandleAt(slider.ValueToX(250)), CMultiSlider::HANDLE_HIGH);
    EXPECT_EQ(slider.HandleAt(slider.ValueToX(130)), CMultiSlider::HANDLE_MIDDLE);
}

TEST(TwoPointSlider, HandlesCannotPassEachOther)
{
    C2PtSlider slider;
    slider.resize(266, 22);
    slider.SetRange(0, 100);
    slider.SetEnds(30, 60);
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(slider.GetLow(), 60);
    QTest::keyClick(&slider, Qt::Key_Down);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(slider.GetHigh(), 60);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(slider.GetHigh(), 61);
}

TEST(PopupSlider, KeysMoveByLinesAndPagesAndSayWhy)
{
    CPopupSlider slider;
    slider.SetRange(0, 100);
    slider.SetPos(50);
    std::vector<std::pair<int, int>> heard;
    QObject::connect(&slider, &CPopupSlider::Moved, &slider, [&](int nPos, int nCode) { heard.emplace_back(nPos, nCode); });
    for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_PageUp, Qt::Key_End})
        QTest::keyClick(&slider, key);
    EXPECT_EQ(heard, (std::vector<std::pair<int, int>>{{40, 2}, {50, 3}, {49, 0}, {50, 1}, {0, 6}, {100, 7}}))
        << "a page past the end is not heard of";
}

TEST(Popup, DropsASliderThatWritesIntoTheBox)
{
    QWidget window;
    CNumEdit edit(&window);
    CPopupArrow arrow(&edit, &window);
    edit.SetRange(0, 100);
    edit.SetUnit(NUMUNIT_PERCENT);
    edit.SetValue(20);
    window.show();
    QTest::keyClick(&edit, Qt::Key_Down, Qt::AltModifier);
    auto* pPopup = window.findChild<CPopup*>();
    ASSERT_NE(pPopup, nullptr);
    EXPECT_EQ(pPopup->Slider().GetPos(), 20);
    QTest::keyClick(&pPopup->Slider(), Qt::Key_PageDown);
    EXPECT_EQ(edit.text(), "30 %");
    QTest::keyClick(pPopup, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window.findChild<CPopup*>(), nullptr);
}

TEST(Popup, OpensUnderThePointerAndFollowsTheHeldButton)
{
    QWidget window;
    window.setGeometry(300, 200, 400, 60);
    CNumEdit edit(&window);
    edit.setGeometry(200, 10, 60, 24);
    edit.SetRange(0, 100);
    edit.SetDefault(25);
    CPopupArrow arrow(&edit, &window);
    arrow.setGeometry(262, 10, 16, 24);
    window.show();
    for (const float fValue : {0.0f, 37.0f, 100.0f}) {
        edit.SetValue(fValue);
        QTest::mousePress(&arrow, Qt::LeftButton, {}, {8, 12});
        auto* pPopup = window.findChild<CPopup*>();
        ASSERT_NE(pPopup, nullptr);
        CPopupSlider& slider = pPopup->Slider();
        const int nPressed = slider.mapFromGlobal(arrow.mapToGlobal(QPoint(8, 12))).x();
        EXPECT_LE(std::abs(nPressed - slider.ThumbX()), 2) << fValue << ": the thumb lies under the pointer, but for a window's rim";
        QTest::mouseMove(&slider, {nPressed, 11});
        EXPECT_EQ(edit.GetValue(), fValue) << "nothing jumps";
        const int nStep = fValue > 50 ? -40 : 40;
        QTest::mouseMove(&slider, {nPressed + nStep, 11});
        EXPECT_NE(edit.GetValue(), fValue) << "without a second press";
        const float fDragged = edit.GetValue();
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, {nPressed + nStep, 11});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window.findChild<CPopup*>(), nullptr) << "a drag is done with it";
        EXPECT_EQ(edit.GetValue(), fDragged);
    }
    // A plain click leaves it open, for a press of its own.
    edit.SetValue(60);
    QTest::mousePress(&arrow, Qt::LeftButton, {}, {8, 12});
    auto* pPopup = window.findChild<CPopup*>();
    ASSERT_NE(pPopup, nullptr);
    CPopupSlider& slider = pPopup->Slider();
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, {slider.ThumbX(), 11});
    EXPECT_TRUE(pPopup->isVisible());
    QTest::mouseMove(&slider, {10, 11});
    EXPECT_EQ(edit.GetValue(), 60) << "no button, no drag";
    QTest::mouseDClick(&slider, Qt::LeftButton, {}, {slider.ThumbX(), 11});
    EXPECT_EQ(edit.GetValue(), 25) << "back to the default";
    pPopup->close();
}

TEST(Wheel, PartsOfAStepAddUp)
{
    CPopupSlider slider;
    slider.SetRange(0, 100);
    slider.SetPos(50);
    CMultiSlider levels;
    const auto turn = [](QWidget& widget, int nDelta) {
        QWheelEvent event({6, 6}, widget.mapToGlobal(QPointF(6, 6)), {}, {0, nDelta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    };
    for (int i = 0; i < 15; i++)
        turn(slider, 16); // twice a notch
    EXPECT_EQ(slider.GetPos(), 52);
    turn(slider, 100);
    turn(slider, -100);
    turn(slider, -20);
    EXPECT_EQ(slider.GetPos(), 51) << "turning back begins anew";
    turn(slider, 240);
    EXPECT_EQ(slider.GetPos(), 53);
    const int nLow = levels.GetHandle(0);
    turn(levels, 60);
    turn(levels, 60);
    EXPECT_EQ(levels.GetHandle(0), nLow + 1);
}
