#include "tools/gui/OptionTable.h"

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

using enum ToolOption;
using enum OptionControl;
using Bar = ToolBar;

constexpr std::string_view c_strOpacity = "불투명도:", c_strSpace = "간격:", c_strMode = "모드:", c_strPressure = "압력:";
constexpr std::string_view c_strOpacityTip = "칠이 얼마나 진하게 남는지 정합니다.";
constexpr std::string_view c_strSpaceTip = "붓 자국 사이의 거리를 붓 크기의 백분율로 정합니다.";
constexpr std::string_view c_strModeTip = "칠이 이미지와 섞이는 방법을 고릅니다.";
constexpr std::string_view c_strPressureTip = "도구가 작용하는 세기를 정합니다.";

constexpr OptionItem c_aSelectModes[] = {
    {"새로 선택", "widgets/select-new"},
    {"선택에 더하기 (Shift)", "widgets/select-add"},
    {"선택에서 빼기 (Ctrl)", "widgets/select-subtract"},
    {"겹치는 부분만 선택", "widgets/select-intersect"},
};
constexpr OptionItem c_aMoveModes[] = {{"이동", ""}, {"복사", ""}};
constexpr OptionItem c_aCurves[] = {{"밝은 부분", ""}, {"중간 부분", ""}, {"어두운 부분", ""}};
constexpr OptionItem c_aShapes[] = {{"선형", ""}, {"양쪽 선형", ""}, {"원형", ""}, {"사각형", ""}, {"양쪽 원뿔", ""}, {"원뿔", ""}};
constexpr OptionItem c_aSources[] = {{"전경색 - 배경색", ""}, {"전경색 - 배경색 (HSV)", ""}, {"흰색 - 검은색", ""}, {"사용자 정의", ""}};
constexpr OptionItem c_aFills[] = {{"전경색", ""}, {"패턴", ""}};

constexpr OptionControlRow Opacity(Bar bar, ToolOption option) { return {bar, Percent, option, 1463, c_strOpacity, c_strOpacityTip}; }
constexpr OptionControlRow Space(Bar bar, ToolOption option) { return {bar, Percent, option, 1461, c_strSpace, c_strSpaceTip}; }
constexpr OptionControlRow Pressure(Bar bar, ToolOption option) { return {bar, Percent, option, 1462, c_strPressure, c_strPressureTip}; }
constexpr OptionControlRow Mode(Bar bar, ToolOption option) { return {bar, Blend, option, 0, c_strMode, c_strModeTip}; }
constexpr OptionControlRow PatternOf(Bar bar) { return {bar, Pattern, Count, 0, "패턴:", "칠에 섞을 배경 패턴을 고릅니다."}; }
constexpr OptionControlRow TextureOf(Bar bar) { return {bar, Texture, Count, 0, "텍스처:", "칠의 결이 되는 텍스처를 고릅니다."}; }
constexpr OptionControlRow FloatOpacityOf(Bar bar)
{
    return {bar, Percent, FloaterOpacity, 1102, c_strOpacity, "떠 있는 선택 영역의 불투명도를 정합니다."};
}
constexpr OptionControlRow MoveModeOf(Bar bar)
{
    return {bar, Radio, FloaterCopy, 0, "", "선택 영역을 옮기거나, 원래 자리에 남겨 두고 복사합니다.", c_aMoveModes};
}
constexpr OptionControlRow HintOf(Bar bar, std::string_view text) { return {bar, Hint, Count, 0, text, ""}; }

// clang-format off
constexpr OptionControlRow c_aControls[] = {
    {Bar::Selection, Buttons, FloaterMode, 0, "", "", c_aSelectModes},
    {Bar::Selection, Pixels, FloaterFeather, 1101, "경계 후림:", "선택 영역의 경계를 부드럽게 하는 너비를 정합니다."},
    {Bar::Selection, Check, FloaterStyle, 0, "고정 크기", "정해 둔 크기로 선택합니다.", {}, OptionFor::Shapes},
    {Bar::Selection, Size, FloaterWidth, 0, "폭:", "고정 크기의 폭을 정합니다.", {}, OptionFor::Shapes, FloaterStyle},
    {Bar::Selection, Size, FloaterHeight, 0, "높이:", "고정 크기의 높이를 정합니다.", {}, OptionFor::Shapes, FloaterStyle},
    {Bar::Selection, Check, FloaterAntiAlias, 0, "가장자리 부드럽게", "선택 영역의 가장자리를 계단 없이 그립니다.", {}, OptionFor::Outlines},
    {Bar::Selection, Number, FloaterTolerance, 1103, "허용치:", "누른 곳과 얼마나 다른 색까지 선택할지 정합니다.", {}, OptionFor::Wand},
    MoveModeOf(Bar::Move), FloatOpacityOf(Bar::Move),
    HintOf(Bar::Crop, "끌어서 남길 영역을 정하고, 두 번 누르거나 Enter로 자릅니다. Esc로 취소합니다."),
    MoveModeOf(Bar::Transform), FloatOpacityOf(Bar::Transform),
    HintOf(Bar::Transform, "모서리를 끌어 변형하고, 두 번 누르거나 Enter로 적용합니다."),
    Opacity(Bar::Pencil, PencilOpacity), Space(Bar::Pencil, PencilSpace), Mode(Bar::Pencil, PencilMode),
    PatternOf(Bar::Pencil), TextureOf(Bar::Pencil),
    Opacity(Bar::Brush, BrushOpacity), Space(Bar::Brush, BrushSpace), Mode(Bar::Brush, BrushMode),
    {Bar::Brush, Check, BrushFade, 0, "사라짐", "획이 길어질수록 옅어져 사라지게 합니다."},
    {Bar::Brush, Number, BrushPressure, 1462, c_strPressure, "획이 사라질 때까지의 길이를 10픽셀 단위로 정합니다.", {}, OptionFor::All, BrushFade},
    PatternOf(Bar::Brush), TextureOf(Bar::Brush),
    Opacity(Bar::Eraser, EraserOpacity), Space(Bar::Eraser, EraserSpace),
    {Bar::Eraser, Check, EraserHard, 0, "선택 영역 지우기", "떠 있는 선택 영역을 배경색으로 칠하지 않고 투명하게 지웁니다."},
    TextureOf(Bar::Eraser),
    Opacity(Bar::AirBrush, AirOpacity), Space(Bar::AirBrush, AirSpace), Pressure(Bar::AirBrush, AirPressure),
    Mode(Bar::AirBrush, AirMode), PatternOf(Bar::AirBrush),
    Opacity(Bar::Stamp, StampOpacity), Space(Bar::Stamp, StampSpace), Mode(Bar::Stamp, StampMode), TextureOf(Bar::Stamp),
    Opacity(Bar::Convolve, ConvolveOpacity), Space(Bar::Convolve, ConvolveSpace), Pressure(Bar::Convolve, ConvolvePressure),
    Opacity(Bar::Dodge, DodgeOpacity), Space(Bar::Dodge, DodgeSpace),
    {Bar::Dodge, Percent, DodgePressure, 1462, "노출:", "한 번에 얼마나 밝게 또는 진하게 할지 정합니다."},
    Mode(Bar::Dodge, DodgeMode),
    {Bar::Dodge, List, DodgeCurve, 0, "범위:", "어느 밝기에 작용할지 고릅니다.", c_aCurves},
    TextureOf(Bar::Dodge),
    Opacity(Bar::Smudge, SmudgeOpacity), Pressure(Bar::Smudge, SmudgePressure),
    Opacity(Bar::Art, ArtOpacity),
    {Bar::Art, Number, ArtIntensity, 1547, "세기:", "효과의 세기나 크기를 정합니다.", {}, OptionFor::Strength},
    TextureOf(Bar::Art),
    {Bar::Gradient, List, GradientShape, 0, "모양:", "그레디언트의 모양을 고릅니다.", c_aShapes},
    {Bar::Gradient, List, GradientSource, 0, "색상:", "그레디언트의 색상을 고릅니다.", c_aSources},
    Opacity(Bar::Gradient, GradientOpacity), Mode(Bar::Gradient, GradientMode),
    {Bar::Gradient, Percent, GradientOffset, 0, "시작:", "색이 바뀌기 시작하는 곳을 선의 백분율로 정합니다."},
    {Bar::Gradient, Number, GradientExponent, 0, "휨:", "원뿔 모양에서 색이 바뀌는 빠르기를 정합니다."},
    {Bar::Bucket, Percent, BucketThreshold, 1461, "허용치:", "누른 곳과 얼마나 다른 색까지 채울지 정합니다."},
    Opacity(Bar::Bucket, BucketOpacity), Mode(Bar::Bucket, BucketMode),
    {Bar::Bucket, List, BucketStyle, 0, "채우기:", "무엇으로 채울지 고릅니다.", c_aFills},
    PatternOf(Bar::Bucket),
    Opacity(Bar::Tube, TubeOpacity), Space(Bar::Tube, TubeSpace),
    HintOf(Bar::Eyedropper, "이미지를 눌러 전경색을, 오른쪽 단추로 배경색을 고릅니다."),
    HintOf(Bar::Text, "글자를 넣을 곳을 누릅니다."),
    HintOf(Bar::Zoom, "누르면 확대하고, 오른쪽 단추로 누르면 축소합니다."),
    HintOf(Bar::Hand, "이미지를 끌어 옮깁니다."),
};
// clang-format on

/// The setting's values and the items are as many; the controls of a bar stand together; a number stands on a bar once.
constexpr bool IsSane()
{
    for (std::size_t i = 0; i < std::size(c_aControls); i++) {
        const OptionControlRow& row = c_aControls[i];
        const bool bItems = row.kind == List || row.kind == Buttons || row.kind == Radio;
        if (bItems == row.items.empty())
            return false;
        if (i > 0 && row.bar != c_aControls[i - 1].bar)
            for (std::size_t j = 0; j < i; j++)
                if (c_aControls[j].bar == row.bar)
                    return false;
        for (std::size_t j = 0; j < i; j++)
            if (row.nControl && c_aControls[j].bar == row.bar && c_aControls[j].nControl == row.nControl)
                return false;
    }
    return true;
}
static_assert(IsSane(), "a row without its items, a bar in two places or a control number twice on a bar");

} // namespace

std::span<const OptionControlRow> OptionControls()
{
    return c_aControls;
}

std::span<const OptionControlRow> OptionControls(ToolBar bar)
{
    const auto isOfBar = [bar](const OptionControlRow& row) { return row.bar == bar; };
    const auto first = std::find_if(std::begin(c_aControls), std::end(c_aControls), isOfBar);
    return {first, std::find_if_not(first, std::end(c_aControls), isOfBar)};
}

ToolBar BarOfOption(ToolOption option)
{
    const auto it = std::find_if(std::begin(c_aControls), std::end(c_aControls),
                                 [option](const OptionControlRow& row) { return row.option == option; });
    return it == std::end(c_aControls) || option == Count ? ToolBar::None : it->bar;
}

} // namespace kestrune
