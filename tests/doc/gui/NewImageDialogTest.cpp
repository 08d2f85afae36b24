// The New Image dialog as a script and a person fill it in, and its memory in the profile.

#include "doc/gui/DocumentDialogs.h"
#include "doc/gui/NewImageDialog.h"

#include <QApplication>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

/// Answers every dialog of the program with these values while it lives.
class CDriver {
public:
    CDriver(QList<QPair<QString, QString>> keys, bool bOk)
    {
        CPaintDialog::SetDriver([keys, bOk](CPaintDialog& dialog) {
            for (const auto& [strKey, strValue] : keys)
                EXPECT_EQ(dialog.SetKey(strKey, strValue), std::nullopt) << strKey.toStdString();
            bOk ? dialog.accept() : dialog.reject();
            return dialog.result();
        });
    }
    ~CDriver() { CPaintDialog::SetDriver({}); }
};

NewImageParams Typed(CNewImageDialog& dialog, const QString& strWidth, const QString& strHeight)
{
    EXPECT_EQ(dialog.SetKey("Width", strWidth), std::nullopt) << strWidth.toStdString();
    EXPECT_EQ(dialog.SetKey("Height", strHeight), std::nullopt) << strHeight.toStdString();
    return dialog.Params();
}

} // namespace

TEST(NewImageDialog, TakesWholeNumbersFrom1To5000)
{
    CNewImageDialog dialog({}, UNIT_PIXEL);
    EXPECT_EQ(dialog.windowTitle(), QString("새로운 이미지"));
    const NewImageParams params = Typed(dialog, "1", "5000");
    EXPECT_EQ(params.nWidth, 1);
    EXPECT_EQ(params.nHeight, 5000);
    for (const char* strBad : {"0", "5001", "-3", "abc", "", "9999999999999999999999", "1/0", "2*", "(3"})
        EXPECT_NE(dialog.SetKey("Width", strBad), std::nullopt) << strBad;
    EXPECT_EQ(dialog.Params().nWidth, 1) << "a refused value must leave the old one";
    EXPECT_EQ(Typed(dialog, "100/2", "(3+4)*10").nWidth, 50);
    EXPECT_EQ(dialog.Params().nHeight, 70);
    EXPECT_NE(dialog.SetKey("Nonsense", "1"), std::nullopt);
    EXPECT_NE(dialog.SetKey("Kind", "3"), std::nullopt);
    EXPECT_NE(dialog.SetKey("Color", "-1"), std::nullopt);
}

TEST(NewImageDialog, AnotherUnitShowsTheSameSize)
{
    CNewImageDialog dialog({777, 33, FILL_WHITE, COLOR_GRAY}, UNIT_PIXEL);
    // Going through all the units and back must not wear the size down by rounding.
    for (const char* strUnit : {"1", "2", "3", "0", "3", "2", "1"}) {
        EXPECT_EQ(dialog.SetKey("Unit", strUnit), std::nullopt);
        EXPECT_EQ(dialog.Params().nWidth, 777) << strUnit;
        EXPECT_EQ(dialog.Params().nHeight, 33) << strUnit;
    }
    // 96 pixels an inch: 2.54 cm are an inch.
    EXPECT_EQ(Typed(dialog, "2.54", "5.08").nWidth, 96);
    EXPECT_EQ(dialog.Params().nHeight, 192);
    EXPECT_NE(dialog.SetKey("Width", "132.5"), std::nullopt) << "5008 pixels";
    EXPECT_EQ(dialog.Params().nFillKind, FILL_WHITE);
    EXPECT_EQ(dialog.Params().nColorKind, COLOR_GRAY);
}

TEST(NewImageDialog, TheSmallestAndTheGreatestSideAreTakenInEveryUnit)
{
    for (int nUnit = 0; nUnit < UNIT_COUNT; nUnit++) {
        CNewImageDialog dialog({1, 5000, FILL_WHITE, COLOR_RGB}, static_cast<LengthUnit>(nUnit));
        dialog.accept();
        EXPECT_EQ(dialog.result(), QDialog::Accepted) << nUnit;
        EXPECT_EQ(dialog.Params().nWidth, 1) << nUnit;
        EXPECT_EQ(dialog.Params().nHeight, 5000) << nUnit;
        EXPECT_NE(dialog.SetKey("Width", "0"), std::nullopt) << nUnit;
        EXPECT_NE(dialog.SetKey("Width", "5001.5"), std::nullopt) << nUnit;
    }
}

TEST(NewImageDialog, LastValuesComeFromTheProfileAndGoBackOnOk)
{
    CMemoryProfile profile;
    CDocumentDialogs host(profile, nullptr, {});
    const QList<QPair<QString, QString>> keys{{"Width", "640"}, {"Height", "480"}, {"Kind", "1"}, {"Color", "2"}};
    {
        const CDriver driver({}, true);
        const auto params = host.AskNewImage();
        ASSERT_TRUE(params);
        EXPECT_EQ(params->nWidth, 100);
        EXPECT_EQ(params->nHeight, 100);
        EXPECT_EQ(params->nFillKind, FILL_BACKGROUND);
        EXPECT_EQ(params->nColorKind, COLOR_BITMAP);
    }
    {
        const CDriver driver(keys, false);
        EXPECT_FALSE(host.AskNewImage());
        EXPECT_EQ(profile.GetInt("Image", "Width", 0), 100) << "cancelled";
    }
    {
        const CDriver driver(keys, true);
        ASSERT_TRUE(host.AskNewImage());
    }
    const CDriver driver({}, true);
    const auto params = host.AskNewImage();
    ASSERT_TRUE(params);
    EXPECT_EQ(params->nWidth, 640);
    EXPECT_EQ(params->nHeight, 480);
    EXPECT_EQ(params->nFillKind, FILL_BLACK);
    EXPECT_EQ(params->nColorKind, COLOR_RGB);
    EXPECT_EQ(profile.GetInt("Image", "Kind", -1), 1);
}

TEST(NewImageDialog, StoredNonsenseIsBroughtInside)
{
    CMemoryProfile profile;
    for (const char* strKey : {"Width", "Height", "Kind", "Color"})
        profile.WriteInt("Image", strKey, -70000);
    profile.WriteInt("General", "Unit", 99);
    CDocumentDialogs host(profile, nullptr, {});
    const CDriver driver({}, true);
    const auto params = host.AskNewImage();
    ASSERT_TRUE(params);
    EXPECT_EQ(params->nWidth, 1);
    EXPECT_EQ(params->nHeight, 1);
    EXPECT_EQ(params->nFillKind, 0);
    EXPECT_EQ(params->nColorKind, 0);
}

TEST(NewImageDialog, APersonTypesTabsAndPressesEnter)
{
    CNewImageDialog dialog({}, UNIT_PIXEL);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClicks(QApplication::focusWidget(), "320");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), "120*2");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Params().nWidth, 320);
    EXPECT_EQ(dialog.Params().nHeight, 240);
}

TEST(NewImageDialog, EveryControlHasNameTipAndMnemonic)
{
    CNewImageDialog dialog({}, UNIT_PIXEL);
    QSet<QString> mnemonics;
    for (const QLabel* pLabel : dialog.findChildren<QLabel*>()) {
        const QWidget* pControl = pLabel->buddy();
        if (!pControl)
            continue;
        const qsizetype nAnd = pLabel->text().indexOf(u'&');
        ASSERT_GE(nAnd, 0) << pLabel->text().toStdString();
        EXPECT_FALSE(mnemonics.contains(pLabel->text().mid(nAnd, 2))) << pLabel->text().toStdString();
        mnemonics.insert(pLabel->text().mid(nAnd, 2));
        EXPECT_FALSE(pControl->accessibleName().isEmpty());
        EXPECT_FALSE(pControl->accessibleName().contains(u'&'));
        EXPECT_FALSE(pControl->toolTip().isEmpty());
    }
    EXPECT_EQ(mnemonics.size(), 5);
}
