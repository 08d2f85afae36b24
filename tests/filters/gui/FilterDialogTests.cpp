// Every filter dialog: filled in by its keys it does what its operation does; cancelled it does nothing.

#include "FilterTestKit.h"

#include "filters/Curves.h"
#include "filters/gui/FilterCommands.h"
#include "filters/gui/FilterPreview.h"
#include "filters/gui/SliderEdit.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"
#include "ui/PopupSlider.h"
#include "undo/UndoKinds.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace kestrune;

namespace {

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

/// A filter's row with the keys that set its dialog, and the values that they mean.
struct DialogCase {
    const FilterRow* pRow;
    Keys keys;
    FilterValues values;
};

/// Values other than the defaults for a row with parameters of its own.
DialogCase CommonCase(const FilterRow& row)
{
    DialogCase result{&row, {}, {}};
    for (std::size_t i = 0; i < row.params.size(); i++) {
        const FilterParam& param = row.params[i];
        const int nValue = param.nEditMin + (param.nEditMax - param.nEditMin) * 3 / 4;
        result.values.an[i] = nValue;
        result.keys.emplace_back(Text(param.strKey),
                                 param.nDecimals == 2 ? QString::number(nValue / 100.0, 'f', 2)
                                                      : QString::number(nValue));
    }
    if (row.dialog == FilterDialogKind::Colourize) {
        result.keys.emplace_back("Color", "200,100,50");
        result.values.crReference = Rgb(200, 100, 50);
    }
    return result;
}

FilterValues WithExtra(decltype(FilterValues::extra) extra)
{
    FilterValues values;
    values.extra = std::move(extra);
    return values;
}

DialogCase CurvesCase(const FilterRow& row)
{
    CurvesValues expected = ProgramCurves();
    TakeCurvePoints(expected);
    expected.points[0][CurveSlot(100)] = {100, 180};
    RebuildCurve(expected, 0);
    expected.points[2][CurveSlot(50)] = {50, 10};
    RebuildCurve(expected, 2);
    expected.points[2][CurveSlot(200)] = {200, 255};
    RebuildCurve(expected, 2);
    return {&row, {{"Channel", "0"}, {"Points", "100:180"}, {"Channel", "2"}, {"Points", "50:10,200:255"}}, WithExtra(expected)};
}

/// Later groups of keys speak of the range or channel that was chosen last.
DialogCase SpecialCase(const FilterRow& row)
{
    switch (row.dialog) {
    case FilterDialogKind::HueSaturation: {
        HueSaturationValues expected;
        expected.adHue[0] = 20;
        expected.adSaturation[0] = -30;
        expected.adLightness[0] = 10;
        expected.adHue[5] = -170;
        expected.adSaturation[2] = 60;
        return {&row,
                {{"Hue", "20"},
                 {"Saturation", "-30"},
                 {"Lightness", "10"},
                 {"Range", "5"},
                 {"Hue", "-170"},
                 {"Range", "2"},
                 {"Saturation", "60"}},
                WithExtra(expected)};
    }
    case FilterDialogKind::ColorBalance: {
        ColorBalanceValues expected;
        expected.anDelta = {{{0, 0, 90}, {-40, 0, 0}, {0, 35, 0}}};
        expected.bLuminosity = true;
        return {&row,
                {{"Red", "-40"}, {"Range", "0"}, {"Blue", "90"}, {"Range", "2"}, {"Green", "35"}, {"Luminosity", "1"}},
                WithExtra(expected)};
    }
    case FilterDialogKind::Levels: {
        LevelsValues expected;
        expected.channels[0] = {20, 1.5, 200, 0, 255};
        expected.channels[3] = {0, 1, 255, 240, 12.5};
        return {&row,
                {{"Black", "20"},
                 {"Gamma", "1.5"},
                 {"White", "200"},
                 {"Channel", "3"},
                 {"OutBlack", "240"},
                 {"OutWhite", "12.5"}},
                WithExtra(expected)};
    }
    case FilterDialogKind::Curves:
        return CurvesCase(row);
    case FilterDialogKind::Matrix: {
        MatrixValues expected;
        expected.anMatrix = {0, 0, 0, 0, 0, 0, -1, -1, -1, 0, 0, -1, 12, -1, 0, 0, -1, -1, -1, 0, 0, 0, 0, 0, 999};
        expected.nScale = 4;
        expected.nOffset = -17;
        return {&row,
                {{"Matrix", "0,0,0,0,0,0,-1,-1,-1,0,0,-1,12,-1,0,0,-1,-1,-1,0,0,0,0,0,999"},
                 {"Scale", "4"},
                 {"Offset", "-17"}},
                WithExtra(expected)};
    }
    default:
        return CommonCase(row);
    }
}

std::vector<const FilterRow*> RowsWithDialog()
{
    std::vector<const FilterRow*> rows;
    for (const FilterRow& row : FilterTable())
        if (row.handler == FilterHandler::Dispatcher && row.operation)
            rows.push_back(&row);
    return rows;
}

struct Opened {
    Opened(const FilterRow& row, CPaintImage& image, CProfile& profile)
    {
        PrepareFilterDialog(image, data);
        data.values = LoadFilterValues(row, profile);
        pDialog = MakeFilterDialog(row, image, data, nullptr);
    }
    FilterDialogData data;
    std::unique_ptr<CFilterDialog> pDialog;
};

/// The command on one picture, the operation itself on another of the same kind.
void ExpectDialogDoesItsOperation(const FilterRow& row, CPaintImage& image, CPaintImage& reference)
{
    SCOPED_TRACE(std::string(row.strTitle));
    ProgramCurves() = [] {
        CurvesValues values;
        for (int c = 0; c < 4; c++)
            ResetCurve(values, c);
        return values;
    }();
    const DialogCase test = SpecialCase(row);
    CMemoryProfile profile;
    CFilterDialogHost dialogs(profile, nullptr);
    const CDialogDriver driver(test.keys);
    OnFilterDialogCommand(&image, row.nCommand, dialogs);
    EXPECT_EQ(driver.m_nDialogs, 1);

    FilterDialogData data;
    PrepareFilterDialog(reference, data);
    data.values = test.values;
    ApplyFilter(row, reference, data);
    CommitFilter(reference);
    EXPECT_TRUE(SameBitmap(image.m_Bitmap, reference.m_Bitmap));
    EXPECT_TRUE(SameBitmap(image.m_BaseBitmap, reference.m_BaseBitmap));
    EXPECT_EQ(HistoryRows(image).back().name, FindUndoKind(row.nUndoKind).name);
    for (std::size_t i = 0; i < row.params.size() && !row.strSection.empty(); i++) {
        const FilterParam& param = row.params[i];
        EXPECT_EQ(profile.FindInt(std::string(row.strSection), std::string(param.strKey)),
                  test.values.an[i] * param.nStoredFactor);
    }
    if (row.strSection.empty()) {
        EXPECT_TRUE(profile.Values().empty());
    }
}

} // namespace

TEST(FilterDialogs, EveryDialogDoesItsOperation)
{
    for (const FilterRow* pRow : RowsWithDialog()) {
        const auto pImage = MakePicture(61, 37), pReference = MakePicture(61, 37);
        ExpectDialogDoesItsOperation(*pRow, *pImage, *pReference);
    }
}

TEST(FilterDialogs, EveryDialogDoesItsOperationOnASelectionThatLiesPartlyOutside)
{
    for (const FilterRow* pRow : RowsWithDialog()) {
        const auto pImage = MakePicture(170, 40), pReference = MakePicture(170, 40);
        for (CPaintImage* p : {pImage.get(), pReference.get()})
            SelectRect(*p, {-13, -5, 90, 60});
        ExpectDialogDoesItsOperation(*pRow, *pImage, *pReference);
    }
}

TEST(FilterDialogs, CancelLeavesPictureHistoryAndSettings)
{
    for (const FilterRow* pRow : RowsWithDialog()) {
        SCOPED_TRACE(std::string(pRow->strTitle));
        const auto pImage = MakePicture(200, 90);
        SelectRect(*pImage, {100, -20, 260, 50});
        LBitmapBase before, baseBefore, floatBefore;
        before.Copy(pImage->m_Bitmap);
        baseBefore.Copy(pImage->m_BaseBitmap);
        floatBefore.Copy(pImage->m_FloatBitmap);
        CMemoryProfile profile;
        CFilterDialogHost dialogs(profile, nullptr);
        const CurvesValues curves = ProgramCurves();
        const Keys keys = SpecialCase(*pRow).keys;
        CPaintDialog::SetDriver([&](CPaintDialog& dialog) {
            for (const auto& [strKey, strValue] : keys)
                EXPECT_EQ(dialog.SetKey(strKey, strValue), std::nullopt) << strKey.toStdString();
            dynamic_cast<CFilterDialog&>(dialog)
                .Preview()
                .OnTimer(); // a preview ran before the user thought better of it
            dialog.reject();
            return dialog.result();
        });
        OnFilterDialogCommand(pImage.get(), pRow->nCommand, dialogs);
        CPaintDialog::SetDriver({});
        EXPECT_TRUE(SameBitmap(pImage->m_Bitmap, before));
        EXPECT_TRUE(SameBitmap(pImage->m_BaseBitmap, baseBefore));
        EXPECT_TRUE(SameBitmap(pImage->m_FloatBitmap, floatBefore));
        EXPECT_EQ(HistoryRows(*pImage).size(), 1u);
        EXPECT_TRUE(profile.Values().empty());
        EXPECT_EQ(ProgramCurves().curve, curves.curve);
    }
}

TEST(FilterDialogs, ValuesAreThereAgainAtTheNextOpening)
{
    for (const FilterRow* pRow : RowsWithDialog()) {
        if (pRow->params.empty())
            continue;
        SCOPED_TRACE(std::string(pRow->strTitle));
        const auto pImage = MakePicture(20, 20);
        const DialogCase test = CommonCase(*pRow);
        CMemoryProfile profile;
        CFilterDialogHost dialogs(profile, nullptr);
        {
            const CDialogDriver driver(test.keys);
            OnFilterDialogCommand(pImage.get(), pRow->nCommand, dialogs);
        }
        for (std::size_t i = 0; i < pRow->params.size(); i++)
            EXPECT_EQ(LoadFilterValues(*pRow, profile).an[i],
                      pRow->strSection.empty() ? pRow->params[i].nDefault : test.values.an[i]);
    }
}

TEST(FilterDialogs, WhatAControlRefusesChangesNothing)
{
    const auto pImage = MakePicture(20, 20);
    CMemoryProfile profile;
    for (const FilterRow* pRow : RowsWithDialog()) {
        SCOPED_TRACE(std::string(pRow->strTitle));
        Opened opened(*pRow, *pImage, profile);
        const FilterValues before = opened.data.values;
        for (const FilterParam& param : pRow->params) {
            for (const QString& strBad :
                 {QStringLiteral("abc"), QString(), QStringLiteral("1/0"), QStringLiteral("12x")})
                EXPECT_NE(opened.pDialog->SetKey(Text(param.strKey), strBad), std::nullopt)
                    << param.strKey << " " << strBad.toStdString();
        }
        EXPECT_EQ(opened.data.values.an, before.an);
        EXPECT_NE(opened.pDialog->SetKey("Nonsense", "1"), std::nullopt);
        opened.pDialog->accept();
        EXPECT_EQ(opened.pDialog->result(), QDialog::Accepted) << "the old values still stand in the boxes";
    }
    struct Bad {
        int nCommand;
        const char* pszKey;
        const char* pszValue;
    };
    for (const Bad& bad : {Bad{30026, "Points", "256:0"},
                           {30026, "Points", "1:2,3"},
                           {30026, "Channel", "4"},
                           {30045, "Matrix", "1,2,3"},
                           {30045, "Scale", "one"},
                           {30028, "Range", "7"},
                           {30035, "Range", "3"},
                           {30035, "Luminosity", "2"},
                           {30030, "Color", "1,2"},
                           {30030, "Color", "1,2,256"},
                           {30025, "Gamma", "-"}}) {
        Opened opened(*FindFilter(bad.nCommand), *pImage, profile);
        EXPECT_NE(opened.pDialog->SetKey(bad.pszKey, bad.pszValue), std::nullopt) << bad.nCommand << " " << bad.pszKey;
    }
}

TEST(FilterDialogs, NumbersBeyondARangeAreTheNearestInside)
{
    const auto pImage = MakePicture(1, 1);
    CMemoryProfile profile;
    for (const FilterRow* pRow : RowsWithDialog()) {
        SCOPED_TRACE(std::string(pRow->strTitle));
        Opened opened(*pRow, *pImage, profile);
        for (std::size_t i = 0; i < pRow->params.size(); i++) {
            const FilterParam& param = pRow->params[i];
            EXPECT_EQ(opened.pDialog->SetKey(Text(param.strKey), "-77777"), std::nullopt);
            EXPECT_EQ(opened.data.values.an[i], param.nEditMin);
            EXPECT_EQ(opened.pDialog->SetKey(Text(param.strKey), "1e9"), std::nullopt);
            EXPECT_EQ(opened.data.values.an[i], param.nEditMax);
        }
        opened.pDialog->Preview().OnTimer();
        opened.pDialog->accept();
        EXPECT_EQ(opened.pDialog->result(), QDialog::Accepted);
    }
    const auto extra = [&](int nCommand, const Keys& keys) {
        Opened opened(*FindFilter(nCommand), *pImage, profile);
        for (const auto& [strKey, strValue] : keys)
            EXPECT_EQ(opened.pDialog->SetKey(strKey, strValue), std::nullopt) << strKey.toStdString();
        return opened.data.values.extra;
    };
    const auto matrix = std::get<MatrixValues>(extra(
        30045, {{"Scale", "0"}, {"Offset", "-1e8"}, {"Matrix", "-5000,0,0,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1000"}}));
    EXPECT_EQ(matrix.nScale, 1) << "no divisor of 0";
    EXPECT_EQ(matrix.nOffset, -9999);
    EXPECT_EQ(matrix.anMatrix.front(), -999);
    EXPECT_EQ(matrix.anMatrix.back(), 999);
    const auto hue = std::get<HueSaturationValues>(extra(30028, {{"Hue", "181"}, {"Range", "6"}, {"Lightness", "-400"}}));
    EXPECT_EQ(hue.adHue[0], 180);
    EXPECT_EQ(hue.adLightness[6], -100);
    const auto levels = std::get<LevelsValues>(extra(30025, {{"Gamma", "0.05"}, {"OutWhite", "300"}, {"White", "-3"}})).channels[0];
    EXPECT_EQ(levels.fGamma, 0.1);
    EXPECT_EQ(levels.fOutWhite, 255);
    EXPECT_EQ(levels.fWhite, 0) << "not below black";
    const auto balance = std::get<ColorBalanceValues>(extra(30035, {{"Red", "101"}, {"Range", "2"}, {"Blue", "-999"}}));
    EXPECT_EQ(balance.anDelta[1][0], 100);
    EXPECT_EQ(balance.anDelta[2][2], -100);
}

/// Whatever stands in the settings, a dialog opens inside its ranges.
TEST(FilterDialogs, SettingsOutOfRangeAreBroughtInside)
{
    for (const FilterRow* pRow : RowsWithDialog())
        for (const int nStored : {-2147483647 - 1, -1, 2147483647}) {
            CMemoryProfile profile;
            for (const FilterParam& param : pRow->params)
                profile.WriteInt(std::string(pRow->strSection), std::string(param.strKey), nStored);
            const FilterValues values = LoadFilterValues(*pRow, profile);
            for (std::size_t i = 0; i < pRow->params.size(); i++) {
                EXPECT_GE(values.an[i], pRow->params[i].nEditMin) << pRow->strTitle;
                EXPECT_LE(values.an[i], pRow->params[i].nEditMax) << pRow->strTitle;
            }
        }
}

TEST(FilterDialogs, SliderAndEditStayInStepAndTheEditDecides)
{
    CSliderEdit gaussian({1, 255, 1, 250, 0, 5}, nullptr);
    int nTold = 0;
    QObject::connect(&gaussian, &CSliderEdit::Changed, [&](int nValue) { nTold = nValue; });
    QTest::keyClick(gaussian.Slider(), Qt::Key_End);
    EXPECT_EQ(nTold, 250) << "the slider reaches 255, the edit does not";
    EXPECT_EQ(gaussian.Edit()->text(), QString("250"));
    EXPECT_EQ(gaussian.Edit()->Verify(), NUM_OK);
    QTest::keyClick(gaussian.Slider(), Qt::Key_Home);
    EXPECT_EQ(gaussian.Edit()->text(), QString("1"));
    gaussian.Edit()->selectAll();
    QTest::keyClicks(gaussian.Edit(), "42.9");
    EXPECT_EQ(gaussian.GetValue(), 42);
    EXPECT_EQ(gaussian.Slider()->GetPos(), 42);
    Q_EMIT gaussian.Edit()->editingFinished();
    EXPECT_EQ(gaussian.Edit()->text(), QString("42")) << "the box shows in the end what counts";
    gaussian.Edit()->selectAll();
    QTest::keyClicks(gaussian.Edit(), "999");
    EXPECT_EQ(gaussian.GetValue(), 250) << "the nearest value inside";
    EXPECT_EQ(gaussian.Slider()->GetPos(), 250);
    EXPECT_EQ(gaussian.Edit()->text(), QString("999")) << "nothing changes under the typing hand";
    Q_EMIT gaussian.Edit()->editingFinished();
    EXPECT_EQ(gaussian.Edit()->text(), QString("250"));

    CSliderEdit median({3, 10, 1, 10, 0, 3}, nullptr);
    median.Edit()->selectAll();
    QTest::keyClicks(median.Edit(), "1");
    EXPECT_EQ(median.GetValue(), 1) << "below what the slider reaches";
    EXPECT_EQ(median.Slider()->GetPos(), 3);

    CSliderEdit gamma({0, 300, 0, 300, 2, 100}, nullptr);
    EXPECT_EQ(gamma.Edit()->text(), QString("1.00"));
    gamma.Edit()->selectAll();
    QTest::keyClicks(gamma.Edit(), "2.57");
    EXPECT_EQ(gamma.GetValue(), 257);
    for (CSliderEdit* p : {&gaussian, &median, &gamma}) { // nobody took the controls into a window
        delete p->Edit();
        delete p->Slider();
    }
}

TEST(FilterDialogs, ControlsHaveNamesTipsAndMnemonicsOfTheirOwn)
{
    const auto pImage = MakePicture(300, 200);
    CMemoryProfile profile;
    static const QRegularExpression rxMnemonic("&(.)");
    for (const FilterRow* pRow : RowsWithDialog()) {
        SCOPED_TRACE(std::string(pRow->strTitle));
        Opened opened(*pRow, *pImage, profile);
        CFilterDialog& dialog = *opened.pDialog;
        EXPECT_EQ(dialog.windowTitle(), Text(pRow->strTitle));
        dialog.show();
        QApplication::processEvents();
        QSet<QString> mnemonics;
        for (const QWidget* pWidget : dialog.findChildren<QWidget*>()) {
            const auto* pLabel = qobject_cast<const QLabel*>(pWidget);
            const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
            const QString strText = pLabel ? pLabel->text() : pButton ? pButton->text() : QString();
            if (const auto match = rxMnemonic.match(strText); match.hasMatch()) {
                EXPECT_FALSE(mnemonics.contains(match.captured(1))) << strText.toStdString();
                mnemonics.insert(match.captured(1));
            }
            if (pLabel || pButton) {
                EXPECT_GE(pWidget->width(), pWidget->sizeHint().width()) << strText.toStdString() << " is cut";
            }
            if (pWidget->focusPolicy() == Qt::NoFocus || !pWidget->isVisible() || pWidget->focusProxy())
                continue;
            EXPECT_FALSE(pWidget->accessibleName().isEmpty() && strText.isEmpty())
                << pWidget->metaObject()->className();
            if (!strText.isEmpty() && qobject_cast<const QPushButton*>(pWidget) && pWidget->toolTip().isEmpty())
                continue; // OK and Cancel
            EXPECT_FALSE(pWidget->toolTip().isEmpty())
                << pWidget->metaObject()->className() << " " << strText.toStdString();
        }
    }
}

TEST(FilterDialogs, CommandsAreGreyWithoutAPictureOrAnOperation)
{
    CCommandTarget target;
    CMemoryProfile profile;
    std::unique_ptr<CPaintImage> pImage;
    RegisterFilterCommands(
        target, [&] { return pImage.get(); }, profile, nullptr);
    const auto isEnabled = [&](int nId) {
        CommandState state;
        return target.UpdateCommand(nId, state) && state.bEnabled;
    };
    EXPECT_FALSE(isEnabled(30021));
    EXPECT_TRUE(target.RunCommand(30021)) << "known, but there is nothing to do";
    pImage = MakePicture(9, 9);
    LBitmapBase before;
    before.Copy(pImage->m_Bitmap);
    for (const FilterRow& row : FilterTable())
        EXPECT_EQ(isEnabled(row.nCommand), row.operation != nullptr && row.handler != FilterHandler::Own)
            << row.nCommand;
    for (const int nId : {30041, 30048, 30049, 30106, 30107, 30111, 30113, 30114, 30115, 30117, 30118, 30036, 30077}) {
        EXPECT_TRUE(isEnabled(nId)) << nId;
        EXPECT_TRUE(target.RunCommand(nId));
    }
    EXPECT_TRUE(SameBitmap(pImage->m_Bitmap, before));
    EXPECT_EQ(HistoryRows(*pImage).size(), 1u);
    EXPECT_TRUE(target.RunCommand(30019));
    EXPECT_EQ(HistoryRows(*pImage).back().name, FindUndoKind(86).name);
    EXPECT_FALSE(SameBitmap(pImage->m_Bitmap, before));
}
