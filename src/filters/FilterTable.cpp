#include "filters/FilterTable.h"

#include "base/Profile.h"
#include "doc/ColorState.h"
#include "filters/Curves.h"
#include "filters/FilterOperations.h"

#include <algorithm>
#include <array>
#include <string>

namespace kestrune {

namespace {

using enum FilterHandler;
using enum FilterUndo;
using Kind = FilterDialogKind;

/// A parameter whose edit has the slider's range.
constexpr FilterParam Plain(std::string_view strKey, std::string_view strLabel, int nDefault, int nMin, int nMax)
{
    return {strKey, strLabel, nDefault, nMin, nMax, nMin, nMax};
}
constexpr FilterParam In(std::string_view strUnit, FilterParam param)
{
    param.strUnit = strUnit;
    return param;
}
constexpr std::string_view c_strPixels = "픽셀", c_strDegrees = "도", c_strPercent = "%";
constexpr FilterParam Hundredths(std::string_view strKey, std::string_view strLabel, int nDefault, int nMin, int nMax)
{
    return {strKey, strLabel, nDefault, nMin, nMax, nMin, nMax, 2};
}

constexpr FilterParam c_aGaussian[] = {In(c_strPixels, {"Value", "반경(&R):", 5, 1, 255, 1, 250})};
constexpr FilterParam c_aCubism[] = {In(c_strPixels, Plain("Size", "크기(&S):", 10, 1, 100))};
constexpr FilterParam c_aMotion[] = {In(c_strDegrees, Plain("Angle", "각도(&A):", 45, 0, 360)), In(c_strPixels, Plain("Length", "길이(&L):", 10, 0, 255))};
constexpr FilterParam c_aOldPhoto[] = {In(c_strPercent, Plain("Amount", "색상 변화도(&T):", 70, 0, 100))};
constexpr FilterParam c_aColourize[] = {In(c_strPercent, Plain("Red", "빨강(&R):", 0, 0, 100)), In(c_strPercent, Plain("Green", "녹색(&G):", 50, 0, 100)),
                                        In(c_strPercent, Plain("Blue", "파랑(&B):", 50, 0, 100))};
constexpr FilterParam c_aColourCount[] = {Plain("Colors", "색상 개수(&C):", 256, 1, 256)};
constexpr FilterParam c_aGlassTile[] = {In(c_strPixels, Plain("X", "가로(&X):", 10, 1, 100)), In(c_strPixels, Plain("Y", "세로(&Y):", 10, 1, 100))};
constexpr FilterParam c_aPaperTile[] = {In(c_strPixels, Plain("Size", "크기(&S):", 20, 2, 100)), Plain("Amount", "정도(&A):", 25, 2, 100)};
constexpr FilterParam c_aThreshold[] = {Plain("Amount", "기준값(&T):", 128, 0, 255)};
constexpr FilterParam c_aPosterize[] = {Plain("Level", "단계(&L):", 3, 1, 255)};
constexpr FilterParam c_aGamma[] = {Hundredths("Gamma", "감마(&G):", 100, 0, 300)};
constexpr FilterParam c_aBrightness[] = {Plain("Brightness", "밝기(&B):", 0, -100, 100),
                                         Plain("Contrast", "대비(&C):", 0, -100, 100)};
constexpr FilterParam c_aMedian[] = {In(c_strPixels, {"Value", "크기(&S):", 3, 3, 10, 1, 10})};
constexpr FilterParam c_aNoise[] = {Hundredths("Red", "빨강(&R):", 50, 0, 100), Hundredths("Green", "녹색(&G):", 50, 0, 100),
                                    Hundredths("Blue", "파랑(&B):", 50, 0, 100),
                                    {"Flag", "&Independent", 1, 0, 1, 0, 1, 0, 1, {}, FilterControl::Check}};
constexpr FilterParam c_aSharpen[] = {Plain("Sharpness", "선명도(&S):", 10, 1, 100)};
// The first slider is the radius under the label of an amount, the second the other way round; users know them so.
constexpr FilterParam c_aUnsharp[] = {{"Radius", "정도(&A):", 1, 0, 250, 0, 250, 0, 100},
                                      Plain("Amount", "반경(&R):", 5, 1, 500),
                                      Plain("Threshold", "기준값(&T):", 0, 0, 255)};
constexpr FilterParam c_aShiftRgb[] = {Plain("RedX", "빨강 X(&R):", 0, -500, 500),  Plain("RedY", "빨강 Y(&E):", 0, -500, 500),
                                       Plain("GreenX", "녹색 X(&G):", 0, -500, 500), Plain("GreenY", "녹색 Y(&N):", 0, -500, 500),
                                       Plain("BlueX", "파랑 X(&B):", 0, -500, 500),  Plain("BlueY", "파랑 Y(&L):", 0, -500, 500)};
constexpr FilterParam c_aMaximum[] = {In(c_strPixels, Plain("Value", "크기(&S):", 3, 1, 10))};
constexpr FilterParam c_aMinimum[] = {In(c_strPixels, {"Value", "크기(&S):", 3, 1, 10, 1, 9})};
constexpr FilterParam c_aSpread[] = {In(c_strPixels, Plain("X", "가로(&X):", 20, 0, 200)), In(c_strPixels, Plain("Y", "세로(&Y):", 20, 0, 200))};
constexpr FilterParam c_aSolarize[] = {Plain("Threshold", "기준값(&T):", 127, 0, 127)};
constexpr FilterParam c_aEmboss[] = {In(c_strDegrees, Plain("Angle", "각도(&A):", 0, 0, 360)), In(c_strDegrees, Plain("Elevation", "고도(&E):", 90, 0, 180)),
                                     Plain("Depth", "깊이(&D):", 50, 1, 100)};
// Angle and elevation are real degrees, kept as hundredths.
constexpr FilterParam c_aColourEmboss[] = {Hundredths("Angle", "각도(&A):", 0, 0, 36000),
                                           {"Elevation", "고도(&E):", 400, 100, 18000, 100, 18000, 2},
                                           Plain("Depth", "깊이(&D):", 20, 1, 100)};
constexpr FilterParam c_aFibre[] = {Plain("Clarity", "선명도(&D):", 40, 0, 50), Plain("Texture", "질감(&S):", 20, 0, 50),
                                    Hundredths("Brightness", "명도(&B):", 100, 0, 300),
                                    {"Kind", "종류(&M):", 1, 0, 8, 0, 8, 0, 1, {}, FilterControl::Choice}};
constexpr FilterParam c_aPixelShift[] = {Plain("Amount", "정도(&A):", 20, 1, 200),
                                         {"Type", "방향(&T):", 0, 0, 1, 0, 1, 0, 1, {}, FilterControl::Choice}};
constexpr FilterParam c_aCurtain[] = {{"Direction", "방향(&D):", 0, 0, 1, 0, 1, 0, 1, {}, FilterControl::Choice}};
// "Max" is written to the section and read from a misspelt one: it starts at its default every time.
constexpr FilterParam c_aSpecks[] = {Plain("Amount", "정도(&A):", 5, 0, 50),
                                     {"Max", "한계(&M):", 50, 0, 100, 0, 100, 0, 1, "DeNoiserr"}};
constexpr FilterParam c_aFill[] = {Plain("Opacity", "불투명도(&O):", 100, 0, 100)};
constexpr FilterParam c_aBlend[] = {Plain("Percent", "불투명도(&O):", 100, 0, 100)};

// The dispatcher's rows stand in the order of their undo kinds, which is the order in which it compares.
constexpr FilterRow c_aFilters[] = {
    {30003, 51, "흐리게(가우시안)", "Gaussian Blur", Dispatcher, BeforeRun, Kind::Common, c_aGaussian, RunGaussian},
    {30000, 52, "사각형화", "Cubism", Dispatcher, BeforeRun, Kind::Common, c_aCubism, nullptr},
    {30001, 53, "흐리게(이동)", "Motion Blur", Dispatcher, BeforeRun, Kind::Common, c_aMotion, RunMotionBlur},
    {30004, 54, "옛날 사진 효과", "", Dispatcher, BeforeRun, Kind::Common, c_aOldPhoto, RunOldPhoto},
    {30030, 55, "색상 입히기", "", Dispatcher, BeforeRun, Kind::Colourize, c_aColourize, RunColourize},
    {30031, 56, "색상 개수 지정", "", Dispatcher, BeforeRun, Kind::Common, c_aColourCount, RunColourCount},
    {30032, 57, "글래스 타일", "Glass Tile", Dispatcher, BeforeRun, Kind::Common, c_aGlassTile, nullptr},
    {30033, 58, "페이퍼 타일", "", Dispatcher, BeforeRun, Kind::Common, c_aPaperTile, nullptr},
    {30021, 59, "쓰레시홀드", "Threshold", Dispatcher, BeforeRun, Kind::Common, c_aThreshold, RunThreshold},
    {30020, 60, "포스터 효과", "Posterize", Dispatcher, BeforeRun, Kind::Common, c_aPosterize, RunPosterize},
    {30034, 61, "감마", "", Dispatcher, BeforeRun, Kind::Common, c_aGamma, RunGamma},
    {30027, 62, "밝기/대비", "", Dispatcher, BeforeRun, Kind::Common, c_aBrightness, RunBrightnessContrast, true},
    {30028, 63, "색조/채도", "", Dispatcher, BeforeRun, Kind::HueSaturation, {}, RunHueSaturation},
    {30037, 64, "메디안", "Median", Dispatcher, BeforeRun, Kind::Common, c_aMedian, RunMedian},
    {30038, 65, "노이즈", "Noise", Dispatcher, BeforeRun, Kind::Common, c_aNoise, nullptr},
    {30039, 66, "선명하게", "Sharpen", Dispatcher, BeforeRun, Kind::Common, c_aSharpen, RunSharpen},
    {30040, 67, "언샤프마스크", "Unsharp Mask", Dispatcher, BeforeRun, Kind::Common, c_aUnsharp, RunUnsharp},
    {30042, 68, "채널 이동", "RGB Shift", Dispatcher, BeforeRun, Kind::Common, c_aShiftRgb, nullptr},
    {30043, 69, "최대화", "Maximum", Dispatcher, BeforeRun, Kind::Common, c_aMaximum, RunMaximum},
    {30044, 70, "최소화", "", Dispatcher, BeforeRun, Kind::Common, c_aMinimum, RunMinimum},
    {30045, 71, "사용자 정의 필터", "", Dispatcher, BeforeRun, Kind::Matrix, {}, RunMatrix},
    {30046, 72, "흩뿌림", "Spread", Dispatcher, BeforeRun, Kind::Common, c_aSpread, nullptr},
    {30047, 73, "솔라라이즈", "Solarize", Dispatcher, BeforeRun, Kind::Common, c_aSolarize, RunSolarize},
    {30078, 74, "돋을새김 무늬", "Emboss", Dispatcher, BeforeRun, Kind::Common, c_aEmboss, nullptr},
    {30079, 75, "색상 돋을새김 무늬", "Color Emboss", Dispatcher, BeforeRun, Kind::Common, c_aColourEmboss, nullptr},
    {30081, 76, "섬유 효과", "", Dispatcher, BeforeRun, Kind::Common, c_aFibre, nullptr},
    {30025, 77, "레벨", "", Dispatcher, BeforeRun, Kind::Levels, {}, RunLevels},
    {30026, 78, "커브", "", Dispatcher, AfterDialog, Kind::Curves, {}, RunCurves, true},
    {30105, 79, "픽셀 이동", "Shift", Dispatcher, BeforeRun, Kind::Common, c_aPixelShift, nullptr},
    {30095, 80, "색감 수정", "", Dispatcher, AfterDialog, Kind::Own, {}, nullptr},
    {30035, 81, "색상 밸런스", "", Dispatcher, AfterDialog, Kind::ColorBalance, {}, RunColorBalance, true},
    {30116, 82, "커튼 효과", "", Dispatcher, BeforeRun, Kind::Common, c_aCurtain, nullptr},
    {30120, 83, "잡티 제거", "DeNoiser", Dispatcher, BeforeRun, Kind::Common, c_aSpecks, nullptr},
    {30029, 84, "", "", NoDialog, BeforeRun, Kind::None, {}, RunDesaturate},
    // Equalize runs first: without a selection its record holds the equalized picture.
    {30018, 85, "", "", NoDialog, AfterRun, Kind::None, {}, RunEqualize},
    {30019, 86, "", "", NoDialog, BeforeRun, Kind::None, {}, RunInvert},
    {30102, 87, "", "", NoDialog, BeforeRun, Kind::None, {}, nullptr},
    {30103, 88, "", "", NoDialog, BeforeRun, Kind::None, {}, nullptr},
    {30104, 89, "", "", NoDialog, BeforeRun, Kind::None, {}, RunNormalize},
    {30002, 50, "", "", Blur, BeforeRun, Kind::None, {}, RunBlur},
    {30119, 90, "디지털 카메라 화질 향상", "", Own, BeforeRun, Kind::Own, {}, nullptr},
    {30050, 46, "색상 채우기", "Fill", Own, BeforeRun, Kind::Own, c_aFill, nullptr},
    {30092, 0, "이미지 합성", "Blend", Own, BeforeRun, Kind::Own, c_aBlend, nullptr},
};

constexpr int c_anBranchless[] = {30036, 30041, 30048, 30049, 30077, 30106, 30107, 30111, 30113, 30114, 30115, 30117, 30118};

constexpr bool IsSane()
{
    std::uint32_t nKind = 51;
    for (const FilterRow& row : c_aFilters) {
        if (row.handler == Dispatcher && row.nUndoKind != nKind++)
            return false;
        if (row.handler == Dispatcher && row.strTitle.empty())
            return false;
        if ((row.dialog == Kind::None) != (row.handler == NoDialog || row.handler == Blur))
            return false;
        if (row.params.size() > c_nMaxFilterParams)
            return false;
        for (const FilterParam& p : row.params)
            if (p.nMin >= p.nMax || p.nEditMin > p.nEditMax || p.nDefault < p.nEditMin || p.nDefault > p.nEditMax)
                return false;
    }
    return nKind == 84;
}
static_assert(IsSane(), "33 filters of the dispatcher, kinds 51 to 83 in order, defaults inside their ranges");

} // namespace

std::span<const FilterRow> FilterTable() { return c_aFilters; }

const FilterRow* FindFilter(int nCommand)
{
    const auto* const pRow = std::ranges::find(c_aFilters, nCommand, &FilterRow::nCommand);
    return pRow == std::end(c_aFilters) ? nullptr : pRow;
}

bool IsBranchlessFilterCommand(int nCommand)
{
    return std::ranges::binary_search(c_anBranchless, nCommand);
}

std::span<const int> BranchlessFilterCommands() { return c_anBranchless; }

int FindFilterParam(const FilterRow& row, std::string_view strKey)
{
    const auto it = std::ranges::find(row.params, strKey, &FilterParam::strKey);
    return it == row.params.end() ? -1 : static_cast<int>(it - row.params.begin());
}

FilterValues LoadFilterValues(const FilterRow& row, const CProfile& profile)
{
    FilterValues values;
    for (std::size_t i = 0; i < row.params.size(); ++i) {
        const FilterParam& p = row.params[i];
        values.an[i] = p.nDefault;
        if (row.strSection.empty())
            continue;
        const std::string strSection(p.strReadSection.empty() ? row.strSection : p.strReadSection);
        const int nStored = profile.GetInt(strSection, std::string(p.strKey), p.nDefault * p.nStoredFactor);
        values.an[i] = std::clamp(nStored / p.nStoredFactor, p.nEditMin, p.nEditMax);
    }
    switch (row.dialog) {
    case Kind::HueSaturation:
        values.extra = HueSaturationValues{};
        break;
    case Kind::Levels:
        values.extra = LevelsValues{};
        break;
    case Kind::Curves:
        values.extra = ProgramCurves();
        break;
    case Kind::Colourize:
        values.crReference = g_crForeground; // until the user picks another one: the colour at hand
        break;
    case Kind::ColorBalance:
        values.extra = ColorBalanceValues{};
        break;
    case Kind::Matrix:
        values.extra = MatrixValues{};
        break;
    default:
        break;
    }
    return values;
}

void SaveFilterValues(const FilterRow& row, const FilterValues& values, CProfile& profile)
{
    if (row.strSection.empty())
        return;
    for (std::size_t i = 0; i < row.params.size(); ++i) {
        const FilterParam& p = row.params[i];
        profile.WriteInt(std::string(row.strSection), std::string(p.strKey), values.an[i] * p.nStoredFactor);
    }
}

} // namespace kestrune
