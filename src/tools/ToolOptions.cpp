#include "tools/ToolOptions.h"

#include "base/Profile.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace kestrune {

namespace {

using enum ToolOption;

constexpr int c_nModes = 15; ///< the last blend mode

constexpr ToolOptionRow c_aOptions[] = {
    {PencilOpacity, "Pencil", "Opacity", 100, 0, 100, true},
    {PencilSpace, "Pencil", "Space", 20, 1, 500, true},
    {PencilMode, "Pencil", "Mode", 0, 0, c_nModes, true},
    {BrushOpacity, "Paint Brush", "Opacity", 100, 0, 100, true},
    {BrushSpace, "Paint Brush", "Space", 20, 1, 500, true},
    {BrushPressure, "Paint Brush", "Pressure", 50, 0, 1000, true},
    {BrushMode, "Paint Brush", "P Mode", 0, 0, c_nModes, true},
    {BrushFade, "Paint Brush", "Fade", 1, 0, 1, true},
    {EraserOpacity, "Eraser", "Opacity", 100, 0, 100, true},
    {EraserSpace, "Eraser", "Space", 20, 1, 500, true},
    {EraserHard, "Eraser", "Hard", 0, 0, 1, true},
    {AirOpacity, "Air Brush", "Opacity", 100, 0, 100, true},
    {AirSpace, "Air Brush", "Space", 20, 1, 500, true},
    {AirPressure, "Air Brush", "Pressure", 80, 0, 100, true},
    {AirMode, "Air Brush", "Mode", 0, 0, c_nModes, true},
    {StampOpacity, "Stamp", "Opacity", 100, 0, 100, true},
    {StampSpace, "Stamp", "Space", 20, 1, 500, true},
    {StampMode, "Stamp", "Mode", 0, 0, c_nModes, true},
    {ConvolveOpacity, "ConvolveB", "Opacity", 100, 0, 100, true},
    {ConvolveSpace, "ConvolveB", "Space", 20, 1, 500, true},
    {ConvolvePressure, "ConvolveB", "Pressure", 50, 0, 100, true},
    {DodgeOpacity, "Dodge", "Opacity", 100, 0, 100, true},
    {DodgeSpace, "Dodge", "Space", 20, 1, 500, true},
    {DodgePressure, "Dodge", "Pressure", 50, 0, 100, true},
    {DodgeMode, "Dodge", "P Mode", 0, 0, c_nModes, true},
    {DodgeCurve, "Dodge", "D Mode", 1, 0, 2, true},
    {SmudgeOpacity, "Smudge", "Opacity", 100, 0, 100, true},
    {SmudgePressure, "Smudge", "Pressure", 50, 0, 100, true},
    {ArtOpacity, "Art1", "Opacity", 100, 0, 100, true},
    {ArtIntensity, "Art1", "Intensity", 16, 0, 100, true},
    {GradientOpacity, "Gradient", "Opacity", 100, 0, 100, true},
    {GradientMode, "Gradient", "P Mode", 0, 0, c_nModes, true},
    {GradientShape, "Gradient", "G Mode", 0, 0, 5, true},
    {GradientSource, "Gradient", "Source", 0, 0, 3, false},
    {GradientOffset, "Gradient", "Offset", 0, 0, 100, false},
    {GradientExponent, "Gradient", "Exponent", 0, 0, 100, false},
    {BucketOpacity, "Bucket", "Opacity", 50, 0, 100, true},
    {BucketThreshold, "Bucket", "Threshold", 10, 0, 100, true},
    {BucketMode, "Bucket", "Mode", 0, 0, c_nModes, true},
    {BucketStyle, "Bucket", "Style", 0, 0, 1, true},
    {FloaterWidth, "Floater", "Width", 32, 1, 30000, true},
    {FloaterHeight, "Floater", "Height", 32, 1, 30000, true},
    {FloaterMode, "Floater", "Mode", 1, 1, 4, true},
    {FloaterStyle, "Floater", "Style", 0, 0, 1, true},
    {FloaterFeather, "Floater", "Feather", 2, 0, 250, true},
    {FloaterTolerance, "Floater", "Tolerance", 6, 0, 255, true},
    {FloaterAntiAlias, "Floater", "AntiAlias", 1, 0, 1, false},
    {FloaterOpacity, "Floater", "Opacity", 100, 0, 100, false},
    {FloaterCopy, "Floater", "Copy", 0, 0, 1, false},
    {TubeOpacity, "Tube", "Opacity", 50, 0, 100, true},
    {TubeSpace, "Tube", "Space", 10, 1, 500, true},
};

constexpr std::size_t c_nOptions = static_cast<std::size_t>(Count);

constexpr bool IsSane()
{
    if (std::size(c_aOptions) != c_nOptions)
        return false;
    for (std::size_t i = 0; i < c_nOptions; ++i)
        if (c_aOptions[i].option != static_cast<ToolOption>(i) || c_aOptions[i].nDefault < c_aOptions[i].nMin
            || c_aOptions[i].nDefault > c_aOptions[i].nMax)
            return false;
    return true;
}
static_assert(IsSane(), "a row stands out of order, or its default out of its range");

constexpr std::array<int, c_nOptions> Defaults()
{
    std::array<int, c_nOptions> aValues{};
    for (std::size_t i = 0; i < c_nOptions; ++i)
        aValues[i] = c_aOptions[i].nDefault;
    return aValues;
}

std::array<int, c_nOptions> g_aValues = Defaults();
std::array<bool, c_nOptions> g_abHeld{};

std::function<void(ToolOption)>& Listener()
{
    static std::function<void(ToolOption)> listener;
    return listener;
}

} // namespace

std::span<const ToolOptionRow> ToolOptionTable()
{
    return c_aOptions;
}

const ToolOptionRow* FindToolOption(std::string_view strSection, std::string_view strKey)
{
    const auto it = std::ranges::find_if(c_aOptions, [&](const ToolOptionRow& row) {
        return row.strSection == strSection && row.strKey == strKey;
    });
    return it == std::end(c_aOptions) ? nullptr : &*it;
}

int GetToolOption(ToolOption option)
{
    return g_aValues[static_cast<std::size_t>(option)];
}

void SetToolOption(ToolOption option, int nValue)
{
    const std::size_t i = static_cast<std::size_t>(option);
    nValue = std::clamp(nValue, c_aOptions[i].nMin, c_aOptions[i].nMax);
    if (std::exchange(g_aValues[i], nValue) != nValue && Listener())
        Listener()(option);
}

void HoldToolOption(ToolOption option, int nValue)
{
    g_abHeld[static_cast<std::size_t>(option)] = true;
    SetToolOption(option, nValue);
}

void LetGoToolOption(ToolOption option, int nValue)
{
    g_abHeld[static_cast<std::size_t>(option)] = false;
    SetToolOption(option, nValue);
}

void SetToolOptionListener(std::function<void(ToolOption)> listener)
{
    Listener() = std::move(listener);
}

void LoadToolOptions(const CProfile& profile)
{
    for (const ToolOptionRow& row : c_aOptions)
        SetToolOption(row.option, row.bKept ? profile.GetInt(std::string(row.strSection), std::string(row.strKey), row.nDefault)
                                            : row.nDefault);
}

void SaveToolOptions(CProfile& profile)
{
    for (const ToolOptionRow& row : c_aOptions)
        if (row.bKept)
            profile.WriteInt(std::string(row.strSection), std::string(row.strKey),
                             g_abHeld[static_cast<std::size_t>(row.option)] ? row.nDefault : GetToolOption(row.option));
}

} // namespace kestrune
