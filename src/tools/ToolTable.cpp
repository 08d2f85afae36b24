#include "tools/ToolTable.h"

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

using enum ToolBar;

// Kept on purpose: the ellipse stores the rectangle's command, so that the two share one pressed button; the burn tool, unlike
// the dodge tool, leaves the side box alone; the transforms store numbers that no button has.
constexpr ToolRow c_aTools[] = {
    {TOOL_RECT_SELECT, "CRectSelectTool", 1001, 1001, "사각형 선택 도구", 0, 153, 334, Selection, SideBox::Hide},
    {TOOL_ELLIPSE_SELECT, "CEllipseSelectTool", 1122, 1001, "타원형 선택 도구", 0, 154, 333, Selection, SideBox::Hide},
    {TOOL_FREE_SELECT, "CFreeSelectTool", 1123, 1123, "임의 선택 도구", 0, 155, 335, Selection, SideBox::Hide},
    {TOOL_POLYGON_SELECT, "CPolygonSelectTool", 1124, 1124, "다각형 선택 도구", 0, 156, 336, Selection, SideBox::Hide},
    {TOOL_MOVE, "CMoveTool", 1002, 1002, "이동 도구", 0, 158, 0, Move, SideBox::Hide},
    {TOOL_MAGIC_WAND, "CMagicWandTool", 1003, 1003, "마술봉 선택 도구", 0, 157, 337, Selection, SideBox::Hide},
    {TOOL_CROP, "CCropTool", 1004, 1004, "이미지 자르기 도구(C)", 0, 162, 0, Crop, SideBox::Hide},
    {TOOL_PENCIL, "CPencilTool", 1005, 1005, "연필 도구(P)", 21, 147, 0, Pencil, SideBox::Brushes},
    {TOOL_BRUSH, "CBrushTool", 1006, 1006, "브러시 도구(B)", 22, 387, 0, Brush, SideBox::Brushes},
    {TOOL_ERASER, "CEraserTool", 1007, 1007, "지우개 도구(E)", 23, 150, 0, Eraser, SideBox::Brushes},
    {TOOL_AIR_BRUSH, "CAirBrushTool", 1008, 1008, "에어 브러시 도구(J)", 24, 151, 221, AirBrush, SideBox::Brushes},
    {TOOL_STAMP, "CStampTool", 1009, 1009, "도장 도구(S)", 25, 392, 0, Stamp, SideBox::Brushes},
    {TOOL_PHOTO_BRUSH, "CPhotoBrushTool", 1094, 1094, "사진 브러시 도구(P)", 26, 390, 0, Tube, SideBox::Pictures},
    {TOOL_COLOR_EFFECT, "CColorEffectBrushTool", 0, 0, "", 26, 161, 0, Art, SideBox::Brushes},
    {TOOL_TEXTURE_EFFECT, "CTextureEffectBrushTool", 0, 0, "", 26, 161, 0, Art, SideBox::Brushes},
    {TOOL_BLUR, "CBlurTool", 1013, 1013, "흐리게", 27, 344, 276, Convolve, SideBox::Brushes},
    {TOOL_SHARPEN, "CSharpenTool", 1014, 1014, "선명하게", 28, 343, 383, Convolve, SideBox::Brushes},
    {TOOL_DODGE, "CDodgeTool", 1015, 1015, "밝게", 29, 341, 325, Dodge, SideBox::Brushes},
    {TOOL_BURN, "CBurnTool", 1016, 1016, "진하게", 30, 342, 340, Dodge, SideBox::Keep},
    {TOOL_SMUDGE, "CSmudgeTool", 1017, 1017, "문지르기", 31, 338, 274, Smudge, SideBox::Brushes},
    {TOOL_GRADIENT, "CGradientTool", 1011, 1011, "그레디언트 도구(G)", 32, 906, 0, Gradient, SideBox::Hide},
    {TOOL_BUCKET, "CBucketTool", 1012, 1012, "뺑기통 도구(A)", 33, 160, 0, Bucket, SideBox::Hide},
    {TOOL_SCALE, "CScaleTool", 30051, 1018, "선택 영역 크기 변경 도구", 34, 0, 0, Transform, SideBox::Keep},
    {TOOL_ROTATE, "CRotateTool", 30052, 1019, "선택 영역 회전 도구", 35, 0, 0, Transform, SideBox::Keep},
    {TOOL_SKEW_HORZ, "CSkewHorzTool", 30053, 1020, "선택 영역수평 변형 도구", 36, 0, 0, Transform, SideBox::Keep},
    {TOOL_SKEW_VERT, "CSkewVertTool", 30054, 1021, "선택 영역 수직 변형 도구", 37, 0, 0, Transform, SideBox::Keep},
    {TOOL_FREE_TRANSFORM, "CFreeTransformTool", 30055, 1022, "선택 영역 자유 변형 도구", 38, 0, 0, Transform, SideBox::Keep},
    {TOOL_EYEDROPPER, "CEyedropperTool", 1024, 1024, "색상 추출 도구(I)", 0, 902, 352, Eyedropper, SideBox::Hide},
    {TOOL_TEXT, "CTextTool", 1026, 1026, "문자 도구", 0, 246, 353, Text, SideBox::Hide},
    {TOOL_ZOOM, "CZoomTool", 337, 337, "확대/축소 도구", 0, 818, 0, Zoom, SideBox::Hide},
    {TOOL_HAND, "CHandTool", 1025, 1025, "화면 이동 도구(단축키: Space)", 0, 904, 0, Hand, SideBox::Hide},
};

constexpr std::string_view c_strStrength = "세기:";
constexpr std::string_view c_strSize = "크기:";

constexpr EffectRow c_aEffects[] = {
    {1050, TOOL_COLOR_EFFECT, 6, "회색 계조 브러시", "그레이스케일", ""},
    {1067, TOOL_COLOR_EFFECT, 23, "색상 효과 브러시", "색상 입히기", c_strStrength},
    {1071, TOOL_COLOR_EFFECT, 26, "오래된 사진 효과", "옛날 사진 효과", c_strStrength},
    {1063, TOOL_COLOR_EFFECT, 19, "노이즈 효과", "노이즈", c_strStrength},
    {1068, TOOL_COLOR_EFFECT, 24, "색상 필터 브러시", "NL 필터", c_strStrength},
    {1055, TOOL_TEXTURE_EFFECT, 11, "흩뿌리기", "흩뿌림", c_strSize},
    {1053, TOOL_TEXTURE_EFFECT, 9, "픽셀 이동", "쉬프트", c_strStrength},
    {1062, TOOL_TEXTURE_EFFECT, 18, "캔바스", "텍스츄어", c_strStrength},
    {1070, TOOL_TEXTURE_EFFECT, 25, "섬유", "섬유 효과", c_strStrength},
    {1066, TOOL_TEXTURE_EFFECT, 22, "타일", "타일", c_strStrength},
    {1051, TOOL_TEXTURE_EFFECT, 7, "유리 타일", "글래스 타일", c_strSize},
    {1057, TOOL_TEXTURE_EFFECT, 13, "포스터화", "픽셀화", c_strSize},
};

template <typename Table, typename Key>
constexpr bool IsUnique(const Table& table, Key key)
{
    for (std::size_t i = 0; i < std::size(table); i++)
        for (std::size_t j = 0; j < i; j++)
            if (key(table[i]) != 0 && key(table[i]) == key(table[j]))
                return false;
    return true;
}

static_assert(std::size(c_aTools) == 31);
static_assert(IsUnique(c_aTools, [](const ToolRow& r) { return r.nId; }));
static_assert(IsUnique(c_aTools, [](const ToolRow& r) { return r.nCommand; }));
static_assert(IsUnique(c_aEffects, [](const EffectRow& r) { return r.nCommand; }));
static_assert(IsUnique(c_aEffects, [](const EffectRow& r) { return r.nEffectKind; }));

template <typename Table, typename Key>
auto FindRow(const Table& table, int n, Key key) -> decltype(&table[0])
{
    const auto it = std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.*key == n; });
    return it == std::end(table) ? nullptr : &*it;
}

} // namespace

std::span<const ToolRow> ToolTable()
{
    return c_aTools;
}

const ToolRow* FindToolRow(int nId)
{
    return FindRow(c_aTools, nId, &ToolRow::nId);
}

std::span<const EffectRow> EffectTable()
{
    return c_aEffects;
}

const EffectRow* FindEffectRow(int nCommand)
{
    return FindRow(c_aEffects, nCommand, &EffectRow::nCommand);
}

} // namespace kestrune
