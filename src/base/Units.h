#pragma once

namespace kestrune {

/// Units of length, as the settings "General" "Unit" and the unit lists of the dialogs number them.
enum LengthUnit { UNIT_PIXEL = 0, UNIT_CENTIMETER = 1, UNIT_MILLIMETER = 2, UNIT_INCH = 3, UNIT_COUNT };

/// Pixels an inch of a picture that says no resolution of its own.
inline constexpr int c_nDefaultResolution = 96;

/// How many pixels one unit measures at a resolution in pixels an inch.
constexpr double PixelsPerUnit(LengthUnit unit, double fResolution = c_nDefaultResolution)
{
    switch (unit) {
    case UNIT_CENTIMETER:
        return fResolution / 2.54;
    case UNIT_MILLIMETER:
        return fResolution / 25.4;
    case UNIT_INCH:
        return fResolution;
    default:
        return 1.0;
    }
}

} // namespace kestrune
