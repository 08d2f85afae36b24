#pragma once

namespace kestrune {

// Zoom factors are 32-bit floats; 1 shows one image pixel as one pixel of the screen. All steps of the ladders are exact in
// binary, but a fitted zoom is not, and its comparisons are made at that width.

inline constexpr float c_fZoomMin = 0.125f;
inline constexpr float c_fZoomMax = 32.0f;

/// The rule that every zoom goes through: above 0.75 it is cut to a whole number, and it stays within the limits. Between 0.75
/// and 1 the whole number would be 0, which is no zoom; 0.75 is the greatest one below.
constexpr float ZoomRule(float z)
{
    if (!(z >= c_fZoomMin)) // also what is not a number
        return c_fZoomMin;
    if (z > c_fZoomMax)
        return c_fZoomMax;
    if (z <= 0.75f)
        return z;
    return z < 1 ? 0.75f : static_cast<float>(static_cast<int>(z));
}

/// The Zoom In command: 0.125, 0.25, 0.5, 0.75, 1, 2 ... 9, 11 ... 31, 32.
constexpr float ZoomInStep(float z)
{
    if (z < 0.25f)
        return ZoomRule(z * 2);
    if (z < 1)
        return ZoomRule(z + 0.25f);
    return ZoomRule(z < 9 ? z + 1 : z + 2);
}

/// The Zoom Out command: 32, 30 ... 10, 8, 7 ... 1, 0.75, 0.5, 0.25, 0.125. It differs from the way up above 9; kept so.
constexpr float ZoomOutStep(float z)
{
    if (z >= 10)
        return ZoomRule(z - 2);
    if (z > 1)
        return ZoomRule(z - 1);
    return ZoomRule(z > 0.25f ? z - 0.25f : z / 2);
}

/// The magnifier tool's step, in or out. Beyond the upper limit the previous zoom, cut to a whole number, stays.
constexpr float MagnifierStep(float z, bool bIn)
{
    float fNew = z;
    if (z > 1)
        fNew = bIn ? z + 1 : z - 1;
    else if (z == 1)
        fNew = bIn ? z + 1 : z - 0.25f;
    else if (z > 0.25f)
        fNew = bIn ? z + 0.25f : z - 0.25f;
    else
        fNew = bIn ? z * 2 : z / 2;
    if (fNew > c_fZoomMax)
        fNew = static_cast<float>(static_cast<int>(z));
    return ZoomRule(fNew);
}

} // namespace kestrune
