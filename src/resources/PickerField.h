#pragma once

#include "base/Color.h"
#include "doc/Bitmap.h"

#include <array>
#include <string>

namespace kestrune {

/// The six components of the colour picker, in the order of its sliders.
enum PickerComponent { PICK_HUE, PICK_SATURATION, PICK_VALUE, PICK_RED, PICK_GREEN, PICK_BLUE, PICK_COUNT };

/// One component: its greatest value (the least is 0).
inline constexpr std::array<int, PICK_COUNT> c_aPickerMax = {360, 100, 100, 255, 255, 255};

/// Which components run along the square field's axes while one stands on the strip. Along y and along the strip values fall from
/// top to bottom.
struct PickerAxes {
    PickerComponent x;
    PickerComponent y;
};
inline constexpr std::array<PickerAxes, PICK_COUNT> c_aPickerAxes = {{
    {PICK_SATURATION, PICK_VALUE},
    {PICK_HUE, PICK_VALUE},
    {PICK_HUE, PICK_SATURATION},
    {PICK_BLUE, PICK_GREEN},
    {PICK_BLUE, PICK_RED},
    {PICK_RED, PICK_GREEN},
}};

inline constexpr int c_nPickerFieldWidth = 255;
inline constexpr int c_nPickerFieldHeight = 256;
inline constexpr int c_nPickerStripWidth = 20;

/// A colour in all six components at once, in the units of the sliders (degrees, percent, bytes).
/// Setting one of hue, saturation, value works out red, green and blue, and the reverse; a grey set by its bytes has hue 0.
class CPickerColor {
public:
    CPickerColor() = default;
    explicit CPickerColor(COLORREF cr) { SetColor(cr); }

    int Get(PickerComponent component) const { return m_aValues[component]; }
    /// Sets one component, kept within its range.
    void Set(PickerComponent component, int nValue);
    COLORREF GetColor() const { return Rgb(m_aValues[PICK_RED], m_aValues[PICK_GREEN], m_aValues[PICK_BLUE]); }
    void SetColor(COLORREF cr);

private:
    void FromHsv();
    void FromRgb();

    std::array<int, PICK_COUNT> m_aValues{};
};

/// Draws the square field (255 x 256) for the component on the strip at the colour's present value of it.
void RenderPickerField(LBitmapBase& bitmap, PickerComponent onStrip, const CPickerColor& color);
/// Draws the strip: the component over its whole range. Hue is shown at full saturation and value; the others at the colour's own.
void RenderPickerStrip(LBitmapBase& bitmap, PickerComponent onStrip, const CPickerColor& color);

/// A colour as six hexadecimal digits, "RRGGBB", and back (with or without "#"; three digits double). False for anything else.
std::string FormatHexColor(COLORREF cr);
bool ParseHexColor(const std::string& strText, COLORREF& cr);

} // namespace kestrune
