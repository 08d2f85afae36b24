// The base of every dialog: values put into controls as if typed; sums in number boxes; message boxes.

#include "base/Messages.h"
#include "ui/Dialog.h"
#include "ui/MessageSink.h"
#include "ui/NumEdit.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

using namespace kestrune;

namespace {

class CSample : public CPaintDialog {
public:
    CSample()
    {
        Body()->addWidget(&m_spin);
        m_spin.setRange(-5, 5);
        m_combo.addItems({"first", "second"});
        m_combo.setItemData(1, "data");
        m_slider.setRange(0, 255);
        m_edit.setMaxLength(4);
        m_off.setEnabled(false);
        m_number.SetRange(0, 10);
        m_number.SetDecimalPlaces(2);
        m_number.SetUnit(NUMUNIT_CM);
        m_number.SetValue(0);
        for (int i = 0; i < 3; i++)
            m_group.addButton(&m_radio[i], i);
        RegisterKey("Spin", &m_spin);
        RegisterKey("Combo", &m_combo);
        RegisterKey("Check", &m_check);
        RegisterKey("Slider", &m_slider);
        RegisterKey("Edit", &m_edit);
        RegisterKey("Off", &m_off);
        RegisterKey("Radio", &m_group);
        RegisterKey("Number", &m_number);
    }
    bool Takes(const char* strKey, const char* strValue) { return !SetKey(strKey, strValue); }

    QSpinBox m_spin{this};
    QComboBox m_combo{this};
    QCheckBox m_check{this};
    QSlider m_slider{this};
    QLineEdit m_edit{this};
    QSpinBox m_off{this};
    CNumEdit m_number{this};
    QRadioButton m_radio[3]{QRadioButton(this), QRadioButton(this), QRadioButton(this)};
    QButtonGroup m_group{this};
};

class CQuietSink final : public CMessageSink {
public:
    CQuietSink() { SetMessageSink(this); }
    ~CQuietSink() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_texts.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    std::vector<std::string> m_texts;
};

/// Acts on the message box that opens next.
void WithNextBox(std::function<void(QMessageBox&)> act)
{
    QTimer::singleShot(50, [act] {
        auto* pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(pBox, nullptr);
        act(*pBox);
    });
}

QStringList ButtonTexts(const QMessageBox& box)
{
    QList<QAbstractButton*> buttons = box.buttons(); // in the order in which they stand, not that of the toolkit's list
    std::sort(buttons.begin(), buttons.end(), [](const auto* pA, const auto* pB) { return pA->x() < pB->x(); });
    QStringList texts;
    for (const QAbstractButton* pButton : buttons)
        texts << pButton->text();
    return texts;
}

} // namespace

TEST(Dialog, TheButtonsAreLastForTheTabKey)
{
    class CLate final : public CPaintDialog {
    public:
        CLate()
        {
            Body()->addWidget(&m_first);
            ButtonRow()->addWidget(&m_help);
        }
        QLineEdit m_first;
        QPushButton m_help{"help"};
        using CPaintDialog::CancelButton;
        using CPaintDialog::OkButton;
    } dialog;
    QList<QWidget*> order;
    CPaintDialog::SetDriver([&](CPaintDialog& driven) {
        for (QWidget* p = driven.nextInFocusChain(); p != &driven; p = p->nextInFocusChain())
            order << p;
        return 0;
    });
    dialog.DoModal();
    CPaintDialog::SetDriver({});
    EXPECT_EQ(order, (QList<QWidget*>{&dialog.m_first, &dialog.m_help, dialog.OkButton(), dialog.CancelButton()}));
}

TEST(Dialog, ValuesGoInAsIfTyped)
{
    CSample dialog;
    int nTold = 0;
    QObject::connect(&dialog.m_spin, &QSpinBox::valueChanged, [&] { nTold++; });
    QObject::connect(&dialog.m_spin, &QSpinBox::editingFinished, [&] { nTold += 10; });
    QObject::connect(&dialog.m_check, &QCheckBox::clicked, [&] { nTold += 100; });
    QObject::connect(&dialog.m_edit, &QLineEdit::textEdited, [&] { nTold += 1000; });
    EXPECT_TRUE(dialog.Takes("Spin", "-4"));
    EXPECT_TRUE(dialog.Takes("Check", "1"));
    EXPECT_TRUE(dialog.Takes("Check", "1")); // as it is: nothing to press
    EXPECT_TRUE(dialog.Takes("Edit", "abcd"));
    EXPECT_EQ(nTold, 1111) << "the dialog's own handlers must hear of it";
    EXPECT_TRUE(dialog.Takes("Combo", "1"));
    EXPECT_TRUE(dialog.Takes("Combo", "first"));
    EXPECT_TRUE(dialog.Takes("Combo", "data"));
    EXPECT_TRUE(dialog.Takes("Radio", "2"));
    EXPECT_TRUE(dialog.Takes("Slider", "255"));
    EXPECT_EQ(dialog.m_spin.value(), -4);
    EXPECT_EQ(dialog.m_combo.currentIndex(), 1);
    EXPECT_EQ(dialog.m_group.checkedId(), 2);
    EXPECT_EQ(dialog.m_slider.value(), 255);
}

TEST(Dialog, WhatAControlRefusesIsAnErrorAndChangesNothing)
{
    CSample dialog;
    dialog.m_spin.setValue(3);
    for (const auto& [strKey, strValue] : {std::pair{"Spin", "6"}, {"Spin", "x"}, {"Spin", ""}, {"Spin", "1.5"}, {"Combo", "2"},
                                           {"Combo", "third"}, {"Check", "2"}, {"Check", "yes"}, {"Slider", "256"},
                                           {"Slider", "a"}, {"Edit", "abcde"}, {"Off", "1"}, {"Radio", "3"}, {"spin", "1"}})
        EXPECT_FALSE(dialog.Takes(strKey, strValue)) << strKey << " " << strValue;
    EXPECT_EQ(dialog.m_spin.value(), 3);
    EXPECT_EQ(dialog.m_combo.currentIndex(), 0);
    EXPECT_FALSE(dialog.m_check.isChecked());
}

TEST(Dialog, ADriverStandsInForAPersonAndNoWindowShows)
{
    CSample dialog;
    CPaintDialog::SetDriver([](CPaintDialog& driven) {
        EXPECT_FALSE(driven.isVisible());
        driven.SetKey("Spin", "5");
        driven.accept();
        return driven.result();
    });
    EXPECT_EQ(dialog.DoModal(), QDialog::Accepted);
    CPaintDialog::SetDriver([](CPaintDialog&) { return int(QDialog::Rejected); });
    EXPECT_EQ(dialog.DoModal(), QDialog::Rejected);
    CPaintDialog::SetDriver({});
    EXPECT_EQ(dialog.m_spin.value(), 5);
}

TEST(Dialog, NumberBoxesTakeSumsAndRefuseWhatIsNoNumberInRange)
{
    CSample dialog;
    dialog.m_number.SetValue(3);
    EXPECT_TRUE(dialog.Takes("Number", "4.25"));
    EXPECT_EQ(dialog.m_number.GetValue(), 4.25f);
    EXPECT_TRUE(dialog.Takes("Number", "100/20 cm"));
    EXPECT_EQ(dialog.m_number.text(), QStringLiteral("5.00 cm"));
    for (const char* strBad : {"10.5", "-0.1", "x", "", "-", "3 mm", "nan", "inf", "0x3", "1,5"})
        EXPECT_FALSE(dialog.Takes("Number", strBad)) << strBad;
    EXPECT_EQ(dialog.m_number.text(), QStringLiteral("5.00 cm")) << "a refused value leaves the old one";
    EXPECT_TRUE(dialog.SetKey("Number", "11")->contains(QStringLiteral("0 to 10")));

    // A person who types too much and presses OK hears of it, and the dialog stays.
    CQuietSink sink;
    dialog.m_number.setText(QStringLiteral("11"));
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(sink.m_texts, std::vector<std::string>{"Given value is out of range.\n"});
    dialog.m_number.setText(QStringLiteral("-"));
    dialog.accept();
    EXPECT_EQ(sink.m_texts.back(), "Characters must be a number.\n");
    dialog.m_number.setEnabled(false); // what is not asked cannot be wrong
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(NumEdit, EvaluatesSums)
{
    EXPECT_EQ(EvaluateSum("100/2"), 50);
    EXPECT_EQ(EvaluateSum(" 2 + 3 * 4 - 1 "), 13);
    EXPECT_EQ(EvaluateSum("-(2+3)*-2"), 10);
    EXPECT_EQ(EvaluateSum("1.5*2"), 3);
    for (const char* strBad : {"", "+", "1+", "(1", "1)", "1//2", "1/0", "0/0", "2 x 3", "1.2.3", "()", "0x10", "inf*1", "nan"})
        EXPECT_EQ(EvaluateSum(strBad), std::nullopt) << strBad;
    EXPECT_EQ(EvaluateSum(std::string(100000, '(')), std::nullopt) << "a pasted text must not exhaust the stack";
    EXPECT_EQ(EvaluateSum(std::string(100000, '-') + "1"), std::nullopt);
}

TEST(MessageSink, BoxHasTheProductsNameKoreanButtonsAndTheDefault)
{
    QWidget frame;
    CWindowMessageSink sink(&frame, {});
    WithNextBox([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), QString("케스트룬"));
        EXPECT_EQ(box.text(), QString("<b>글</b>"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(ButtonTexts(box), (QStringList{"예(&Y)", "아니요(&N)", "취소"}));
        EXPECT_EQ(box.defaultButton()->text(), QString("아니요(&N)"));
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(sink.Message("<b>글</b>", MessageButtons::YesNoCancel, MessageAnswer::No), MessageAnswer::No);
}

TEST(MessageSink, EscapePressesTheLastButton)
{
    CWindowMessageSink sink(nullptr, {});
    WithNextBox([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    sink.Stop("nothing goes on");
    for (const auto& [buttons, nExpected] : {std::pair{MessageButtons::YesNoCancel, MessageAnswer::Cancel},
                                             {MessageButtons::OkCancel, MessageAnswer::Cancel},
                                             {MessageButtons::YesNo, MessageAnswer::No},
                                             {MessageButtons::Ok, MessageAnswer::Ok}}) {
        WithNextBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
        EXPECT_EQ(sink.Message("?", buttons, MessageAnswer::Yes), nExpected);
    }
}

TEST(MessageSink, QuietLinesGoToTheStatusBar)
{
    QString strShown;
    CWindowMessageSink sink(nullptr, [&](const QString& strText) { strShown = strText; });
    sink.StatusText("저장했습니다");
    EXPECT_EQ(strShown, QString("저장했습니다"));
}
