#include "app/Accelerators.h"
#include "app/CommandTable.h"

#include <QDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>
#include <QWindow>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace kestrune {
namespace {

constexpr quint32 c_nScanB = 56; // the fifth key of the lowest row
constexpr int c_nBrush = 1006;

int CommandOf(int nKey, Qt::KeyboardModifiers modifiers, const QString& strText = {}, quint32 nScanCode = 0)
{
    return CAccelerators::CommandOfKey(QKeyEvent(QEvent::KeyPress, nKey, modifiers, nScanCode, 0, 0, strText));
}

TEST(Accelerators, ShortcutsAsWritten)
{
    EXPECT_EQ(CommandOf(Qt::Key_N, Qt::ControlModifier), ID_FILE_NEW);
    EXPECT_EQ(CommandOf(Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier), 30059);
    EXPECT_EQ(CommandOf(Qt::Key_D, Qt::ControlModifier | Qt::AltModifier), 30060);
    EXPECT_EQ(CommandOf(Qt::Key_Space, Qt::ControlModifier), ID_ZOOM_IN);
    EXPECT_EQ(CommandOf(Qt::Key_Space, Qt::ControlModifier | Qt::AltModifier), ID_ZOOM_OUT);
    EXPECT_EQ(CommandOf(Qt::Key_0, Qt::ControlModifier | Qt::AltModifier | Qt::KeypadModifier), ID_ZOOM_ACTUAL);
    EXPECT_EQ(CommandOf(Qt::Key_Delete, Qt::NoModifier), 30090);
    EXPECT_EQ(CommandOf(Qt::Key_F1, Qt::NoModifier), ID_HELP);
    EXPECT_EQ(CommandOf(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier), ID_ZOOM_IN);
    EXPECT_EQ(CommandOf(Qt::Key_P, Qt::NoModifier), 1005); // the pencil, not the photo brush
    EXPECT_EQ(CommandOf(Qt::Key_Space, Qt::NoModifier), 0); // the view's own
    EXPECT_EQ(CommandOf(Qt::Key_X, Qt::NoModifier), ID_COLOR_SWAP);
    EXPECT_EQ(CommandOf(Qt::Key_Y, Qt::NoModifier), 0);
}

TEST(Accelerators, EveryWrittenShortcutIsUnderstood)
{
    for (const CommandRow& row : Commands()) {
        if (row.shortcut.empty())
            continue;
        const QKeySequence keys(QString::fromUtf8(row.shortcut.data(), qsizetype(row.shortcut.size())));
        ASSERT_EQ(keys.count(), 1) << row.shortcut;
        EXPECT_EQ(CommandOf(keys[0].key(), keys[0].keyboardModifiers()), row.nId) << row.shortcut;
    }
}

TEST(Accelerators, JamoAreKeysOfTheTwoSetLayout)
{
    const QString strJamo = QStringLiteral("ㅂㅈㄷㄱㅅㅛㅕㅑㅐㅔㅁㄴㅇㄹㅎㅗㅓㅏㅣㅋㅌㅊㅍㅠㅜㅡㅃㅉㄸㄲㅆㅒㅖ");
    const char* pszKeys = "QWERTYUIOPASDFGHJKLZXCVBNMQWERTOP";
    for (qsizetype i = 0; i < strJamo.size(); i++)
        EXPECT_EQ(CAccelerators::KeyOfJamo(strJamo[i]), pszKeys[i]) << i;
    EXPECT_EQ(CAccelerators::KeyOfJamo(u'ㄳ'), 0); // two keys
    EXPECT_EQ(CAccelerators::KeyOfJamo(u'가'), 0);
    EXPECT_EQ(CAccelerators::KeyOfJamo(u'b'), 0);
}

TEST(Accelerators, LettersWorkInHangulMode)
{
    EXPECT_EQ(CommandOf(0x3160, Qt::NoModifier, QStringLiteral("ㅠ")), c_nBrush);       // by the text
    EXPECT_EQ(CommandOf(0x3160, Qt::NoModifier), c_nBrush);                             // by the key's character
    EXPECT_EQ(CommandOf(Qt::Key_unknown, Qt::NoModifier, {}, c_nScanB), 0);             // a key without a character
    EXPECT_EQ(CommandOf(0x0418, Qt::NoModifier, QStringLiteral("и"), c_nScanB), c_nBrush); // another script, by position
    EXPECT_EQ(CommandOf(Qt::Key_N, Qt::NoModifier, QStringLiteral("n"), c_nScanB), 0);  // a Latin layout means its letters
    EXPECT_EQ(CommandOf(0x3131, Qt::ControlModifier, QStringLiteral("ㄱ")), 30067);      // Ctrl+R
}

struct AcceleratorWindow : testing::Test {
    AcceleratorWindow()
    {
        auto* pLayout = new QVBoxLayout(&m_frame);
        for (QWidget* pWidget : {m_pCanvas, static_cast<QWidget*>(m_pEdit), static_cast<QWidget*>(m_pNumber)})
            pLayout->addWidget(pWidget);
        m_pCanvas->setFocusPolicy(Qt::StrongFocus);
        new CAccelerators(&m_frame, [this](int nId) {
            m_ran.push_back(nId);
            return false; // a grey command eats its key too
        });
        m_frame.show();
    }
    QWidget m_frame;
    QWidget* m_pCanvas = new QWidget;
    QLineEdit* m_pEdit = new QLineEdit;
    QSpinBox* m_pNumber = new QSpinBox;
    std::vector<int> m_ran;
};

TEST_F(AcceleratorWindow, TextBoxesKeepTheirKeys)
{
    QTest::keyClicks(m_pEdit, QStringLiteral("bp"));
    QTest::keyClick(m_pEdit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m_pEdit, Qt::Key_Delete);
    EXPECT_EQ(m_pEdit->text(), QString());
    QTest::keyClick(m_pNumber, Qt::Key_7);
    EXPECT_TRUE(m_ran.empty());
    QTest::keyClick(m_pEdit, Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(m_pEdit, Qt::Key_F1);
    EXPECT_EQ(m_ran, (std::vector<int>{ID_FILE_SAVE, ID_HELP}));
}

TEST_F(AcceleratorWindow, CanvasTakesLettersAndCommittedJamo)
{
    QTest::keyClick(m_pCanvas, Qt::Key_B);
    const auto commit = [](QWidget& widget, const QString& strText) {
        QInputMethodEvent event;
        event.setCommitString(strText);
        QApplication::sendEvent(&widget, &event);
    };
    commit(*m_pCanvas, QStringLiteral("ㅔ"));
    commit(*m_pCanvas, QStringLiteral("케"));
    commit(*m_pEdit, QStringLiteral("ㅔ"));
    EXPECT_EQ(m_ran, (std::vector<int>{c_nBrush, 1005}));
    EXPECT_EQ(m_pEdit->text(), QStringLiteral("ㅔ"));
}

TEST_F(AcceleratorWindow, AHeldMouseButtonKeepsMenusAndCommandsAway)
{
    const auto overrides = [&] {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_F, Qt::AltModifier);
        event.ignore();
        QApplication::sendEvent(m_pCanvas, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(overrides()) << "the menu's own key";
    QTest::mousePress(m_frame.windowHandle(), Qt::LeftButton, {}, m_pCanvas->geometry().center());
    EXPECT_TRUE(overrides());
    QTest::keyClick(m_pCanvas, Qt::Key_B);
    EXPECT_TRUE(m_ran.empty());
    QTest::mouseRelease(m_frame.windowHandle(), Qt::LeftButton, {}, m_pCanvas->geometry().center());
    EXPECT_FALSE(overrides());
}

TEST_F(AcceleratorWindow, OtherWindowsAreLeftAlone)
{
    QWidget other;
    other.show();
    QTest::keyClick(&other, Qt::Key_B);
    QDialog dialog(&m_frame);
    dialog.setModal(true);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(m_ran.empty());
    dialog.hide();
    QWidget box(&m_frame, Qt::Tool); // a box that floats beside the frame
    box.show();
    QTest::keyClick(&box, Qt::Key_B);
    EXPECT_EQ(m_ran, std::vector<int>{c_nBrush});
}

} // namespace
} // namespace kestrune
