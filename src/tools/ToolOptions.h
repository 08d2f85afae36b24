#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

namespace kestrune {

class CProfile;

/// One setting of a tool, named after its section and key.
enum class ToolOption {
    PencilOpacity, PencilSpace, PencilMode,
    BrushOpacity, BrushSpace, BrushPressure, BrushMode, BrushFade,
    EraserOpacity, EraserSpace, EraserHard,
    AirOpacity, AirSpace, AirPressure, AirMode,
    StampOpacity, StampSpace, StampMode,
    ConvolveOpacity, ConvolveSpace, ConvolvePressure,
    DodgeOpacity, DodgeSpace, DodgePressure, DodgeMode, DodgeCurve,
    SmudgeOpacity, SmudgePressure,
    ArtOpacity, ArtIntensity,
    GradientOpacity, GradientMode, GradientShape, GradientSource, GradientOffset, GradientExponent,
    BucketOpacity, BucketThreshold, BucketMode, BucketStyle,
    FloaterWidth, FloaterHeight, FloaterMode, FloaterStyle, FloaterFeather, FloaterTolerance,
    FloaterAntiAlias, FloaterOpacity, FloaterCopy,
    TubeOpacity, TubeSpace,
    Count
};

/// What the program knows of one setting of a tool: where it is kept and what it may be.
struct ToolOptionRow {
    ToolOption option;
    std::string_view strSection;
    std::string_view strKey;
    int nDefault;
    int nMin;
    int nMax;
    bool bKept; ///< in the profile; the others start at their default each time
};

/// All settings, in the order of the enumeration.
std::span<const ToolOptionRow> ToolOptionTable();
/// The row of a section's key; null for an unknown one.
const ToolOptionRow* FindToolOption(std::string_view strSection, std::string_view strKey);

/// The present value; the tools read it at the press.
int GetToolOption(ToolOption option);
/// Stores a value, limited to its range, and tells the listener when it changed.
void SetToolOption(ToolOption option, int nValue);
/// A value for as long as a key is held. The settings that are kept don't hear of it: who quits with the key still down finds the
/// value again that letting it go brings.
void HoldToolOption(ToolOption option, int nValue);
/// The key is let go: the option takes this value.
void LetGoToolOption(ToolOption option, int nValue);
/// The option bars: called after each change, whoever made it. One listener; an empty function removes it.
void SetToolOptionListener(std::function<void(ToolOption)> listener);

/// Takes all kept settings from the profile, and puts them back there.
void LoadToolOptions(const CProfile& profile);
void SaveToolOptions(CProfile& profile);

} // namespace kestrune
